#pragma once

#include "tests/support/text_files.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace quorlin::test {

/// Texts at the rule's position (72, 104), one per page; nothing for a page without one.
using PageTexts = std::vector<std::optional<QString>>;

inline constexpr int ruleLeft = 72;
inline constexpr int ruleTop = 104;

/// The texts of most batches.
inline const QString textA = QStringLiteral("A");
inline const QString textB = QStringLiteral("B");

/// Orders for the stand-in of the tools: a file of as many pages as @p texts has entries.
QString ordersFor(const PageTexts &texts);

/// Puts the stand-in into @p folder under the names of the two tools.
void installFakeTools(const QString &folder);

/// Lines that the stand-in recorded in @p folder, without the ends of its runs.
QStringList toolCalls(const QString &folder);

/// Whether no run of a tool began before the one before it had ended.
bool toolsRanOneAtATime(const QString &folder);

} // namespace quorlin::test
