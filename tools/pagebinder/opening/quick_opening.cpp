#include "tools/pagebinder/opening/quick_opening.h"

#include "tools/pagebinder/opening/xref_stream.h"
#include "tools/pdf/file_stream.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace tools {

namespace {

constexpr int mostSections = 32;
constexpr std::size_t nodeBeforeKids = 16384;
constexpr std::size_t nodeAfterKids = 16384;
constexpr std::size_t mostKids = 2'000'000;

std::string_view viewOf(const FileWindow::Bytes &bytes)
{
    return {bytes.begin, static_cast<std::size_t>(bytes.end - bytes.begin)};
}

bool isSpace(char c)
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

/// Keeps the library's messages back for its lifetime: where they matter the library alone opens
/// the file once more and says them then.
class QuietLibrary
{
public:
    explicit QuietLibrary(fz_context *context)
        : m_context(context), m_warn(fz_warning_callback(context, &m_warnUser)),
          m_error(fz_error_callback(context, &m_errorUser))
    {
        fz_set_warning_callback(
            context, [](void *, const char *) {}, nullptr);
        fz_set_error_callback(
            context, [](void *, const char *) {}, nullptr);
    }
    ~QuietLibrary()
    {
        fz_flush_warnings(m_context);
        fz_set_warning_callback(m_context, m_warn, m_warnUser);
        fz_set_error_callback(m_context, m_error, m_errorUser);
    }
    QuietLibrary(const QuietLibrary &) = delete;
    QuietLibrary &operator=(const QuietLibrary &) = delete;

private:
    fz_context *m_context;
    void *m_warnUser = nullptr;
    void *m_errorUser = nullptr;
    fz_warning_cb *m_warn;
    fz_error_cb *m_error;
};

/// Takes "12 0 R" apart, over and over, whatever piece of the file a character comes in.
class ReferenceReader
{
public:
    enum class Result { more, closed, wrong };

    ReferenceReader(std::vector<int> &numbers, int limit) : m_numbers(numbers), m_limit(limit) {}

    /// Takes the next character.
    Result take(char c)
    {
        const unsigned digit = static_cast<unsigned char>(c) - unsigned{'0'};
        if (digit <= 9) {
            return takeDigit(static_cast<int>(digit));
        }
        if (isSpace(c)) {
            m_state = m_state == State::number       ? State::afterNumber
                      : m_state == State::generation ? State::afterGeneration
                      : m_state == State::keyword    ? State::between
                                                     : m_state;
            return Result::more;
        }
        if (c == 'R' && m_state == State::afterGeneration) {
            return takeReference();
        }
        const bool closes = c == ']' && (m_state == State::between || m_state == State::keyword);
        return closes ? Result::closed : Result::wrong;
    }

private:
    enum class State { between, number, afterNumber, generation, afterGeneration, keyword };

    Result takeDigit(int digit)
    {
        switch (m_state) {
        case State::between:
            m_state = State::number;
            m_number = digit;
            return Result::more;
        case State::number:
            m_number = m_number * 10 + digit;
            return m_number < m_limit ? Result::more : Result::wrong;
        case State::afterNumber:
            m_state = State::generation;
            return Result::more;
        case State::generation:
            return Result::more;
        default:
            return Result::wrong;
        }
    }

    Result takeReference()
    {
        m_state = State::keyword;
        if (m_number == 0 || m_numbers.size() == mostKids) {
            return Result::wrong;
        }
        m_numbers.push_back(m_number);
        return Result::more;
    }

    std::vector<int> &m_numbers;
    int m_limit;
    int m_number = 0;
    State m_state = State::between;
};

} // namespace

QuickOpening::QuickOpening(fz_context *context, const InputFile &input)
    : m_context(context), m_file(input)
{
}

QuickOpening::~QuickOpening()
{
    pdf_drop_obj(m_context, m_trailer);
    fz_free(m_context, m_entries);
}

pdf_document *QuickOpening::open()
{
    // Behind a header anywhere else the library would repair the file here, and then once more.
    const std::string_view header = viewOf(m_file.at(0, 5));
    if (header != "%PDF-" || XrefSection(m_file).newestOffset() <= 0) {
        return nullptr;
    }
    const QuietLibrary quiet(m_context);
    openDocument();
    if (m_document != nullptr && (!readTable() || !setTable())) {
        pdf_drop_document(m_context, m_document);
        m_document = nullptr;
    }
    return m_document;
}

void QuickOpening::openDocument()
{
    std::array<char, 128> tail{};
    static_cast<void>(std::snprintf(
        tail.data(), tail.size(),
        "\nxref\n0 1\n0000000000 65535 f \ntrailer<</Size 1>>\nstartxref\n%lld\n%%%%EOF\n",
        static_cast<long long>(m_file.size()) + 1));
    fz_stream *stream = nullptr;
    fz_var(stream);
    fz_try(m_context)
    {
        stream = openFileStream(m_context, m_file.descriptor(), m_file.size(), tail.data());
        m_document = pdf_open_document_with_stream(m_context, stream);
    }
    fz_always(m_context)
    {
        fz_drop_stream(m_context, stream);
    }
    fz_catch(m_context)
    {
        m_document = nullptr;
    }
}

