#include "pdf_inspector.h"

#include <QFile>

#include <cstdlib>

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

} // namespace

PdfInspector::PdfInspector(const QString &path)
    : m_context(fz_new_context(nullptr, nullptr, FZ_STORE_DEFAULT))
{
    fz_set_warning_callback(
        m_context, [](void *, const char *) {}, nullptr);
    fz_set_error_callback(
        m_context, [](void *, const char *) {}, nullptr);
    const QByteArray name = QFile::encodeName(path);
    const char *const file = name.constData();
    attempt([this, file] { m_document = pdf_open_document(m_context, file); });
}

PdfInspector::~PdfInspector()
{
    pdf_drop_document(m_context, m_document);
    fz_drop_context(m_context);
}

template <typename Work> bool PdfInspector::attempt(Work &&work)
{
    bool isDone = true;
    fz_var(isDone);
    fz_try(m_context)
    {
        work();
    }
    fz_catch(m_context)
    {
        isDone = false;
    }
    return isDone;
}

int PdfInspector::pageCount()
{
    int count = 0;
    attempt([this, &count] { count = pdf_to_int(m_context, find("Root/Pages/Count")); });
    return count;
}

bool PdfInspector::isEncrypted() const
{
    return m_document != nullptr && m_document->crypt != nullptr;
}

pdf_obj *PdfInspector::find(const QByteArray &path)
{
    pdf_obj *object = m_document == nullptr ? nullptr : pdf_trailer(m_context, m_document);
    // No list of parts: it would not be freed when the library fails.
    const char *part = path.constData();
    while (object != nullptr && *part != 0) {
        char key[128];
        std::size_t length = 0;
        for (; *part != 0 && *part != '/' && length + 1 < sizeof key; ++part) {
            key[length++] = *part;
        }
        key[length] = 0;
        part += *part == '/' ? 1 : 0;
        char *end = nullptr;
        const long place = std::strtol(key, &end, 10);
        object = *end == 0 ? pdf_array_get(m_context, object, static_cast<int>(place))
                           : pdf_dict_gets(m_context, object, key);
        object = pdf_resolve_indirect_chain(m_context, object);
    }
    return object;
}

QByteArray PdfInspector::value(const QByteArray &path)
{
    std::size_t length = 0;
    char *text = nullptr;
    if (!attempt([this, &path, &text, &length] {
            text = pdf_sprint_obj(m_context, nullptr, 0, &length, find(path), 1, 1);
        })) {
        return {};
    }
    QByteArray source(text, static_cast<qsizetype>(length));
    fz_free(m_context, text);
    return source;
}

QByteArray PdfInspector::text(int page)
{
    fz_buffer *buffer = nullptr;
    if (m_document == nullptr || !attempt([this, page, &buffer] {
            buffer =
                fz_new_buffer_from_page_number(m_context, &m_document->super, page - 1, nullptr);
        })) {
        return {};
    }
    return takeBuffer(m_context, buffer).simplified();
}

QByteArray PdfInspector::picture(int page)
{
    if (m_document == nullptr) {
        return {};
    }
    fz_pixmap *pixmap = nullptr;
    // What was cached of glyphs and fonts for another page may show in single pixels.
    fz_purge_glyph_cache(m_context);
    fz_empty_store(m_context);
    attempt([this, page, &pixmap] {
        pixmap = fz_new_pixmap_from_page_number(m_context, &m_document->super, page - 1,
                                                fz_scale(50.0F / 72, 50.0F / 72),
                                                fz_device_rgb(m_context), 0);
    });
    if (pixmap == nullptr) {
        return {};
    }
    QByteArray picture = QByteArray::number(pixmap->w) + "x" + QByteArray::number(pixmap->h) + ":";
    picture.append(reinterpret_cast<const char *>(pixmap->samples), pixmap->stride * pixmap->h);
    fz_drop_pixmap(m_context, pixmap);
    return picture;
}

void PdfInspector::appendStream(int number, QByteArray &all)
{
    fz_stream *stream = nullptr;
    if (!attempt([this, number, &stream] {
            stream = pdf_open_stream_number(m_context, m_document, number);
        })) {
        return;
    }
    unsigned char piece[4096];
    std::size_t length = 0;
    do {
        length = 0;
        attempt([this, stream, &piece, &length] {
            length = fz_read(m_context, stream, piece, sizeof piece);
        });
        all.append(reinterpret_cast<const char *>(piece), static_cast<qsizetype>(length));
    } while (length > 0);
    fz_drop_stream(m_context, stream);
}

QByteArray PdfInspector::everything()
{
    QByteArray all;
    const int count = m_document == nullptr ? 0 : pdf_xref_len(m_context, m_document);
    for (int number = 1; number < count; ++number) {
        std::size_t length = 0;
        char *text = nullptr;
        bool isStream = false;
        attempt([this, number, &text, &length, &isStream] {
            const pdf_xref_entry *entry = pdf_cache_object(m_context, m_document, number);
            text = pdf_sprint_obj(m_context, nullptr, 0, &length, entry->obj, 1, 0);
            isStream = pdf_obj_num_is_stream(m_context, m_document, number) != 0;
        });
        if (text == nullptr) {
            continue;
        }
        all.append(text, static_cast<qsizetype>(length)).append('\n');
        fz_free(m_context, text);
        if (isStream) {
            appendStream(number, all);
            all.append('\n');
        }
    }
    return all;
}

QByteArray PdfInspector::content(int page)
{
    QByteArray all;
    pdf_obj *contents = nullptr;
    int parts = 0;
    attempt([this, page, &contents, &parts] {
        contents = pdf_dict_get(m_context, pdf_lookup_page_obj(m_context, m_document, page - 1),
                                PDF_NAME(Contents));
        parts = pdf_is_array(m_context, contents) ? pdf_array_len(m_context, contents) : 1;
    });
    for (int i = 0; i < parts; ++i) {
        int number = 0;
        attempt([this, contents, i, &number] {
            number = pdf_to_num(m_context, pdf_is_array(m_context, contents)
                                               ? pdf_array_get(m_context, contents, i)
                                               : contents);
        });
        if (number > 0) {
            appendStream(number, all);
        }
    }
    return all;
}
