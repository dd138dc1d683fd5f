#include "tools/pdf/page_walk.h"

#include "tools/pdf/object_scanner.h"

#include <algorithm>
#include <unordered_set>

namespace tools {

namespace {

/// A tree that has more pages and nodes than objects beyond this number shares them to no end.
constexpr int mostBeyondObjects = 10000;
constexpr int longestClimb = 100;
/// A list that is worth not to be parsed by the library.
constexpr std::size_t longList = 64;
constexpr int nothing = -1; ///< in place of an object number

enum class Kid { page, node, unreadable };

class PageWalk
{
public:
    explicit PageWalk(PdfSource &source) : m_source(source), m_scanner(source) {}

    PageList walk();

private:
    /// A node on the way from the root to the place where the walk is.
    struct Level
    {
        int node = 0;                ///< index in the list of nodes
        std::vector<int> kids;       ///< object numbers, 0 for one that stands in the list itself
        pdf_obj *list = nullptr;     ///< null when the kids were read without the library
        std::vector<Kid> kinds = {}; ///< of the kids
        std::size_t next = 0;
    };

    bool openRoot();
    bool openByBytes(int number, Level &level);
    bool openByLibrary(pdf_obj *dictionary, Level &level);
    void open(Level level);
    std::vector<Kid> kindsOf(Level &level);
    Kid kindOf(int &number, pdf_obj *direct);
    Kid kindOfDictionary(pdf_obj *dictionary);
    pdf_obj *directKid(const Level &level, std::size_t place);
    void takeKid(Level &level, std::size_t place);
    void dropUnreadable();
    void addSinglePage(pdf_obj *root, int number);
    void count(std::size_t kids);

