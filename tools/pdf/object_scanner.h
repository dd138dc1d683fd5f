#pragma once

#include "tools/pdf/file_window.h"
#include "tools/pdf/node_scan.h"
#include "tools/pdf/pdf_source.h"
#include "tools/pdf/syntax_scanner.h"

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tools {

/// Finds the bytes of objects, in the file or in object streams, and scans them. What the library
/// has loaded already is not looked for.
class ObjectScanner
{
public:
    explicit ObjectScanner(PdfSource &source) : m_source(source), m_window(source.input()) {}

    /// What the bytes of object @p number, which stands at @p place, tell; "unclear" and "cutOff"
    /// are no answer, the object may be any.
    NodeScan scan(int number, const ObjectPlace &place, bool wantsKids);

    /// Has @p reader read the object from its bytes, more and more of them as long as they end too
    /// early for it. @returns whether it has read the object up to its end
    bool readBytes(int number, const ObjectPlace &place,
                   const std::function<bool(SyntaxScanner &)> &reader);

    /// Lets the library have the node that was scanned last without its list of children, which
    /// makes up most of the work of loading it. Nothing happens where that cannot be done.
    void keepWithoutKids(int number, const ObjectPlace &place, const NodeScan &scan);

private:
    struct Slice
    {
        int number;
        std::size_t begin;
        std::size_t length;
    };
    /// An object stream, its filters undone.
    struct Decoded
    {
        std::string bytes;
        std::vector<Slice> slices; ///< by number
    };

    template <typename Scan> void tryBytes(std::int64_t offset, Scan &&isCutOff);
    std::string_view bytesInStream(int number, int stream);
    void appendBytes(std::string &bytes, std::int64_t offset, std::size_t size);
    const Decoded &decoded(int stream);
    bool readSlices(int stream, Decoded &result);

    PdfSource &m_source;
    FileWindow m_window;
    std::unordered_map<int, Decoded> m_streams;
    std::size_t m_held = 0; ///< bytes in m_streams
};

} // namespace tools
