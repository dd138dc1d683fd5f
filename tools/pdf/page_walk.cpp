#include "tools/pdf/page_walk.h"

#include "tools/pdf/object_scanner.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace tools {

namespace {

/// A tree that has more pages and nodes than objects beyond this number shares them to no end.
constexpr int mostBeyondObjects = 10000;
constexpr int longestClimb = 100;
/// A list that is worth not to be parsed by the library.
constexpr std::size_t longList = 64;
constexpr int nothing = -1; ///< in place of an object number
// In place of the number of a page that cannot be one.
constexpr int absentPlace = -2; ///< nothing stands there
constexpr int loopPlace = -3;   ///< leads back to a node above

enum class Kid {
    page,
    node,
    broken, ///< something stands there that cannot be read
    absent  ///< nothing stands there, or something that can be neither
};

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
        std::size_t pagesBefore = 0;
    };

    bool openRoot();
    bool openByBytes(int number, Level &level);
    bool openByLibrary(pdf_obj *dictionary, Level &level);
    void open(Level level);
    void close();
    std::vector<Kid> kindsOf(Level &level);
    Kid kindByLibrary(int &number, pdf_obj *direct);
    bool isCalledPage(pdf_obj *dictionary);
    Kid kindOfDictionary(pdf_obj *dictionary);
    pdf_obj *directKid(const Level &level, std::size_t place);
    void takeKid(Level &level, std::size_t place);
    double statedPages();
    std::size_t countPlaces(int kind) const;
    void removePlaces(int kind);
    PageList finished();
    PageList singlePage();
    void count(std::size_t kids);

    PdfSource &m_source;
    ObjectScanner m_scanner;
    PageList m_result;
    std::vector<Level> m_levels;
    std::unordered_set<int> m_above;  ///< object numbers of m_levels
    std::unordered_set<int> m_barren; ///< object numbers of nodes without pages
    long long m_seen = 0;
};

PageList PageWalk::walk()
{
    if (openRoot()) {
        while (!m_levels.empty()) {
            Level &level = m_levels.back();
            if (level.next == level.kids.size()) {
                close();
            } else {
                takeKid(level, level.next++);
            }
        }
        const double stated = statedPages();
        if (stated <= 0) {
            return {}; // no reader shows pages that the root denies
        }
        const bool countsLoops = stated == static_cast<double>(m_result.pages.size());
        if (!countsLoops) {
            removePlaces(loopPlace);
        }
        if (stated == static_cast<double>(m_result.pages.size() - countPlaces(absentPlace))) {
            removePlaces(absentPlace);
        }
        const bool hasPages =
            (countsLoops && countPlaces(loopPlace) != 0) ||
            std::any_of(m_result.pages.begin(), m_result.pages.end(),
                        [](const PageList::Page &page) { return page.isReadable; });
        if (hasPages) {
            return finished();
        }
    }
    return singlePage();
}

/// The pages, their numbers those of objects.
PageList PageWalk::finished()
{
    for (PageList::Page &page : m_result.pages) {
        page.number = std::max(page.number, 0);
    }
    return std::move(m_result);
}

/// What the root states as its number of pages, 0 where it states nothing that can be one.
double PageWalk::statedPages()
{
    const int root = m_result.nodes.front().number;
    pdf_obj *dictionary =
        root > 0 ? m_source.object(root) : m_source.get(m_source.catalog(), PDF_NAME(Pages));
    return pdf_to_real(m_source.context(), m_source.get(dictionary, PDF_NAME(Count)));
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
    for (int step = 0; step < longestClimb; ++step) {
        pdf_obj *root = m_source.resolve(reference);
        if (!m_source.isDictionary(root)) {
            return false;
        }
        if (openByLibrary(root, level)) {
            m_result.nodes[0].number = m_source.numberOf(reference);
            open(std::move(level));
            return true;
        }
        reference = m_source.raw(root, PDF_NAME(Parent));
    }
    return false;
}

/// What the catalog leads to as the only page, if it is one.
PageList PageWalk::singlePage()
{
    pdf_obj *reference = m_source.raw(m_source.catalog(), PDF_NAME(Pages));
    pdf_obj *page = m_source.resolve(reference);
    PageList list;
    if (m_source.isDictionary(page) && !m_source.isArray(m_source.get(page, PDF_NAME(Kids))) &&
        (isCalledPage(page) || m_source.get(page, PDF_NAME(Contents)) != nullptr)) {
        list.pages.push_back({m_source.numberOf(reference), -1, 0, true});
    }
    return list;
}

