#pragma once

#include <mupdf/fitz.h>

namespace tools {

/// Owns one MuPDF context. One context and one document belong to one thread. Warnings and errors
/// that the library prints are capped at a few lines on stderr, each beginning with the tool's
/// name.
class PdfContext
{
public:
    /// @param tool name of the program, for its messages; must outlive the context
    explicit PdfContext(const char *tool);
    ~PdfContext();
    PdfContext(const PdfContext &) = delete;
    PdfContext &operator=(const PdfContext &) = delete;

    fz_context *get() const noexcept { return m_context; }

    /// How often the library has complained about what it read, not counting wrong lengths of
    /// streams, which cost nothing. Every complaint counts, the same one over and over too, if this
    /// is asked in between.
    int complaints();

private:
    static void printWarning(void *user, const char *message);

    fz_context *m_context = nullptr;
    const char *m_tool;
    int m_warnings = 0;
    int m_complaints = 0;
};

} // namespace tools
