// File names of any content: a shortened name fits, keeps its number and cuts no character in two.
// The first byte of the input decides the limit, a line feed separates the base name from the name.

#include "tools/pagebinder/output/output_name.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

/// Whether @p text is UTF-8 as far as the number of continuation bytes goes.
bool isWhole(std::string_view text)
{
    std::size_t expected = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xc0U) == 0x80U;
        if (continues != (expected > 0)) {
            return false;
        }
        if (continues) {
            --expected;
        } else {
            expected = byte >= 0xf0U ? 3 : byte >= 0xe0U ? 2 : byte >= 0xc0U ? 1 : 0;
        }
    }
    return expected == 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const std::size_t limit = 64U + data[0];
    const std::string_view text(reinterpret_cast<const char *>(data) + 1, size - 1);
    const std::size_t end = text.find('\n');
    const std::string_view base = end == std::string_view::npos ? "" : text.substr(0, end);
    const std::string_view name = end == std::string_view::npos ? text : text.substr(end + 1);
    const std::string shortened = tools::shortenOutputName(name, base, limit);
    const bool holds = name.size() <= limit ? shortened == name : shortened.size() <= limit;
    if (!holds || (isWhole(name) && !isWhole(shortened))) {
        std::abort();
    }
    return 0;
}
