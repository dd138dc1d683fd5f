#pragma once

#include "tools/pdf/kept_object.h"
#include "tools/pdf/pdf_source.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tools {

/// The page that a destination leads to, as the document says it.
struct DestinationPage
{
    int object = 0; ///< number of the object, 0 when the page is not named by one
    int number = 0; ///< of the page, counted from 1; 0 when it is not named by that
};

/// What the names of destinations stand for. Names that are asked for again and again are found
/// without another walk through the document's lists of them.
class NamedDestinations
{
public:
    explicit NamedDestinations(PdfSource &source) : m_source(source) {}

    /// The array that @p destination (an array, a dictionary with one, or a name) finally stands
    /// for; null when it leads nowhere.
    pdf_obj *arrayOf(pdf_obj *destination);

    /// The page that stands in the array of a destination.
    DestinationPage pageOf(pdf_obj *array);

private:
    using Names = std::unordered_map<std::string, KeptObject>;

    /// A node of the tree of names.
    struct Node
    {
        KeptObject object;
        bool hasLimits = false;
        std::string first; ///< the limits, as far as there are any
        std::string last;
        int searches = 0;
        Names names;           ///< of a leaf that has been searched often
        bool isOpened = false; ///< its kids are known
        std::vector<Node> kids;
    };

    pdf_obj *find(pdf_obj *name);
    pdf_obj *findInDictionary(const std::string &name);
    pdf_obj *findInTree(Node &node, const std::string &name, int depth);
    pdf_obj *findInLeaf(Node &node, const std::string &name);
    void setObject(Node &node, pdf_obj *object);
    void openKids(Node &node);
    void indexLeaf(Node &node, pdf_obj *names);

    PdfSource &m_source;
    Node m_root;
    bool m_isOpened = false;
    int m_nodesLeft = 0;             ///< of the tree, in one search
    int m_nodes = 0;                 ///< that are known
    std::unordered_set<int> m_known; ///< their numbers
    int m_dictionarySearches = 0;
    Names m_dictionary; ///< names of the older kind, once they have been searched often
};

} // namespace tools
