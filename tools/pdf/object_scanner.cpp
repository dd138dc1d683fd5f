#include "tools/pdf/object_scanner.h"

#include "tools/pdf/library_internals.h"
#include "tools/pdf/quiet_library.h"

#include <algorithm>

namespace tools {

namespace {

constexpr std::size_t mostHeld = std::size_t{32} << 20U;
constexpr std::int64_t longestPart = 16384;
constexpr int mostSlices = 100'000;

/// Takes a decimal number and the white space before it. @returns -1 when there is none
int takeNumber(ByteCursor &cursor)
{
    while (cursor.peek() != ByteCursor::end && cursor.peek() <= ' ') {
        cursor.skip();
    }
    int number = -1;
    for (int byte = cursor.peek(); byte >= '0' && byte <= '9'; byte = cursor.peek()) {
        number = std::max(number, 0);
        if (number > 99'999'999) {
            return -1;
        }
        number = number * 10 + (byte - '0');
        cursor.skip();
    }
    return number;
}

} // namespace

NodeScan ObjectScanner::scan(int number, bool wantsKids)
{
    const ObjectPlace place = m_source.placeOf(number);
    if (place.kind == ObjectPlace::Kind::inFile) {
        ByteCursor cursor(m_window, place.offset);
        return skipObjectHeader(cursor, number) ? scanNode(cursor, ObjectEnd::keyword, wantsKids)
                                                : NodeScan();
    }
    if (place.kind != ObjectPlace::Kind::inStream) {
        return {};
    }
    const Decoded &stream = decoded(place.stream);
    const auto slice =
        std::lower_bound(stream.slices.begin(), stream.slices.end(), number,
                         [](const Slice &one, int wanted) { return one.number < wanted; });
    if (slice == stream.slices.end() || slice->number != number) {
        return {};
    }
    const std::string_view bytes =
        std::string_view(stream.bytes).substr(slice->begin, slice->length);
    return scanNode(ByteCursor(bytes), ObjectEnd::anything, wantsKids);
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
    ByteCursor cursor(std::string_view(result.bytes).substr(0, static_cast<std::size_t>(first)));
    std::vector<Slice> &slices = result.slices;
    slices.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const int number = takeNumber(cursor);
        const int offset = takeNumber(cursor);
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

void ObjectScanner::keepWithoutKids(int number, const NodeScan &scan)
{
    const ObjectPlace place = m_source.placeOf(number);
    if (place.kind == ObjectPlace::Kind::inFile) {
        const std::string text = textWithoutKids(place.offset, scan);
        if (!text.empty()) {
            m_source.adoptNode(number, text);
        }
    }
}

std::string ObjectScanner::textWithoutKids(std::int64_t begin, const NodeScan &scan)
{
    if (scan.listBegin - begin > longestPart || scan.end - scan.listEnd > longestPart) {
        return {};
    }
    const auto bytes = [this](std::int64_t from, std::int64_t to) {
        const FileWindow::Bytes held = m_window.at(from, static_cast<std::size_t>(to - from));
        return std::string(held.begin, held.end);
    };
    return bytes(begin, scan.listBegin + 1) + bytes(scan.listEnd, scan.end);
}

} // namespace tools