bool PageWalk::openByBytes(int number, Level &level)
{
    const ObjectPlace place = m_source.placeOf(number);
    NodeScan scan = m_scanner.scan(number, place, true);
    if (scan.kind != NodeScan::Kind::node) {
        return false;
    }
    if (scan.kids.size() >= longList) {
        m_scanner.keepWithoutKids(number, place, scan);
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
    level.pagesBefore = m_result.pages.size();
    level.kinds = kindsOf(level);
    m_above.insert(m_result.nodes[static_cast<std::size_t>(level.node)].number);
    m_levels.push_back(std::move(level));
}

/// Nodes that hold no pages are remembered: shared by others, and those by others, they would be
/// gone through without end. A place that leads back counts as a page here.
void PageWalk::close()
{
    const Level &level = m_levels.back();
    const int number = m_result.nodes[static_cast<std::size_t>(level.node)].number;
    if (level.pagesBefore == m_result.pages.size()) {
        m_barren.insert(number);
    }
    m_above.erase(number);
    m_levels.pop_back();
}

void PageWalk::count(std::size_t kids)
{
    m_seen += static_cast<long long>(kids);
    if (m_seen - mostBeyondObjects > m_source.objectCount()) {
        throw ToolError(m_source.path(), "claims to have more pages than it can have");
    }
}

/// Kids are looked at in the order in which they stand in the file, so that it is read once.
std::vector<Kid> PageWalk::kindsOf(Level &level)
{
    const std::vector<ObjectPlace> places = m_source.placesOf(level.kids);
    std::vector<std::size_t> order(level.kids.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto isBefore = [&places](std::size_t a, std::size_t b) {
        return places[a].offset < places[b].offset;
    };
    if (!std::is_sorted(order.begin(), order.end(), isBefore)) {
        std::sort(order.begin(), order.end(), isBefore);
    }
    std::vector<Kid> kinds(level.kids.size(), Kid::absent);
    for (const std::size_t i : order) {
        switch (m_scanner.scan(level.kids[i], places[i], false).kind) {
        case NodeScan::Kind::page:
            kinds[i] = Kid::page;
            break;
        case NodeScan::Kind::node:
            kinds[i] = Kid::node;
            break;
        default:
            kinds[i] = kindByLibrary(level.kids[i], directKid(level, i));
        }
    }
    return kinds;
}

pdf_obj *PageWalk::directKid(const Level &level, std::size_t place)
{
    return level.kids[place] == 0 ? m_source.at(level.list, static_cast<int>(place)) : nullptr;
}

/// @param number of the object; a reference to a reference becomes what that leads to
Kid PageWalk::kindByLibrary(int &number, pdf_obj *direct)
{
    if (number == 0) {
        return kindOfDictionary(direct);
    }
    if (number == nothing || number >= m_source.objectCount()) {
        return Kid::absent;
    }
    number = m_source.finalNumber(number);
    pdf_obj *kid = m_source.object(number);
    if (kid == nullptr) {
        return Kid::broken;
    }
    const bool isStream = m_source.isDictionary(kid) && m_source.isStream(number);
    return isStream && !isCalledPage(kid) ? Kid::absent : kindOfDictionary(kid);
}

bool PageWalk::isCalledPage(pdf_obj *dictionary)
{
    return m_source.isName(m_source.get(dictionary, PDF_NAME(Type)), PDF_NAME(Page));
}

Kid PageWalk::kindOfDictionary(pdf_obj *dictionary)
{
    if (!m_source.isDictionary(dictionary)) {
        return Kid::absent;
    }
    const bool hasContents = m_source.get(dictionary, PDF_NAME(Contents)) != nullptr;
    pdf_obj *kids = m_source.raw(dictionary, PDF_NAME(Kids));
    if (m_source.isArray(m_source.resolve(kids))) {
        return isCalledPage(dictionary) && hasContents ? Kid::page : Kid::node;
    }
    // A node whose list is lost is more than an empty page.
    const bool isLost = kids != nullptr && !isCalledPage(dictionary) && !hasContents;
    return isLost ? Kid::broken : Kid::page;
}

void PageWalk::takeKid(Level &level, std::size_t place)
{
    const int number = level.kids[place];
    const int position = static_cast<int>(place);
    if (level.kinds[place] != Kid::node) {
        const bool isAbsent = level.kinds[place] == Kid::absent;
        m_result.pages.push_back({isAbsent ? absentPlace : std::max(number, 0), level.node,
                                  position, level.kinds[place] == Kid::page});
        return;
    }
    if (number > 0 && m_barren.count(number) != 0) {
        return;
    }
    if (number > 0 && m_above.count(number) != 0) {
        m_result.pages.push_back({loopPlace, level.node, position, false});
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

std::size_t PageWalk::countPlaces(int kind) const
{
    return static_cast<std::size_t>(
        std::count_if(m_result.pages.begin(), m_result.pages.end(),
                      [kind](const PageList::Page &page) { return page.number == kind; }));
}

void PageWalk::removePlaces(int kind)
{
    std::vector<PageList::Page> &pages = m_result.pages;
    pages.erase(std::remove_if(pages.begin(), pages.end(),
                               [kind](const PageList::Page &page) { return page.number == kind; }),
                pages.end());
}

} // namespace

PageList walkPages(PdfSource &source)
{
    return PageWalk(source).walk();
}

} // namespace tools
