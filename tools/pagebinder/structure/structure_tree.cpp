#include "tools/pagebinder/structure/structure_tree.h"

#include <algorithm>

namespace tools {

namespace {

using Kind = StructureKid::Kind;

constexpr std::size_t longList = 256;
constexpr std::size_t mostHeldElements = 16384;
constexpr std::size_t wideElement = 32;

} // namespace

StructureTree::StructureTree(PdfSource &source, ObjectTexts &texts)
    : m_source(source), m_texts(texts),
      m_byNumber(static_cast<std::size_t>(std::max(0, source.objectCount())), none),
      m_listings(m_byNumber.size())
{
    readRoot();
}

bool StructureTree::isIn(PdfSource &source)
{
    return source.raw(source.catalog(), "StructTreeRoot") != nullptr &&
           source.isDictionary(source.get(source.catalog(), "StructTreeRoot"));
}

void StructureTree::readRoot()
{
    pdf_obj *value = m_source.raw(m_source.catalog(), "StructTreeRoot");
    m_rootNumber = m_source.numberOf(value);
    Element &rootElement = element(add(m_rootNumber));
    StructureSource &kids = rootElement.source;
    rootElement.isRead = m_texts.read(m_source.resolve(value), [&kids](SyntaxScanner &scanner) {
        return readStructureElement(scanner, kids);
    });
    rootElement.isLinked = true;
    take(root);
}

const StructureKid &StructureTree::kid(const Place &place)
{
    return element(place.element).source.kids[static_cast<std::size_t>(place.position)];
}

int StructureTree::add(int number)
{
    const int index = static_cast<int>(m_elements.size());
    m_elements.emplace_back().number = number;
    if (number > 0 && static_cast<std::size_t>(number) < m_byNumber.size()) {
        m_byNumber[static_cast<std::size_t>(number)] = index;
    }
    return index;
}

/// Takes up what the list of an element that has been read says.
void StructureTree::take(int index)
{
    const int number = element(index).number;
    const std::size_t count = element(index).source.kids.size();
    std::vector<int> inlined;
    for (std::size_t i = 0; i < count; ++i) {
        const StructureKid kid = element(index).source.kids[i];
        if (kid.kind == Kind::inlined) {
            const std::string &text =
                element(index).source.inlined[static_cast<std::size_t>(kid.value)];
            SyntaxScanner scanner(text, SyntaxScanner::Escapes::allowed);
            const int below = add(0);
            element(below).isRead = readStructureElement(scanner, element(below).source);
            element(below).parent = index;
            element(below).position = static_cast<int>(i);
            inlined.push_back(below);
        } else if (kid.kind == Kind::element && number != 0 &&
                   static_cast<std::size_t>(kid.value) < m_listings.size()) {
            Listing &listing = m_listings[static_cast<std::size_t>(kid.value)];
            if (listing.parent == 0) {
                listing = {number, static_cast<int>(i)};
            }
        }
    }
    if (inlined.empty()) {
        return;
    }
    for (const int below : inlined) {
        take(below);
    }
    m_inlined[index] = std::move(inlined);
}

int StructureTree::find(int number)
{
    if (number <= 0 || static_cast<std::size_t>(number) >= m_byNumber.size()) {
        return none;
    }
    const int known = m_byNumber[static_cast<std::size_t>(number)];
    if (known != none) {
        return element(known).isRead ? known : none;
    }
    const int index = add(number);
    StructureSource &source = element(index).source;
    const bool isRead = m_texts.read(number, [&source](SyntaxScanner &scanner) {
        return readStructureElement(scanner, source);
    });
    if (!isRead || !source.isElement) {
        source = {};
        return none;
    }
    element(index).isRead = true;
    take(index);
    return index;
}

int StructureTree::parentOf(const Element &element)
{
    if (element.number == 0) {
        return element.parent;
    }
    return element.source.parent == m_rootNumber ? root : find(element.source.parent);
}

int StructureTree::positionIn(int parent, int number)
{
    const auto isIt = [number](const StructureKid &kid) {
        return kid.kind == Kind::element && kid.value == number;
    };
    for (int attempt = 0; attempt < 2; ++attempt) {
        const Listing &listing = m_listings[static_cast<std::size_t>(number)];
        if (listing.parent != 0 && listing.parent == element(parent).number) {
            return listing.position;
        }
        const std::vector<StructureKid> &kids = element(parent).source.kids;
        const auto found = std::find_if(kids.begin(), kids.end(), isIt);
        if (found != kids.end()) {
            return static_cast<int>(found - kids.begin());
        }
        resolveKids(parent);
    }
    return none;
}

bool StructureTree::link(int index)
{
    std::vector<int> path;
    int at = index;
    while (at != none && !element(at).isLinked && !m_isWalked) {
        Element &child = element(at);
        child.isLinked = true; // until proven otherwise, so that a loop comes to an end
        path.push_back(at);
        const int parent = parentOf(child);
        if (parent != none && child.number != 0) {
            child.position = positionIn(parent, child.number);
        }
        child.parent = child.position == none ? none : parent;
        at = child.parent;
    }
    // A loop leads to an element that is on the path.
    const bool isLoop = at != none && std::find(path.begin(), path.end(), at) != path.end();
    if (at == none || isLoop || !element(at).isLinked) {
        for (const int broken : path) {
            element(broken).isLinked = false;
        }
        return false;
    }
    int depth = element(at).depth;
    for (auto it = path.rbegin(); it != path.rend(); ++it) {
        element(*it).depth = ++depth;
    }
    return true;
}

void StructureTree::resolveKids(int index)
{
    if (element(index).isResolved) {
        return;
    }
    element(index).isResolved = true;
    constexpr int longestChain = 4;
    for (int step = 0; step < longestChain && takeListElsewhere(index); ++step) {
    }
    std::vector<StructureKid> &kids = element(index).source.kids;
    for (StructureKid &kid : kids) {
        if (kid.kind == Kind::element && find(kid.value) == none) {
            const StructureSource referred = readReferred(kid, element(index).source.page);
            const bool isMark = referred.kids.size() == 1 && referred.inlined.empty();
            kid = isMark ? referred.kids.front() : StructureKid();
        }
    }
}

/// Takes the list that the only kid of an element refers to. @returns whether there is one
bool StructureTree::takeListElsewhere(int index)
{
    StructureSource &source = element(index).source;
    if (source.kids.size() != 1 || source.kids.front().kind != Kind::element ||
        find(source.kids.front().value) != none) {
        return false;
    }
    StructureSource referred = readReferred(source.kids.front(), source.page);
    source.kids = std::move(referred.kids);
    source.inlined = std::move(referred.inlined);
    take(index);
    return true;
}

/// @param page that of the element with the list
StructureSource StructureTree::readReferred(const StructureKid &kid, int page)
{
    StructureSource referred;
    const bool isRead = m_texts.read(kid.value, [&](SyntaxScanner &scanner) {
        return readReferredKids(scanner, page, referred);
    });
    return isRead ? referred : StructureSource();
}

/// The element at a place in a list, whoever else lists it; none where there is none.
int StructureTree::kidElement(int index, int position)
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        if (static_cast<std::size_t>(position) >= element(index).source.kids.size()) {
            return none;
        }
        const StructureKid found = kid({index, position});
        if (found.kind == Kind::inlined) {
            const int inlined = m_inlined[index][static_cast<std::size_t>(found.value)];
            return element(inlined).isRead ? inlined : none;
        }
        const int below = found.kind == Kind::element ? find(found.value) : none;
        if (below != none || found.kind != Kind::element || element(index).isResolved) {
            return below;
        }
        resolveKids(index);
    }
    return none;
}

