#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// Walks over the arguments of a command line, and ends the program with status 2 and one line when
/// they make no sense.
class ArgumentReader
{
public:
    /// @param hint where the usage is found, put behind every complaint in brackets
    ArgumentReader(std::vector<std::string_view> arguments, std::string hint)
        : m_arguments(std::move(arguments)), m_hint(std::move(hint))
    {
    }

    bool atEnd() const noexcept { return m_next == m_arguments.size(); }
    /// How many arguments are left.
    std::size_t left() const noexcept { return m_arguments.size() - m_next; }
    /// The next argument; atEnd() must be false.
    std::string_view peek() const noexcept { return m_arguments[m_next]; }
    std::string_view take() noexcept { return m_arguments[m_next++]; }

    /// The value of @p option, which comes next and is not empty.
    /// @param what @p option needs, "a file" for example
    std::string_view takeValue(std::string_view option, std::string_view what);

    /// Whether the only argument is one of those that ask for help or for the version.
    bool asksOnlyFor(std::string_view option) const noexcept
    {
        return left() == 1 && peek() == option;
    }

    /// @throws ToolError with exitUsageError
    [[noreturn]] void fail(const std::string &reason) const;

private:
    std::vector<std::string_view> m_arguments;
    std::string m_hint;
    std::size_t m_next = 0;
};

/// The arguments of main() without the program's name; none when there is not even that.
std::vector<std::string_view> argumentsOf(int argc, const char *const *argv);

} // namespace tools
