#include "tools/pagebinder/structure/element_reader.h"

#include <algorithm>
#include <charconv>

namespace tools {

namespace {

using Kind = StructureKid::Kind;

constexpr int deepestList = 20;

/// What a dictionary in a list of kids says, as far as it is not an element.
struct KidEntries
{
    int page = 0;
    int stream = 0;
    int object = 0;
    int mark = -1;
    bool isElement = false;
};

/// Calls @p take with each key of the dictionary that begins here; it must take the value, too.
template <typename Take> bool takeEntries(SyntaxScanner &scanner, Take &&take)
{
    if (!scanner.takeByte('<') || !scanner.takeByte('<')) {
        return false;
    }
    for (;;) {
        if (!scanner.skipBlanks()) {
            return false;
        }
        if (scanner.takeByte('>')) {
            return scanner.takeByte('>');
        }
        std::string_view key;
        const std::size_t begin = scanner.position();
        if (!scanner.takeName(key) || !scanner.skipBlanks() || !take(key, begin)) {
            return false;
        }
    }
}

/// Takes a value, of which @p number becomes the object's number if it is a reference.
bool takeReference(SyntaxScanner &scanner, int &number)
{
    bool isReference = false;
    if (!scanner.isAt(isNumeral)) {
        return scanner.skipValue(1);
    }
    int value = 0;
    if (!scanner.takeReferenceOrInteger(value, isReference)) {
        return false;
    }
    number = isReference ? value : 0;
    return true;
}

/// Takes a value, of which @p number becomes the value if it is an integer of no sign.
bool takeNumber(SyntaxScanner &scanner, int &number)
{
    bool isReference = false;
    if (!scanner.isAt(isNumeral)) {
        return scanner.skipValue(1);
    }
    int value = 0;
    if (!scanner.takeReferenceOrInteger(value, isReference)) {
        return false;
    }
    number = isReference ? number : value;
    return true;
}

bool takeKidEntry(SyntaxScanner &scanner, std::string_view key, KidEntries &entries)
{
    if (key == "Pg") {
        return takeReference(scanner, entries.page);
    }
    if (key == "Stm") {
        return takeReference(scanner, entries.stream);
    }
    if (key == "Obj") {
        return takeReference(scanner, entries.object);
    }
    if (key == "MCID") {
        return takeNumber(scanner, entries.mark);
    }
    entries.isElement = entries.isElement || key == "S";
    return scanner.skipValue(1);
}

StructureKid kidOf(const KidEntries &entries)
{
    if (entries.object != 0) {
        return {Kind::object, entries.object, entries.page, 0};
    }
    if (entries.mark >= 0) {
        return {Kind::content, entries.mark, entries.page, entries.stream};
    }
    return {};
}

bool takeKidDictionary(SyntaxScanner &scanner, StructureSource &result)
{
    const std::size_t begin = scanner.position();
    KidEntries entries;
    if (!takeEntries(scanner, [&scanner, &entries](std::string_view key, std::size_t) {
            return takeKidEntry(scanner, key, entries);
        })) {
        return false;
    }
    if (entries.isElement) {
        result.kids.push_back({Kind::inlined, static_cast<int>(result.inlined.size()), 0, 0});
        result.inlined.emplace_back(scanner.since(begin));
    } else {
        result.kids.push_back(kidOf(entries));
    }
    return true;
}

bool takeKids(SyntaxScanner &scanner, StructureSource &result, int depth);

bool takeKidArray(SyntaxScanner &scanner, StructureSource &result, int depth)
{
    scanner.takeByte('[');
    for (;;) {
        if (!scanner.skipBlanks()) {
            return false;
        }
        if (scanner.takeByte(']')) {
            return true;
        }
        if (!takeKids(scanner, result, depth + 1)) {
            return false;
        }
    }
}

bool takeKids(SyntaxScanner &scanner, StructureSource &result, int depth)
{
    if (scanner.isAt(isNumeral)) {
        int value = 0;
        bool isReference = false;
        if (!scanner.takeReferenceOrInteger(value, isReference)) {
            return false;
        }
        result.kids.push_back({isReference ? Kind::element : Kind::content, value, 0, 0});
        return true;
    }
    if (scanner.isAt('<')) {
        return takeKidDictionary(scanner, result);
    }
    if (scanner.isAt('[') && depth < deepestList) {
        return takeKidArray(scanner, result, depth);
    }
    result.kids.emplace_back();
    return scanner.skipValue(1);
}

void setPage(std::vector<StructureKid> &kids, int page)
{
    for (StructureKid &kid : kids) {
        if (kid.page == 0 && (kid.kind == Kind::content || kid.kind == Kind::object)) {
            kid.page = page;
        }
    }
}

} // namespace

bool readStructureElement(SyntaxScanner &scanner, StructureSource &result)
{
    result = {};
    bool hasKids = false;
    const bool isRead = takeEntries(scanner, [&](std::string_view key, std::size_t begin) {
        if (key == "K") {
            // Readers do not agree on which of two entries counts.
            const bool isFirst = !hasKids;
            hasKids = true;
            return isFirst && takeKids(scanner, result, 0);
        }
        if (key == "P") {
            return takeReference(scanner, result.parent);
        }
        if (key == "Pg") {
            return takeReference(scanner, result.page);
        }
        result.isElement = result.isElement || key == "S";
        if (!scanner.skipValue(1)) {
            return false;
        }
        if (key != "Type") {
            result.entries += scanner.since(begin);
        }
        return true;
    });
    result.entries += '\n'; // what ends a name or a number
    setPage(result.kids, result.page);
    return isRead;
}

std::string StructureSource::type() const
{
    std::string found;
    forEachEntry(entries, [&found](std::string_view key, std::string_view value) {
        found = key == "S" && value.front() == '/' ? unescapedName(value.substr(1)) : found;
    });
    return found;
}

bool readReferredKids(SyntaxScanner &scanner, int page, StructureSource &result)
{
    result = {};
    bool isRead = false;
    if (scanner.isAt('[')) {
        isRead = takeKidArray(scanner, result, 0);
    } else if (scanner.isAt('<')) {
        isRead = takeKidDictionary(scanner, result);
        result.isElement = !result.inlined.empty();
    } else {
        isRead = takeKids(scanner, result, 0);
    }
    setPage(result.kids, page);
    return isRead;
}

std::string unescapedName(std::string_view name)
{
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        unsigned value = 0;
        const char *const digits = name.data() + i + 1;
        if (name[i] == '#' && i + 2 < name.size() &&
            std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            result += static_cast<char>(value);
            i += 2;
        } else {
            result += name[i];
        }
    }
    return result;
}

} // namespace tools
