#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <QByteArray>
#include <QString>

/// Looks into a PDF file by the PDF library alone, without any code of the tools. A file that
/// cannot be opened has no pages, and "null" stands everywhere.
class PdfInspector
{
public:
    explicit PdfInspector(const QString &path);
    ~PdfInspector();
    PdfInspector(const PdfInspector &) = delete;
    PdfInspector &operator=(const PdfInspector &) = delete;

    int pageCount();

    /// The source of what @p path leads to from the trailer: "Root/Pages/Kids/0/MediaBox". Numbers
    /// are places in arrays. "null" where it leads to nothing.
    QByteArray value(const QByteArray &path);

    /// The words of a page, counted from 1, one blank between them.
    QByteArray text(int page);

    /// The picture of a page at 50 dpi with its annotations: size and samples. Empty when it cannot
    /// be drawn.
    QByteArray picture(int page);

    /// The source of all objects and their decoded streams, whether anything refers to them or not.
    QByteArray everything();

    /// The decoded streams that make up a page.
    QByteArray content(int page);

    bool isEncrypted() const;

private:
    /// What @p path leads to, resolved; null for nothing. To be called inside attempt().
    pdf_obj *find(const QByteArray &path);
    /// Appends the decoded stream @p number to @p all, of a damaged one what can be read.
    void appendStream(int number, QByteArray &all);
    /// Runs @p work, calls of the library. @returns whether none of them failed
    template <typename Work> bool attempt(Work &&work);

    fz_context *m_context;
    pdf_document *m_document = nullptr;
};
