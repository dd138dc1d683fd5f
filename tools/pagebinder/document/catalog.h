#pragma once

#include "tools/pagebinder/copying/object_copier.h"

#include <string>

namespace tools {

/// Writes what belongs to the document as a whole: metadata, layers, settings of the viewer.
class Catalog
{
public:
    explicit Catalog(ObjectCopier &copier) : m_copier(copier), m_source(copier.source()) {}

    /// Writes the catalog's entries that are copied as they are, fit for the part.
    /// @param hasBookmarks whether the output has any
    void writeEntries(bool hasBookmarks);

    /// Writes the document information. @returns its number in the output, 0 when there is none
    int writeInformation();

private:
    void writeMetadata();
    void writeOutputIntents();
    void writePageMode(bool hasBookmarks);
    void writeViewerPreferences();
    std::string loadMetadata(int number);
    bool areSmall(pdf_obj *intents);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    bool m_claimsPdfA = false;
};

} // namespace tools
