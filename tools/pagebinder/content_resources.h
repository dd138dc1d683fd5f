#pragma once

#include "tools/pagebinder/object_copier.h"

namespace tools {

/// Writes the resource dictionaries of pages, forms, patterns and fonts.
class ContentResources
{
public:
    explicit ContentResources(ObjectCopier &copier) : m_copier(copier), m_source(copier.source()) {}

    /// Writes the entry /Resources of a page.
    void writeForPage(pdf_obj *resources, pdf_obj *contents);
    /// Writes the entry /Resources of a form or a pattern.
    void writeForStream(pdf_obj *stream, int number);
    /// Writes the entry /Resources of a Type 3 font, if it has one.
    void writeForFont(pdf_obj *font);
    bool isTypeThreeFont(pdf_obj *dictionary);

private:
    ObjectCopier &m_copier;
    PdfSource &m_source;
};

} // namespace tools
