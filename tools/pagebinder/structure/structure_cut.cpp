#include "tools/pagebinder/structure/structure_cut.h"

#include <algorithm>
#include <numeric>

namespace tools {

namespace {

using Kind = StructureKid::Kind;

constexpr int mostLooks = 256;

std::uint64_t furtherKey(int element, int copy)
{
    return static_cast<std::uint64_t>(copy) << 32U | static_cast<std::uint32_t>(element);
}

} // namespace

bool StructureCut::isShared(int element) const
{
    const StructureTree::Element &found = m_tree.element(element);
    const auto isOwnContent = [](const StructureKid &kid) {
        return kid.kind == Kind::content || kid.kind == Kind::object;
    };
    return found.depth == 0 ||
           (found.depth == 1 &&
            std::none_of(found.source.kids.begin(), found.source.kids.end(), isOwnContent));
}

int StructureCut::indexOf(int element, int copy) const
{
    if (copy != 0 && !isShared(element)) {
        const auto found = m_further.find(furtherKey(element, copy));
        return found == m_further.end() ? none : found->second;
    }
    const StructureTree::Element &found = m_tree.element(element);
    return found.mark == m_mark ? found.note : none;
}

int StructureCut::add(int element, int copy)
{
    const int index = static_cast<int>(m_kept.size());
    if (copy != 0 && !isShared(element)) {
        m_further.emplace(furtherKey(element, copy), index);
    } else {
        m_tree.element(element).mark = m_mark;
        m_tree.element(element).note = index;
        copy = 0;
    }
    m_kept.push_back({element, copy});
    return index;
}

/// The index of an element, which is added with all above it where it is not kept yet.
int StructureCut::enter(int element, int copy)
{
    if (m_kept.empty()) {
        add(StructureTree::root, 0);
    }
    int index = indexOf(element, copy);
    if (index != none) {
        return index;
    }
    const int entered = add(element, copy);
    for (index = entered; element != StructureTree::root;) {
        const int position = m_tree.element(element).position;
        element = m_tree.element(element).parent;
        int above = indexOf(element, copy);
        const bool isNew = above == none;
        above = isNew ? add(element, copy) : above;
        m_kept[static_cast<std::size_t>(above)].kids.push_back({position, none, index});
        if (!isNew) {
            break;
        }
        index = above;
    }
    return entered;
}

int StructureCut::keep(const StructureTree::Place &place, int copy, Kid kid)
{
    const int index = enter(place.element, copy);
    kid.position = place.position;
    m_kept[static_cast<std::size_t>(index)].kids.push_back(kid);
    return index;
}

bool StructureCut::isBefore(const Kid &a, const Kid &b) const
{
    const auto copyOf = [this](const Kid &kid) {
        return kid.page == none ? m_kept[static_cast<std::size_t>(kid.target)].copy : 0;
    };
    return std::make_pair(copyOf(a), a.position) < std::make_pair(copyOf(b), b.position);
}

void StructureCut::order(Kept &kept)
{
    const auto before = [this](const Kid &a, const Kid &b) { return isBefore(a, b); };
    if (!std::is_sorted(kept.kids.begin(), kept.kids.end(), before)) {
        std::stable_sort(kept.kids.begin(), kept.kids.end(), before);
    }
}

/// The indices of what is kept, the deepest first.
std::vector<int> StructureCut::upwards() const
{
    // All that is above an element is kept with it, so there are no more levels than elements.
    std::vector<std::size_t> ends(m_kept.size() + 1, 0);
    const auto heightOf = [this](const Kept &kept) {
        const int depth = m_tree.element(kept.element).depth;
        return m_kept.size() - std::min(m_kept.size(), static_cast<std::size_t>(depth));
    };
    for (const Kept &kept : m_kept) {
        ++ends[heightOf(kept)];
    }
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    std::vector<int> indices(m_kept.size());
    for (std::size_t i = m_kept.size(); i-- != 0;) {
        indices[--ends[heightOf(m_kept[i])]] = static_cast<int>(i);
    }
    return indices;
}

void StructureCut::complete(PdfWriter &writer)
{
    std::vector<int> empty;
    for (const int index : upwards()) {
        order(m_kept[static_cast<std::size_t>(index)]);
        const bool isAll = isWhole(index, empty);
        m_kept[static_cast<std::size_t>(index)].isWhole = isAll;
        if (isAll && !empty.empty()) {
            addEmpty(index, empty);
            order(m_kept[static_cast<std::size_t>(index)]);
        }
    }
    for (Kept &kept : m_kept) {
        kept.target = writer.allocate();
    }
}

/// @param empty set to the places in the list that have nothing to keep, if the element is whole
bool StructureCut::isWhole(int index, std::vector<int> &empty)
{
    const Kept &kept = m_kept[static_cast<std::size_t>(index)];
    const std::size_t length = m_tree.element(kept.element).source.kids.size();
    empty.clear();
    std::vector<int> positions;
    positions.reserve(kept.kids.size());
    for (const Kid &kid : kept.kids) {
        if (kid.page == none && !m_kept[static_cast<std::size_t>(kid.target)].isWhole) {
            return false;
        }
        positions.push_back(kid.position);
    }
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
    if (positions.size() == length) {
        return true;
    }
    if (!isRestEmpty(kept.element, positions)) {
        return false;
    }
    auto next = positions.begin();
    for (int position = 0; static_cast<std::size_t>(position) < length; ++position) {
        if (next != positions.end() && *next == position) {
            ++next;
        } else {
            empty.push_back(position);
        }
    }
    return true;
}

/// Whether no place of a list but @p positions has content. A few looks tell it of most; how many
/// places of a long list have content is counted once.
bool StructureCut::isRestEmpty(int element, const std::vector<int> &positions)
{
    StructureTree::Element &found = m_tree.element(element);
    const int length = static_cast<int>(found.source.kids.size());
    const int kept = static_cast<int>(positions.size());
    if (found.contentKids == StructureTree::none) {
        auto next = positions.begin();
        int looks = 0;
        int position = 0;
        for (; position < length && looks < mostLooks; ++position) {
            if (next != positions.end() && *next == position) {
                ++next;
            } else if (hasContentAt({element, position})) {
                return false;
            } else {
                ++looks;
            }
        }
        int count = position == length ? kept : 0;
        for (int at = 0; position < length && at < length; ++at) {
            count += hasContentAt({element, at}) ? 1 : 0;
        }
        found.contentKids = count;
    }
    return found.contentKids == kept;
}

bool StructureCut::hasContentAt(const StructureTree::Place &place)
{
    const int below = m_tree.elementAt(place);
    const Kind kind = m_tree.kid(place).kind;
    return kind == Kind::content || kind == Kind::object ||
           (below != StructureTree::none && m_tree.hasContent(below));
}

/// Adds the elements at @p positions of a kept one, and those below them.
void StructureCut::addEmpty(int index, const std::vector<int> &positions)
{
    struct Waiting
    {
        int index;
        int position;
    };
    std::vector<Waiting> waiting;
    for (auto it = positions.rbegin(); it != positions.rend(); ++it) {
        waiting.push_back({index, *it});
    }
    while (!waiting.empty()) {
        const Waiting next = waiting.back();
        waiting.pop_back();
        const int copy = m_kept[static_cast<std::size_t>(next.index)].copy;
        const int element = m_kept[static_cast<std::size_t>(next.index)].element;
        const int below = m_tree.elementAt({element, next.position});
        if (below == StructureTree::none || indexOf(below, copy) != none) {
            continue;
        }
        const int added = add(below, copy);
        m_kept[static_cast<std::size_t>(added)].isWhole = true;
        m_kept[static_cast<std::size_t>(next.index)].kids.push_back({next.position, none, added});
        for (int i = static_cast<int>(m_tree.element(below).source.kids.size()) - 1; i >= 0; --i) {
            waiting.push_back({added, i});
        }
    }
}

} // namespace tools
