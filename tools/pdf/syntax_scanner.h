#pragma once

#include "tools/pdf/pdf_syntax.h"

#include <array>
#include <cstddef>
#include <string_view>
#include <vector>

namespace tools {

/// What a byte may be part of.
enum ByteClass : unsigned char {
    inName = 1,
    inString = 2,
    inHexString = 4,
    isBlank = 8,
    isNumeral = 16,
    inEscapedName = 32 ///< a name that may hold escapes
};

constexpr std::array<unsigned char, 256> makeByteClasses()
{
    std::array<unsigned char, 256> classes{};
    for (int byte = 0; byte < 256; ++byte) {
        const char c = static_cast<char>(byte);
        unsigned char found = 0;
        // Bytes beyond ASCII and escapes are left to the library.
        found |= byte > 0x20 && byte < 0x7f && !isDelimiter(c) && c != '#' ? inName : 0;
        found |= byte > 0x20 && byte < 0x7f && !isDelimiter(c) ? inEscapedName : 0;
        found |= c != '(' && c != ')' && c != '\\' ? inString : 0;
        found |= isHexDigit(c) || isSpace(c) ? inHexString : 0;
        found |= isSpace(c) ? isBlank : 0;
        found |= isDigit(c) ? isNumeral : 0;
        classes[static_cast<std::size_t>(byte)] = found;
    }
    return classes;
}

inline constexpr std::array<unsigned char, 256> byteClasses = makeByteClasses();

constexpr bool isOf(char c, ByteClass kind) noexcept
{
    return (byteClasses[static_cast<unsigned char>(c)] & kind) != 0;
}

/// Goes through the syntax of a dictionary. Every function leaves behind what it read, and returns
/// false at anything that readers may take in different ways, and where the bytes end.
class SyntaxScanner
{
public:
    /// Escapes in names are refused, or left as they stand.
    enum class Escapes { refused, allowed };

    explicit SyntaxScanner(std::string_view bytes, Escapes escapes = Escapes::refused)
        : m_begin(bytes.data()), m_at(m_begin), m_end(m_begin + bytes.size()),
          m_nameBytes(escapes == Escapes::allowed ? inEscapedName : inName)
    {
    }

    std::size_t position() const noexcept { return static_cast<std::size_t>(m_at - m_begin); }
    /// The bytes from @p position, an earlier one, up to here.
    std::string_view since(std::size_t position) const noexcept
    {
        return {m_begin + position, static_cast<std::size_t>(m_at - m_begin) - position};
    }
    bool isAtEnd() const noexcept { return m_at == m_end; }
    bool isAt(char c) const noexcept { return m_at != m_end && *m_at == c; }
    bool isAt(ByteClass kind) const noexcept { return m_at != m_end && isOf(*m_at, kind); }

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
    /// A reference, of which @p number becomes the object's number, or an integer of no sign.
    bool takeReferenceOrInteger(int &number, bool &isReference);
    /// References up to the closing bracket.
    bool takeReferences(std::vector<int> *numbers);
    /// Skips a value; @p depth is that of its nesting.
    bool skipValue(int depth);
    /// Skips an array of numbers, references and plain names; what it holds is not looked at.
    bool skipFlatArray();
    /// Skips the dictionary that stands here, if a glance shows that no key "Kids" is in it. Most
    /// pages need no more; what is between its brackets is not looked at.
    bool skipDictionaryWithoutKids();

private:
    void skipAll(ByteClass kind)
    {
        const char *at = m_at;
        while (at != m_end && isOf(*at, kind)) {
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
    ByteClass m_nameBytes;
};

} // namespace tools
