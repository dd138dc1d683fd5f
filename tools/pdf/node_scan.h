#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace tools {

class SyntaxScanner;

/// What the bytes of an object tell of its part in a page tree.
struct NodeScan
{
    enum class Kind {
        unclear, ///< anything but the plainest syntax: the library must say
        cutOff,  ///< the bytes end too early to tell
        page,
        node ///< has a list of children
    };
    Kind kind = Kind::unclear;
    /// Object numbers of the children; only of a node, and only when they were asked for.
    std::vector<int> kids = {};
    /// Places in the bytes: of "[" and "]" of a node's list of children, and of the object's end.
    std::size_t listBegin = 0;
    std::size_t listEnd = 0;
    std::size_t end = 0;
};

/// Reads an object as it stands in a file, from "12 0 obj" to "endobj", without making an object
/// of it, which is a tenth of the work; white space may come first. Only what every reader would
/// read alike is told: the object is number @p number and a dictionary, its keys are names without
/// escapes and come once, the children are references, and nothing is left open.
/// @param wantsKids whether the numbers of the children are wanted
NodeScan scanObject(std::string_view bytes, int number, bool wantsKids);

/// The same for an object of an object stream, which has neither number nor end.
NodeScan scanDictionary(std::string_view bytes, bool wantsKids);

/// Takes "12 0 obj" of object @p number, and white space before it.
bool takeHeader(SyntaxScanner &scanner, int number);

/// Whether @p bytes begin with "12 0 obj" for object @p number, after white space perhaps.
bool startsObject(std::string_view bytes, int number);

} // namespace tools
