#pragma once

#include "tools/pdf/xref_table.h"

#include <mupdf/pdf.h>

#include <cstdint>

namespace tools {

/// One section of a cross-reference table in the form of a stream (ISO 32000-1, 7.5.8). The library
/// parses its dictionary and undoes its filters; the entries are read here, many at a time. Entries
/// of objects in object streams have the stream's object number as their offset and the place in it
/// as their generation.
class XrefStream
{
public:
    /// @param document shows the file; its own table is not used
    XrefStream(fz_context *context, pdf_document *document)
        : m_context(context), m_document(document)
    {
    }
    ~XrefStream() { pdf_drop_obj(m_context, m_dictionary); }
    XrefStream(const XrefStream &) = delete;
    XrefStream &operator=(const XrefStream &) = delete;

    /// Reads the section at @p offset. @returns false when it is anything but exact
    bool read(std::int64_t offset, XrefTarget &target);

    /// The dictionary of the section read last, which is its trailer, too.
    pdf_obj *dictionary() const noexcept { return m_dictionary; }

private:
    bool isPlain() const;
    bool hasPlainParameters() const;
    bool readWidths();
    bool readSubsections(fz_stream *stream, XrefTarget &target);
    bool readEntries(fz_stream *stream, int first, int count, XrefTarget &target);
    bool placeEntry(const unsigned char *bytes, int number, XrefTarget &target) const;

    fz_context *m_context;
    pdf_document *m_document;
    pdf_obj *m_dictionary = nullptr;
    int m_widths[3] = {0, 0, 0};
};

} // namespace tools
