#include "tools/pdf/xref_stream.h"

#include "tools/pdf/library_internals.h"
#include "tools/pdf/pdf_syntax.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

constexpr int widestField = 8;
constexpr std::size_t bufferSize = 8192;

std::uint64_t number(const unsigned char *bytes, int width)
{
    std::uint64_t value = 0;
    for (int i = 0; i < width; ++i) {
        value = value << 8U | bytes[i];
    }
    return value;
}

} // namespace

bool XrefStream::read(std::int64_t offset, XrefTarget &target)
{
    fz_stream *stream = nullptr;
    bool isRead = false;
    fz_var(stream);
    fz_var(isRead);
    fz_try(m_context)
    {
        int object = 0;
        int generation = 0;
        std::int64_t data = 0;
        pdf_drop_obj(m_context, m_dictionary);
        m_dictionary = nullptr;
        fz_seek(m_context, fileOf(m_document), offset, SEEK_SET);
        m_dictionary = pdf_parse_ind_obj(m_context, m_document, fileOf(m_document), &object,
                                         &generation, &data, nullptr);
        // Whatever the section says about the object that it is itself, it stands here; but a newer
        // section may have used the number again.
        XrefEntry own;
        own.offset = offset;
        own.generation = static_cast<std::uint16_t>(generation);
        own.kind = XrefEntry::Kind::inUse;
        if (data != 0 && object > 0 && isPlain() && readWidths() && target.expect(object, 1) &&
            target.place(object, own)) {
            stream = pdf_open_stream_with_offset(m_context, m_document, object, m_dictionary, data);
            isRead = readSubsections(stream, target);
        }
    }
    fz_always(m_context)
    {
        fz_drop_stream(m_context, stream);
    }
    fz_catch(m_context)
    {
        isRead = false;
    }
    return isRead;
}

/// Whether everything that the reading takes from the dictionary stands in it, because no reference
/// can be followed yet.
bool XrefStream::isPlain() const
{
    if (!pdf_is_dict(m_context, m_dictionary) || pdf_is_indirect(m_context, m_dictionary)) {
        return false;
    }
    for (pdf_obj *key :
         {PDF_NAME(Type), PDF_NAME(Size), PDF_NAME(W), PDF_NAME(Index), PDF_NAME(Length),
          PDF_NAME(Filter), PDF_NAME(F), PDF_NAME(DecodeParms), PDF_NAME(DP)}) {
        if (pdf_is_indirect(m_context, pdf_dict_get(m_context, m_dictionary, key))) {
            return false;
        }
    }
    return pdf_name_eq(m_context, pdf_dict_get(m_context, m_dictionary, PDF_NAME(Type)),
                       PDF_NAME(XRef)) &&
           pdf_is_int(m_context, pdf_dict_get(m_context, m_dictionary, PDF_NAME(Length))) &&
           hasPlainParameters();
}

bool XrefStream::hasPlainParameters() const
{
    pdf_obj *filter = pdf_dict_get(m_context, m_dictionary, PDF_NAME(Filter));
    pdf_obj *parameters = pdf_dict_get(m_context, m_dictionary, PDF_NAME(DecodeParms));
    if (filter != nullptr && !pdf_name_eq(m_context, filter, PDF_NAME(FlateDecode))) {
        return false;
    }
    if (parameters != nullptr && !pdf_is_dict(m_context, parameters)) {
        return false;
    }
    const int length = pdf_dict_len(m_context, parameters);
    for (int i = 0; i < length; ++i) {
        if (!pdf_is_int(m_context, pdf_dict_get_val(m_context, parameters, i)) ||
            pdf_is_indirect(m_context, pdf_dict_get_val(m_context, parameters, i))) {
            return false;
        }
    }
    return true;
}

bool XrefStream::readWidths()
{
    pdf_obj *widths = pdf_dict_get(m_context, m_dictionary, PDF_NAME(W));
    if (pdf_array_len(m_context, widths) != 3) {
        return false;
    }
    for (int i = 0; i < 3; ++i) {
        pdf_obj *width = pdf_array_get(m_context, widths, i);
        m_widths[i] = pdf_is_indirect(m_context, width) || !pdf_is_int(m_context, width)
                          ? -1
                          : pdf_to_int(m_context, width);
        if (m_widths[i] < 0 || m_widths[i] > widestField) {
            return false;
        }
    }
    return m_widths[1] > 0;
}

bool XrefStream::readSubsections(fz_stream *stream, XrefTarget &target)
{
    pdf_obj *index = pdf_dict_get(m_context, m_dictionary, PDF_NAME(Index));
    if (index == nullptr) {
        const int size = pdf_dict_get_int(m_context, m_dictionary, PDF_NAME(Size));
        return readEntries(stream, 0, size, target);
    }
    const int length = pdf_array_len(m_context, index);
    for (int i = 0; i + 1 < length; i += 2) {
        pdf_obj *first = pdf_array_get(m_context, index, i);
        pdf_obj *count = pdf_array_get(m_context, index, i + 1);
        if (pdf_is_indirect(m_context, first) || pdf_is_indirect(m_context, count) ||
            !pdf_is_int(m_context, first) || !pdf_is_int(m_context, count) ||
            !readEntries(stream, pdf_to_int(m_context, first), pdf_to_int(m_context, count),
                         target)) {
            return false;
        }
    }
    return length > 0 && length % 2 == 0;
}

bool XrefStream::readEntries(fz_stream *stream, int first, int count, XrefTarget &target)
{
    if (first < 0 || count < 0 || first > largestObject || count > largestObject + 1 - first ||
        !target.expect(first, count)) {
        return false;
    }
    std::array<unsigned char, bufferSize> buffer;
    std::size_t length = 0;
    for (const int width : m_widths) {
        length += static_cast<std::size_t>(width);
    }
    while (count > 0) {
        const int entries = std::min(count, static_cast<int>(buffer.size() / length));
        const std::size_t wanted = static_cast<std::size_t>(entries) * length;
        if (fz_read(m_context, stream, buffer.data(), wanted) != wanted) {
            return false;
        }
        for (std::size_t start = 0; start != wanted; start += length) {
            if (!placeEntry(buffer.data() + start, first++, target)) {
                return false;
            }
        }
        count -= entries;
    }
    return true;
}

bool XrefStream::placeEntry(const unsigned char *bytes, int object, XrefTarget &target) const
{
    const std::uint64_t kind = m_widths[0] != 0 ? number(bytes, m_widths[0]) : 1;
    const std::uint64_t offset = number(bytes + m_widths[0], m_widths[1]);
    const std::uint64_t generation = number(bytes + m_widths[0] + m_widths[1], m_widths[2]);
    if (kind > 2 || offset > static_cast<std::uint64_t>(INT64_MAX)) {
        return false;
    }
    XrefEntry entry;
    entry.offset = static_cast<std::int64_t>(offset);
    entry.kind = kind == 0     ? XrefEntry::Kind::free
                 : kind == 2   ? XrefEntry::Kind::compressed
                 : offset == 0 ? XrefEntry::Kind::free
                               : XrefEntry::Kind::inUse;
    if (entry.kind == XrefEntry::Kind::free) {
        return target.place(object, entry);
    }
    entry.generation = static_cast<std::uint16_t>(generation);
    return generation <= largestGeneration && target.place(object, entry);
}

} // namespace tools
