#include "tools/common/report.h"

#include <cstdio>

namespace tools {

namespace {

void appendPrintable(std::string &line, std::string_view text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        line += byte < 0x20 || byte == 0x7f ? '?' : c;
    }
}

} // namespace

void reportLine(std::string_view tool, std::string_view file, std::string_view reason)
{
    std::string line(tool);
    line += ": ";
    if (!file.empty()) {
        appendPrintable(line, file);
        line += ": ";
    }
    appendPrintable(line, reason);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

int reportError(std::string_view tool, const ToolError &error)
{
    reportLine(tool, error.file(), error.what());
    return error.status();
}

} // namespace tools
