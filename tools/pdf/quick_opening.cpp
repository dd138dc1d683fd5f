#include "tools/pdf/quick_opening.h"

#include "tools/pdf/file_stream.h"
#include "tools/pdf/library_internals.h"
#include "tools/pdf/quiet_library.h"
#include "tools/pdf/xref_stream.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace tools {

namespace {

constexpr int mostSections = 32;
constexpr int widthOfOffset = 8;

/// Whether a trailer's entry says how its own section is written, not what the file is.
bool isOfSection(std::string_view key)
{
    constexpr std::array<std::string_view, 12> keys = {"Type",   "Size",    "W",  "Index",
                                                       "Length", "Filter",  "F",  "DecodeParms",
                                                       "Prev",   "XRefStm", "DP", "DL"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

void appendBytes(std::string &text, std::uint64_t value, int width)
{
    for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
        text += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xffU);
    }
}

/// An entry in the form that a table in a stream has them: kind, offset or stream, generation or
/// place in the stream.
void appendEntry(std::string &text, const pdf_xref_entry &entry)
{
    text += entry.type == 'n' ? '\1' : entry.type == 'o' ? '\2' : '\0';
    const bool isFree = entry.type != 'n' && entry.type != 'o';
    appendBytes(text, isFree ? 0 : static_cast<std::uint64_t>(entry.ofs), widthOfOffset);
    appendBytes(text, static_cast<std::uint64_t>(entry.gen), 2);
}

/// The source of @p object, its references left as they are; empty when it cannot be made.
std::string printed(fz_context *context, pdf_obj *object)
{
    char *text = nullptr;
    fz_var(text);
    fz_try(context)
    {
        std::size_t length = 0;
        text = pdf_sprint_obj(context, nullptr, 0, &length, object, 1, 1);
    }
    fz_catch(context)
    {
        text = nullptr;
    }
    std::string result(text != nullptr ? text : "");
    fz_free(context, text);
    return result;
}

} // namespace

QuickOpening::QuickOpening(fz_context *context, const InputFile &input, LostObjects lost)
    : m_context(context), m_file(input), m_lost(lost)
{
}

QuickOpening::~QuickOpening()
{
    closeHost();
    fz_free(m_context, m_entries);
}

void QuickOpening::closeHost()
{
    pdf_drop_obj(m_context, m_trailer);
    pdf_drop_document(m_context, m_host);
    m_trailer = nullptr;
    m_host = nullptr;
}

pdf_document *QuickOpening::open()
{
    if (!knowsLibrary || !read() ||
        pdf_dict_get(m_context, m_trailer, PDF_NAME(Encrypt)) != nullptr || !giveTable()) {
        return nullptr;
    }
    pdf_document *document = m_host;
    m_host = nullptr;
    return document;
}

pdf_document *QuickOpening::openMisreadTable()
{
    if (!read() || !m_isMisread) {
        return nullptr;
    }
    const std::string update = tableAsUpdate();
    closeHost();
    m_state = State::failed;
    return update.empty() ? nullptr : openWithUpdate(update);
}

bool QuickOpening::read()
{
    if (m_state == State::unread) {
        const QuietLibrary quiet(m_context);
        m_state = readTable() ? State::read : State::failed;
    }
    return m_state == State::read;
}

pdf_document *QuickOpening::openWithUpdate(const std::string &update)
{
    pdf_document *document = nullptr;
    fz_stream *stream = nullptr;
    fz_var(stream);
    fz_var(document);
    fz_try(m_context)
    {
        stream = openFileStream(m_context, m_file.descriptor(), m_file.size(), update);
        document = pdf_open_document_with_stream(m_context, stream);
    }
    fz_always(m_context)
    {
        fz_drop_stream(m_context, stream);
    }
    fz_catch(m_context)
    {
        document = nullptr;
    }
    return document;
}

