#pragma once

#include "tools/pagexport/text/text_run.h"

#include <string>

namespace tools {

/// Appends the text of @p run, which holds letters that are read from right to left, in the order
/// in which it is read. The places of the letters decide, so files that draw them from the left
/// give the same text as files that draw them in reading order. Numbers and words of left-to-right
/// scripts keep their own order.
/// @param narrowestBlank the narrowest gap that is a blank, in ems
void appendInReadingOrder(std::string &text, const TextRun &run, double narrowestBlank);

} // namespace tools
