#pragma once

#include "tools/pagebinder/structure/element_reader.h"
#include "tools/pdf/object_texts.h"

#include <cstdint>
#include <deque>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tools {

/// A document's structure tree, read as far as it is asked for and once for all outputs.
///
/// There are two ways to the elements of a page. The document's parent tree leads to them, and from
/// each the links to its parents lead up, so the cost is in proportion to what a page has. What is
/// found is compared with the lists of kids; where the two differ, or there is no parent tree, the
/// whole tree is walked from its root, once, and the lists of kids are what counts.
class StructureTree
{
public:
    static constexpr int root = 0; ///< index of the tree's root
    static constexpr int none = -1;

    /// An element, or the root.
    struct Element
    {
        int number = 0;      ///< object number, 0: none of its own
        int parent = none;   ///< index; known where isLinked
        int position = 0;    ///< in the parent's list
        int depth = 0;       ///< elements above it, with the root
        bool isRead = false; ///< false: there is no such element
        bool isLinked = false;
        bool isResolved = false; ///< what its list refers to has been looked at
        enum class Content : std::uint8_t { unknown, looking, none, some };
        Content content = Content::unknown; ///< whether anything is marked below it
        int contentKids = none; ///< places in the list with content below; none: not counted yet
        std::uint32_t mark = 0; ///< free for whoever goes through the tree, made by newMark()
        int note = 0;           ///< free, too; means nothing but with the mark
        StructureSource source;
    };

    /// A place in an element's list.
    struct Place
    {
        int element = none; ///< index
        int position = 0;
    };

    StructureTree(PdfSource &source, ObjectTexts &texts);

    /// Whether the document has a structure tree.
    static bool isIn(PdfSource &source);

    Element &element(int index) { return m_elements[static_cast<std::size_t>(index)]; }
    const StructureKid &kid(const Place &place);

    /// The element with this object number, read; its parents need not be known. none when there is
    /// no such element
    int find(int number);
    /// Finds out what is above an element. @returns false when the tree is broken there
    bool link(int index);
    /// The element at a place in the list of a linked one; none where there is none, or one that
    /// belongs elsewhere.
    int elementAt(const Place &place);
    /// Replaces references to marks, and to a list, by what they lead to.
    void resolveKids(int index);
    /// Whether anything is marked in the element or below it.
    bool hasContent(int index);

    /// Sets @p positions to those of the element's marks on a page, or on a page that it does not
    /// name; marks in forms are left out.
    void findMarks(int index, int page, std::vector<int> &positions);

    /// Goes through the whole tree; from then on placesOn() and placesOf() have the answers.
    void walk();
    bool isWalked() const noexcept { return m_isWalked; }
    /// Where marks of a page are listed, not those in forms.
    std::vector<Place> placesOn(int page) const { return placesIn(m_onPages, page); }
    /// Where marks in a form are listed, or an annotation or picture as a whole.
    std::vector<Place> placesOf(int object) const { return placesIn(m_ofObjects, object); }

    /// A mark that no element has.
    std::uint32_t newMark() noexcept { return ++m_lastMark; }

    /// Lets go of most elements when they have become many. Indices are no longer valid.
    void forget();

private:
    /// Where an element is listed: the object number of the parent and the place in its list.
    struct Listing
    {
        int parent = 0;
        int position = 0;
    };
    using PlaceList = std::vector<std::pair<int, Place>>;   ///< by object number
    using PagePositions = std::vector<std::pair<int, int>>; ///< page and place in a list

    int add(int number);
    void readRoot();
    void take(int index);
    int parentOf(const Element &element);
    bool takeListElsewhere(int index);
    StructureSource readReferred(const StructureKid &kid, int page);
    int positionIn(int parent, int number);
    int kidElement(int index, int position);
    void hang(int index, int parent, int position);
    void noteContent(int index);
    static std::vector<Place> placesIn(const PlaceList &list, int number);

    PdfSource &m_source;
    ObjectTexts &m_texts;
    int m_rootNumber = 0;
    bool m_isWalked = false;
    std::uint32_t m_lastMark = 0;
    std::deque<Element> m_elements;
    std::vector<int> m_byNumber;                         ///< index, by object number
    std::vector<Listing> m_listings;                     ///< by object number
    std::unordered_map<int, PagePositions> m_longLists;  ///< by index of the element
    std::unordered_map<int, std::vector<int>> m_inlined; ///< indices of an element's inlined ones
    PlaceList m_onPages;
    PlaceList m_ofObjects;
};

} // namespace tools
