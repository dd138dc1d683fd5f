#include "tools/pdf/source_file.h"

#include "tools/pdf/quick_opening.h"

namespace tools {

SourceFile::SourceFile(PdfContext &context, const std::string &path, Opening opening)
    : m_context(context), m_path(path)
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
        m_quickNode = nullptr;
        m_quickKids.clear();
        pdf_drop_document(context(), m_document);
        m_document = nullptr;
        openByLibrary();
    }
}

void SourceFile::openQuickly()
{
    QuickOpening opening(context(), m_path);
    m_document = opening.open();
    if (m_document == nullptr) {
        return;
    }
    m_quickNode = opening.readKids(m_quickKids);
    if (m_document->repair_attempted != 0) {
        useLibrary();
    }
}

void SourceFile::openByLibrary()
{
    m_library = std::make_unique<PdfFile>(m_context, m_path);
    m_document = m_library->document();
}

} // namespace tools
