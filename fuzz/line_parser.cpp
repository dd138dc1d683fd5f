// A page file of any content: parsing never reads past a line, never gives a negative number, and
// an item's text always stands in its line.

#include "analysis/line_parser.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString html =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const QString &line : quorlin::pageFileLines(html)) {
        const Subtext item = quorlin::parseItem(line);
        const bool holds = item.left >= 0 && item.top >= 0 && item.width >= 0 && item.height >= 0 &&
                           line.contains(item.text) && !item.text.contains(QLatin1Char('>'));
        if (!holds) {
            std::abort();
        }
    }
    return 0;
}
