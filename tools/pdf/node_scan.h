#pragma once

#include "tools/pdf/byte_cursor.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tools {

/// What the bytes of an object tell of its part in a page tree.
struct NodeScan
{
    enum class Kind {
        unclear, ///< anything but the plainest syntax: the library must say
        page,
        node ///< has a list of children
    };
    Kind kind = Kind::unclear;
    /// Object numbers of the children; only of a node, and only when they were asked for.
    std::vector<int> kids;
    /// Places in the file, or differences in a text: of "[" and "]" of the list of children, and
    /// of the end of the object.
    std::int64_t listBegin = 0;
    std::int64_t listEnd = 0;
    std::int64_t end = 0;
};

/// What follows the dictionary of an object.
enum class ObjectEnd {
    keyword, ///< "endobj", as in the file itself
    anything ///< as in an object stream
};

/// Reads a dictionary without making an object of it, which is a tenth of the work, to tell pages
/// from nodes. Only what every reader would read alike is told: keys are names without escapes and
/// come once, the children are references, and nothing is left open.
/// @param wantsKids whether the numbers of the children are wanted
NodeScan scanNode(ByteCursor cursor, ObjectEnd end, bool wantsKids);

/// Reads "12 0 obj" for object @p number and leaves the cursor behind it; white space may come
/// first. @returns false when anything else stands there
bool skipObjectHeader(ByteCursor &cursor, int number);

} // namespace tools
