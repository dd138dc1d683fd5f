#include "tools/pdf/syntax_scanner.h"

#include <cstdint>
#include <cstring>

namespace tools {

namespace {

constexpr int deepestNesting = 30;
constexpr std::ptrdiff_t longestName = 100;
constexpr std::ptrdiff_t longestReal = 16;
constexpr std::ptrdiff_t longestInteger = 9;

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

} // namespace

bool SyntaxScanner::takeName(std::string_view &name)
{
    if (!takeByte('/')) {
        return false;
    }
    const char *begin = m_at;
    skipAll(m_nameBytes);
    name = {begin, static_cast<std::size_t>(m_at - begin)};
    return !name.empty() && m_at - begin <= longestName && endsHere();
}

bool SyntaxScanner::takeInteger(int &number)
{
    const char *at = m_at;
    number = 0;
    for (; at != m_end && isOf(*at, isNumeral) && at - m_at < longestInteger; ++at) {
        number = number * 10 + (*at - '0');
    }
    const std::ptrdiff_t digits = at - m_at;
    m_at = at;
    return digits > 0 && digits <= longestInteger && endsHere();
}

bool SyntaxScanner::takeReferenceOrInteger(int &number, bool &isReference)
{
    isReference = false;
    if (!takeInteger(number)) {
        return false;
    }
    SyntaxScanner ahead = *this;
    int generation = 0;
    if (ahead.skipBlanks() && ahead.takeInteger(generation) && ahead.skipBlanks() &&
        ahead.takeWord("R")) {
        isReference = true;
        m_at = ahead.m_at;
        return number <= largestObject;
    }
    return true;
}

bool SyntaxScanner::skipFlatArray()
{
    if (!isAt('[')) {
        return false;
    }
    const std::string_view left = rest(m_at + 1);
    const std::string_view held = left.substr(0, left.find(']'));
    if (held.size() == left.size()) {
        m_at = m_end;
        return false;
    }
    if (holds(held, '[') || holds(held, '(') || holds(held, '<') || holds(held, '%')) {
        return false;
    }
    m_at += held.size() + 2;
    return true;
}

bool SyntaxScanner::skipString()
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

bool SyntaxScanner::skipHexString()
{
    skipAll(inHexString);
    return takeByte('>');
}

bool SyntaxScanner::skipDictionary(int depth)
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

bool SyntaxScanner::skipArray(int depth)
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
bool SyntaxScanner::skipNumber(bool &isPlain)
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
    return count > 0 && m_at - begin <= (isInteger ? longestInteger : longestReal) && endsHere();
}

bool SyntaxScanner::skipNumberOrReference()
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

bool SyntaxScanner::skipValue(int depth)
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

bool SyntaxScanner::skipDictionaryWithoutKids()
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

bool SyntaxScanner::takeReferences(std::vector<int> *numbers)
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

} // namespace tools