void StructureTree::hang(int index, int parent, int position)
{
    Element &child = element(index);
    child.parent = parent;
    child.position = position;
    child.depth = element(parent).depth + 1;
    child.isLinked = true;
}

int StructureTree::elementAt(const Place &place)
{
    const int below = kidElement(place.element, place.position);
    if (below == none || below == root) {
        return none;
    }
    const Element &child = element(below);
    const bool isOwn = child.number == 0 || child.source.parent == element(place.element).number;
    if (!child.isLinked && !m_isWalked && isOwn) {
        hang(below, place.element, place.position);
    }
    const bool isHere =
        child.isLinked && child.parent == place.element && child.position == place.position;
    return isHere ? below : none;
}

bool StructureTree::hasContent(int index)
{
    using Content = Element::Content;
    std::vector<Place> path = {{index, 0}};
    while (!path.empty()) {
        Place &top = path.back();
        Element &at = element(top.element);
        if (at.content == Content::unknown) {
            at.content = Content::looking;
        }
        int below = none;
        bool isFound = at.content == Content::some;
        if (!isFound && at.content == Content::looking &&
            static_cast<std::size_t>(top.position) < at.source.kids.size()) {
            below = kidElement(top.element, top.position);
            // Only now a reference to marks is known as what it is.
            const Kind kind = static_cast<std::size_t>(top.position) < at.source.kids.size()
                                  ? kid(top).kind
                                  : Kind::nothing;
            isFound = kind == Kind::content || kind == Kind::object;
            ++top.position;
            const bool isNew = below != none && element(below).content != Content::looking &&
                               element(below).content != Content::none;
            if (!isFound && isNew) {
                path.push_back({below, 0});
            }
            if (!isFound) {
                continue;
            }
        }
        if (isFound) {
            for (const Place &above : path) {
                element(above.element).content = Content::some;
            }
            return true;
        }
        at.content = Content::none;
        path.pop_back();
    }
    return false;
}