/// Reads all sections, the newest first: what a newer one says about an object holds.
bool QuickOpening::readTable()
{
    // Behind a header anywhere else the library would repair the file here, and then once more.
    std::int64_t offset = XrefSection(m_file).newestOffset();
    if (offset <= 0 || m_file.at(0, 5).text() != "%PDF-") {
        return false;
    }
    m_host = openWithUpdate("\nxref\n0 1\n0000000000 65535 f \ntrailer<</Size 1>>\nstartxref\n" +
                            std::to_string(m_file.size() + 1) + "\n%%EOF\n");
    if (m_host == nullptr) {
        return false;
    }
    for (int section = 0; offset > 0; ++section) {
        std::int64_t previous = 0;
        if (section == mostSections || !readSection(offset, previous)) {
            return false;
        }
        offset = previous;
    }
    if (!hasWholeTable()) {
        return false;
    }
    leaveLost();
    return true;
}

bool QuickOpening::readSection(std::int64_t offset, std::int64_t &previous)
{
    m_freed.clear();
    if (m_file.at(offset, 1).text() == "x") {
        return readClassicSection(offset, previous);
    }
    XrefStream section(m_context, m_host);
    return section.read(offset, *this) &&
           pdf_dict_get(m_context, section.dictionary(), PDF_NAME(XRefStm)) == nullptr &&
           takeTrailer(section.dictionary(), previous);
}

bool QuickOpening::readClassicSection(std::int64_t offset, std::int64_t &previous)
{
    XrefSection section(m_file);
    if (!section.read(offset, *this)) {
        return false;
    }
    m_isMisread = m_isMisread || section.isShifted();
    pdf_obj *trailer = parseTrailer(section.trailer());
    pdf_obj *hidden = pdf_dict_get(m_context, trailer, PDF_NAME(XRefStm));
    const bool isRead =
        (hidden == nullptr || readHiddenObjects(hidden)) && takeTrailer(trailer, previous);
    pdf_drop_obj(m_context, trailer);
    return isRead;
}

/// The objects of a stream beside the table, which calls them free for readers that do not know
/// streams. Only the section that names the stream is older than it.
bool QuickOpening::readHiddenObjects(pdf_obj *offset)
{
    if (pdf_is_indirect(m_context, offset) != 0 || pdf_is_int(m_context, offset) == 0) {
        return false;
    }
    for (const int number : m_freed) {
        m_entries[number].type = 0;
    }
    m_isMisread = true;
    XrefStream section(m_context, m_host);
    if (!section.read(pdf_to_int64(m_context, offset), *this)) {
        return false;
    }
    for (const int number : m_freed) {
        m_entries[number].type = m_entries[number].type == 0 ? 'f' : m_entries[number].type;
    }
    return true;
}

bool QuickOpening::hasWholeTable() const
{
    return m_trailer != nullptr && m_count >= 2 && m_count <= m_stated &&
           m_entries[0].type != 'n' && m_entries[0].type != 'o' &&
           hasLost() == (m_lost == LostObjects::left);
}

/// Objects stand in streams that stand in the file themselves.
bool QuickOpening::isLost(const pdf_xref_entry &entry) const
{
    return entry.type == 'o' &&
           (entry.ofs <= 0 || entry.ofs >= m_count || m_entries[entry.ofs].type != 'n');
}

bool QuickOpening::hasLost() const
{
    return std::any_of(m_entries, m_entries + m_count,
                       [this](const pdf_xref_entry &entry) { return isLost(entry); });
}

void QuickOpening::leaveLost()
{
    std::vector<int> lost;
    for (int number = 0; number < m_count; ++number) {
        if (isLost(m_entries[number])) {
            lost.push_back(number);
        }
    }
    for (const int number : lost) {
        m_entries[number].type = 'f';
        m_isMisread = true;
    }
}

