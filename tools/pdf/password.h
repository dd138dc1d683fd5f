#pragma once

#include "tools/pdf/pdf_source.h"

namespace tools {

/// Whether the pages of a document can be read without a password: it is not encrypted, the user's
/// or the owner's password is empty, or nothing but attachments is encrypted.
bool opensWithoutPassword(PdfSource &source);

} // namespace tools
