#pragma once

#include "tools/pagebinder/opening/kept_object.h"
#include "tools/pdf/pdf_file.h"

#include <memory>
#include <string>
#include <vector>

namespace tools {

/// Owns the PDF document that pages are taken from. Damaged files are repaired by the library.
///
/// The library reads the whole cross-reference table and the whole list of pages before it gives
/// the first page away. Where both are well-formed they are read here instead, in a fraction of the
/// time; at the first surprise the file is opened by the library alone, and so it is after
/// useLibrary().
class SourceFile
{
public:
    enum class Opening { quick, byLibrary };

    /// Opens @p path read-only and by the PDF reader alone, whatever the name's ending says.
    /// @throws ToolError when the file is missing, is no PDF, has no pages or needs a password
    explicit SourceFile(PdfContext &context, const std::string &path,
                        Opening opening = Opening::quick)
        : SourceFile(context, InputFile(path), opening)
    {
    }
    SourceFile(PdfContext &context, InputFile input, Opening opening = Opening::quick);
    ~SourceFile();
    SourceFile(const SourceFile &) = delete;
    SourceFile &operator=(const SourceFile &) = delete;

    fz_context *context() const noexcept { return m_context.get(); }
    pdf_document *document() const noexcept { return m_document; }
    const std::string &path() const noexcept { return m_input.path(); }
    const InputFile &input() const noexcept { return m_input; }

    /// Opens the file anew by the library alone, unless that is done already. Objects of the former
    /// document are gone then. @throws ToolError as the constructor does
    void useLibrary();

    /// Whether the file was opened without the library's own reading of its table.
    bool isQuick() const noexcept { return m_library == nullptr; }

    /// The node of the page tree whose /Kids were read here; in the document they are empty. Null
    /// when the library has read all of them.
    pdf_obj *quickNode() const noexcept { return m_quickNode.get(); }
    /// Object numbers of the /Kids of quickNode().
    const std::vector<int> &quickKids() const noexcept { return m_quickKids; }

private:
    void openQuickly();
    void openByLibrary();

    PdfContext &m_context;
    const InputFile m_input;
    pdf_document *m_document = nullptr; ///< owned here unless m_library is set
    std::unique_ptr<PdfFile> m_library;
    KeptObject m_quickNode;
    std::vector<int> m_quickKids;
};

} // namespace tools
