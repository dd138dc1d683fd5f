#pragma once

#include <mupdf/fitz.h>

#include <string>
#include <vector>

namespace tools {

/// Owns one MuPDF context. One context and one document belong to one thread. Of the warnings and
/// errors of the library a few go to stderr, each a line that begins with the tool's name, once
/// showWarnings() was called.
class PdfContext
{
public:
    /// @param tool name of the program, for its messages; must outlive the context
    explicit PdfContext(const char *tool);
    ~PdfContext();
    PdfContext(const PdfContext &) = delete;
    PdfContext &operator=(const PdfContext &) = delete;

    fz_context *get() const noexcept { return m_context; }

    /// Prints the warnings that came until now, and from now on each as it comes. Without this they
    /// go with the context: of a file that cannot be read the tool's own complaint says enough.
    void showWarnings();

    /// How often the library has complained about what it read, not counting wrong lengths of
    /// streams, which cost nothing. Every complaint counts, the same one over and over too, if this
    /// is asked in between.
    int complaints();

private:
    static void takeWarning(void *user, const char *message);
    void say(std::string warning);

    fz_context *m_context = nullptr;
    const char *m_tool;
    int m_warnings = 0;
    int m_complaints = 0;
    bool m_areShown = false;
    std::vector<std::string> m_heldBack;
};

} // namespace tools