void StructureTree::findMarks(int index, int page, std::vector<int> &positions)
{
    positions.clear();
    const std::vector<StructureKid> &kids = element(index).source.kids;
    const auto isMark = [](const StructureKid &kid) {
        return kid.kind == Kind::content && kid.stream == 0;
    };
    if (kids.size() <= longList) {
        for (std::size_t i = 0; i < kids.size(); ++i) {
            if (isMark(kids[i]) && (kids[i].page == page || kids[i].page == 0)) {
                positions.push_back(static_cast<int>(i));
            }
        }
        return;
    }
    const auto [entry, isNew] = m_longLists.try_emplace(index);
    PagePositions &marks = entry->second;
    if (isNew) {
        for (std::size_t i = 0; i < kids.size(); ++i) {
            if (isMark(kids[i])) {
                marks.emplace_back(kids[i].page, static_cast<int>(i));
            }
        }
        std::sort(marks.begin(), marks.end());
    }
    for (const int wanted : {0, page}) {
        for (auto it = std::lower_bound(marks.begin(), marks.end(), std::make_pair(wanted, 0));
             it != marks.end() && it->first == wanted; ++it) {
            positions.push_back(it->second);
        }
    }
}

void StructureTree::walk()
{
    m_isWalked = true;
    std::vector<Place> path = {{root, 0}};
    resolveKids(root);
    while (!path.empty()) {
        const Place at = path.back();
        if (static_cast<std::size_t>(at.position) >= element(at.element).source.kids.size()) {
            noteContent(at.element);
            path.pop_back();
            continue;
        }
        ++path.back().position;
        const int below = kidElement(at.element, at.position);
        if (below != none && below != root && !element(below).isLinked) {
            hang(below, at.element, at.position);
            resolveKids(below);
            path.push_back({below, 0});
        }
    }
    const auto isBefore = [](const auto &a, const auto &b) { return a.first < b.first; };
    std::stable_sort(m_onPages.begin(), m_onPages.end(), isBefore);
    std::stable_sort(m_ofObjects.begin(), m_ofObjects.end(), isBefore);
}

void StructureTree::noteContent(int index)
{
    const std::vector<StructureKid> &kids = element(index).source.kids;
    for (std::size_t i = 0; i < kids.size(); ++i) {
        const Place place{index, static_cast<int>(i)};
        if (kids[i].kind == Kind::object) {
            m_ofObjects.emplace_back(kids[i].value, place);
        } else if (kids[i].kind == Kind::content && kids[i].stream != 0) {
            m_ofObjects.emplace_back(kids[i].stream, place);
        } else if (kids[i].kind == Kind::content) {
            m_onPages.emplace_back(kids[i].page, place);
        }
    }
}

std::vector<StructureTree::Place> StructureTree::placesIn(const PlaceList &list, int number)
{
    std::vector<Place> places;
    const auto isBefore = [](const auto &entry, int wanted) { return entry.first < wanted; };
    for (auto it = std::lower_bound(list.begin(), list.end(), number, isBefore);
         it != list.end() && it->first == number; ++it) {
        places.push_back(it->second);
    }
    return places;
}

/// Elements with many others below them, whose lists are much work to read, stay, with those above
/// them.
void StructureTree::forget()
{
    // Elements that stand in others' lists have no number to be read by again.
    if (m_isWalked || !m_inlined.empty() || m_elements.size() <= mostHeldElements) {
        return;
    }
    std::vector<char> stays(m_elements.size(), 0);
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        const Element &found = m_elements[i];
        for (int at = static_cast<int>(i);
             found.isLinked && found.source.kids.size() > wideElement && at != none &&
             stays[static_cast<std::size_t>(at)] == 0;
             at = element(at).parent) {
            stays[static_cast<std::size_t>(at)] = 1;
        }
    }
    stays[root] = 1;
    std::vector<int> moved(m_elements.size(), none);
    std::deque<Element> before;
    before.swap(m_elements);
    std::fill(m_byNumber.begin(), m_byNumber.end(), none);
    m_longLists.clear();
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (stays[i] != 0) {
            moved[i] = add(before[i].number);
            m_elements.back() = std::move(before[i]);
        }
    }
    for (Element &kept : m_elements) {
        kept.parent = kept.parent == none ? none : moved[static_cast<std::size_t>(kept.parent)];
    }
}

} // namespace tools
