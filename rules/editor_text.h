#pragma once

#include "analysis/subtext.h"

#include <QString>

#include <optional>

namespace quorlin {

// What the rule editor shows and reads as text, and the choices that follow from its page number.

/// Tool tip of a picked item: its left and top in page units.
QString positionTip(const Subtext &item);

/// The picked item as the rule content field shows it: "(72 104 210 12)=Invoice".
QString ruleContent(const Subtext &item);

/// Text of the label behind the page number: "/12".
QString pageCountLabel(int pageCount);

/// The count that pageCountLabel() wrote; 0 when @p label holds none.
int pageCountFromLabel(const QString &label);

/// Which of the two page buttons lead to a page.
struct PageButtons
{
    bool previous = false;
    bool next = false;

    friend bool operator==(const PageButtons &, const PageButtons &) = default;
};

/// Buttons that are enabled on page @p page of @p pageCount; none when there are no pages.
PageButtons pageButtons(int page, int pageCount);

/// The page before @p page, nothing on the first one or when there are no pages.
std::optional<int> previousPage(int page, int pageCount);

/// The page after @p page, nothing on the last one or when there are no pages.
std::optional<int> nextPage(int page, int pageCount);

} // namespace quorlin
