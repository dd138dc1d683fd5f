#include "tools/pagexport/output/export_names.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace tools {

namespace {

constexpr std::string_view pageEnding = ".htm";
constexpr std::string_view pictureEnding = ".png";
constexpr std::string_view unfinishedEnding = ".part";

std::size_t digitsOf(int number)
{
    std::size_t digits = 1;
    for (; number >= 10; number /= 10) {
        ++digits;
    }
    return std::max(digits, fewestDigits);
}

std::size_t strideOf(const ExportNames::Wanted &wanted)
{
    return baseOfExport(wanted.index).size() + numberMark.size() + digitsOf(wanted.pages) +
           pageEnding.size() + 1;
}

std::size_t nameBytes(const ExportNames::Wanted &wanted)
{
    const std::size_t tables = wanted.hasPictures ? 2 : 1;
    return tables * static_cast<std::size_t>(wanted.pages) * strideOf(wanted) +
           2 * (wanted.index.size() + 1) + unfinishedEnding.size();
}

/// Counts a decimal number on where it stands. @returns false when it needs another digit
bool increment(char *begin, char *end)
{
    for (char *digit = end; digit != begin;) {
        --digit;
        if (*digit != '9') {
            ++*digit;
            return true;
        }
        *digit = '0';
    }
    return false;
}

} // namespace

int mostPagesOf(std::uint64_t bytes)
{
    constexpr std::uint64_t always = 1'000;
    constexpr std::uint64_t crowded = 99'000; // of them a few bytes each are enough
    constexpr std::uint64_t most = 1'000'000;
    return static_cast<int>(std::min(always + std::min(bytes / 4, crowded) + bytes / 256, most));
}

std::string_view baseOfExport(std::string_view indexName)
{
    const std::size_t dot = indexName.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? indexName : indexName.substr(0, dot);
}

ExportNames::ExportNames(const Wanted &wanted)
    : m_mostPages(wanted.pages), m_stride(strideOf(wanted)),
      m_text(nameBytes(wanted), wanted.inputPath.size() + 1), m_index(m_text.addName(wanted.index)),
      m_unfinishedIndex(m_text.addName(std::string(wanted.index) + std::string(unfinishedEnding))),
      m_pages(addNumbered(baseOfExport(wanted.index), pageEnding)),
      m_inputPath(m_text.addPath(wanted.inputPath))
{
    if (wanted.hasPictures) {
        m_pictures = addNumbered(baseOfExport(wanted.index), pictureEnding);
    }
    m_text.seal();
}

const char *ExportNames::addNumbered(std::string_view base, std::string_view ending)
{
    const std::size_t digits = base.size() + numberMark.size();
    std::string name(base);
    name += numberMark;
    name.append(fewestDigits, '0');
    name += ending;
    char *const table = m_text.takeRoom(static_cast<std::size_t>(m_mostPages) * m_stride);
    for (int number = 1; number <= m_mostPages; ++number) {
        if (!increment(name.data() + digits, name.data() + name.size() - ending.size())) {
            name.insert(digits, 1, '1');
        }
        std::memcpy(table + static_cast<std::size_t>(number - 1) * m_stride, name.c_str(),
                    name.size() + 1);
    }
    return table;
}

} // namespace tools
