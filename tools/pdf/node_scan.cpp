#include "tools/pdf/node_scan.h"

#include "tools/pdf/pdf_syntax.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

namespace tools {

namespace {

constexpr int deepestNesting = 30;
constexpr std::ptrdiff_t longestName = 100;
constexpr std::ptrdiff_t longestNumber = 16;
constexpr std::ptrdiff_t longestInteger = 9;

/// What a byte may be part of.
enum ByteClass : unsigned char {
    inName = 1,
    inString = 2,
    inHexString = 4,
    isBlank = 8,
    isNumeral = 16
};

constexpr std::array<unsigned char, 256> makeClasses()
{
    std::array<unsigned char, 256> classes{};
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        unsigned char found = 0;
        // Bytes beyond ASCII and escapes are left to the library.
        found |= byte > 0x20 && byte < 0x7f && !isDelimiter(c) && c != '#' ? inName : 0;
        found |= c != '(' && c != ')' && c != '\\' ? inString : 0;
        const bool isHexDigit = isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
        found |= isHexDigit || isSpace(c) ? inHexString : 0;
        found |= isSpace(c) ? isBlank : 0;
        found |= isDigit(c) ? isNumeral : 0;
        classes[static_cast<std::size_t>(byte)] = found;
    }
    return classes;
}

constexpr std::array<unsigned char, 256> classes = makeClasses();

bool is(char c, ByteClass kind)
{
    return (classes[static_cast<unsigned char>(c)] & kind) != 0;
}

/// The next "<" or ">"; eight bytes are looked at in one step.
const char *nextBracket(const char *at, const char *end)
{
    constexpr std::uint64_t everyByte = 0x0101010101010101;
    constexpr std::ptrdiff_t step = sizeof(std::uint64_t);
    for (; end - at >= step; at += step) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, step);
        // The two differ in one bit. Bytes that are alike become 0, and a 0 sets its highest bit.
        const std::uint64_t zeros = (word | everyByte * 0x02U) ^ everyByte * '>';
        if (((zeros - everyByte) & ~zeros & everyByte << 7U) != 0) {
            break;
        }
    }
    while (at != end && *at != '<' && *at != '>') {
        ++at;
    }
    return at;
}

bool holds(std::string_view bytes, char c)
{
    return std::memchr(bytes.data(), c, bytes.size()) != nullptr;
}

/// Whether a key "Kids" may be among @p bytes: it may be spelt with escapes, and where a string or
/// a comment is, its end is not known.
bool mayHoldKids(std::string_view bytes)
{
    return (holds(bytes, 'K') && bytes.find("Kids") != std::string_view::npos) ||
           holds(bytes, '#') || holds(bytes, '(') || holds(bytes, '%');
}

/// Goes through the syntax of a dictionary. Every function leaves behind what it read, and returns
/// false at anything that readers may take in different ways, and where the bytes end.
class Scanner
{
public:
    explicit Scanner(std::string_view bytes)
        : m_begin(bytes.data()), m_at(m_begin), m_end(m_begin + bytes.size())
    {
    }

    std::size_t position() const noexcept { return static_cast<std::size_t>(m_at - m_begin); }
    bool isAtEnd() const noexcept { return m_at == m_end; }
    bool isAt(char c) const noexcept { return m_at != m_end && *m_at == c; }
    bool isAt(ByteClass kind) const noexcept { return m_at != m_end && is(*m_at, kind); }

    /// False at a comment, which is left to the library.
    bool skipBlanks()
    {
        skipAll(isBlank);
        return !isAt('%');
    }
    bool takeByte(char c)
    {
        const bool stands = isAt(c);
        m_at += stands ? 1 : 0;
        return stands;
    }
    bool takeWord(std::string_view word)
    {
        const std::string_view left = rest(m_at);
        if (left.substr(0, word.size()) != word) {
            // A word may be cut off by the end of the bytes.
            m_at = word.substr(0, left.size()) == left ? m_end : m_at;
            return false;
        }
        m_at += word.size();
        return endsHere();
    }
    /// The name without its slash.
    bool takeName(std::string_view &name);
    bool takeInteger(int &number);
    /// References up to the closing bracket.
    bool takeReferences(std::vector<int> *numbers);
    bool skipValue(int depth);
    /// Skips the dictionary that stands here, if a glance shows that no key "Kids" is in it. Most
    /// pages need no more; what is between its brackets is not looked at.
    bool skipDictionaryWithoutKids();

private:
    void skipAll(ByteClass kind)
    {
        const char *at = m_at;
        while (at != m_end && is(*at, kind)) {
            ++at;
        }
        m_at = at;
    }
    std::string_view rest(const char *from) const
    {
        return {from, static_cast<std::size_t>(m_end - from)};
    }
    bool endsHere() const { return m_at != m_end && isDelimiter(*m_at); }
    bool skipString();
    bool skipHexString();
    bool skipDictionary(int depth);
    bool skipArray(int depth);
    bool skipNumber(bool &isPlain);
    bool skipNumberOrReference();

