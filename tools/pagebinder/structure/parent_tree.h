#pragma once

#include "tools/pdf/object_texts.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tools {

/// A document's way from the numbers that pages, forms and annotations have (/StructParents and
/// /StructParent) to the structure elements of their content. Read at the first question.
class ParentTree
{
public:
    ParentTree(PdfSource &source, ObjectTexts &texts) : m_source(source), m_texts(texts) {}

    /// The object numbers of the elements that the marks of a page or form belong to, by the
    /// numbers of the marks; 0: none. Empty when nothing is said about @p key.
    std::vector<int> elementsOf(int key);

    /// The object number of the element that an annotation or a picture belongs to, 0: none.
    int elementOf(int key);

private:
    struct Entry
    {
        int key = 0;
        int reference = 0;           ///< object number, 0: the value stands here
        std::string_view value = {}; ///< an array
    };

    const Entry *find(int key);
    void read();
    bool readNode(SyntaxScanner &scanner, std::vector<Entry> &entries, std::vector<int> &kids);
    bool readNumbers(SyntaxScanner &scanner, std::vector<Entry> &entries);

    PdfSource &m_source;
    ObjectTexts &m_texts;
    bool m_isRead = false;
    std::vector<Entry> m_entries; ///< by key
    std::deque<std::string> m_held;
};

} // namespace tools
