#pragma once

#include <QString>

namespace quorlin {

// The page files hold an item's text with references in place of "<", ">" and the double quote,
// and of an "&" where it would read as one. The window names its outputs by that form; what is
// shown or reported is the plain text.

/// The form in which a page file holds the plain text @p text.
QString pageFileText(const QString &text);

/// The plain text that a page file holds as @p text: the inverse of pageFileText().
QString plainText(const QString &text);

} // namespace quorlin
