#include "tools/pagebinder/structure/structure_keys.h"

#include "tools/pagebinder/copying/other_pages.h"

#include <algorithm>
#include <string>

namespace tools {

namespace {

using Kind = StructureKid::Kind;

// Marks are numbered from 0, page by page; a list of all numbers up to a large one that is a
// mistake would be nothing but a waste.
constexpr int mostUnusedMarks = 1024;
constexpr int mostUnusedPerMark = 16;

/// The value of a key that is an integer of no sign; none else.
int keyIn(PdfSource &source, pdf_obj *dictionary, pdf_obj *name)
{
    pdf_obj *value = source.raw(dictionary, name);
    pdf_obj *number = value == nullptr ? nullptr : source.resolve(value);
    const bool isKey = pdf_is_int(source.context(), number) != 0 && source.integer(number) >= 0;
    return isKey ? source.integer(number) : StructureKeys::none;
}

bool streamNames(PdfSource &source, int number, const std::string &word)
{
    std::string rest;
    bool isFound = false;
    source.readStream(number, true, [&](const unsigned char *data, std::size_t size) {
        rest.append(reinterpret_cast<const char *>(data), size);
        isFound = rest.find(word) != std::string::npos;
        rest.erase(0, rest.size() - std::min(rest.size(), word.size() - 1));
        return !isFound;
    });
    return isFound;
}

} // namespace

void StructureKeys::addPages(std::vector<TaggedPage> pages)
{
    m_pages = std::move(pages);
    std::unordered_map<int, int> copies;
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        TaggedPage &page = m_pages[i];
        page.copy = page.number == 0 ? 0 : copies[page.number]++;
        m_hasCopies = m_hasCopies || page.copy != 0;
        m_isWhole = m_isWhole && page.page != nullptr;
        m_pageByNumber.emplace(page.number, static_cast<int>(i));
    }
    begin(m_structure.linked());
    if (!addLinked()) {
        m_isWhole = false;
        begin(m_structure.walked());
        addWalked();
    }
}

void StructureKeys::begin(StructureTree &tree)
{
    m_cut = std::make_unique<StructureCut>(tree);
    m_pageKeys.assign(m_pages.size(), none);
    m_annotationKeys.clear();
    m_entries.clear();
}

int StructureKeys::open(Entry entry)
{
    m_entries.push_back(std::move(entry));
    return static_cast<int>(m_entries.size()) - 1;
}

int StructureKeys::keyOfPage(std::size_t index) const
{
    return index < m_pageKeys.size() ? m_pageKeys[index] : none;
}

int StructureKeys::keyOfAnnotation(int target) const
{
    const auto found = m_annotationKeys.find(target);
    return found == m_annotationKeys.end() ? none : found->second;
}

/// @returns false when the parent tree and the lists of kids differ
bool StructureKeys::addLinked()
{
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        if (m_pages[i].page == nullptr) {
            continue;
        }
        if (!addPage(i)) {
            return false;
        }
        for (const TaggedPage::Annotation &annotation : m_pages[i].annotations) {
            if (!addAnnotation(i, annotation)) {
                return false;
            }
        }
    }
    return true;
}

bool StructureKeys::addPage(std::size_t index)
{
    const TaggedPage &page = m_pages[index];
    const int key = keyIn(m_source, page.page, PDF_NAME(StructParents));
    const std::vector<int> numbers =
        key == none ? std::vector<int>() : m_structure.parents().elementsOf(key);
    const bool isSaid = std::any_of(numbers.begin(), numbers.end(), [](int n) { return n != 0; });
    return isSaid ? addMarks(index, numbers) : !hasMarks(page);
}

/// Whether a page that the parent tree does not know has marks nevertheless.
bool StructureKeys::hasMarks(const TaggedPage &page)
{
    for (const int stream : contentStreams(m_source, m_source.raw(page.page, PDF_NAME(Contents)))) {
        if (stream > 0 && streamNames(m_source, stream, "/MCID")) {
            return true;
        }
    }
    pdf_obj *resources = m_source.get(page.page, PDF_NAME(Resources));
    pdf_obj *properties = m_source.get(resources, PDF_NAME(Properties));
    const int length = pdf_dict_len(m_source.context(), properties);
    for (int i = 0; i < length; ++i) {
        pdf_obj *value = m_source.resolve(pdf_dict_get_val(m_source.context(), properties, i));
        if (m_source.get(value, PDF_NAME(MCID)) != nullptr) {
            return true;
        }
    }
    return false;
}

