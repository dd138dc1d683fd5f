#pragma once

#include "tools/pagebinder/structure/document_structure.h"
#include "tools/pagebinder/structure/structure_cut.h"

#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tools {

/// A page of the output, as far as tags are concerned.
struct TaggedPage
{
    struct Annotation
    {
        pdf_obj *dictionary = nullptr;
        int number = 0; ///< object number
        int target = 0; ///< number in the output
    };
    pdf_obj *page = nullptr; ///< null: a stand-in
    int number = 0;          ///< object number
    int target = 0;          ///< number in the output
    int copy = 0;            ///< how often the page has come before
    std::vector<Annotation> annotations = {};
};

/// Finds the elements of what one output copies, and numbers their places in its parent tree
/// (/StructParents, /StructParent).
class StructureKeys
{
public:
    static constexpr int none = -1;

    /// What the output's parent tree says under one key.
    struct Entry
    {
        bool isList = false;
        std::vector<std::pair<int, int>> marks = {}; ///< number of the mark, index in the cut
        int kept = 0;                                ///< index in the cut; not of a list
    };

    StructureKeys(PdfSource &source, DocumentStructure &structure)
        : m_source(source), m_structure(structure)
    {
    }

    /// Takes up all pages of the output.
    void addPages(std::vector<TaggedPage> pages);

    /// The key of a page; none where nothing on it is tagged. @param index of the output's page
    int keyOfPage(std::size_t index) const;
    /// The key of an annotation by its number in the output.
    int keyOfAnnotation(int target) const;
    /// Takes up a form or picture that page @p index draws, at its first time. @returns its key
    int addStream(pdf_obj *dictionary, int number, int target, std::size_t index);

    const std::vector<TaggedPage> &pages() const noexcept { return m_pages; }
    /// By key.
    const std::vector<Entry> &entries() const noexcept { return m_entries; }
    /// Null when nothing is kept.
    StructureCut *cut() noexcept { return m_cut && !m_cut->kept().empty() ? m_cut.get() : nullptr; }
    /// Whether the input's tags are in order and nothing on the pages has lost them.
    bool isWhole() const noexcept { return m_isWhole; }

private:
    using Place = StructureTree::Place;

    void begin(StructureTree &tree);
    bool addLinked();
    void addWalked();
    bool addPage(std::size_t index);
    bool addMarks(std::size_t index, const std::vector<int> &numbers);
    bool addElement(std::size_t index, int element, const std::vector<int> &numbers, Entry &entry);
    bool addAnnotation(std::size_t index, const TaggedPage::Annotation &annotation);
    bool hasMarks(const TaggedPage &page);
    std::vector<Place> placesInStream(pdf_obj *dictionary, int number);
    std::vector<Place> placesOfObject(int key, int number);
    int pageOf(const StructureKid &kid, std::size_t drawing) const;
    int open(Entry entry);

    PdfSource &m_source;
    DocumentStructure &m_structure;
    std::unique_ptr<StructureCut> m_cut;
    std::vector<TaggedPage> m_pages;
    std::unordered_map<int, int> m_pageByNumber; ///< object number to index of its first copy
    std::vector<int> m_pageKeys;
    std::unordered_map<int, int> m_annotationKeys;
    std::vector<Entry> m_entries;
    std::vector<int> m_positions;
    bool m_hasCopies = false;
    bool m_isWhole = true;
};

} // namespace tools
