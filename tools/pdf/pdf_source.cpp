#include "tools/pdf/pdf_source.h"

#include "tools/pdf/file_window.h"
#include "tools/pdf/object_mender.h"
#include "tools/pdf/quiet_library.h"

#include <algorithm>
#include <new>

namespace tools {

namespace {

constexpr int longestReferenceChain = 10;
constexpr std::size_t largestPiece = 65536;

/// Gives what the library has made back to it, however a function ends.
template <typename Object> struct Owner
{
    Owner(fz_context *library, void (*give)(fz_context *, Object *))
        : context(library), giveBack(give)
    {
    }
    ~Owner() { giveBack(context, object); }
    Owner(const Owner &) = delete;
    Owner &operator=(const Owner &) = delete;

    fz_context *context;
    void (*giveBack)(fz_context *, Object *);
    Object *object = nullptr;
};

void freeMemory(fz_context *context, char *memory)
{
    fz_free(context, memory);
}
constexpr std::size_t longestMended = std::size_t{1} << 18U;

bool isInPageTree(const PageList &list, int number)
{
    const auto isIt = [number](const auto &entry) { return entry.number == number; };
    return std::any_of(list.pages.begin(), list.pages.end(), isIt) ||
           std::any_of(list.nodes.begin(), list.nodes.end(), isIt);
}

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
    if (number <= 0) {
        return nullptr;
    }
    if constexpr (knowsLibrary) {
        // One object that breaks the syntax is no reason to distrust the whole table, from which a
        // repair may take it away that finds other things within streams.
        if (pdf_obj *object = loadUnrepaired(number)) {
            return object;
        }
        if (!m_odd.insert(number).second) {
            return nullptr;
        }
        if (m_wasRepaired && findLost(number)) {
            if (pdf_obj *object = loadUnrepaired(number)) {
                return object;
            }
        }
        const MendedObject mended = mendObject(sourceOf(number), number);
        if (mended.isThere) {
            return mended.text.empty() ? nullptr : adopt(number, mended);
        }
    }
    pdf_obj *object = nullptr;
    attempt(
        [this, number, &object] { object = pdf_cache_object(m_context, m_document, number)->obj; });
    return object;
}

pdf_obj *PdfSource::loadUnrepaired(int number)
{
    pdf_obj *object = nullptr;
    attempt([this, number, &object] { object = loadWithoutRepair(m_context, m_document, number); });
    return object;
}

// A repair by the library passes over objects that it takes for the data of a stream whose end is
// damaged. Other readers take whatever looks like the beginning of an object.
bool PdfSource::findLost(int number)
{
    if (number >= objectCount() || placeOf(number).kind != ObjectPlace::Kind::unknown) {
        return false;
    }
    if (!m_headers) {
        m_headers.emplace(objectCount());
        FileWindow file(input());
        std::int64_t offset = 0;
        for (auto bytes = file.onwards(0); bytes.begin != bytes.end; bytes = file.onwards(offset)) {
            const auto size = static_cast<std::size_t>(bytes.end - bytes.begin);
            m_headers->feed({bytes.begin, size});
            offset += static_cast<std::int64_t>(size);
        }
    }
    const std::unordered_map<int, ObjectHeader> &headers = m_headers->finish();
    const auto header = headers.find(number);
    return header != headers.end() && attempt([this, number, &header] {
               adoptPlace(m_context, m_document, number, header->second.offset,
                          header->second.generation);
           });
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
            adoptMended(m_context, m_document, number, object, mended.stream);
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

std::string PdfSource::sourceOf(int number)
{
    const ObjectPlace place = placeOf(number);
    if (place.kind != ObjectPlace::Kind::inFile) {
        return {};
    }
    std::string source(longestMended, '\0');
    std::size_t length = 0;
    attempt([this, &place, &source, &length] {
        fz_stream *const file = fileOf(m_document);
        fz_seek(m_context, file, place.offset, SEEK_SET);
        length = fz_read(m_context, file, reinterpret_cast<unsigned char *>(source.data()),
                         source.size());
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

pdf_obj *PdfSource::raw(pdf_obj *dictionary, const char *key) const
{
    return pdf_dict_gets(m_context, dictionary, key);
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
    Owner<fz_buffer> owner{m_context, fz_drop_buffer};
    fz_buffer *&buffer = owner.object;
    if (!attempt([this, number, &buffer] {
            buffer = pdf_load_stream_number(m_context, m_document, number);
        })) {
        return false;
    }
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

KeptObject PdfSource::parse(std::string_view text)
{
    // Alone, the first number of a reference would be read as one.
    const std::string list = '[' + std::string(text) + ']';
    pdf_obj *array = nullptr;
    attempt([this, &list, &array] {
        fz_stream *stream = nullptr;
        pdf_lexbuf buffer;
        fz_var(stream);
        pdf_lexbuf_init(m_context, &buffer, PDF_LEXBUF_SMALL);
        fz_try(m_context)
        {
            stream = fz_open_memory(m_context, reinterpret_cast<const unsigned char *>(list.data()),
                                    list.size());
            array = pdf_parse_stm_obj(m_context, m_document, stream, &buffer);
        }
        fz_always(m_context)
        {
            pdf_lexbuf_fin(m_context, &buffer);
            fz_drop_stream(m_context, stream);
        }
        fz_catch(m_context)
        {
            fz_rethrow(m_context);
        }
    });
    KeptObject kept(m_context, pdf_array_get(m_context, array, 0));
    pdf_drop_obj(m_context, array);
    return kept;
}

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

bool PdfSource::listsKid(pdf_obj *parent, int number)
{
    pdf_obj *node = resolve(parent);
    pdf_obj *list = isDictionary(node) ? get(node, PDF_NAME(Kids)) : nullptr;
    const int length = pdf_array_len(m_context, list);
    if (length == 0) {
        // The list of a node of the page tree may have been read without the library.
        return list != nullptr && m_file.pages() != nullptr &&
               isInPageTree(*m_file.pages(), number);
    }
    const int parentNumber = directNumber(parent);
    if (parentNumber == 0 || parentNumber != m_kidsOf) {
        m_kids.clear();
        m_kidsOf = parentNumber;
        for (int i = 0; i < length; ++i) {
            m_kids.insert(directNumber(pdf_array_get(m_context, list, i)));
        }
    }
    return m_kids.count(number) != 0;
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

/// Whether an encrypted document leaves this stream readable, because it is metadata. The library
/// would decrypt it all the same.
bool PdfSource::isReadableMetadata(int number)
{
    pdf_crypt *const crypt = cryptOf(m_document);
    return crypt != nullptr && pdf_crypt_encrypt_metadata(m_context, crypt) == 0 &&
           isName(get(load(number), PDF_NAME(Type)), PDF_NAME(Metadata));
}

StreamEnd PdfSource::readStream(int number, bool decoded,
                                const std::function<bool(const unsigned char *, std::size_t)> &take)
{
    // Opening may find that the table was rebuilt, and throw when the stream is there already.
    Owner<fz_stream> owner{m_context, fz_drop_stream};
    fz_stream *&opened = owner.object;
    const int complaints = m_file.complaints();
    const bool isPlain = isReadableMetadata(number);
    if (!attempt([this, number, decoded, isPlain, &opened] {
            opened = isPlain   ? openUnencryptedStream(m_context, m_document, number, decoded)
                     : decoded ? pdf_open_stream_number(m_context, m_document, number)
                               : pdf_open_raw_stream_number(m_context, m_document, number);
        }) ||
        opened == nullptr) {
        return StreamEnd::failed;
    }
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
    Owner<char> owner{m_context, freeMemory};
    char *&converted = owner.object;
    if (!pdf_is_string(m_context, string) || !attempt([this, string, &converted] {
            converted = pdf_new_utf8_from_pdf_string_obj(m_context, string);
        }) ||
        converted == nullptr) {
        return {};
    }
    return converted;
}

std::string PdfSource::bytes(fz_context *context, pdf_obj *string)
{
    std::size_t length = 0;
    const char *data = pdf_to_string(context, string, &length);
    return {data, length};
}

} // namespace tools
