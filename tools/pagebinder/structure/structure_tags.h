#pragma once

#include "tools/pagebinder/structure/element_writer.h"
#include "tools/pagebinder/structure/structure_keys.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// The structure tags of one output: the elements with content on its pages and what is above them,
/// with a parent tree of their own.
class StructureTags
{
public:
    StructureTags(ObjectCopier &copier, DocumentStructure &structure)
        : m_copier(copier), m_writer(copier.writer()), m_source(copier.source()),
          m_structure(structure)
    {
    }

    /// Whether the input has tags. If not, nothing else need be called.
    bool isInInput();

    /// Takes up the pages of the output, before anything is written.
    void addPages(std::vector<TaggedPage> pages);

    /// From now on the output's page @p index is written, with the forms and pictures it draws.
    void beginPage(std::size_t index) noexcept { m_page = index; }
    /// Writes the page's "/StructParents" if it has tagged content.
    void writePageKey();
    /// Writes an annotation's "/StructParent". @param target its number in the output
    void writeAnnotationKey(int target);
    /// Writes that of a form or picture, or a form's "/StructParents".
    void writeStreamKey(pdf_obj *dictionary, int number, int target);

    /// Writes the structure tree, after the pages and all they refer to.
    void write();

    /// Writes the catalog's entries for the tree, if there is one.
    void writeCatalogEntries();

    /// Whether the output's tags are as good as the input's claims: nothing that is tagged has lost
    /// its tags, the language is known. Only after write().
    bool isWhole();
    /// Whether, besides, what holds for the pages of an accessible file holds for those of the
    /// output: the title is shown, headings begin with the first level and skip none, no table cell
    /// has lost its headers and no link its annotation.
    bool isAccessible();

private:
    void writeKey(std::string_view name, int key);
    void writeRoot(ElementWriter &elements);
    void writeParentTree();
    void writeIdentifiers(const ElementWriter &elements);
    void writeRoleMap(pdf_obj *roles, const std::set<std::string> &types);
    void writeClassMap(pdf_obj *classes, ElementWriter &elements);
    void writeNamespaces(pdf_obj *spaces);
    std::string standardType(std::string type);
    bool haveHeadingsInOrder();
    bool haveTabOrder();
    bool haveAnnotations();

    ObjectCopier &m_copier;
    PdfWriter &m_writer;
    PdfSource &m_source;
    DocumentStructure &m_structure;
    std::unique_ptr<StructureKeys> m_keys;
    std::size_t m_page = 0; ///< index of the one that is being written
    bool m_isWritten = false;
    bool m_hasLostHeaders = false;
};

} // namespace tools
