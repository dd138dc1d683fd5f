#pragma once

#include "tools/pdf/pdf_source.h"

#include <string>

namespace tools {

/// Whether the pages of a document can be read without a password: it is not encrypted, the user's
/// or the owner's password is empty, or nothing but attachments is encrypted.
bool opensWithoutPassword(PdfSource &source);

/// Whether @p password, in UTF-8, is the user's or the owner's of an encrypted document. The pages
/// can be read then; what its permissions forbid stays forbidden.
bool opensWith(PdfSource &source, const std::string &password);

/// The string @p key of the encryption dictionary as it stands in the file: the library decrypts
/// those that it reads later than the key. Empty where there is none.
std::string encryptionString(PdfSource &source, const char *key);

} // namespace tools