    const char *m_begin;
    const char *m_at;
    const char *m_end;
};

bool Scanner::takeName(std::string_view &name)
{
    if (!takeByte('/')) {
        return false;
    }
    const char *begin = m_at;
    skipAll(inName);
    name = {begin, static_cast<std::size_t>(m_at - begin)};
    return !name.empty() && m_at - begin <= longestName && endsHere();
}

bool Scanner::takeInteger(int &number)
{
    const char *at = m_at;
    number = 0;
    for (; at != m_end && is(*at, isNumeral) && at - m_at < longestInteger; ++at) {
        number = number * 10 + (*at - '0');
    }
    const std::ptrdiff_t digits = at - m_at;
    m_at = at;
    return digits > 0 && digits <= longestInteger && endsHere();
}

bool Scanner::skipString()
{
    for (int open = 1; open != 0; ++m_at) {
        skipAll(inString);
        if (m_at == m_end) {
            return false;
        }
        if (*m_at == '\\') {
            if (++m_at == m_end) {
                return false;
            }
        } else {
            open += *m_at == '(' ? 1 : -1;
        }
    }
    return true;
}

bool Scanner::skipHexString()
{
    skipAll(inHexString);
    return takeByte('>');
}

bool Scanner::skipDictionary(int depth)
{
    std::string_view key;
    for (;;) {
        if (!skipBlanks()) {
            return false;
        }
        if (takeByte('>')) {
            return takeByte('>');
        }
        if (!takeName(key) || !skipBlanks() || !skipValue(depth + 1)) {
            return false;
        }
    }
}

bool Scanner::skipArray(int depth)
{
    for (int integers = 0;;) { // that stand one behind the other, as in a reference
        if (!skipBlanks()) {
            return false;
        }
        if (takeByte(']')) {
            return true;
        }
        bool isPlain = false;
        if (isAt('R')) {
            if (integers < 2 || !takeWord("R")) {
                return false;
            }
        } else if (isAt(isNumeral) || isAt('-') || isAt('.') || isAt('+')) {
            if (!skipNumber(isPlain)) {
                return false;
            }
        } else if (!skipValue(depth + 1)) {
            return false;
        }
        integers = isPlain ? integers + 1 : 0;
    }
}

/// @param isPlain set to whether it is an integer without a sign
bool Scanner::skipNumber(bool &isPlain)
{
    const char *begin = m_at;
    const bool isSigned = takeByte('-') || takeByte('+');
    const char *digits = m_at;
    skipAll(isNumeral);
    std::ptrdiff_t count = m_at - digits;
    const bool isInteger = !takeByte('.');
    if (!isInteger) {
        digits = m_at;
        skipAll(isNumeral);
        count += m_at - digits;
    }
    isPlain = isInteger && !isSigned;
    return count > 0 && m_at - begin <= (isInteger ? longestInteger : longestNumber) && endsHere();
}

bool Scanner::skipNumberOrReference()
{
    bool isPlain = false;
    if (!skipNumber(isPlain) || !skipBlanks()) {
        return false;
    }
    if (!isPlain || !isAt(isNumeral)) {
        return true;
    }
    return skipNumber(isPlain) && isPlain && skipBlanks() && takeWord("R");
}

bool Scanner::skipValue(int depth)
{
    if (depth > deepestNesting || m_at == m_end) {
        return false;
    }
    std::string_view name;
    switch (*m_at) {
    case '/':
        return takeName(name);
    case '(':
        ++m_at;
        return skipString();
    case '[':
        ++m_at;
        return skipArray(depth);
    case '<':
        ++m_at;
        return takeByte('<') ? skipDictionary(depth) : skipHexString();
    case 't':
        return takeWord("true");
    case 'f':
        return takeWord("false");
    case 'n':
        return takeWord("null");
    default:
        return skipNumberOrReference();
    }
}

