#pragma once

#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/copying/resource_use.h"

#include <unordered_set>
#include <vector>

namespace tools {

/// Writes the resource dictionaries of pages, forms, patterns and fonts, pruned to the names that
/// are used: producers let all pages share one dictionary, and whole it would carry the pictures
/// and forms of every other page along.
class ContentResources
{
public:
    explicit ContentResources(ObjectCopier &copier) : m_copier(copier), m_source(copier.source()) {}

    /// Writes the entry /Resources of a page.
    /// @param resources its dictionary as it stands, inherited perhaps
    /// @param contents value of /Contents as it stands
    /// @param borrowers streams without resources of their own that use the page's, by number
    void writeForPage(pdf_obj *resources, pdf_obj *contents, const std::vector<int> &borrowers);

    /// Writes the entry /Resources of the form or pattern with this number.
    void writeForStream(pdf_obj *stream, int number);

    /// Writes the entry /Resources of a Type 3 font, if it has one.
    void writeForFont(pdf_obj *font);
    bool isTypeThreeFont(pdf_obj *dictionary) const;

private:
    using Streams = std::vector<int>;

    void write(pdf_obj *resources, const Streams &streams, const Streams &borrowers);
    void writePruned(pdf_obj *resources, const ResourceUse &use);
    void findUse(ResourceUse &use, const Streams &streams, const Streams &borrowers);
    void scan(ResourceUse &use, const Streams &streams);
    /// Streams that @p use says are drawn and that have no resources of their own.
    Streams newBorrowers(const ResourceUse &use, std::unordered_set<int> &seen);
    void addBorrower(pdf_obj *stream, std::unordered_set<int> &seen, Streams &found);
    Streams charProcs(pdf_obj *font);

    ObjectCopier &m_copier;
    PdfSource &m_source;
};

} // namespace tools