bool StructureKeys::addMarks(std::size_t index, const std::vector<int> &numbers)
{
    StructureTree &tree = m_cut->tree();
    std::vector<std::pair<int, int>> elements; ///< object number, how often the page names it
    std::vector<int> sorted;
    std::copy_if(numbers.begin(), numbers.end(), std::back_inserter(sorted),
                 [](int number) { return number != 0; });
    if (!std::is_sorted(sorted.begin(), sorted.end())) {
        std::sort(sorted.begin(), sorted.end());
    }
    for (const int number : sorted) {
        if (elements.empty() || elements.back().first != number) {
            elements.emplace_back(number, 0);
        }
        ++elements.back().second;
    }
    Entry entry{true};
    for (const auto &[number, count] : elements) {
        const int element = tree.find(number);
        if (element == StructureTree::none || !tree.link(element)) {
            return false;
        }
        const std::size_t before = entry.marks.size();
        if (!addElement(index, element, numbers, entry)) {
            return false;
        }
        if (static_cast<int>(entry.marks.size() - before) != count) {
            return false;
        }
    }
    m_pageKeys[index] = open(std::move(entry));
    return true;
}

/// Keeps the marks of one element on a page.
bool StructureKeys::addElement(std::size_t index, int element, const std::vector<int> &numbers,
                               Entry &entry)
{
    StructureTree &tree = m_cut->tree();
    const TaggedPage &page = m_pages[index];
    const int number = tree.element(element).number;
    tree.findMarks(element, page.number, m_positions);
    const auto isElement = [](const StructureKid &kid) { return kid.kind == Kind::element; };
    const std::vector<StructureKid> &kids = tree.element(element).source.kids;
    if (m_positions.empty() || std::any_of(kids.begin(), kids.end(), isElement)) {
        tree.resolveKids(element);
        tree.findMarks(element, page.number, m_positions);
    }
    for (const int position : m_positions) {
        const Place place{element, position};
        const StructureKid kid = tree.kid(place);
        const bool isNamed = static_cast<std::size_t>(kid.value) < numbers.size() &&
                             numbers[static_cast<std::size_t>(kid.value)] == number;
        if (isNamed) {
            const int kept = m_cut->keep(place, page.copy, {position, static_cast<int>(index), 0});
            entry.marks.emplace_back(kid.value, kept);
        } else if (kid.page == page.number) {
            return false;
        }
    }
    return true;
}

bool StructureKeys::addAnnotation(std::size_t index, const TaggedPage::Annotation &annotation)
{
    const int key = keyIn(m_source, annotation.dictionary, PDF_NAME(StructParent));
    if (key == none || m_structure.parents().elementOf(key) == 0) {
        return true;
    }
    const std::vector<Place> places = placesOfObject(key, annotation.number);
    for (const Place &place : places) {
        const int kept = m_cut->keep(place, m_pages[index].copy,
                                     {0, static_cast<int>(index), annotation.target});
        Entry entry;
        entry.kept = kept;
        m_annotationKeys[annotation.target] = open(std::move(entry));
    }
    return !places.empty();
}

/// Where the element that a key leads to lists an annotation or picture: one place or none.
std::vector<StructureTree::Place> StructureKeys::placesOfObject(int key, int number)
{
    StructureTree &tree = m_cut->tree();
    if (tree.isWalked()) {
        std::vector<Place> places = tree.placesOf(number);
        const auto isOther = [&tree](const Place &place) {
            return tree.kid(place).kind != Kind::object;
        };
        places.erase(std::remove_if(places.begin(), places.end(), isOther), places.end());
        places.resize(std::min(places.size(), std::size_t{1}));
        return places;
    }
    const int element = tree.find(m_structure.parents().elementOf(key));
    if (number == 0 || element == StructureTree::none || !tree.link(element)) {
        return {};
    }
    const auto isIt = [number](const StructureKid &kid) {
        return kid.kind == Kind::object && kid.value == number;
    };
    for (int attempt = 0; attempt < 2; ++attempt) {
        const std::vector<StructureKid> &kids = tree.element(element).source.kids;
        const auto found = std::find_if(kids.begin(), kids.end(), isIt);
        if (found != kids.end()) {
            return {{element, static_cast<int>(found - kids.begin())}};
        }
        tree.resolveKids(element);
    }
    return {};
}

