#include "tools/pagebinder/document/bookmark_index.h"

#include <algorithm>

namespace tools {

namespace {

constexpr int deepestLevel = 64;
constexpr std::size_t mostEntries = 500'000;

} // namespace

std::vector<int> BookmarkIndex::select(const std::vector<OutputPage> &pages)
{
    if (!m_isRead) {
        read();
    }
    Places places;
    const auto take = [&places](const std::unordered_map<int, Places> &index, int key) {
        const auto found = index.find(key);
        if (found != index.end()) {
            places.insert(places.end(), found->second.begin(), found->second.end());
        }
    };
    for (const OutputPage &page : pages) {
        take(m_byObject, page.found.number);
        take(m_byPage, page.sourcePage);
    }
    std::unordered_set<int> chosen(places.begin(), places.end());
    places.assign(chosen.begin(), chosen.end());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const int parent = at(places[i]).parent;
        if (parent >= 0 && chosen.insert(parent).second) {
            places.push_back(parent);
        }
    }
    std::sort(places.begin(), places.end());
    return places;
}

void BookmarkIndex::read()
{
    m_isRead = true;
    pdf_obj *outlines = m_source.get(m_source.catalog(), PDF_NAME(Outlines));
    if (m_source.isDictionary(outlines)) {
        collect(m_source.raw(outlines, PDF_NAME(First)), -1, 0);
    }
    m_seen.clear();
}

void BookmarkIndex::collect(pdf_obj *first, int parent, int depth)
{
    pdf_obj *next = first;
    while (next != nullptr && depth < deepestLevel && m_seen.size() < mostEntries) {
        pdf_obj *dictionary = m_source.resolve(next);
        if (!m_source.isDictionary(dictionary) || !m_seen.insert(m_source.numberOf(next)).second) {
            break;
        }
        const int place = static_cast<int>(m_entries.size());
        pdf_obj *count = m_source.get(dictionary, PDF_NAME(Count));
        m_entries.push_back({KeptObject(m_source.context(), next), parent,
                             pdf_to_int(m_source.context(), count) > 0});
        addTarget(dictionary, place);
        pdf_obj *below = m_source.raw(dictionary, PDF_NAME(First));
        if (below != nullptr) {
            collect(below, place, depth + 1);
        }
        next = m_source.raw(dictionary, PDF_NAME(Next));
    }
}

void BookmarkIndex::addTarget(pdf_obj *dictionary, int place)
{
    pdf_obj *destination = destinationOf(dictionary);
    if (destination == nullptr) {
        return;
    }
    const DestinationPage page = m_names.pageOf(m_names.arrayOf(destination));
    if (page.object != 0) {
        m_byObject[page.object].push_back(place);
    }
    if (page.number != 0) {
        m_byPage[page.number].push_back(place);
    }
}

pdf_obj *BookmarkIndex::destinationOf(pdf_obj *dictionary)
{
    pdf_obj *destination = m_source.raw(dictionary, PDF_NAME(Dest));
    if (destination == nullptr) {
        pdf_obj *action = m_source.get(dictionary, PDF_NAME(A));
        if (!m_source.isDictionary(action) ||
            !m_source.isName(m_source.get(action, PDF_NAME(S)), PDF_NAME(GoTo))) {
            return nullptr;
        }
        destination = m_source.raw(action, PDF_NAME(D));
    }
    return m_names.arrayOf(destination) == nullptr ? nullptr : destination;
}

} // namespace tools
