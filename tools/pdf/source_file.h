#pragma once

#include "tools/common/input_file.h"
#include "tools/pdf/page_list.h"
#include "tools/pdf/pdf_context.h"

#include <mupdf/pdf.h>

#include <memory>
#include <optional>
#include <string>

namespace tools {

/// Owns the PDF document that pages are taken from. Both tools open their files here, so that what
/// one can read the other can, too. Damaged files are repaired by the library.
///
/// The library reads the whole cross-reference table before it gives the first page away. Where
/// that is well-formed it is read here instead, in a fraction of the time; at the first surprise
/// the library alone opens the file.
class SourceFile
{
public:
    enum class Opening { quick, byLibrary };

    /// Opens @p path read-only and by the PDF reader alone, whatever the name's ending says.
    /// @throws ToolError when the file is missing, is no PDF or needs a password
    explicit SourceFile(PdfContext &context, const std::string &path,
                        Opening opening = Opening::quick)
        : SourceFile(context, InputFile(path), opening)
    {
    }
    SourceFile(PdfContext &context, InputFile input, Opening opening = Opening::quick);
    /// @param input must outlive the file; several may share it
    SourceFile(PdfContext &context, const InputFile *input, Opening opening = Opening::quick);
    ~SourceFile();
    SourceFile(const SourceFile &) = delete;
    SourceFile &operator=(const SourceFile &) = delete;

    PdfContext &libraryContext() const noexcept { return m_context; }
    fz_context *context() const noexcept { return m_context.get(); }
    /// Lent to those who let the library do its own work with it, like drawing a page; null after
    /// a repair that has failed.
    pdf_document *document() const noexcept { return m_document; }
    const std::string &path() const noexcept { return m_input.path(); }
    const InputFile &input() const noexcept { return m_input; }

    /// How often the library has complained about the file so far, see PdfContext::complaints().
    int complaints() const { return m_context.complaints(); }

    /// Opens the file again to find its objects in another way. What was taken from the document is
    /// no longer valid.
    /// @returns false, and nothing has happened, when that cannot be or would make no difference
    /// @throws ToolError as the constructor does
    bool readAs(Reading reading);
    Reading reading() const noexcept { return m_reading; }

    /// Whether the file was opened without the library's own reading of its table.
    bool isQuick() const noexcept { return m_isQuick; }

    /// The pages, once somebody has looked for them.
    const std::shared_ptr<const PageList> &pages() const noexcept { return m_pages; }
    /// Takes the pages that were found in this file, by others perhaps who have it open, and reads
    /// the file as they have. @throws ToolError as the constructor does
    void setPages(std::shared_ptr<const PageList> pages);

private:
    void open(Opening opening);
    pdf_document *openByLibrary(std::string_view update);
    void checkPassword();

    PdfContext &m_context;
    const std::optional<InputFile> m_owned;
    const InputFile &m_input;
    pdf_document *m_document = nullptr;
    bool m_isQuick = false;
    Reading m_reading = Reading::asOpened;
    std::shared_ptr<const PageList> m_pages;
};

} // namespace tools
