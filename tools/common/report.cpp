#include "tools/common/report.h"

#include <cstdio>

namespace tools {

std::string printable(std::string_view text)
{
    std::string shown(text);
    for (char &c : shown) {
        const auto byte = static_cast<unsigned char>(c);
        c = byte < 0x20 || byte == 0x7f ? '?' : c;
    }
    return shown;
}

void reportLine(std::string_view tool, std::string_view file, std::string_view reason)
{
    std::string line(tool);
    line += ": ";
    if (!file.empty()) {
        line += printable(file);
        line += ": ";
    }
    line += printable(reason);
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

int reportError(std::string_view tool, const ToolError &error)
{
    reportLine(tool, error.file(), error.what());
    return error.status();
}

} // namespace tools
