#pragma once

#include <vector>

namespace tools {

/// How the objects of a file are found.
enum class Reading {
    asOpened,
    repaired,   ///< all over the file, as its table leads to no pages or to wrong places
    leavingLost ///< by the table alone, without objects that it does not know how to find
};

/// The pages of a document in their order, and the nodes of the tree that they hang on. Made of
/// numbers alone: it holds for everyone who has the same file open, and when the library repairs
/// the file.
struct PageList
{
    /// A node of the tree.
    struct Node
    {
        int number = 0;  ///< its object number; 0 when it stands in its parent's list itself
        int parent = -1; ///< index of the node above it, -1 for the root
        int place = 0;   ///< in its parent's list
    };
    /// A page, or a place in the tree where one should be.
    struct Page
    {
        int number = 0; ///< its object number; 0 when it stands in its node's list itself
        int node = -1;  ///< index of the node that lists it; -1 when there is no tree
        int place = 0;  ///< in its node's list
        bool isReadable = true;
    };
    std::vector<Node> nodes;
    std::vector<Page> pages;
    Reading reading = Reading::asOpened; ///< under which these are the pages
};

} // namespace tools
