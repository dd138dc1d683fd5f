#pragma once

#include "tools/pagebinder/output/pdf_writer.h"
#include "tools/pagebinder/structure/structure_tree.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace tools {

/// The part of a structure tree that one output keeps: the elements with content on its pages and
/// those above them.
///
/// A page that comes twice has elements of its own each time; only a topmost element that has no
/// marks of its own is shared by all of them.
class StructureCut
{
public:
    static constexpr int none = -1;

    /// What a kept element keeps of its list.
    struct Kid
    {
        int position = 0; ///< in the list
        int page = none;  ///< index of the output's page; none: an element
        int target = 0;   ///< of an element its index here; of a form, picture or annotation its
                          ///< number in the output; 0: marks of the page
    };
    struct Kept
    {
        int element = 0;      ///< index in the tree
        int copy = 0;         ///< 0 for the first time that its pages come
        int target = 0;       ///< number in the output, known when it is complete
        bool isWhole = false; ///< nothing of it is on other pages
        std::vector<Kid> kids = {};
    };

    explicit StructureCut(StructureTree &tree) : m_tree(tree), m_mark(tree.newMark()) {}

    StructureTree &tree() noexcept { return m_tree; }

    /// Keeps what stands at a place in an element's list, the element, and all above it.
    /// @returns the element's index here
    int keep(const StructureTree::Place &place, int copy, Kid kid);

    /// Orders what is kept as in the input, gives it numbers in the output, and adds the elements
    /// without any content that lie in elements which are kept whole, such as empty cells.
    void complete(PdfWriter &writer);

    /// What is kept, the root first; empty when nothing is.
    const std::vector<Kept> &kept() const noexcept { return m_kept; }
    /// The index here of an element that is kept; none when it is not.
    int indexOf(int element, int copy) const;

private:
    int add(int element, int copy);
    int enter(int element, int copy);
    bool isShared(int element) const;
    bool isBefore(const Kid &a, const Kid &b) const;
    std::vector<int> upwards() const;
    void order(Kept &kept);
    bool isWhole(int index, std::vector<int> &empty);
    bool isRestEmpty(int element, const std::vector<int> &positions);
    bool hasContentAt(const StructureTree::Place &place);
    void addEmpty(int index, const std::vector<int> &positions);

    StructureTree &m_tree;
    std::uint32_t m_mark;
    std::vector<Kept> m_kept;
    std::unordered_map<std::uint64_t, int> m_further; ///< those of further copies
};

} // namespace tools
