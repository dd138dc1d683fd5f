#pragma once

#include "tools/pagebinder/document/destinations.h"
#include "tools/pagebinder/document/form_fields.h"
#include "tools/pagebinder/structure/structure_tags.h"

#include <unordered_map>
#include <vector>

namespace tools {

/// Copies the annotations of the output's pages. Each copy of a page has annotations of its own.
class Annotations
{
public:
    Annotations(ObjectCopier &copier, DrawnContent &drawn, Destinations &destinations,
                FormFields &fields, StructureTags &tags)
        : m_copier(copier), m_source(copier.source()), m_drawn(drawn), m_destinations(destinations),
          m_fields(fields), m_tags(tags)
    {
    }

    /// Decides what is copied and numbers it. Must be done for all pages before anything is
    /// written, because annotations, fields and links refer to one another.
    void add(const OutputPage &page);

    /// The copies of the page that was added as number @p index, as far as tags may name them.
    std::vector<TaggedPage::Annotation> copiedOn(std::size_t index) const;

    /// Writes the annotations of the page that was added as number @p index.
    void write(std::size_t index);

    /// Numbers in the output of what stands in the page's /Annots.
    std::vector<int> targets(std::size_t index) const;

    /// The appearances on the page. What their own resources do not list they find in the page's.
    std::vector<Drawing> appearances(std::size_t index);

private:
    enum class Extent {
        none,
        look, ///< a link that leads nowhere any more: only what is seen of it
        seal, ///< the widget of a signature, copied as a mere picture
        whole
    };
    struct Annotation
    {
        pdf_obj *dictionary;
        int number;
        int target;
        Extent extent;
    };
    struct PageAnnotations
    {
        int page = 0; ///< number of the page object in the output
        std::vector<Annotation> annotations;
        std::unordered_map<int, int> targets; ///< object number to number in the output
    };

    Extent extentOf(pdf_obj *annotation, int number);
    bool isVisible(pdf_obj *link);
    void writeLook(const Annotation &annotation, int page);
    void writeAnnotation(const Annotation &annotation, int page);
    void writeReference(std::string_view key, pdf_obj *value);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    DrawnContent &m_drawn;
    Destinations &m_destinations;
    FormFields &m_fields;
    StructureTags &m_tags;
    std::vector<PageAnnotations> m_pages;
};

} // namespace tools
