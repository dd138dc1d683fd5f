#include "tools/pagebinder/content_resources.h"

namespace tools {

bool ContentResources::isTypeThreeFont(pdf_obj *dictionary)
{
    return m_source.raw(dictionary, PDF_NAME(CharProcs)) != nullptr;
}

void ContentResources::writeForPage(pdf_obj *resources, pdf_obj *)
{
    m_copier.writeEntry("Resources", resources);
}

void ContentResources::writeForStream(pdf_obj *stream, int)
{
    m_copier.writeEntry("Resources", m_source.raw(stream, PDF_NAME(Resources)));
}

void ContentResources::writeForFont(pdf_obj *font)
{
    m_copier.writeEntry("Resources", m_source.raw(font, PDF_NAME(Resources)));
}

} // namespace tools