/// Reads all sections, the newest first: what a newer one says about an object holds.
bool QuickOpening::readTable()
{
    std::int64_t offset = XrefSection(m_file).newestOffset();
    for (int section = 0; offset > 0; ++section) {
        std::int64_t previous = 0;
        if (section == mostSections || !readSection(offset, previous)) {
            return false;
        }
        offset = previous;
    }
    return m_trailer != nullptr && hasWholeTable();
}

bool QuickOpening::readSection(std::int64_t offset, std::int64_t &previous)
{
    const std::string_view first = viewOf(m_file.at(offset, 1));
    if (first == "x") {
        XrefSection section(m_file);
        return section.read(offset, *this) && readTrailer(section.trailer(), previous);
    }
    XrefStream section(m_context, m_document);
    return section.read(offset, *this) && takeTrailer(section.dictionary(), previous);
}

bool QuickOpening::hasWholeTable() const
{
    if (m_count < 2 || m_count > m_stated || m_entries[0].type == 'n' || m_entries[0].type == 'o') {
        return false;
    }
    // Objects stand in streams that stand in the file themselves.
    return std::all_of(m_entries, m_entries + m_count, [this](const pdf_xref_entry &entry) {
        return entry.type != 'o' ||
               (entry.ofs > 0 && entry.ofs < m_count && m_entries[entry.ofs].type == 'n');
    });
}

bool QuickOpening::readTrailer(const std::string &text, std::int64_t &previous)
{
    fz_stream *stream = nullptr;
    pdf_obj *trailer = nullptr;
    bool isRead = false;
    fz_var(stream);
    fz_var(trailer);
    fz_var(isRead);
    fz_try(m_context)
    {
        stream = fz_open_memory(m_context, reinterpret_cast<const unsigned char *>(text.data()),
                                text.size());
        trailer = pdf_parse_stm_obj(m_context, m_document, stream, &m_document->lexbuf.base);
        isRead = takeTrailer(trailer, previous);
    }
    fz_always(m_context)
    {
        pdf_drop_obj(m_context, trailer);
        fz_drop_stream(m_context, stream);
    }
    fz_catch(m_context)
    {
        isRead = false;
    }
    return isRead;
}

/// Keeps the newest trailer. References are not followed, so nothing here can fail.
bool QuickOpening::takeTrailer(pdf_obj *trailer, std::int64_t &previous)
{
    if (pdf_is_indirect(m_context, trailer) || !pdf_is_dict(m_context, trailer) ||
        pdf_dict_get(m_context, trailer, PDF_NAME(Encrypt)) != nullptr ||
        pdf_dict_get(m_context, trailer, PDF_NAME(XRefStm)) != nullptr) {
        return false;
    }
    pdf_obj *number = pdf_dict_get(m_context, trailer, PDF_NAME(Prev));
    if (number != nullptr) {
        if (pdf_is_indirect(m_context, number) || !pdf_is_int(m_context, number)) {
            return false;
        }
        previous = pdf_to_int64(m_context, number);
        if (previous <= 0) {
            return false;
        }
    }
    if (m_trailer == nullptr) {
        pdf_obj *size = pdf_dict_get(m_context, trailer, PDF_NAME(Size));
        m_stated = pdf_is_indirect(m_context, size) ? 0 : pdf_to_int(m_context, size);
        m_trailer = pdf_keep_obj(m_context, trailer);
    }
    return true;
}

bool QuickOpening::expect(int first, int count)
{
    const int needed = first + count;
    if (needed > m_file.size()) {
        return false; // an object takes a byte at the very least
    }
    if (needed <= m_count) {
        return true;
    }
    auto *entries = static_cast<pdf_xref_entry *>(
        fz_calloc_no_throw(m_context, static_cast<std::size_t>(needed), sizeof(*m_entries)));
    if (entries == nullptr) {
        return false;
    }
    if (m_count != 0) {
        std::memcpy(entries, m_entries, static_cast<std::size_t>(m_count) * sizeof(*entries));
    }
    fz_free(m_context, m_entries);
    m_entries = entries;
    m_count = needed;
    return true;
}

bool QuickOpening::place(int number, const XrefEntry &entry)
{
    if (entry.kind == XrefEntry::Kind::inUse && entry.offset >= m_file.size()) {
        return false;
    }
    pdf_xref_entry &target = m_entries[number];
    if (target.type != 0) {
        return true;
    }
    switch (entry.kind) {
    case XrefEntry::Kind::inUse:
        target.type = 'n';
        break;
    case XrefEntry::Kind::compressed:
        target.type = 'o';
        break;
    default:
        target.type = 'f';
        break;
    }
    target.gen = entry.generation;
    target.num = number;
    target.ofs = entry.offset;
    return true;
}

