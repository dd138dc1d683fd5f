#include "tools/pdf/object_scanner.h"

#include "tools/pdf/library_internals.h"
#include "tools/pdf/pdf_syntax.h"
#include "tools/pdf/quiet_library.h"

#include <algorithm>
#include <charconv>

namespace tools {

namespace {

constexpr std::size_t mostHeld = std::size_t{32} << 20U;
constexpr std::size_t longestPart = 16384;
constexpr std::size_t largestObjectText = std::size_t{256} << 20U;
constexpr int mostSlices = 100'000;

/// Takes a decimal number and the white space before it. @returns -1 when there is none
int takeNumber(std::string_view &text)
{
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    int number = -1;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return error == std::errc() ? number : -1;
}

} // namespace

NodeScan ObjectScanner::scan(int number, const ObjectPlace &place, bool wantsKids)
{
    NodeScan scan;
    if (place.kind == ObjectPlace::Kind::inFile) {
        tryBytes(place.offset, [&scan, number, wantsKids](std::string_view bytes) {
            scan = scanObject(bytes, number, wantsKids);
            return scan.kind == NodeScan::Kind::cutOff;
        });
    } else if (place.kind == ObjectPlace::Kind::inStream) {
        const std::string_view bytes = bytesInStream(number, place.stream);
        scan = bytes.empty() ? scan : scanDictionary(bytes, wantsKids);
    }
    return scan;
}

bool ObjectScanner::readBytes(int number, const ObjectPlace &place,
                              const std::function<bool(SyntaxScanner &)> &reader)
{
    bool isRead = false;
    if (place.kind == ObjectPlace::Kind::inFile) {
        tryBytes(place.offset, [&isRead, &reader, number](std::string_view bytes) {
            SyntaxScanner scanner(bytes);
            isRead = takeHeader(scanner, number) && scanner.skipBlanks() && reader(scanner) &&
                     scanner.skipBlanks() && scanner.takeWord("endobj");
            return !isRead && scanner.isAtEnd();
        });
    } else if (place.kind == ObjectPlace::Kind::inStream) {
        // The last object of a stream may have nothing behind it that would end a number.
        SyntaxScanner scanner(bytesInStream(number, place.stream));
        isRead = scanner.skipBlanks() && reader(scanner);
    }
    return isRead;
}

/// The bytes of object @p number in object stream @p stream; none when they are not known.
std::string_view ObjectScanner::bytesInStream(int number, int stream)
{
    const Decoded &found = decoded(stream);
    const auto slice =
        std::lower_bound(found.slices.begin(), found.slices.end(), number,
                         [](const Slice &one, int wanted) { return one.number < wanted; });
    if (slice == found.slices.end() || slice->number != number) {
        return {};
    }
    return std::string_view(found.bytes).substr(slice->begin, slice->length);
}

/// Most objects lie in what the window holds; one that does not is read again with more and more
/// bytes, until it is whole.
template <typename Scan> void ObjectScanner::tryBytes(std::int64_t offset, Scan &&isCutOff)
{
    if (!isCutOff(m_window.onwards(offset).text()) ||
        !isCutOff(m_window.at(offset, FileWindow::largest).text())) {
        return;
    }
    std::string bytes;
    for (std::size_t size = 4 * FileWindow::largest; size <= largestObjectText; size *= 4) {
        appendBytes(bytes, offset, size);
        if (!isCutOff(bytes) || bytes.size() < size) {
            return;
        }
    }
}

/// Adds to @p bytes those of the file from @p offset on, up to @p size of them.
void ObjectScanner::appendBytes(std::string &bytes, std::int64_t offset, std::size_t size)
{
    while (bytes.size() < size) {
        const std::string_view more =
            m_window.at(offset + static_cast<std::int64_t>(bytes.size()), FileWindow::largest)
                .text();
        if (more.empty()) {
            return;
        }
        bytes += more;
    }
}

const ObjectScanner::Decoded &ObjectScanner::decoded(int stream)
{
    const auto known = m_streams.find(stream);
    if (known != m_streams.end()) {
        return known->second;
    }
    if (m_held > mostHeld) {
        m_streams.clear();
        m_held = 0;
    }
    Decoded result;
    const QuietLibrary quiet(m_source.context());
    if (!m_source.loadStream(stream, result.bytes) || !readSlices(stream, result)) {
        result = {};
    }
    m_held += result.bytes.size();
    return m_streams.emplace(stream, std::move(result)).first->second;
}

/// Where each object of a stream begins and ends. Streams that name an object twice, or whose
/// objects do not follow each other, are left to the library.
bool ObjectScanner::readSlices(int stream, Decoded &result)
{
    pdf_obj *dictionary = m_source.object(stream);
    const int count = m_source.integer(m_source.get(dictionary, PDF_NAME(N)));
    const int first = m_source.integer(m_source.get(dictionary, PDF_NAME(First)));
    if (count <= 0 || count > mostSlices || first <= 0 ||
        static_cast<std::size_t>(first) > result.bytes.size()) {
        return false;
    }
    std::string_view head =
        std::string_view(result.bytes).substr(0, static_cast<std::size_t>(first));
    std::vector<Slice> &slices = result.slices;
    slices.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const int number = takeNumber(head);
        const int offset = takeNumber(head);
        const std::size_t begin =
            static_cast<std::size_t>(first) + static_cast<std::size_t>(offset);
        if (number <= 0 || offset < 0 || number >= m_source.objectCount() ||
            begin > result.bytes.size() || (!slices.empty() && begin < slices.back().begin)) {
            return false;
        }
        if (!slices.empty()) {
            slices.back().length = begin - slices.back().begin;
        }
        slices.push_back({number, begin, result.bytes.size() - begin});
    }
    std::sort(slices.begin(), slices.end(),
              [](const Slice &a, const Slice &b) { return a.number < b.number; });
    return std::adjacent_find(slices.begin(), slices.end(), [](const Slice &a, const Slice &b) {
               return a.number == b.number;
           }) == slices.end();
}

void ObjectScanner::keepWithoutKids(int number, const ObjectPlace &place, const NodeScan &scan)
{
    if (place.kind != ObjectPlace::Kind::inFile || scan.listBegin > longestPart ||
        scan.end - scan.listEnd > longestPart) {
        return;
    }
    std::string text(m_window.at(place.offset, scan.listBegin + 1).text());
    const std::int64_t end = place.offset + static_cast<std::int64_t>(scan.listEnd);
    text += m_window.at(end, scan.end - scan.listEnd).text();
    m_source.adoptNode(number, text);
}

} // namespace tools
