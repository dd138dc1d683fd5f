#pragma once

#include <QFont>
#include <QStringList>

namespace quorlin {

/// The font in which every one of @p texts fits into @p width pixels, so that captions of one width
/// look alike: @p font as it is where it fits, else condensed, and made smaller only where that is
/// not enough. Below half its size it shrinks no further.
QFont fittingFont(const QFont &font, const QStringList &texts, int width);

/// Font and picture of buttons that stand in a row.
struct ButtonFit
{
    QFont font;
    int pictureSide = 0; ///< pixels; 0 leaves the picture out
};

/// Font and picture with which every one of @p captions fits into a button of @p width pixels. The
/// picture gives way before the captions become hard to read.
ButtonFit fittingButtons(const QFont &font, const QStringList &captions, int width);

} // namespace quorlin
