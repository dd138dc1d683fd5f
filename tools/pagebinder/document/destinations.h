#pragma once

#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/copying/page_writer.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace tools {

/// Where links, bookmarks and actions lead: which destinations lie on the copied pages, and how
/// they are written. Names of destinations are replaced by what they stand for.
class Destinations
{
public:
    Destinations(ObjectCopier &copier, PageTree &tree)
        : m_copier(copier), m_source(copier.source()), m_tree(tree)
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
    pdf_obj *explicitArray(pdf_obj *destination);
    pdf_obj *named(pdf_obj *name);
    pdf_obj *findInTree(pdf_obj *node, const std::string &name, int depth);
    bool mayContain(pdf_obj *node, const std::string &name);
    int pageOfArray(pdf_obj *array);
    bool isKept(pdf_obj *action);
    bool writeActionValue(pdf_obj *action, int depth);
    void writeNext(pdf_obj *next, int depth);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    PageTree &m_tree;
    std::unordered_map<int, int> m_byObject;
    std::unordered_map<int, int> m_byPage;
    int m_nodesLeft = 0; ///< of the name tree, in one search
};

} // namespace tools
