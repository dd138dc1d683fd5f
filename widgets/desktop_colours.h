#pragma once

#include <QPalette>

namespace quorlin {

/// Whether @p desktop shows light texts on dark surfaces.
bool isDark(const QPalette &desktop);

/// The colours of the main window: those of @p desktop, or light ones where the desktop is dark.
/// The window's picture, captions, button row and headers are light on every desktop, and a dark
/// list and dark fields between them would not belong to them.
QPalette windowColours(const QPalette &desktop);

/// @p colours with disabled texts that can be read: still weaker than those of enabled controls,
/// but at least 4.5 to 1 against what is behind them.
QPalette withReadableDisabledTexts(QPalette colours);

/// Contrast of two colours as accessibility guidelines define it, from 1 to 21.
double contrastOf(const QColor &one, const QColor &other);

} // namespace quorlin
