#include "tools/pagebinder/opening/pdf_source.h"

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
    if (code == FZ_ERROR_REPAIRED) {
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

PageKids PdfSource::kids(pdf_obj *node)
{
    if (node != nullptr && node == m_file.quickNode()) {
        return {nullptr, &m_file.quickKids()};
    }
    return {get(node, PDF_NAME(Kids)), nullptr};
}

int PdfSource::countOf(const PageKids &kids) const
{
    return kids.numbers != nullptr ? static_cast<int>(kids.numbers->size())
                                   : pdf_array_len(m_context, kids.array);
}

pdf_obj *PdfSource::kidAt(const PageKids &kids, int index)
{
    if (kids.numbers == nullptr) {
        return at(kids.array, index);
    }
    return resolve(load((*kids.numbers)[static_cast<std::size_t>(index)]));
}

int PdfSource::kidNumber(const PageKids &kids, int index)
{
    if (kids.numbers == nullptr) {
        return numberOf(pdf_array_get(m_context, kids.array, index));
    }
    const int number = (*kids.numbers)[static_cast<std::size_t>(index)];
    const int further = numberOf(load(number));
    return further != 0 ? further : number;
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
