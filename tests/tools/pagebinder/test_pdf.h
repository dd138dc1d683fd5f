#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// Builds small PDF files from the source of their objects. Object 1 is the catalog, object 2 the
/// root of the page tree.
class TestPdf
{
public:
    /// Sets object @p number; @p source is what stands between "obj" and "endobj".
    TestPdf &object(int number, const QByteArray &source);

    /// Sets object @p number to a stream. @p entries stand in its dictionary beside /Length.
    TestPdf &stream(int number, const QByteArray &entries, const QByteArray &data);

    /// Entries of the trailer beside /Size and /Root, "/Info 9 0 R" for example.
    TestPdf &trailer(const QByteArray &entries);

    /// The file with a correct cross-reference table.
    QByteArray bytes() const;

    /// Writes the file into @p folder. @returns its path
    QString save(const QString &folder, const QString &name = "input.pdf") const;

    /// A document whose page n shows the words "page-n-text". Page n is object 10 n, its content
    /// object 10 n + 1; the font is object 3. @p catalog and @p page are further entries.
    static TestPdf pages(int count, const QByteArray &catalog = {}, const QByteArray &page = {});

    /// Content that shows @p text.
    static QByteArray textContent(const QByteArray &text);

private:
    QMap<int, QByteArray> m_objects;
    QByteArray m_trailer;
};
