#include "pdf_inspector.h"

namespace {

QByteArray takeBuffer(fz_context *context, fz_buffer *buffer)
{
    if (buffer == nullptr) {
        return {};
    }
    unsigned char *data = nullptr;
    const std::size_t size = fz_buffer_storage(context, buffer, &data);
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    fz_drop_buffer(context, buffer);
    return bytes;
}

fz_buffer *loadText(fz_context *context, pdf_document *document, int page)
{
    fz_stext_options options = {};
    pdf_page *loaded = pdf_load_page(context, document, page - 1);
    fz_buffer *buffer = nullptr;
    fz_var(buffer);
    fz_try(context)
    {
        buffer = fz_new_buffer_from_page(context, &loaded->super, &options);
    }
    fz_always(context)
    {
        fz_drop_page(context, &loaded->super);
    }
    fz_catch(context)
    {
        fz_rethrow(context);
    }
    return buffer;
}

} // namespace

PdfInspector::PdfInspector(const QString &path)
    : m_context("inspector"),
      m_file(m_context, path.toStdString(), tools::SourceFile::Opening::byLibrary), m_source(m_file)
{
}

int PdfInspector::pageCount()
{
    return pdf_to_int(
        m_source.context(),
        m_source.get(m_source.get(m_source.catalog(), PDF_NAME(Pages)), PDF_NAME(Count)));
}

bool PdfInspector::isEncrypted() const
{
    return m_source.document()->crypt != nullptr;
}

pdf_obj *PdfInspector::find(const QByteArray &path)
{
    pdf_obj *object = m_source.trailer();
    for (const QByteArray &part : path.split('/')) {
        bool isPlace = false;
        const int place = part.toInt(&isPlace);
        object = isPlace ? m_source.at(object, place) : m_source.get(object, part.constData());
    }
    return object;
}

QByteArray PdfInspector::value(const QByteArray &path)
{
    pdf_obj *object = find(path);
    std::size_t length = 0;
    char *text = nullptr;
    fz_context *context = m_source.context();
    if (!m_source.attempt([context, object, &text, &length] {
            text = pdf_sprint_obj(context, nullptr, 0, &length, object, 1, 1);
        })) {
        return {};
    }
    QByteArray source(text, static_cast<qsizetype>(length));
    fz_free(context, text);
    return source;
}

QByteArray PdfInspector::text(int page)
{
    fz_context *context = m_source.context();
    pdf_document *document = m_source.document();
    fz_buffer *buffer = nullptr;
    if (!m_source.attempt(
            [context, document, page, &buffer] { buffer = loadText(context, document, page); })) {
        return {};
    }
    return takeBuffer(context, buffer).simplified();
}

QByteArray PdfInspector::picture(int page)
{
    fz_context *context = m_source.context();
    pdf_document *document = m_source.document();
    fz_pixmap *pixmap = nullptr;
    // What was cached of glyphs and fonts for another page may show in single pixels.
    fz_purge_glyph_cache(context);
    fz_empty_store(context);
    m_source.attempt([context, document, page, &pixmap] {
        pixmap = fz_new_pixmap_from_page_number(context, &document->super, page - 1,
                                                fz_scale(50.0F / 72, 50.0F / 72),
                                                fz_device_rgb(context), 0);
    });
    if (pixmap == nullptr) {
        return {};
    }
    QByteArray picture = QByteArray::number(pixmap->w) + "x" + QByteArray::number(pixmap->h) + ":";
    picture.append(reinterpret_cast<const char *>(pixmap->samples), pixmap->stride * pixmap->h);
    fz_drop_pixmap(context, pixmap);
    return picture;
}

QByteArray PdfInspector::everything()
{
    QByteArray all;
    fz_context *context = m_source.context();
    for (int number = 1; number < m_source.objectCount(); ++number) {
        std::size_t length = 0;
        char *text = nullptr;
        m_source.attempt([this, context, number, &text, &length] {
            const pdf_xref_entry *entry = pdf_cache_object(context, m_source.document(), number);
            text = pdf_sprint_obj(context, nullptr, 0, &length, entry->obj, 1, 0);
        });
        if (text == nullptr) {
            continue;
        }
        all.append(text, static_cast<qsizetype>(length)).append('\n');
        fz_free(context, text);
        if (m_source.isStream(number)) {
            m_source.readStream(number, true, [&all](const unsigned char *data, std::size_t size) {
                all.append(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
                return true;
            });
            all.append('\n');
        }
    }
    return all;
}

QByteArray PdfInspector::content(int page)
{
    QByteArray all;
    fz_context *context = m_source.context();
    pdf_document *document = m_source.document();
    pdf_obj *found = nullptr;
    m_source.attempt([context, document, page, &found] {
        found = pdf_lookup_page_obj(context, document, page - 1);
    });
    pdf_obj *contents = pdf_dict_get(context, m_source.resolve(found), PDF_NAME(Contents));
    const int parts = std::max(1, pdf_array_len(context, m_source.resolve(contents)));
    for (int i = 0; i < parts; ++i) {
        pdf_obj *part = m_source.isArray(m_source.resolve(contents))
                            ? pdf_array_get(context, m_source.resolve(contents), i)
                            : contents;
        const int number = m_source.numberOf(part);
        if (number <= 0) {
            continue;
        }
        m_source.readStream(number, true, [&all](const unsigned char *data, std::size_t size) {
            all.append(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
            return true;
        });
    }
    return all;
}
