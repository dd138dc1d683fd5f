#pragma once

#include "tools/common/input_file.h"
#include "tools/common/password_reader.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tools {

/// The command line of pagexport, understood.
struct ExportArguments
{
    enum class Action { exportPages, listItems, showHelp, showVersion };

    Action action = Action::exportPages;
    std::string input;
    std::string output;                 ///< of exportPages: the index; page files lie beside it
    std::optional<long long> firstPage; ///< 1-based, as given
    std::optional<long long> lastPage;
    std::optional<std::size_t> mostThreads; ///< at least 1; one per processor when left out
    int passwords = noPasswords;            ///< descriptor to read passwords from
    std::vector<std::string> passwordList;  ///< that were read from it
    std::optional<FileIdentity> identity;   ///< that the input must have

    /// The process has nothing else to do, so it gives up what it does not need.
    bool locksUp = false;

    /// Page bounds given to an export ask for the pages' pictures, too.
    bool wantsPictures() const noexcept
    {
        return action == Action::exportPages && (firstPage || lastPage);
    }
};

/// Reads the arguments (the program's name first). Options and files may be mixed; "--" ends the
/// options, so that a file name may begin with "-".
/// @throws ToolError with status 2 when they make no sense
ExportArguments parseExportArguments(int argc, const char *const *argv);

/// The text that --help prints.
std::string exportHelp();

} // namespace tools
