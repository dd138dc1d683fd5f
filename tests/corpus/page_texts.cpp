#include "page_texts.h"

#include <QFile>

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

namespace {

/// Owns the library's state for one file.
class Reader
{
public:
    Reader() : context(fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT))
    {
        fz_set_warning_callback(
            context, [](void *, const char *) {}, nullptr);
        fz_set_error_callback(
            context, [](void *, const char *) {}, nullptr);
    }
    ~Reader() { fz_drop_context(context); }
    Reader(const Reader &) = delete;
    Reader &operator=(const Reader &) = delete;

    fz_context *context;
};

/// Text of page @p number; a page that cannot be read has none. The buffer is the caller's.
fz_buffer *readPage(fz_context *context, fz_document *document, int number)
{
    fz_buffer *buffer = nullptr;
    fz_var(buffer);
    fz_try(context)
    {
        buffer = fz_new_buffer_from_page_number(context, document, number, nullptr);
    }
    fz_catch(context)
    {
        buffer = nullptr;
    }
    return buffer;
}

fz_document *openPdf(fz_context *context, const char *path, int *count)
{
    fz_document *document = nullptr;
    fz_var(document);
    fz_try(context)
    {
        document = reinterpret_cast<fz_document *>(pdf_open_document(context, path));
        *count = fz_count_pages(context, document);
    }
    fz_catch(context)
    {
        fz_drop_document(context, document);
        document = nullptr;
    }
    return document;
}

} // namespace

QStringList pageTexts(const QString &path)
{
    const Reader reader;
    int count = 0;
    fz_document *document = openPdf(reader.context, QFile::encodeName(path).constData(), &count);
    QStringList texts;
    for (int number = 0; document != nullptr && number < count; ++number) {
        fz_buffer *buffer = readPage(reader.context, document, number);
        texts.append(
            buffer == nullptr
                ? QString()
                : QString::fromUtf8(fz_string_from_buffer(reader.context, buffer)).simplified());
        fz_drop_buffer(reader.context, buffer);
    }
    fz_drop_document(reader.context, document);
    return texts;
}
