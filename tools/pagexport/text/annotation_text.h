#pragma once

#include "tools/pagexport/text/item_builder.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <string>

namespace tools {

/// Hands the text of the page's annotations and form fields to @p builder, as far as the page
/// picture shows them, each as items of its own.
/// @param scale from points of the page as shown to points of the page as exported
/// @return empty, or why the last of them could not be read; the others are read all the same
std::string readAnnotationText(fz_context *context, pdf_page *page, fz_matrix scale,
                               ItemBuilder &builder, fz_cookie *cookie);

} // namespace tools
