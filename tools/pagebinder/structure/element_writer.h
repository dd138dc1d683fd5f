#pragma once

#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/structure/structure_keys.h"
#include "tools/pdf/kept_object.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

namespace tools {

/// Writes the structure elements that an output keeps.
class ElementWriter
{
public:
    ElementWriter(ObjectCopier &copier, StructureCut &cut, const std::vector<TaggedPage> &pages)
        : m_copier(copier), m_writer(copier.writer()), m_source(copier.source()), m_cut(cut),
          m_pages(pages)
    {
    }

    void writeAll();

    /// Writes what an element, or the root, holds: "/K[...]".
    /// @param page number in the output of the page that marks without one are on
    void writeKids(const StructureCut::Kept &kept, int page);
    /// Writes attributes: one dictionary or a list of them.
    void writeAttributes(pdf_obj *attributes, int copy);

    /// The elements with an identifier: it and the element's number in the output.
    const std::map<std::string, int> &identifiers() const noexcept { return m_identifiers; }
    /// Types and classes that the elements have.
    std::set<std::string> types() const;
    const std::set<std::string> &classes() const noexcept { return m_classes; }
    /// Whether a table cell has lost a header that is on another page.
    bool hasLostHeaders() const noexcept { return m_hasLostHeaders; }

private:
    void collectIdentifiers();
    std::string identifierFor(const std::string &identifier, int copy) const;
    void write(const StructureCut::Kept &kept, int parent);
    int pageOf(const StructureCut::Kept &kept) const;
    void writeKid(const StructureCut::Kept &kept, const StructureCut::Kid &kid, int page);
    void writeEntries(const StructureCut::Kept &kept);
    void writeEntry(const StructureCut::Kept &kept, std::string_view key, std::string_view text);
    void writeSimple(std::string_view key, std::string_view text);
    void writeType(std::string_view text);
    void writeReferences(std::string_view text, int copy);
    void writeHeaders(pdf_obj *headers, int copy);
    void writeAttribute(pdf_obj *attribute, int copy);
    void noteClasses(pdf_obj *classes);

    ObjectCopier &m_copier;
    PdfWriter &m_writer;
    PdfSource &m_source;
    StructureCut &m_cut;
    const std::vector<TaggedPage> &m_pages;
    std::map<std::string, int> m_identifiers;
    std::set<std::string, std::less<>> m_types; ///< as they stand
    std::set<std::string> m_classes;
    bool m_hasLostHeaders = false;
};

} // namespace tools
