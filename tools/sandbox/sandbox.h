#pragma once

#include <string>
#include <vector>

namespace tools {

/// What a tool still needs when it begins to read a file from a stranger.
struct SandboxNeeds
{
    /// Descriptors that stay open besides the three standard ones.
    std::vector<int> descriptors;
    /// Those of them that are folders in which files are created, renamed and removed.
    std::vector<int> outputFolders;
    /// Whether all names and paths are sealed text at its proper place (SealedText::isInPlace()).
    /// The system call filter refuses all others.
    bool namesAreSealed = true;
    bool usesThreads = false;
};

/// What was given up, part by part.
struct SandboxState
{
    std::string privileges; ///< empty: no new privileges; otherwise why not
    std::string filter;     ///< empty: the system call filter is on; otherwise why not
    std::string landlock;   ///< empty: Landlock is on; otherwise why not
    int landlockVersion = 0;
};

/// The parts of the sandbox, to leave some out.
enum class SandboxParts { all, filterOnly, landlockOnly };

/// Gives up what @p needs does not list, for this process and all its threads to come: other
/// descriptors, new privileges, the network, other programs and processes, other files. Call it
/// while the process has one thread, with its input and output folders open, before it reads the
/// first byte of the input. What the system does not grant is left out and told in the result; the
/// other parts still hold.
///
/// Afterwards files are created only by openat() with O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW and
/// removed or renamed only by unlinkat() and renameat(), under sealed names and in a folder that is
/// open. Sealed paths can be looked at with lookAt(), open files with lookAtOpen().
///
/// The environment variable QUORLIN_SANDBOX set to "off" leaves all of it out, for debuggers. It is
/// also left out under sanitizers and valgrind, which need what it takes away.
SandboxState enterSandbox(const SandboxNeeds &needs, SandboxParts parts = SandboxParts::all);

/// Enters the sandbox and, when QUORLIN_SANDBOX is "report", says on stderr what was granted.
/// @param tool name of the program that speaks
void enterSandboxOf(const char *tool, const SandboxNeeds &needs);

/// One line about @p state, for people.
std::string describeSandbox(const SandboxState &state);

/// One line about the sandbox that this program was built with.
const char *sandboxSummary();

} // namespace tools
