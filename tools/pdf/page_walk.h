#pragma once

#include "tools/pdf/page_list.h"
#include "tools/pdf/pdf_source.h"

namespace tools {

/// The pages of a document: the leaves of its page tree from left to right, whatever the nodes
/// state as their numbers of pages.
///
/// A dictionary without a list of children is a page, whatever it calls itself, and so is one that
/// calls itself a page and has content. A kid that is missing or cannot be read keeps its place as
/// an unreadable page, unless it is missing and the root states just the number of the other pages.
/// A node that leads back to one above it is passed over, unless the root counts such places, too.
/// A document whose root states no pages, or none of whose pages can be read, has none.
///
/// @throws ToolError when the tree branches endlessly, FileRepaired, std::bad_alloc
PageList walkPages(PdfSource &source);

} // namespace tools
