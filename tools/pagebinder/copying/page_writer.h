#pragma once

#include "tools/pagebinder/copying/content_resources.h"
#include "tools/pdf/page_tree.h"

namespace tools {

class StructureTags;

/// One page of the output.
struct OutputPage
{
    int sourcePage = 0; ///< in the input, counted from 1
    FoundPage found;
    int target = 0; ///< number of the page object in the output
};

/// Writes page dictionaries. What a page takes over from the nodes above it is written onto the
/// page itself.
class PageWriter
{
public:
    PageWriter(ObjectCopier &copier, ContentResources &resources, PageTree &tree,
               StructureTags &tags)
        : m_copier(copier), m_source(copier.source()), m_resources(resources), m_tree(tree),
          m_tags(tags)
    {
    }

    /// @param parent number of the page tree's root
    /// @param annotations numbers of what stands in /Annots
    /// @param appearances appearance streams, which may use the page's resources
    void write(const OutputPage &page, int parent, const std::vector<int> &annotations,
               const std::vector<Drawing> &appearances);

    /// Writes a page in place of one that cannot be read, which says so in print.
    void writeStandIn(const OutputPage &page, int parent);

private:
    /// In points.
    struct Size
    {
        double width = 612;
        double height = 792;
    };

    void writeInherited(const FoundPage &page);
    void writeMediaBox(const Size &size);
    Size sizeOf(const FoundPage &page);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    ContentResources &m_resources;
    PageTree &m_tree;
    StructureTags &m_tags;
};

} // namespace tools
