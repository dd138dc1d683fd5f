#include "tools/pagebinder/opening/source_file.h"

#include "tools/pagebinder/opening/quick_opening.h"

namespace tools {

SourceFile::SourceFile(PdfContext &context, InputFile input, Opening opening)
    : m_context(context), m_input(std::move(input))
{
    if (opening == Opening::quick) {
        openQuickly();
    }
    if (m_document == nullptr) {
        openByLibrary();
    }
}

SourceFile::~SourceFile()
{
    if (!m_library) {
        pdf_drop_document(context(), m_document);
    }
}

void SourceFile::useLibrary()
{
    if (!m_library) {
        m_quickNode = KeptObject();
        m_quickKids.clear();
        pdf_drop_document(context(), m_document);
        m_document = nullptr;
        openByLibrary();
    }
}

void SourceFile::openQuickly()
{
    QuickOpening opening(context(), m_input);
    m_document = opening.open();
    if (m_document == nullptr) {
        return;
    }
    m_quickNode = KeptObject(context(), opening.readKids(m_quickKids));
    if (m_document->repair_attempted != 0) {
        useLibrary();
    }
}

void SourceFile::openByLibrary()
{
    try {
        m_library = std::make_unique<PdfFile>(m_context, m_input);
    } catch (const ToolError &) {
        m_input.checkUnchanged(); // what a file that changes looks like means nothing
        throw;
    }
    m_document = m_library->document();
}

} // namespace tools
