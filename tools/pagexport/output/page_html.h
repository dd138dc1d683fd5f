#pragma once

#include "tools/pagexport/text/text_items.h"

#include <string>

namespace tools {

/// Replaces @p html by the page file of page @p number (1-based, as in the document): a few lines
/// of frame, and between them one line per item, <span
/// style="left:72;top:104;width:210;height:12">text</span> The text's "<", ">" and double quotes
/// are written as references, "&" only where it would be read as one. No other line holds the words
/// left, top, width, height or "</span>".
void writePageHtml(std::string &html, const TextItems &page, int number);

} // namespace tools