bool Scanner::skipDictionaryWithoutKids()
{
    int depth = 0;
    const char *at = m_at;
    do {
        at = nextBracket(at, m_end);
        if (m_end - at < 2 || at[0] != at[1]) {
            return false;
        }
        depth += *at == '<' ? 1 : -1;
        at += 2;
    } while (depth > 0);
    if (depth < 0 || *m_at != '<' || mayHoldKids({m_at, static_cast<std::size_t>(at - m_at)})) {
        return false;
    }
    m_at = at;
    return true;
}

bool Scanner::takeReferences(std::vector<int> *numbers)
{
    for (;;) {
        int number = 0;
        int generation = 0;
        if (!skipBlanks()) {
            return false;
        }
        if (takeByte(']')) {
            return true;
        }
        if (!takeInteger(number) || !skipBlanks() || !takeInteger(generation) || !skipBlanks() ||
            !takeWord("R") || number == 0 || number > largestObject) {
            return false;
        }
        if (numbers != nullptr) {
            numbers->push_back(number);
        }
    }
}

/// The entries of a dictionary that tell a page from a node.
class NodeReader
{
public:
    NodeReader(std::string_view bytes, bool wantsKids) : m_scanner(bytes), m_wantsKids(wantsKids) {}

    bool readHeader(int number)
    {
        int found = 0;
        int generation = 0;
        return m_scanner.skipBlanks() && m_scanner.takeInteger(found) && found == number &&
               m_scanner.skipBlanks() && m_scanner.takeInteger(generation) &&
               m_scanner.skipBlanks() && m_scanner.takeWord("obj");
    }
    bool readDictionary()
    {
        return m_scanner.skipBlanks() &&
               ((!m_wantsKids && m_scanner.skipDictionaryWithoutKids()) ||
                (m_scanner.takeByte('<') && m_scanner.takeByte('<') && readEntries()));
    }
    bool readEnd() { return m_scanner.skipBlanks() && m_scanner.takeWord("endobj"); }

    NodeScan result(bool isRead)
    {
        NodeScan &scan = m_result;
        scan.end = m_scanner.position();
        // One that calls itself a page and has content is one, whatever else it lists.
        const bool isPage = !m_hasKids || (m_isCalledPage && m_hasContents);
        scan.kind = isRead && isPage      ? NodeScan::Kind::page
                    : isRead              ? NodeScan::Kind::node
                    : m_scanner.isAtEnd() ? NodeScan::Kind::cutOff
                                          : NodeScan::Kind::unclear;
        return std::move(m_result);
    }

private:
    bool readEntries();
    bool readEntry(std::string_view key);
    bool readType();
    bool readKids();

    Scanner m_scanner;
    NodeScan m_result;
    bool m_wantsKids;
    bool m_hasKids = false;
    bool m_hasType = false;
    bool m_isCalledPage = false;
    bool m_hasContents = false;
};

bool NodeReader::readEntries()
{
    std::string_view key;
    for (;;) {
        if (!m_scanner.skipBlanks()) {
            return false;
        }
        if (m_scanner.takeByte('>')) {
            return m_scanner.takeByte('>');
        }
        if (!m_scanner.takeName(key) || !m_scanner.skipBlanks() || !readEntry(key)) {
            return false;
        }
    }
}

bool NodeReader::readEntry(std::string_view key)
{
    if (key == "Kids") {
        return !std::exchange(m_hasKids, true) && readKids();
    }
    if (key == "Type") {
        return !std::exchange(m_hasType, true) && readType();
    }
    if (key == "Contents") {
        // A null would be no content.
        return !std::exchange(m_hasContents, true) && !m_scanner.isAt('n') &&
               m_scanner.skipValue(1);
    }
    return m_scanner.skipValue(1);
}

bool NodeReader::readType()
{
    std::string_view name;
    const bool isName = m_scanner.takeName(name);
    m_isCalledPage = name == "Page";
    return isName;
}

bool NodeReader::readKids()
{
    m_result.listBegin = m_scanner.position();
    const bool isRead =
        m_scanner.takeByte('[') && m_scanner.takeReferences(m_wantsKids ? &m_result.kids : nullptr);
    m_result.listEnd = m_scanner.position() - 1;
    return isRead;
}

} // namespace

NodeScan scanObject(std::string_view bytes, int number, bool wantsKids)
{
    NodeReader reader(bytes, wantsKids);
    return reader.result(reader.readHeader(number) && reader.readDictionary() && reader.readEnd());
}

NodeScan scanDictionary(std::string_view bytes, bool wantsKids)
{
    NodeReader reader(bytes, wantsKids);
    return reader.result(reader.readDictionary());
}

bool startsObject(std::string_view bytes, int number)
{
    return NodeReader(bytes, false).readHeader(number);
}

} // namespace tools