bool QuickOpening::setTable()
{
    if (m_entries[0].type == 0) {
        m_entries[0].type = 'f';
        m_entries[0].gen = 65535;
    }
    bool isSet = false;
    fz_var(isSet);
    fz_try(m_context)
    {
        pdf_replace_xref(m_context, m_document, m_entries, m_count);
        m_entries = nullptr;
        pdf_set_populating_xref_trailer(m_context, m_document, m_trailer);
        // A stream without an end reaches to the end of the file and no farther.
        cutTail(m_document->file);
        isSet = true;
    }
    fz_catch(m_context)
    {
        isSet = false;
    }
    return isSet;
}

pdf_obj *QuickOpening::readKids(std::vector<int> &kids)
{
    const QuietLibrary quiet(m_context);
    const std::int64_t offset = rootOffset();
    const std::string_view head = viewOf(m_file.at(offset, nodeBeforeKids));
    const std::size_t key = head.find("/Kids");
    if (key == std::string_view::npos) {
        return nullptr;
    }
    std::size_t bracket = key + 5;
    while (bracket < head.size() && isSpace(head[bracket])) {
        ++bracket;
    }
    if (bracket >= head.size() || head[bracket] != '[') {
        return nullptr;
    }
    std::string text(head.substr(0, bracket + 1));
    std::int64_t end = 0;
    pdf_obj *root = nullptr;
    if (readReferences(offset + static_cast<std::int64_t>(bracket) + 1, kids, end)) {
        text += viewOf(m_file.at(end, nodeAfterKids));
        root = text.find("endobj") != std::string::npos ? parseRoot(text) : nullptr;
    }
    if (root == nullptr) {
        kids.clear();
    }
    return root;
}

/// Where the root of the page tree stands in the file; -1 when that is not known in advance.
std::int64_t QuickOpening::rootOffset()
{
    std::int64_t offset = -1;
    fz_var(offset);
    fz_try(m_context)
    {
        pdf_obj *catalog = pdf_dict_get(m_context, m_trailer, PDF_NAME(Root));
        if (pdf_is_indirect(m_context, catalog)) {
            catalog = pdf_cache_object(m_context, m_document, pdf_to_num(m_context, catalog))->obj;
        }
        pdf_obj *root = pdf_is_indirect(m_context, catalog)
                            ? nullptr
                            : pdf_dict_get(m_context, catalog, PDF_NAME(Pages));
        if (pdf_is_indirect(m_context, root)) {
            m_root = pdf_to_num(m_context, root);
        }
        if (m_root > 0 && m_root < m_count) {
            const pdf_xref_entry *entry = pdf_get_xref_entry(m_context, m_document, m_root);
            offset = entry->type == 'n' && entry->obj == nullptr ? entry->ofs : -1;
        }
    }
    fz_catch(m_context)
    {
        offset = -1;
    }
    return offset;
}

/// @param end set to the offset of the closing bracket
bool QuickOpening::readReferences(std::int64_t position, std::vector<int> &kids, std::int64_t &end)
{
    ReferenceReader reader(kids, m_count);
    for (;;) {
        const FileWindow::Bytes bytes = m_file.at(position, 65536);
        if (bytes.begin == bytes.end) {
            return false;
        }
        for (const char *c = bytes.begin; c != bytes.end; ++c) {
            const ReferenceReader::Result result = reader.take(*c);
            if (result != ReferenceReader::Result::more) {
                end = position + (c - bytes.begin);
                return result == ReferenceReader::Result::closed;
            }
        }
        position += bytes.end - bytes.begin;
    }
}

/// The library parses the node without its list. Had the list been found anywhere but at the node's
/// own key, that key would not have an empty list now.
pdf_obj *QuickOpening::parseRoot(const std::string &text)
{
    fz_stream *stream = nullptr;
    pdf_obj *parsed = nullptr;
    pdf_obj *root = nullptr;
    fz_var(stream);
    fz_var(parsed);
    fz_var(root);
    fz_try(m_context)
    {
        int number = 0;
        int generation = 0;
        int repair = 0;
        std::int64_t streamOffset = 0;
        stream = fz_open_memory(m_context, reinterpret_cast<const unsigned char *>(text.data()),
                                text.size());
        parsed = pdf_parse_ind_obj(m_context, m_document, stream, &number, &generation,
                                   &streamOffset, &repair);
        pdf_obj *list = pdf_dict_get(m_context, parsed, PDF_NAME(Kids));
        if (number == m_root && streamOffset == 0 && !pdf_is_indirect(m_context, parsed) &&
            !pdf_is_indirect(m_context, list) && pdf_is_array(m_context, list) &&
            pdf_array_len(m_context, list) == 0) {
            pdf_set_obj_parent(m_context, parsed, number);
            pdf_get_xref_entry(m_context, m_document, number)->obj =
                pdf_keep_obj(m_context, parsed);
            root = parsed;
        }
    }
    fz_always(m_context)
    {
        pdf_drop_obj(m_context, parsed);
        fz_drop_stream(m_context, stream);
    }
    fz_catch(m_context)
    {
        root = nullptr;
    }
    return root;
}

} // namespace tools
