// An information file of any content: the page count's digits are digits of the text.

#include "pipeline/information_file.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString digits = quorlin::pageCountDigits(text);
    if (!text.contains(digits)) {
        std::abort();
    }
    for (const QChar c : digits) {
        if (!c.isDigit()) {
            std::abort();
        }
    }
    return 0;
}
