#include "batch/advice.h"

#include <array>
#include <utility>

namespace quorlin::batch {

namespace {

/// How a reason begins, and what to do then.
constexpr std::array<std::pair<const char *, const char *>, 8> advice = {{
    {"needs a password that", "add its password to the file behind --password-file"},
    {"needs a password", "give it with --password-file FILE"},
    {"cannot be read as PDF", "see whether a PDF viewer opens it"},
    {"is too damaged", "see whether a PDF viewer opens it and can save it anew"},
    {"it is empty", "see whether it was copied to its end"},
    {"it changed while it was split", "split it again once it is complete"},
    {"a tool made no progress", "give it longer with --timeout SECONDS"},
    {"the page took too long", "give it longer with --timeout SECONDS"},
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
