#include "tools/pagebinder/opening/pdf_source.h"

#include "tools/pagebinder/opening/object_mender.h"

#include <algorithm>
#include <new>

namespace tools {

namespace {

constexpr int longestReferenceChain = 10;
constexpr std::size_t largestPiece = 65536;
constexpr std::size_t longestMended = std::size_t{1} << 18U;

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
    if (number <= 0) {
        return nullptr;
    }
    // One object that breaks the syntax is no reason to distrust the whole table, from which a
    // repair may take it away that finds other things within streams.
    if (pdf_obj *object = loadUnrepaired(number)) {
        return object;
    }
    if (!m_odd.insert(number).second) {
        return nullptr;
    }
    const MendedObject mended = mendObject(sourceOf(number), number);
    if (mended.isThere) {
        return mended.text.empty() ? nullptr : adopt(number, mended);
    }
    pdf_obj *object = nullptr;
    attempt(
        [this, number, &object] { object = pdf_cache_object(m_context, m_document, number)->obj; });
    return object;
}

pdf_obj *PdfSource::loadUnrepaired(int number)
{
    pdf_obj *object = nullptr;
    attempt([this, number, &object] {
        if (number >= pdf_xref_len(m_context, m_document)) {
            return;
        }
        pdf_xref_entry *const entry = pdf_get_xref_entry_no_null(m_context, m_document, number);
        if (entry->obj != nullptr) {
            object = entry->obj;
            return;
        }
        const pdf_xref_entry before = *entry;
        const int repairs = m_document->repair_attempted;
        m_document->repair_attempted = 1;
        fz_try(m_context)
        {
            object = pdf_cache_object(m_context, m_document, number)->obj;
        }
        fz_always(m_context)
        {
            m_document->repair_attempted = repairs;
        }
        fz_catch(m_context)
        {
            object = nullptr;
        }
        if (object == nullptr) {
            // The library forgets where an object should be when it finds another one there.
            pdf_xref_entry *const after = pdf_get_xref_entry_no_null(m_context, m_document, number);
            pdf_drop_obj(m_context, after->obj);
            *after = before;
        }
    });
    return object;
}

pdf_obj *PdfSource::adopt(int number, const MendedObject &mended)
{
    pdf_obj *object = nullptr;
    attempt([this, number, &mended, &object] {
        fz_stream *stream = nullptr;
        pdf_lexbuf buffer;
        fz_var(stream);
        pdf_lexbuf_init(m_context, &buffer, PDF_LEXBUF_SMALL);
        fz_try(m_context)
        {
            stream = fz_open_memory(m_context,
                                    reinterpret_cast<const unsigned char *>(mended.text.data()),
                                    mended.text.size());
            object = pdf_parse_stm_obj(m_context, m_document, stream, &buffer);
            insert(number, object, mended.stream);
        }
        fz_always(m_context)
        {
            pdf_lexbuf_fin(m_context, &buffer);
            fz_drop_stream(m_context, stream);
        }
        fz_catch(m_context)
        {
            object = nullptr;
            fz_rethrow(m_context);
        }
    });
    return object;
}

void PdfSource::insert(int number, pdf_obj *object, std::size_t stream)
{
    pdf_xref_entry *const entry = pdf_get_xref_entry(m_context, m_document, number);
    entry->stm_ofs = stream == 0 ? 0 : entry->ofs + static_cast<std::int64_t>(stream);
    entry->obj = object;
    pdf_set_obj_parent(m_context, object, number);
    if (m_document->crypt != nullptr) {
        pdf_crypt_obj(m_context, m_document->crypt, object, number, entry->gen);
    }
}

std::string PdfSource::sourceOf(int number)
{
    if (number >= objectCount()) {
        return {};
    }
    std::string source(longestMended, '\0');
    std::size_t length = 0;
    attempt([this, number, &source, &length] {
        const pdf_xref_entry *const entry = pdf_get_xref_entry(m_context, m_document, number);
        if (entry->type == 'n' && entry->obj == nullptr) {
            fz_seek(m_context, m_document->file, entry->ofs, SEEK_SET);
            length = fz_read(m_context, m_document->file,
                             reinterpret_cast<unsigned char *>(source.data()), source.size());
        }
    });
    source.resize(length);
    return source;
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

bool PdfSource::listsKid(pdf_obj *node, int number)
{
    if (!isDictionary(node)) {
        return false;
    }
    const Kids list = kids(node);
    if (list.numbers != nullptr) {
        return std::find(list.numbers->begin(), list.numbers->end(), number) != list.numbers->end();
    }
    const int length = pdf_array_len(m_context, list.array);
    for (int i = 0; i < length; ++i) {
        pdf_obj *kid = pdf_array_get(m_context, list.array, i);
        if (pdf_is_indirect(m_context, kid) && pdf_to_num(m_context, kid) == number) {
            return true;
        }
    }
    return false;
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
    if (load(number) == nullptr) {
        return false;
    }
    bool stream = false;
    attempt([this, number, &stream] {
        const pdf_xref_entry *entry = pdf_get_xref_entry_no_null(m_context, m_document, number);
        stream = entry->stm_ofs != 0 || entry->stm_buf != nullptr;
    });
    return stream;
}

StreamEnd PdfSource::readStream(int number, bool decoded,
                                const std::function<bool(const unsigned char *, std::size_t)> &take)
{
    struct StreamCloser
    {
        fz_context *context;
        void operator()(fz_stream *stream) const { fz_drop_stream(context, stream); }
    };
    const int complaints = m_file.complaints();
    fz_stream *opened = nullptr;
    if (!attempt([this, number, decoded, &opened] {
            opened = decoded ? pdf_open_stream_number(m_context, m_document, number)
                             : pdf_open_raw_stream_number(m_context, m_document, number);
        }) ||
        opened == nullptr) {
        return StreamEnd::failed;
    }
    const std::unique_ptr<fz_stream, StreamCloser> stream(opened, StreamCloser{m_context});
    for (;;) {
        std::size_t length = 0;
        if (!attempt([this, opened, &length] {
                length = fz_available(m_context, opened, largestPiece);
            })) {
            return StreamEnd::damaged;
        }
        if (length == 0) {
            // A failure of one filter is a mere end to the next, after a warning.
            const bool isWhole = opened->error == 0 && m_file.complaints() == complaints;
            return isWhole ? StreamEnd::whole : StreamEnd::damaged;
        }
        const unsigned char *piece = opened->rp;
        opened->rp += length;
        if (!take(piece, length)) {
            return StreamEnd::whole;
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
