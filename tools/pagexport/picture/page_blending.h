#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

namespace tools {

/// Whether a page must be drawn on a layer of its own before it meets the white paper. Many
/// producers ask for that on every page, and it doubles the work of drawing; without blend modes
/// and soft masks the result is the same. Says true when in doubt.
bool needsPageGroup(fz_context *context, pdf_page *page) noexcept;

} // namespace tools
