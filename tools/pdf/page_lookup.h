#pragma once

#include <mupdf/fitz.h>
#include <mupdf/pdf.h>

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <vector>

namespace tools {

/// A file that has more pages than objects beyond this number lies.
constexpr int mostPagesBeyondObjects = 10000;

/// A page found in the page tree.
struct FoundPage
{
    pdf_obj *page = nullptr; ///< the page dictionary, resolved; null when there is no such page
    int number = 0;          ///< its object number, 0 when it stands in its parent's /Kids itself
    /// The tree has a place for this page and nothing that can be read there. It counts as a page,
    /// or all pages behind it would go by wrong numbers.
    bool isUnreadable = false;
};

/// Which page goes by which number. Both tools ask here, so that a page's text never names other
/// pages, whatever the tree says.
///
/// The cost of a look-up is that of the nodes on the way to the page: a node that states as many
/// pages as it has kids is taken for a list of pages, one with fewer kids than pages is taken at
/// its word by its parent, and any other is counted by its kids, once. The root is always counted
/// by its kids. A node that holds fewer pages than it was taken for is filled up with unreadable
/// ones.
///
/// Source gives access to objects: catalog(), get(), raw(), isDictionary(), isName(), objectCount()
/// and context(), and to the children of a node: kids(), countOf(), kidAt() and kidNumber(); each
/// with the meaning it has in PdfSource. What is remembered between look-ups is kept by hold() and
/// holdKids().
template <typename Source> class PageLookup
{
public:
    explicit PageLookup(Source &source) : m_source(source) {}

    /// Number of pages; never less than 0, and for a file that lies possibly far too many.
    int pageCount()
    {
        if (m_root == nullptr) {
            m_root = m_source.get(m_source.catalog(), PDF_NAME(Pages));
            m_source.hold(m_root);
            doubtRoot();
        }
        return statesPages() ? totalOf(opened(m_root), 0) : 0;
    }

    /// @param page counted from 1
    FoundPage find(int page)
    {
        if (page < 1 || page > pageCount()) {
            return {};
        }
        return descend(m_root, page - 1);
    }

private:
    static constexpr int deepestTree = 200;
    static constexpr long long mostPages = 2'000'000;

    /// What is known of a node.
    struct Node
    {
        pdf_obj *object = nullptr;
        typename Source::Kids kids;
        int length = 0;
        bool isList = false;     ///< as many pages as kids
        bool isCounting = false; ///< its kids are being counted just now
        /// Pages before each kid, and in the end the pages of all; empty until they are counted.
        std::vector<int> starts;
    };

    bool isNode(pdf_obj *object)
    {
        pdf_obj *type = m_source.get(object, PDF_NAME(Type));
        if (pdf_is_name(m_source.context(), type)) {
            return m_source.isName(type, PDF_NAME(Pages));
        }
        return m_source.raw(object, PDF_NAME(Kids)) != nullptr &&
               m_source.raw(object, PDF_NAME(MediaBox)) == nullptr;
    }

    bool isPage(pdf_obj *object)
    {
        if (!m_source.isDictionary(object) || isNode(object)) {
            return false;
        }
        pdf_obj *type = m_source.get(object, PDF_NAME(Type));
        return m_source.isName(type, PDF_NAME(Page)) ||
               (type == nullptr && m_source.raw(object, PDF_NAME(Kids)) == nullptr);
    }

    /// What a node states as its number of pages; -1 where it states nothing that can be.
    int statedPages(pdf_obj *object)
    {
        pdf_obj *count = m_source.get(object, PDF_NAME(Count));
        const int pages = pdf_to_int(m_source.context(), count);
        const bool canBe =
            pdf_is_int(m_source.context(), count) && pages >= 0 && pages <= m_source.objectCount();
        return canBe ? pages : -1;
    }

    Node &opened(pdf_obj *object)
    {
        const auto [place, isNew] = m_nodes.try_emplace(object);
        Node &node = place->second;
        if (isNew) {
            node.object = object;
            node.kids = m_source.kids(object);
            m_source.hold(object);
            m_source.holdKids(node.kids);
            node.length = m_source.countOf(node.kids);
            pdf_obj *count = m_source.get(object, PDF_NAME(Count));
            node.isList = node.length > 0 && pdf_to_int(m_source.context(), count) == node.length;
        }
        return node;
    }

    /// Pages of a node below the root, as its parent takes them.
    int pagesOf(pdf_obj *object, int depth)
    {
        Node &node = opened(object);
        const int stated = statedPages(object);
        return stated >= node.length ? stated : totalOf(node, depth);
    }

    int totalOf(Node &node, int depth)
    {
        return node.isList ? node.length : startsOf(node, depth).back();
    }

    const std::vector<int> &startsOf(Node &node, int depth)
    {
        static const std::vector<int> none{0};
        if (!node.starts.empty()) {
            return node.starts;
        }
        if (node.isCounting || depth > deepestTree) {
            return none;
        }
        node.isCounting = true;
        std::vector<int> starts{0};
        starts.reserve(static_cast<std::size_t>(node.length) + 1);
        for (int i = 0; i < node.length; ++i) {
            pdf_obj *kid = m_source.kidAt(node.kids, i);
            long long pages = isPage(kid) ? 1 : 0;
            if (pages == 0 && isBelow(kid, node)) {
                pages = pagesOf(kid, depth + 1);
            }
            starts.push_back(static_cast<int>(std::min(starts.back() + pages, mostPages)));
        }
        node.starts = std::move(starts);
        node.isCounting = false;
        return node.starts;
    }

    FoundPage descend(pdf_obj *object, int index)
    {
        for (int depth = 0; depth < deepestTree; ++depth) {
            Node &node = opened(object);
            int place = index;
            int rest = 0;
            pdf_obj *kid = node.isList ? m_source.kidAt(node.kids, place) : nullptr;
            if (!node.isList || isCrowded(kid, node)) {
                const std::vector<int> &starts = startsOf(node, depth);
                const auto after = std::upper_bound(starts.begin(), starts.end(), index);
                if (after == starts.end()) {
                    break;
                }
                place = static_cast<int>(after - starts.begin()) - 1;
                rest = index - starts[static_cast<std::size_t>(place)];
                kid = m_source.kidAt(node.kids, place);
            }
            if (isPage(kid)) {
                return {kid, m_source.kidNumber(node.kids, place), false};
            }
            if (!isBelow(kid, node)) {
                break;
            }
            object = kid;
            index = rest;
        }
        return {nullptr, 0, true};
    }

    /// Whether there is a root that states any pages: without that no reader shows one.
    bool statesPages()
    {
        return m_source.isDictionary(m_root) &&
               pdf_to_int(m_source.context(), m_source.get(m_root, PDF_NAME(Count))) > 0;
    }

    /// A root that states as many pages as it has kids may mean the kids that are nodes.
    void doubtRoot()
    {
        if (m_source.isDictionary(m_root)) {
            Node &root = opened(m_root);
            root.isList = root.isList && !isCrowded(m_source.kidAt(root.kids, 0), root) &&
                          !isCrowded(m_source.kidAt(root.kids, root.length - 1), root);
        }
    }

    /// Whether a kid of what looked like a list of pages is a node that does not hold one page.
    bool isCrowded(pdf_obj *kid, const Node &node)
    {
        return m_source.isDictionary(kid) && isNode(kid) &&
               (!isBelow(kid, node) || pagesOf(kid, 0) != 1);
    }

    /// Whether @p kid is a node; the shortest loops are left out.
    bool isBelow(pdf_obj *kid, const Node &node)
    {
        return m_source.isDictionary(kid) && isNode(kid) && kid != node.object && kid != m_root;
    }

    Source &m_source;
    pdf_obj *m_root = nullptr;
    std::unordered_map<pdf_obj *, Node> m_nodes;
};

} // namespace tools
