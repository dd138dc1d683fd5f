#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

namespace tools {

/// Repairs what leaves @p page without an area to show: a crop box that lies outside the media box
/// is ignored, and so is a user unit that is not positive. A missing, empty or reversed media box
/// is the library's business. Only the document in memory changes. Throws the library's errors
/// (fz_throw).
void settlePageBox(fz_context *context, pdf_page *page);

/// How much smaller than life a page of @p width x @p height points is exported, at most 1: a
/// picture has at most 30 megapixels and 30,000 pixels along a side. Texts shrink with the picture,
/// so that their frames stay on it.
double pageScale(double width, double height) noexcept;

} // namespace tools
