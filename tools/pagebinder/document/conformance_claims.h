#pragma once

#include <string>

namespace tools {

/// Whether the metadata in @p xmp says that the file follows PDF/A.
bool claimsPdfA(const std::string &xmp);

/// Whether it says that the file has the profile's highest level, "A", for which it must be tagged.
bool claimsLevelA(const std::string &xmp);

/// Changes that level to "B". The length stays. @returns whether anything had to change
bool lowerLevel(std::string &xmp);

/// Whether it says that the file is accessible to everyone (PDF/UA).
bool claimsUniversalAccess(const std::string &xmp);

/// Blanks that claim out. The length stays. @returns whether anything had to change
bool removeUniversalAccess(std::string &xmp);

/// Blanks out the claim that the data of an electronic invoice is attached, which belongs to the
/// document as a whole and is not copied. The length stays. @returns whether anything had to change
bool removeInvoiceClaim(std::string &xmp);

} // namespace tools
