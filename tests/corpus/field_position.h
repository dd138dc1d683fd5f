#pragma once

#include <QPointF>
#include <QString>

/// The item of a page whose line runs through @p field, given in points, as "LEFT,TOP"; empty when
/// there is none.
/// @param listing what the runner prints for --list-items
QString positionAt(const QString &listing, QPointF field);
