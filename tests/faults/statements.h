#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace quorlin::test {

/// Where statementPdf() writes each page's text, in page export units.
inline constexpr int statementLeft = 108;
inline constexpr int statementTop = 123;

/// A PDF file with one page per entry of @p texts (Latin-1), which stands on it at the position
/// above; an empty entry gives a page without a text there. Every page also says which page of how
/// many it is.
QByteArray statementPdf(const QStringList &texts);

/// Number of pages that pagebinder states for @p pdf; 0 when it refuses the file.
int pagesOf(const QString &pdf);

} // namespace quorlin::test
