#include "tools/pdf/source_file.h"

#include "tools/pdf/file_stream.h"
#include "tools/pdf/password.h"
#include "tools/pdf/quick_opening.h"

#include <algorithm>

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
    QuickOpening table(context(), m_input);
    if (opening == Opening::quick) {
        m_document = table.open();
        m_isQuick = m_document != nullptr;
    }
    if (m_document == nullptr) {
        m_document = table.openMisreadTable();
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
            const std::vector<std::string> &passwords = m_input.passwords();
            return opensWithoutPassword(source) ||
                   std::any_of(passwords.begin(), passwords.end(),
                               [&source](const auto &word) { return opensWith(source, word); });
        });
        if (!isOpen) {
            throw ToolError(path(), m_input.passwords().empty()
                                        ? "needs a password"
                                        : "needs a password that is not among those given");
        }
    } catch (...) {
        pdf_drop_document(context(), m_document);
        m_document = nullptr;
        throw;
    }
}

bool SourceFile::readAs(Reading reading)
{
    const bool isRepaired = pdf_was_repaired(context(), m_document) != 0;
    pdf_document *other = nullptr;
    if (reading == Reading::repaired && !isRepaired) {
        // A table that cannot be is as good as none.
        other = openByLibrary("\nstartxref\n0\n%%EOF\n");
    } else if (reading == Reading::leavingLost && isRepaired) {
        other =
            QuickOpening(context(), m_input, QuickOpening::LostObjects::left).openMisreadTable();
    }
    if (other == nullptr) {
        return false;
    }
    pdf_drop_document(context(), m_document);
    m_document = other;
    m_isQuick = false;
    m_reading = reading;
    checkPassword();
    return true;
}

void SourceFile::setPages(std::shared_ptr<const PageList> pages)
{
    if (pages && pages->reading != m_reading) {
        readAs(pages->reading);
    }
    m_pages = std::move(pages);
}

pdf_document *SourceFile::openByLibrary(std::string_view update)
{
    pdf_document *document = nullptr;
    fz_stream *stream = nullptr;
    fz_var(stream);
    fz_var(document);
    fz_try(context())
    {
        stream = openFileStream(context(), m_input.descriptor(), m_input.size(), update);
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
