#pragma once

#include <QString>
#include <QStringList>

/// The text of every page of the PDF @p path, white space collapsed, read by the PDF library
/// itself and not by our tools. Empty when the file cannot be read.
QStringList pageTexts(const QString &path);