/// @returns the trailer, owned by the caller; null when there is none
pdf_obj *QuickOpening::parseTrailer(const std::string &text)
{
    fz_stream *stream = nullptr;
    pdf_obj *trailer = nullptr;
    pdf_lexbuf buffer;
    fz_var(stream);
    fz_var(trailer);
    pdf_lexbuf_init(m_context, &buffer, PDF_LEXBUF_SMALL);
    fz_try(m_context)
    {
        stream = fz_open_memory(m_context, reinterpret_cast<const unsigned char *>(text.data()),
                                text.size());
        trailer = pdf_parse_stm_obj(m_context, m_host, stream, &buffer);
    }
    fz_always(m_context)
    {
        fz_drop_stream(m_context, stream);
        pdf_lexbuf_fin(m_context, &buffer);
    }
    fz_catch(m_context)
    {
        trailer = nullptr;
    }
    return trailer;
}

/// Keeps the newest trailer. References are not followed, so nothing here can fail.
bool QuickOpening::takeTrailer(pdf_obj *trailer, std::int64_t &previous)
{
    if (pdf_is_indirect(m_context, trailer) != 0 || pdf_is_dict(m_context, trailer) == 0) {
        return false;
    }
    pdf_obj *number = pdf_dict_get(m_context, trailer, PDF_NAME(Prev));
    if (number != nullptr) {
        if (pdf_is_indirect(m_context, number) != 0 || pdf_is_int(m_context, number) == 0) {
            return false;
        }
        previous = pdf_to_int64(m_context, number);
        if (previous <= 0) {
            return false;
        }
    }
    if (m_trailer == nullptr) {
        pdf_obj *size = pdf_dict_get(m_context, trailer, PDF_NAME(Size));
        m_stated = pdf_is_indirect(m_context, size) != 0 ? 0 : pdf_to_int(m_context, size);
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
        m_freed.push_back(number);
        break;
    }
    target.gen = entry.generation;
    target.num = number;
    target.ofs = entry.offset;
    return true;
}

bool QuickOpening::giveTable()
{
    if (m_entries[0].type == 0) {
        m_entries[0].type = 'f';
        m_entries[0].gen = 65535;
    }
    bool isGiven = false;
    fz_var(isGiven);
    fz_try(m_context)
    {
        adoptTable(m_context, m_host, m_entries, m_count, m_trailer);
        m_entries = nullptr;
        // A stream without an end reaches to the end of the file and no farther.
        dropAppended(fileOf(m_host));
        isGiven = true;
    }
    fz_catch(m_context)
    {
        isGiven = false;
    }
    return isGiven;
}

/// The table as a section in the form of a stream, to stand behind the end of the file.
std::string QuickOpening::tableAsUpdate()
{
    const std::string entries = trailerEntries();
    if (entries.empty()) {
        return {};
    }
    const std::int64_t offset = m_file.size() + 1;
    std::string data;
    for (int number = 0; number < m_count; ++number) {
        appendEntry(data, m_entries[number]);
    }
    pdf_xref_entry own{};
    own.type = 'n';
    own.ofs = offset;
    appendEntry(data, own);
    return "\n" + std::to_string(m_count) + " 0 obj\n<</Type/XRef/W[1 8 2]/Size " +
           std::to_string(m_count + 1) + "/Length " + std::to_string(data.size()) + entries +
           ">>stream\n" + data + "\nendstream\nendobj\nstartxref\n" + std::to_string(offset) +
           "\n%%EOF\n";
}

/// What the trailer says of the file; empty when that cannot be written down.
std::string QuickOpening::trailerEntries()
{
    std::string text;
    const int length = pdf_dict_len(m_context, m_trailer);
    for (int i = 0; i < length; ++i) {
        const char *key = pdf_to_name(m_context, pdf_dict_get_key(m_context, m_trailer, i));
        if (!isOfSection(key)) {
            const std::string value = printed(m_context, pdf_dict_get_val(m_context, m_trailer, i));
            if (value.empty()) {
                return {};
            }
            text += std::string("/") + key + ' ' + value;
        }
    }
    return text;
}

} // namespace tools
