#include "tools/pagebinder/output/output_name.h"

#include "tools/common/output_path.h"
#include "tools/common/report.h"

#include <unistd.h>

#include <algorithm>

namespace tools {

namespace {

constexpr std::size_t shortestNameLimit = 64; // whatever the file system says

std::string baseNameOf(const std::string &path)
{
    const std::string name = nameOf(path);
    return name.substr(0, name.find('.'));
}

} // namespace

std::string fittingOutput(const std::string &input, const std::string &output)
{
    const std::string name = nameOf(output);
    if (name.size() <= shortestNameLimit) {
        return output;
    }
    const long longest = pathconf(folderOf(output).c_str(), _PC_NAME_MAX);
    const std::size_t limit =
        std::max(shortestNameLimit, static_cast<std::size_t>(longest > 0 ? longest : 255));
    if (name.size() <= limit) {
        return output;
    }
    const std::string shortened = shortenOutputName(name, baseNameOf(input), limit);
    reportLine("pagebinder", name, "the name is too long, shortened to \"" + shortened + "\"");
    return output.substr(0, output.size() - name.size()) + shortened;
}

void checkOutput(const std::string &input, const std::string &output)
{
    if (nameOf(output).empty()) {
        throw ToolError(output, "is a folder");
    }
    if (isSameFile(input, output)) {
        throw ToolError(output, "is the input itself, which is never written");
    }
}

} // namespace tools
