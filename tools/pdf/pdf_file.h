#pragma once

#include "tools/common/input_file.h"

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <string>

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

private:
    static void printWarning(void *user, const char *message);

    fz_context *m_context = nullptr;
    const char *m_tool;
    int m_warnings = 0;
};

/// Owns an opened PDF document. Damaged files are repaired by the library while they are opened.
class PdfFile
{
public:
    /// Reads @p input by the PDF reader alone, whatever the name's ending says.
    /// @throws ToolError when the file is no PDF, has no pages or needs a password
    PdfFile(PdfContext &context, const InputFile &input);
    ~PdfFile();
    PdfFile(const PdfFile &) = delete;
    PdfFile &operator=(const PdfFile &) = delete;

    fz_context *context() const noexcept { return m_context; }
    pdf_document *document() const noexcept { return m_document; }
    const std::string &path() const noexcept { return m_path; }

private:
    fz_context *m_context;
    pdf_document *m_document = nullptr;
    std::string m_path;
};

} // namespace tools
