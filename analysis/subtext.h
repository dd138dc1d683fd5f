#pragma once

#include <QString>

/// One positioned text item of an exported page.
///
/// Page coordinates: the origin is the top left corner of the page as it is shown (crop box, page
/// rotation and user unit applied), x grows to the right and y downwards, one unit is 1/108 inch,
/// two thirds of a point. On an A4 page (595 x 842 points) positions run to about 892 x 1263. Text
/// whose first character stands 72 points from the left edge has left 108, at every zoom of the
/// rule editor: zoom scales the picture and the frames, never a stored position.
///
/// The numbers are never negative; a value that is absent or unreadable is 0.
struct Subtext
{
    qint32 left = 0;
    qint32 top = 0;
    qint32 width = 0;
    qint32 height = 0;
    QString text; ///< as it stands in the page file: nothing decoded, nothing trimmed

    friend bool operator==(const Subtext &, const Subtext &) = default;
};