void StructureKeys::addWalked()
{
    StructureTree &tree = m_cut->tree();
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        const TaggedPage &page = m_pages[i];
        if (page.page == nullptr || page.number == 0) {
            continue;
        }
        const std::vector<Place> places = tree.placesOn(page.number);
        const std::size_t most = mostUnusedMarks + mostUnusedPerMark * places.size();
        Entry entry{true};
        for (const Place &place : places) {
            const int mark = tree.kid(place).value;
            if (static_cast<std::size_t>(mark) < most) {
                entry.marks.emplace_back(
                    mark, m_cut->keep(place, page.copy, {0, static_cast<int>(i), 0}));
            }
        }
        if (!entry.marks.empty()) {
            m_pageKeys[i] = open(std::move(entry));
        }
        for (const TaggedPage::Annotation &annotation : page.annotations) {
            for (const Place &place : placesOfObject(none, annotation.number)) {
                Entry single;
                single.kept =
                    m_cut->keep(place, page.copy, {0, static_cast<int>(i), annotation.target});
                m_annotationKeys[annotation.target] = open(std::move(single));
            }
        }
    }
}

/// The output's page that marks in a form or a picture are on; none when it is not copied.
/// @param drawing index of the page that draws it
int StructureKeys::pageOf(const StructureKid &kid, std::size_t drawing) const
{
    if (kid.page == 0 || kid.page == m_pages[drawing].number) {
        return static_cast<int>(drawing);
    }
    const auto found = m_pageByNumber.find(kid.page);
    return found == m_pageByNumber.end() ? none : found->second;
}

std::vector<StructureTree::Place> StructureKeys::placesInStream(pdf_obj *dictionary, int number)
{
    StructureTree &tree = m_cut->tree();
    std::vector<Place> places;
    if (tree.isWalked()) {
        places = tree.placesOf(number);
        const auto isOther = [&tree](const Place &place) {
            return tree.kid(place).kind != Kind::content;
        };
        places.erase(std::remove_if(places.begin(), places.end(), isOther), places.end());
        return places;
    }
    const std::vector<int> numbers =
        m_structure.parents().elementsOf(keyIn(m_source, dictionary, PDF_NAME(StructParents)));
    for (std::size_t mark = 0; mark < numbers.size(); ++mark) {
        const int element = tree.find(numbers[mark]);
        if (element == StructureTree::none || !tree.link(element)) {
            continue;
        }
        tree.resolveKids(element);
        const std::vector<StructureKid> &kids = tree.element(element).source.kids;
        const auto isIt = [number, mark](const StructureKid &kid) {
            return kid.kind == Kind::content && kid.stream == number &&
                   static_cast<std::size_t>(kid.value) == mark;
        };
        const auto found = std::find_if(kids.begin(), kids.end(), isIt);
        if (found != kids.end()) {
            places.push_back({element, static_cast<int>(found - kids.begin())});
        }
    }
    return places;
}

int StructureKeys::addStream(pdf_obj *dictionary, int number, int target, std::size_t index)
{
    if (!m_cut || index >= m_pages.size()) {
        return none;
    }
    StructureTree &tree = m_cut->tree();
    const bool isList = m_source.raw(dictionary, PDF_NAME(StructParents)) != nullptr;
    const std::vector<Place> places =
        isList ? placesInStream(dictionary, number)
               : placesOfObject(keyIn(m_source, dictionary, PDF_NAME(StructParent)), number);
    Entry entry{isList};
    const std::size_t most = mostUnusedMarks + mostUnusedPerMark * places.size();
    bool isKept = false;
    for (const Place &place : places) {
        const StructureKid kid = tree.kid(place);
        const int page = pageOf(kid, index);
        if (page == none || (isList && static_cast<std::size_t>(kid.value) >= most)) {
            continue;
        }
        entry.kept =
            m_cut->keep(place, m_pages[static_cast<std::size_t>(page)].copy, {0, page, target});
        entry.marks.emplace_back(kid.value, entry.kept);
        isKept = true;
    }
    m_isWhole = m_isWhole && isKept && !m_hasCopies;
    return isKept ? open(std::move(entry)) : none;
}

} // namespace tools
