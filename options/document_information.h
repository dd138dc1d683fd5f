#pragma once

#include <QString>

namespace quorlin {

/// The document information as the user typed it.
struct DocumentInformation
{
    QString title;
    QString author;
    QString subject;
    QString keywords;
    QString creator;
    QString producer;
};

/// Name of the document information file, relative to the application folder.
inline QString documentInformationFileName()
{
    return QStringLiteral("pdfinfo.txt");
}

/// The fields in pdfmark notation, without a line feed at the end. They are filled in one after
/// another: a "%" and a number inside a field take part in the fields that follow. Parentheses and
/// backslashes are not escaped, so an unbalanced one spoils the mark for a PostScript reader.
QString documentInformationText(const DocumentInformation &information);

} // namespace quorlin
