#include "tools/pdf/pdf_source.h"

#include "tools/pdf/quiet_library.h"

#include <new>

namespace tools {

namespace {

constexpr int longestReferenceChain = 10;
constexpr std::size_t largestPiece = 65536;

} // namespace

bool PdfSource::run(void (*call)(void *), void *argument)
{
    int code = FZ_ERROR_NONE;
    fz_var(code);
    fz_try(m_context)
    {
        call(argument);
    }
    fz_catch(m_context)
    {
        code = fz_caught(m_context);
        if (code == FZ_ERROR_NONE) {
            code = FZ_ERROR_GENERIC;
        }
    }
    if (isRepaired() != m_wasRepaired) {
        m_wasRepaired = true;
        throw FileRepaired();
    }
    if (code == FZ_ERROR_MEMORY) {
        throw std::bad_alloc();
    }
    return code == FZ_ERROR_NONE;
}

pdf_obj *PdfSource::load(int number)
{
    pdf_obj *loaded = nullptr;
    const bool isLoaded = number > 0 && attempt([this, number, &loaded] {
                              loaded = pdf_cache_object(m_context, m_document, number)->obj;
                          });
    return isLoaded ? loaded : nullptr;
}

pdf_obj *PdfSource::resolve(pdf_obj *object)
{
    for (int step = 0; pdf_is_indirect(m_context, object); ++step) {
        if (step == longestReferenceChain) {
            return nullptr;
        }
        object = load(pdf_to_num(m_context, object));
    }
    return object;
}

pdf_obj *PdfSource::get(pdf_obj *dictionary, pdf_obj *key)
{
    return resolve(pdf_dict_get(m_context, resolve(dictionary), key));
}

pdf_obj *PdfSource::get(pdf_obj *dictionary, const char *key)
{
    return resolve(pdf_dict_gets(m_context, resolve(dictionary), key));
}

pdf_obj *PdfSource::at(pdf_obj *array, int index)
{
    return resolve(pdf_array_get(m_context, resolve(array), index));
}

pdf_obj *PdfSource::raw(pdf_obj *dictionary, pdf_obj *key) const
{
    return pdf_dict_get(m_context, dictionary, key);
}

pdf_obj *PdfSource::trailer() const
{
    return pdf_trailer(m_context, m_document);
}

pdf_obj *PdfSource::catalog()
{
    return get(trailer(), PDF_NAME(Root));
}

int PdfSource::objectCount() const
{
    return pdf_xref_len(m_context, m_document);
}

pdf_obj *PdfSource::object(int number)
{
    return resolve(load(number));
}

bool PdfSource::isRepaired() const
{
    return pdf_was_repaired(m_context, m_document) != 0;
}

bool PdfSource::loadStream(int number, std::string &bytes)
{
    fz_buffer *buffer = nullptr;
    if (!attempt([this, number, &buffer] {
            buffer = pdf_load_stream_number(m_context, m_document, number);
        })) {
        return false;
    }
    const std::unique_ptr<fz_buffer, std::function<void(fz_buffer *)>> owner(
        buffer, [this](fz_buffer *dropped) { fz_drop_buffer(m_context, dropped); });
    unsigned char *data = nullptr;
    const std::size_t length = fz_buffer_storage(m_context, buffer, &data);
    bytes.assign(reinterpret_cast<const char *>(data), length);
    return true;
}

namespace {

/// Parses @p text as object @p number and gives it to @p document, if it is a node with an empty
/// list of children: the list that was left out then stood at the node's own key.
/// @throws the library's error
void parseNode(fz_context *context, pdf_document *document, int number, const std::string &text)
{
    fz_stream *stream = nullptr;
    pdf_obj *node = nullptr;
    fz_var(stream);
    fz_var(node);
    fz_try(context)
    {
        int found = 0;
        std::int64_t data = 0;
        stream = fz_open_memory(context, reinterpret_cast<const unsigned char *>(text.data()),
                                text.size());
        node = pdf_parse_ind_obj(context, document, stream, &found, nullptr, &data, nullptr);
        pdf_obj *list = pdf_dict_get(context, node, PDF_NAME(Kids));
        if (found == number && data == 0 && pdf_is_indirect(context, node) == 0 &&
            pdf_is_indirect(context, list) == 0 && pdf_is_array(context, list) != 0 &&
            pdf_array_len(context, list) == 0) {
            adoptObject(context, document, number, node);
        }
    }
    fz_always(context)
    {
        pdf_drop_obj(context, node);
        fz_drop_stream(context, stream);
    }
    fz_catch(context)
    {
        fz_rethrow(context);
    }
}

} // namespace

void PdfSource::adoptNode(int number, const std::string &text)
{
    if (knowsLibrary && m_file.isQuick() && !m_wasRepaired) {
        const QuietLibrary quiet(m_context);
        if (attempt([this, number, &text] { parseNode(m_context, m_document, number, text); })) {
            // Forgotten it would be loaded again, with its list.
            hold(load(number));
        }
    }
}

void PdfSource::dropUnused()
{
    attempt([this] { pdf_clear_xref(m_context, m_document); });
}

bool PdfSource::isDictionary(pdf_obj *resolved) const
{
    return pdf_is_dict(m_context, resolved) != 0;
}

bool PdfSource::isArray(pdf_obj *resolved) const
{
    return pdf_is_array(m_context, resolved) != 0;
}

bool PdfSource::isName(pdf_obj *resolved, pdf_obj *name) const
{
    return pdf_name_eq(m_context, resolved, name) != 0;
}

int PdfSource::numberOf(pdf_obj *object)
{
    int number = 0;
    for (int step = 0; pdf_is_indirect(m_context, object) && step < longestReferenceChain; ++step) {
        number = pdf_to_num(m_context, object);
        object = load(number);
    }
    return number;
}

int PdfSource::directNumber(pdf_obj *object) const
{
    return pdf_is_indirect(m_context, object) != 0 ? pdf_to_num(m_context, object) : 0;
}

int PdfSource::finalNumber(int number)
{
    const int further = numberOf(load(number));
    return further != 0 ? further : number;
}

int PdfSource::integer(pdf_obj *resolved) const
{
    return pdf_to_int(m_context, resolved);
}

bool PdfSource::isStream(int number)
{
    bool stream = false;
    attempt([this, number, &stream] {
        const pdf_xref_entry *entry = pdf_cache_object(m_context, m_document, number);
        stream = entry->stm_ofs != 0 || entry->stm_buf != nullptr;
    });
    return stream;
}

bool PdfSource::readStream(int number, bool decoded,
                           const std::function<bool(const unsigned char *, std::size_t)> &take)
{
    struct StreamCloser
    {
        fz_context *context;
        void operator()(fz_stream *stream) const { fz_drop_stream(context, stream); }
    };
    fz_stream *opened = nullptr;
    if (!attempt([this, number, decoded, &opened] {
            opened = decoded ? pdf_open_stream_number(m_context, m_document, number)
                             : pdf_open_raw_stream_number(m_context, m_document, number);
        })) {
        return false;
    }
    const std::unique_ptr<fz_stream, StreamCloser> stream(opened, StreamCloser{m_context});
    for (;;) {
        std::size_t length = 0;
        if (!attempt([this, opened, &length] {
                length = fz_available(m_context, opened, largestPiece);
            })) {
            return false;
        }
        if (length == 0) {
            return true;
        }
        const unsigned char *piece = opened->rp;
        opened->rp += length;
        if (!take(piece, length)) {
            return true;
        }
    }
}

std::string PdfSource::text(pdf_obj *string)
{
    char *converted = nullptr;
    if (!pdf_is_string(m_context, string) || !attempt([this, string, &converted] {
            converted = pdf_new_utf8_from_pdf_string_obj(m_context, string);
        })) {
        return {};
    }
    const std::unique_ptr<char, std::function<void(char *)>> owner(
        converted, [this](char *memory) { fz_free(m_context, memory); });
    return converted;
}

std::string PdfSource::bytes(fz_context *context, pdf_obj *string)
{
    std::size_t length = 0;
    const char *data = pdf_to_string(context, string, &length);
    return {data, length};
}

} // namespace tools
