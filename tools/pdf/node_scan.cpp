#include "tools/pdf/node_scan.h"

#include "tools/pdf/pdf_syntax.h"

#include <array>
#include <utility>

namespace tools {

namespace {

constexpr int deepestNesting = 30;
constexpr std::size_t longestName = 100;
constexpr int mostDigits = 9;

/// What a byte may be part of.
enum ByteClass : unsigned char { inName = 1, inString = 2, inHexString = 4, isBlank = 8 };

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
        classes[static_cast<std::size_t>(byte)] = found;
    }
    return classes;
}

constexpr std::array<unsigned char, 256> classes = makeClasses();

/// Goes through the syntax of a dictionary. Every function leaves the cursor behind what it read,
/// and returns false at anything that readers may take in different ways.
class Scanner
{
public:
    explicit Scanner(ByteCursor &cursor) : m_cursor(cursor) {}

    bool skipBlanks()
    {
        while (is(m_cursor.peek(), isBlank)) {
            m_cursor.skip();
        }
        return m_cursor.peek() != '%'; // comments are left to the library
    }
    bool takeByte(char c)
    {
        const bool stands = m_cursor.peek() == c;
        if (stands) {
            m_cursor.skip();
        }
        return stands;
    }
    bool takeWord(const char *word)
    {
        for (; *word != '\0'; ++word) {
            if (!takeByte(*word)) {
                return false;
            }
        }
        return endsHere();
    }
    /// The name without its slash; valid until the next one is taken.
    bool takeName(std::string_view &name);
    bool skipValue(int depth);
    /// References up to the closing bracket.
    bool takeReferences(std::vector<int> *numbers);
    bool takeInteger(int &number);
    bool isAtEnd(ObjectEnd end);
    std::int64_t position() const noexcept { return m_cursor.position(); }
    int peek() { return m_cursor.peek(); }

private:
    static bool is(int byte, ByteClass kind)
    {
        return byte != ByteCursor::end && (classes[static_cast<std::size_t>(byte)] & kind) != 0;
    }
    void skipAll(ByteClass kind)
    {
        while (is(m_cursor.peek(), kind)) {
            m_cursor.skip();
        }
    }
    bool endsHere()
    {
        const int byte = m_cursor.peek();
        return byte == ByteCursor::end || isDelimiter(static_cast<char>(byte));
    }
    bool skipString();
    bool skipHexString();
    bool skipDictionary(int depth);
    bool skipArray(int depth);
    bool startsNumber()
    {
        const int byte = m_cursor.peek();
        return byte == '+' || byte == '-' || byte == '.' ||
               (byte != ByteCursor::end && isDigit(static_cast<char>(byte)));
    }
    bool skipNumber(bool &isPlain);
    bool skipNumberOrReference();

    ByteCursor &m_cursor;
    std::array<char, longestName> m_name{};
};

bool Scanner::takeName(std::string_view &name)
{
    if (!takeByte('/')) {
        return false;
    }
    std::size_t length = 0;
    while (is(m_cursor.peek(), inName)) {
        if (length == m_name.size()) {
            return false;
        }
        m_name[length++] = static_cast<char>(m_cursor.peek());
        m_cursor.skip();
    }
    name = {m_name.data(), length};
    return length != 0 && endsHere();
}

bool Scanner::takeInteger(int &number)
{
    int digits = 0;
    number = 0;
    while (m_cursor.peek() != ByteCursor::end && isDigit(static_cast<char>(m_cursor.peek()))) {
        if (++digits > mostDigits) {
            return false;
        }
        number = number * 10 + (m_cursor.peek() - '0');
        m_cursor.skip();
    }
    return digits != 0 && endsHere();
}