    PdfSource &m_source;
    ObjectScanner m_scanner;
    PageList m_result;
    std::vector<Level> m_levels;
    std::unordered_set<int> m_above; ///< object numbers of m_levels
    long long m_seen = 0;
};

PageList PageWalk::walk()
{
    if (openRoot()) {
        while (!m_levels.empty()) {
            Level &level = m_levels.back();
            if (level.next == level.kids.size()) {
                m_above.erase(m_result.nodes[static_cast<std::size_t>(level.node)].number);
                m_levels.pop_back();
            } else {
                takeKid(level, level.next++);
            }
        }
        dropUnreadable();
    }
    return std::move(m_result);
}

/// What the catalog leads to is the root if it lists children. If not, it may be a page or a node
/// somewhere in the tree, with the root above it.
bool PageWalk::openRoot()
{
    pdf_obj *reference = m_source.raw(m_source.catalog(), PDF_NAME(Pages));
    int number = m_source.directNumber(reference);
    Level level;
    m_result.nodes.push_back({number, -1, 0});
    if (number > 0 && openByBytes(number, level)) {
        open(std::move(level));
        return true;
    }
    pdf_obj *const stated = m_source.resolve(reference);
    pdf_obj *root = stated;
    number = m_source.numberOf(reference);
    for (int step = 0; step < longestClimb && m_source.isDictionary(root); ++step) {
        if (openByLibrary(root, level)) {
            m_result.nodes[0].number = number;
            open(std::move(level));
            return true;
        }
        reference = m_source.raw(root, PDF_NAME(Parent));
        number = m_source.numberOf(reference);
        root = m_source.resolve(reference);
    }
    m_result.nodes.clear();
    addSinglePage(stated, m_source.numberOf(m_source.raw(m_source.catalog(), PDF_NAME(Pages))));
    return false;
}

void PageWalk::addSinglePage(pdf_obj *root, int number)
{
    if (m_source.isDictionary(root) &&
        (m_source.isName(m_source.get(root, PDF_NAME(Type)), PDF_NAME(Page)) ||
         m_source.get(root, PDF_NAME(Contents)) != nullptr)) {
        m_result.pages.push_back({number, -1, 0, true});
    }
}

bool PageWalk::openByBytes(int number, Level &level)
{
    NodeScan scan = m_scanner.scan(number, true);
    if (scan.kind != NodeScan::Kind::node) {
        return false;
    }
    if (scan.kids.size() >= longList) {
        m_scanner.keepWithoutKids(number, scan);
    }
    level.kids = std::move(scan.kids);
    return true;
}

bool PageWalk::openByLibrary(pdf_obj *dictionary, Level &level)
{
    pdf_obj *list = m_source.get(dictionary, PDF_NAME(Kids));
    if (!m_source.isArray(list)) {
        return false;
    }
    const int length = pdf_array_len(m_source.context(), list);
    level.list = list;
    level.kids.reserve(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) {
        pdf_obj *kid = pdf_array_get(m_source.context(), list, i);
        const int number = m_source.directNumber(kid);
        level.kids.push_back(number == 0 && pdf_is_indirect(m_source.context(), kid) != 0 ? nothing
                                                                                          : number);
    }
    return true;
}

void PageWalk::open(Level level)
{
    count(level.kids.size());
    level.kinds = kindsOf(level);
    m_above.insert(m_result.nodes[static_cast<std::size_t>(level.node)].number);
    m_levels.push_back(std::move(level));
}

void PageWalk::count(std::size_t kids)
{
    m_seen += static_cast<long long>(kids);
    if (m_seen - mostBeyondObjects > m_source.objectCount()) {
        throw ToolError(m_source.path(), "states more pages than it can have");
    }
}

/// Kids are looked at in the order in which they stand in the file, so that it is read once.
std::vector<Kid> PageWalk::kindsOf(Level &level)
{
    std::vector<std::pair<std::int64_t, std::size_t>> order;
    order.reserve(level.kids.size());
    for (std::size_t i = 0; i < level.kids.size(); ++i) {
        order.emplace_back(m_source.placeOf(level.kids[i]).offset, i);
    }
    if (!std::is_sorted(order.begin(), order.end())) {
        std::sort(order.begin(), order.end());
    }
    std::vector<Kid> kinds(level.kids.size(), Kid::unreadable);
    for (const auto &[offset, i] : order) {
        kinds[i] = kindOf(level.kids[i], directKid(level, i));
    }
    return kinds;
}

pdf_obj *PageWalk::directKid(const Level &level, std::size_t place)
{
    return level.kids[place] == 0 ? m_source.at(level.list, static_cast<int>(place)) : nullptr;
}

/// @param number of the object; a reference to a reference becomes what that leads to
Kid PageWalk::kindOf(int &number, pdf_obj *direct)
{
    if (number == 0) {
        return kindOfDictionary(direct);
    }
    switch (m_scanner.scan(number, false).kind) {
    case NodeScan::Kind::page:
        return Kid::page;
    case NodeScan::Kind::node:
        return Kid::node;
    default:
        break;
    }
    number = m_source.finalNumber(number);
    pdf_obj *kid = m_source.object(number);
    const bool isStream = m_source.isDictionary(kid) && m_source.isStream(number);
    const bool isOdd =
        isStream && !m_source.isName(m_source.get(kid, PDF_NAME(Type)), PDF_NAME(Page));
    return isOdd ? Kid::unreadable : kindOfDictionary(kid);
}

Kid PageWalk::kindOfDictionary(pdf_obj *dictionary)
{
    if (!m_source.isDictionary(dictionary)) {
        return Kid::unreadable;
    }
    const bool isCalledPage =
        m_source.isName(m_source.get(dictionary, PDF_NAME(Type)), PDF_NAME(Page));
    const bool hasContents = m_source.get(dictionary, PDF_NAME(Contents)) != nullptr;
    pdf_obj *kids = m_source.raw(dictionary, PDF_NAME(Kids));
    if (m_source.isArray(m_source.resolve(kids))) {
        return isCalledPage && hasContents ? Kid::page : Kid::node;
    }
    // A node whose list is lost is more than an empty page.
    const bool isLost = kids != nullptr && !isCalledPage && !hasContents;
    return isLost ? Kid::unreadable : Kid::page;
}

void PageWalk::takeKid(Level &level, std::size_t place)
{
    const int number = level.kids[place];
    const int position = static_cast<int>(place);
    if (level.kinds[place] != Kid::node) {
        m_result.pages.push_back(
            {std::max(number, 0), level.node, position, level.kinds[place] == Kid::page});
        return;
    }
    if (number > 0 && m_above.count(number) != 0) {
        return;
    }
    Level below;
    below.node = static_cast<int>(m_result.nodes.size());
    const bool isOpen =
        (number > 0 && openByBytes(number, below)) ||
        openByLibrary(number > 0 ? m_source.object(number) : directKid(level, place), below);
    m_result.nodes.push_back({number, level.node, position});
    if (isOpen) {
        open(std::move(below));
    }
}

void PageWalk::dropUnreadable()
{
    std::vector<PageList::Page> &pages = m_result.pages;
    const auto isUnreadable = [](const PageList::Page &page) { return !page.isReadable; };
    const auto unreadable = std::count_if(pages.begin(), pages.end(), isUnreadable);
    if (unreadable == 0) {
        return;
    }
    const PageList::Node &root = m_result.nodes.front();
    pdf_obj *dictionary = root.number > 0 ? m_source.object(root.number)
                                          : m_source.get(m_source.catalog(), PDF_NAME(Pages));
    const double stated =
        pdf_to_real(m_source.context(), m_source.get(dictionary, PDF_NAME(Count)));
    if (stated == static_cast<double>(static_cast<long long>(pages.size()) - unreadable)) {
        pages.erase(std::remove_if(pages.begin(), pages.end(), isUnreadable), pages.end());
    }
}

} // namespace

PageList walkPages(PdfSource &source)
{
    return PageWalk(source).walk();
}

} // namespace tools
