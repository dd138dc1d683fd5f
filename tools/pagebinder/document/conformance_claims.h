#pragma once

#include <string>

namespace tools {

/// Whether the metadata in @p xmp says that the file follows PDF/A.
bool claimsPdfA(const std::string &xmp);

/// Changes what @p xmp says to what holds for a file without structure tags: a profile's level "A"
/// becomes "B", and the claim of general accessibility (PDF/UA) is blanked out. The length stays.
/// @returns whether anything had to change
bool adaptToUntagged(std::string &xmp);

} // namespace tools
