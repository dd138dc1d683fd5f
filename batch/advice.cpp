#include "batch/advice.h"

#include <array>
#include <utility>

namespace quorlin::batch {

namespace {

/// How a reason begins, and what to do then.
constexpr std::array<std::pair<const char *, const char *>, 8> advice = {{
    {"needs a password that", "add its password to the file behind --password-file"},
    {"needs a password", "give it with --password-file FILE"},
    {"cannot be read as PDF", "check whether a PDF viewer can open it"},
    {"is too damaged", "try to open it in a PDF viewer and to save it again"},
    {"it is empty", "check whether it was copied completely"},
    {"it changed while it was split", "split it again once it is complete"},
    {"a tool made no progress", "allow more time with --timeout SECONDS"},
    {"the page took too long", "allow more time with --timeout SECONDS"},
}};

} // namespace

QString advisedReason(const QString &reason)
{
    for (const auto &[beginning, whatToDo] : advice) {
        if (reason.startsWith(QLatin1String(beginning))) {
            return reason + QStringLiteral(" (") + QLatin1String(whatToDo) + u')';
        }
    }
    return reason;
}

} // namespace quorlin::batch
