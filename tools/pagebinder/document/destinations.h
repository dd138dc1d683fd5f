#pragma once

#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/copying/page_writer.h"
#include "tools/pagebinder/document/named_destinations.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace tools {

/// Where links, bookmarks and actions lead: which destinations lie on the copied pages, and how
/// they are written. Names of destinations are replaced by what they stand for.
class Destinations
{
public:
    Destinations(ObjectCopier &copier, NamedDestinations &names)
        : m_copier(copier), m_source(copier.source()), m_names(names)
    {
    }

    void addPages(const std::vector<OutputPage> &pages);

    /// The number in the output of the page that @p destination leads to; 0: none of the copied
    /// ones.
    int pageOf(pdf_obj *destination);

    /// Writes @p destination as an array. It must lead to a copied page.
    void write(pdf_obj *destination);

    /// Whether something with an entry /Dest or an action in /A leads to a page that is not copied,
    /// or to nowhere.
    bool leadsOutside(pdf_obj *owner);

    /// Writes the entry @p key with @p action and the actions that follow it, without scripts and
    /// without jumps to pages that are not copied. Writes nothing when nothing remains.
    void writeAction(std::string_view key, pdf_obj *action);

private:
    int pageOfArray(pdf_obj *array);
    bool isKept(pdf_obj *action);
    bool writeActionValue(pdf_obj *action, int depth);
    void writeNext(pdf_obj *next, int depth);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    NamedDestinations &m_names;
    std::unordered_map<int, int> m_byObject;
    std::unordered_map<int, int> m_byPage;
};

} // namespace tools
