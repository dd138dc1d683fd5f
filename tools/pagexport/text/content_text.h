#pragma once

#include "tools/pagexport/text/font_cache.h"
#include "tools/pagexport/text/item_builder.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <string>

namespace tools {

/// Runs the page's content (not its annotations) and hands every glyph to @p builder, hidden layers
/// left out. Of the content only text, its placing and the forms it draws are looked at: paths,
/// colours, pictures and shadings cost nothing.
/// @param fonts glyph widths and code points, kept from page to page
/// @param toPage what turns the page's own coordinates into points of the page as shown
/// @return empty, or why reading ended early; what was read before stays with the builder
std::string readContentText(fz_context *context, pdf_page *page, fz_matrix toPage, FontCache &fonts,
                            ItemBuilder &builder, fz_cookie *cookie);

} // namespace tools
