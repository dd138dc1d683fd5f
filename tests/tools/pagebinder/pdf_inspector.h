#pragma once

#include "tools/pdf/pdf_source.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

/// Looks into a PDF file.
class PdfInspector
{
public:
    explicit PdfInspector(const QString &path);

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
    pdf_obj *find(const QByteArray &path);

    tools::PdfContext m_context;
    tools::SourceFile m_file;
    tools::PdfSource m_source;
};
