#include "tools/common/report.h"

#include <cstdio>

namespace tools {

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
