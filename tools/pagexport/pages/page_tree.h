#pragma once

#include "tools/pdf/pdf_context.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <vector>

namespace tools {

/// Object numbers of a document's pages, in page order; 0 stands for a page that has none and must
/// be looked up by the library.
using PageObjects = std::vector<int>;

/// Stands for a page that the tree has a place for and nothing that can be read there.
constexpr int unreadablePage = -1;

/// Number of pages. @throws ToolError when the tree cannot be read
int countPages(const PdfFile &file);

/// The object numbers of @p count pages from page @p first (0-based) on.
/// @throws ToolError when the tree cannot be read
PageObjects findPageObjects(const PdfFile &file, int first, int count);

/// Loads page @p index whose object number is @p object (0: looked up by the library).
/// Throws the library's errors (fz_throw).
pdf_page *loadPage(fz_context *context, pdf_document *document, int index, int object);

/// Gives back what loadPage() left with the document; call it before the document is closed.
void dropPageMap(fz_context *context, pdf_document *document) noexcept;

} // namespace tools
