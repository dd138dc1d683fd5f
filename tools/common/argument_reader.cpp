#include "tools/common/argument_reader.h"

#include "tools/common/tool_error.h"

#include <algorithm>

namespace tools {

std::string_view ArgumentReader::takeValue(std::string_view option, std::string_view what)
{
    if (atEnd() || peek().empty()) {
        fail(std::string(option) + " needs " + std::string(what));
    }
    return take();
}

void ArgumentReader::fail(const std::string &reason) const
{
    throw ToolError("", reason + " (" + m_hint + ")", exitUsageError);
}

std::vector<std::string_view> argumentsOf(int argc, const char *const *argv)
{
    return {argv + std::min(argc, 1), argv + argc};
}

} // namespace tools
