#pragma once

namespace tools {

/// Largest number that an object may have; the library takes no larger one.
constexpr int largestObject = 8388607;
/// Largest generation that an object may have.
constexpr int largestGeneration = 65535;

constexpr bool isSpace(char c) noexcept
{
    return c == ' ' || c == '\n' || c == '\r' || c == '\t' || c == '\f' || c == '\0';
}

constexpr bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

constexpr bool isHexDigit(char c) noexcept
{
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Whether @p c ends a name or a number: white space or the beginning of something else.
constexpr bool isDelimiter(char c) noexcept
{
    return isSpace(c) || c == '/' || c == '<' || c == '>' || c == '[' || c == ']' || c == '(' ||
           c == ')' || c == '%' || c == '{' || c == '}';
}

} // namespace tools
