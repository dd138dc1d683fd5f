#include "tools/pdf/source_file.h"

#include "tools/pdf/file_stream.h"
#include "tools/pdf/password.h"
#include "tools/pdf/quick_opening.h"

namespace tools {

SourceFile::SourceFile(PdfContext &context, InputFile input, Opening opening)
    : m_context(context), m_owned(std::move(input)), m_input(*m_owned)
{
    open(opening);
}

SourceFile::SourceFile(PdfContext &context, const InputFile *input, Opening opening)
    : m_context(context), m_input(*input)
{
    open(opening);
}

SourceFile::~SourceFile()
{
    pdf_drop_document(context(), m_document);
}

void SourceFile::open(Opening opening)
{
    QuickOpening reading(context(), m_input);
    if (opening == Opening::quick) {
        m_document = reading.open();
        m_isQuick = m_document != nullptr;
    }
    if (m_document == nullptr) {
        m_document = reading.openMisreadTable();
    }
    if (m_document == nullptr) {
        m_document = openByLibrary({});
    }
    if (!m_isQuick) {
        checkPassword();
    }
}

void SourceFile::checkPassword()
{
    try {
        const bool isOpen = readRepairing(*this, [this] {
            PdfSource source(*this);
            return opensWithoutPassword(source);
        });
        if (!isOpen) {
            throw ToolError(path(), "needs a password");
        }
    } catch (...) {
        pdf_drop_document(context(), m_document);
        m_document = nullptr;
        throw;
    }
}

bool SourceFile::repair()
{
    if (pdf_was_repaired(context(), m_document) != 0) {
        return false;
    }
    // A table that cannot be is as good as none.
    pdf_document *repaired = openByLibrary("\nstartxref\n0\n%%EOF\n");
    pdf_drop_document(context(), m_document);
    m_document = repaired;
    m_isQuick = false;
    checkPassword();
    return true;
}

pdf_document *SourceFile::openByLibrary(std::string_view tail)
{
    pdf_document *document = nullptr;
    fz_stream *stream = nullptr;
    fz_var(stream);
    fz_var(document);
    fz_try(context())
    {
        stream = openFileStream(context(), m_input.descriptor(), m_input.size(), tail);
        document = pdf_open_document_with_stream(context(), stream);
    }
    fz_always(context())
    {
        fz_drop_stream(context(), stream);
    }
    fz_catch(context())
    {
        m_input.checkUnchanged(); // what a file that changes looks like means nothing
        throw ToolError(path(),
                        std::string("cannot be read as PDF: ") + fz_caught_message(context()));
    }
    return document;
}

} // namespace tools