bool Scanner::skipString()
{
    for (int open = 1; open != 0;) {
        skipAll(inString);
        switch (m_cursor.take()) {
        case '(':
            ++open;
            break;
        case ')':
            --open;
            break;
        case '\\':
            if (m_cursor.take() == ByteCursor::end) {
                return false;
            }
            break;
        default:
            return false;
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
        if (m_cursor.peek() == 'R') {
            if (integers < 2 || !takeWord("R")) {
                return false;
            }
            integers = 0;
            continue;
        }
        bool isPlain = false;
        if (startsNumber() ? !skipNumber(isPlain) : !skipValue(depth + 1)) {
            return false;
        }
        integers = isPlain ? integers + 1 : 0;
    }
}

/// A number or a reference.
bool Scanner::skipNumberOrReference()
{
    bool isPlain = false;
    if (!skipNumber(isPlain) || !skipBlanks()) {
        return false;
    }
    const int next = m_cursor.peek();
    if (!isPlain || next == ByteCursor::end || !isDigit(static_cast<char>(next))) {
        return true;
    }
    return skipNumber(isPlain) && isPlain && skipBlanks() && takeWord("R");
}

/// @param isPlain set to whether it is an integer without a sign
bool Scanner::skipNumber(bool &isPlain)
{
    const bool isSigned = takeByte('+') || takeByte('-');
    bool hasPoint = false;
    int digits = 0;
    for (int byte = m_cursor.peek(); byte != ByteCursor::end; byte = m_cursor.peek()) {
        if (byte == '.' && !hasPoint) {
            hasPoint = true;
        } else if (isDigit(static_cast<char>(byte))) {
            ++digits;
        } else {
            break;
        }
        m_cursor.skip();
    }
    isPlain = !isSigned && !hasPoint;
    return digits != 0 && digits <= (hasPoint ? 2 * mostDigits : mostDigits) && endsHere();
}

bool Scanner::skipValue(int depth)
{
    if (depth > deepestNesting) {
        return false;
    }
    std::string_view name;
    switch (m_cursor.peek()) {
    case '/':
        return takeName(name);
    case '(':
        m_cursor.skip();
        return skipString();
    case '[':
        m_cursor.skip();
        return skipArray(depth);
    case '<':
        m_cursor.skip();
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

bool Scanner::isAtEnd(ObjectEnd end)
{
    return end == ObjectEnd::anything || (skipBlanks() && takeWord("endobj"));
}

/// What a dictionary calls itself.
enum class NodeType { none, page, other };

/// The entries of a dictionary that tell a page from a node.
class NodeReader
{
public:
    NodeReader(ByteCursor &cursor, NodeScan &result, std::vector<int> *kids)
        : m_scanner(cursor), m_result(result), m_kids(kids)
    {
    }

    bool read(ObjectEnd end)
    {
        if (!m_scanner.skipBlanks() || !m_scanner.takeByte('<') || !m_scanner.takeByte('<') ||
            !readEntries() || !m_scanner.isAtEnd(end)) {
            return false;
        }
        m_result.end = m_scanner.position();
        // One that calls itself a page and has content is one, whatever else it lists.
        const bool isPage = !m_hasKids || (m_type == NodeType::page && m_hasContents);
        m_result.kind = isPage ? NodeScan::Kind::page : NodeScan::Kind::node;
        return true;
    }

private:
    bool readEntries()
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

    bool readEntry(std::string_view key)
    {
        if (key == "Kids") {
            return !std::exchange(m_hasKids, true) && readKids();
        }
        if (key == "Type") {
            return !std::exchange(m_hasType, true) && readType();
        }
        if (key == "Contents") {
            // What a null stands for is asked where references are followed.
            return !std::exchange(m_hasContents, true) && m_scanner.peek() != 'n' &&
                   m_scanner.skipValue(1);
        }
        return m_scanner.skipValue(1);
    }

    bool readType()
    {
        std::string_view name;
        if (!m_scanner.takeName(name)) {
            return false;
        }
        m_type = name == "Page" ? NodeType::page : NodeType::other;
        return true;
    }

    bool readKids()
    {
        m_result.listBegin = m_scanner.position();
        if (!m_scanner.takeByte('[') || !m_scanner.takeReferences(m_kids)) {
            return false;
        }
        m_result.listEnd = m_scanner.position() - 1;
        return true;
    }

    Scanner m_scanner;
    NodeScan &m_result;
    std::vector<int> *m_kids;
    NodeType m_type = NodeType::none;
    bool m_hasKids = false;
    bool m_hasType = false;
    bool m_hasContents = false;
};

} // namespace

NodeScan scanNode(ByteCursor cursor, ObjectEnd end, bool wantsKids)
{
    NodeScan result;
    if (!NodeReader(cursor, result, wantsKids ? &result.kids : nullptr).read(end)) {
        return {};
    }
    return result;
}

bool skipObjectHeader(ByteCursor &cursor, int number)
{
    Scanner scanner(cursor);
    int found = 0;
    int generation = 0;
    return scanner.skipBlanks() && scanner.takeInteger(found) && found == number &&
           scanner.skipBlanks() && scanner.takeInteger(generation) && scanner.skipBlanks() &&
           scanner.takeWord("obj");
}

} // namespace tools
