#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <vector>

namespace tools {

/// Object numbers of a document's pages, in page order; 0 stands for a page that has none and must
/// be looked up by the library.
using PageObjects = std::vector<int>;

/// Object number of page @p index (0-based), found by descending along /Count: the cost does not
/// grow with the pages before it. 0 when the tree is not plain enough to be sure.
int findPageObject(fz_context *context, pdf_document *document, int index) noexcept;

/// Walks the whole page tree, each node once and never deeper than a sane tree is.
/// @param limit stop after so many pages
/// @return the pages found, which may be fewer than the document states
PageObjects listPageObjects(fz_context *context, pdf_document *document, int limit);

/// Loads page @p index whose object number is @p object (0: looked up by the library).
/// Throws the library's errors (fz_throw).
pdf_page *loadPage(fz_context *context, pdf_document *document, int index, int object);

/// Gives back what loadPage() left with the document; call it before the document is closed.
void dropPageMap(fz_context *context, pdf_document *document) noexcept;

} // namespace tools
