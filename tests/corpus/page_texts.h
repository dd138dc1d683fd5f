#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The text of every page of each of the PDFs @p paths, white space collapsed, read by the PDF
/// library itself and not by our tools. Empty for a file that cannot be read; no element at all
/// when the program that reads them fails.
QList<QStringList> pageTexts(const QStringList &paths);

/// The same for one file.
QStringList pageTexts(const QString &path);
