#pragma once

#include "tools/common/input_file.h"
#include "tools/common/tool_error.h"
#include "tools/sandbox/sandbox.h"
#include "tools/sandbox/sealed_text.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tools {

/// Where one output goes.
struct OutputPlace
{
    std::string path;           ///< for people; "-" for standard output
    int folder = -1;            ///< open; -1 for standard output
    const char *name = nullptr; ///< within the folder
    const std::vector<const char *> *hiddenNames =
        nullptr; ///< to write it under, until it is complete
};

/// The places of all outputs of a run, settled before the input is read: their folders are open and
/// their names fixed, as the sandbox needs it. What a killed run of the same user has left in these
/// folders is removed.
class OutputPlaces
{
public:
    /// @param input whose path is fixed as well; it must not be among the outputs
    /// @param outputs paths as given, "-" for standard output
    OutputPlaces(InputFile &input, const std::vector<std::string> &outputs);
    ~OutputPlaces();
    OutputPlaces(const OutputPlaces &) = delete;
    OutputPlaces &operator=(const OutputPlaces &) = delete;

    /// The place of the @p index-th output.
    /// @throws ToolError when its folder cannot be opened or its path must not be written
    const OutputPlace &at(std::size_t index) const;

    SandboxNeeds sandboxNeeds(const InputFile &input) const;

private:
    struct Settled
    {
        OutputPlace place;
        std::optional<ToolError> error;
    };

    Settled settle(const InputFile &input, const std::string &output);
    int openFolder(const std::string &folder);

    std::map<std::string, int> m_folders; ///< open ones, by path
    std::vector<Settled> m_settled;
    std::vector<const char *> m_hiddenNames;
    std::optional<SealedText> m_text;
};

} // namespace tools
