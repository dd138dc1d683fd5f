#include "tools/common/name_shortening.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace tools {

namespace {

constexpr std::size_t leastText = 8;

/// Length of "12 ", the number that a name begins with and the blank after it; 0 without one.
std::size_t numberLength(std::string_view name)
{
    std::size_t length = 0;
    while (length < name.size() && name[length] >= '0' && name[length] <= '9') {
        ++length;
    }
    return length > 0 && length < name.size() && name[length] == ' ' ? length + 1 : 0;
}

/// Where the part that must stay begins, the longest one first: base name and pages, pages, ending.
std::array<std::size_t, 3> tailStarts(std::string_view name, std::string_view base)
{
    const std::size_t dot = name.rfind('.');
    const std::size_t ending =
        dot != std::string_view::npos && name.size() - dot <= 8 ? dot : name.size();
    std::size_t pages = name.rfind(' ', ending == 0 ? 0 : ending - 1);
    if (pages == std::string_view::npos || name.size() - pages > 64) {
        pages = ending;
    }
    const std::size_t based = base.empty() ? pages : name.rfind(" " + std::string(base), ending);
    return {based == std::string_view::npos ? pages : based, pages, ending};
}

/// A short mark of the whole name, so that names which differ only where they are cut stay apart.
std::string markOf(std::string_view name)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char c : name) {
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "~%08x",
                  static_cast<unsigned>((hash >> 32U) ^ (hash & 0xffffffffU)));
    return text.data();
}

std::size_t characterBorder(std::string_view text, std::size_t length)
{
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xc0U) == 0x80U) {
        --length;
    }
    return length;
}

} // namespace

std::string shortenOutputName(std::string_view name, std::string_view base, std::size_t limit)
{
    if (name.size() <= limit) {
        return std::string(name);
    }
    const std::size_t head = numberLength(name);
    const std::string mark = markOf(name);
    std::size_t tail = name.size();
    for (const std::size_t start : tailStarts(name, base)) {
        tail = start;
        if (start >= head && head + leastText + mark.size() + (name.size() - start) <= limit) {
            break;
        }
    }
    const std::string_view end = name.substr(tail);
    const std::size_t fixed = mark.size() + end.size();
    std::size_t kept = fixed < limit ? characterBorder(name, limit - fixed) : 0;
    while (kept > head && name[kept - 1] == ' ') {
        --kept;
    }
    std::string shortened(name.substr(0, kept));
    shortened += mark;
    shortened += end;
    return shortened;
}

} // namespace tools
