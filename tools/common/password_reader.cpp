#include "tools/common/password_reader.h"

#include "tools/common/argument_reader.h"
#include "tools/common/tool_error.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

namespace tools {

namespace {

constexpr std::size_t mostBytes = std::size_t{64} << 10U;

std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 4096> piece{};
    for (;;) {
        const ssize_t size = read(descriptor, piece.data(), piece.size());
        if (size == 0) {
            return text;
        }
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size < 0) {
            throw ToolError("",
                            std::string("the passwords cannot be read: ") + std::strerror(errno),
                            exitUsageError);
        }
        text.append(piece.data(), static_cast<std::size_t>(size));
        if (text.size() > mostBytes) {
            throw ToolError("", "the passwords are more than 64 KiB", exitUsageError);
        }
    }
}

} // namespace

int takePasswordDescriptor(ArgumentReader &arguments, std::string_view option)
{
    const std::string_view text = arguments.takeValue(option, "the number of a descriptor");
    int descriptor = noPasswords;
    const char *const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, descriptor);
    if (error != std::errc() || stop != end || descriptor < 0) {
        arguments.fail(std::string(option) + " needs the number of a descriptor, not \"" +
                       std::string(text) + '"');
    }
    return descriptor;
}

std::vector<std::string> readPasswords(int descriptor)
{
    std::vector<std::string> passwords;
    if (descriptor == noPasswords) {
        return passwords;
    }
    const std::string text = readAll(descriptor);
    close(descriptor);
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string line = text.substr(begin, end - begin);
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty()) {
            passwords.push_back(std::move(line));
        }
        begin = end + 1;
    }
    return passwords;
}

} // namespace tools
