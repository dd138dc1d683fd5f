#pragma once

#include "tools/pdf/syntax_scanner.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tools {

/// What a structure element holds in one place of its list.
struct StructureKid
{
    enum class Kind : std::uint8_t {
        nothing, ///< what makes no sense, or has been found to be listed elsewhere
        element, ///< a reference: to an element, or what proves to be something else
        inlined, ///< an element that stands in the list itself
        content, ///< marked content
        object,  ///< an annotation or a form or picture as a whole
    };
    Kind kind = Kind::nothing;
    int value = 0;  ///< object number, place among the inlined elements, or number of the mark
    int page = 0;   ///< object number of the page it stands on, 0: not said
    int stream = 0; ///< object number of the form that the marks are in, 0: the page's content
};

/// What was read of a structure element, or of the structure tree's root.
struct StructureSource
{
    int parent = 0;      ///< object number, 0: none
    int page = 0;        ///< object number of the page of marks that name none, 0: not said
    std::string entries; ///< those that are copied as they stand: "/S/P/Alt(text)\n"
    std::vector<StructureKid> kids;
    std::vector<std::string> inlined; ///< dictionaries of elements that stand in the list itself
    bool isElement = false;           ///< has a type

    /// The type, a name; empty when it has none.
    std::string type() const;
};

/// Calls @p take with key and value of each of an element's entries, as they stand.
template <typename Take> void forEachEntry(const std::string &entries, Take &&take)
{
    SyntaxScanner scanner(entries, SyntaxScanner::Escapes::allowed);
    std::string_view key;
    while (scanner.skipBlanks() && !scanner.isAtEnd() && scanner.takeName(key) &&
           scanner.skipBlanks()) {
        const std::size_t begin = scanner.position();
        if (!scanner.skipValue(1)) {
            return;
        }
        take(key, scanner.since(begin));
    }
}

/// Reads a structure element, or the root. @returns false when the syntax is odd
bool readStructureElement(SyntaxScanner &scanner, StructureSource &result);

/// Reads what a reference in a list of kids leads to: it may be an element, and then nothing is
/// added, or a list of kids or one of them. @param page that of the element with the list
bool readReferredKids(SyntaxScanner &scanner, int page, StructureSource &result);

/// A name as it stands in a source, without its slash, with its escapes undone.
std::string unescapedName(std::string_view name);

} // namespace tools
