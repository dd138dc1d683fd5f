#include "tools/pagebinder/structure/parent_tree.h"

#include <algorithm>

namespace tools {

namespace {

/// Takes "[12 0 R null 13 0 R]"; anything but a reference counts as null.
bool takeElements(SyntaxScanner &scanner, std::vector<int> &numbers)
{
    numbers.clear();
    if (!scanner.takeByte('[')) {
        return false;
    }
    for (;;) {
        if (!scanner.skipBlanks()) {
            return false;
        }
        if (scanner.takeByte(']')) {
            return true;
        }
        int number = 0;
        bool isReference = false;
        if (scanner.isAt(isNumeral) ? !scanner.takeReferenceOrInteger(number, isReference)
                                    : !scanner.skipValue(1)) {
            return false;
        }
        numbers.push_back(isReference ? number : 0);
    }
}

} // namespace

std::vector<int> ParentTree::elementsOf(int key)
{
    std::vector<int> numbers;
    const Entry *const entry = find(key);
    if (entry == nullptr) {
        return numbers;
    }
    bool isRead = false;
    if (entry->reference != 0) {
        isRead = m_texts.read(entry->reference, [&numbers](SyntaxScanner &scanner) {
            return takeElements(scanner, numbers);
        });
    } else {
        SyntaxScanner scanner(entry->value, SyntaxScanner::Escapes::allowed);
        isRead = takeElements(scanner, numbers);
    }
    if (!isRead) {
        numbers.clear();
    }
    return numbers;
}

int ParentTree::elementOf(int key)
{
    const Entry *const entry = find(key);
    return entry == nullptr ? 0 : entry->reference;
}

const ParentTree::Entry *ParentTree::find(int key)
{
    if (!m_isRead) {
        read();
    }
    const auto found =
        std::lower_bound(m_entries.begin(), m_entries.end(), key,
                         [](const Entry &entry, int wanted) { return entry.key < wanted; });
    return found == m_entries.end() || found->key != key ? nullptr : &*found;
}

void ParentTree::read()
{
    m_isRead = true;
    pdf_obj *root = m_source.get(m_source.catalog(), "StructTreeRoot");
    pdf_obj *tree = m_source.raw(root, "ParentTree");
    std::vector<int> waiting = {m_source.directNumber(tree)};
    std::unordered_set<int> seen;
    while (!waiting.empty()) {
        const int number = waiting.back();
        waiting.pop_back();
        if (number != 0 && !seen.insert(number).second) {
            continue;
        }
        std::vector<Entry> entries;
        std::vector<int> kids;
        const auto reader = [this, &entries, &kids](SyntaxScanner &scanner) {
            return readNode(scanner, entries, kids);
        };
        if (number != 0 ? m_texts.read(number, reader) : m_texts.read(tree, reader)) {
            m_entries.insert(m_entries.end(), entries.begin(), entries.end());
            waiting.insert(waiting.end(), kids.begin(), kids.end());
        }
    }
    const auto isBefore = [](const Entry &a, const Entry &b) { return a.key < b.key; };
    if (!std::is_sorted(m_entries.begin(), m_entries.end(), isBefore)) {
        std::stable_sort(m_entries.begin(), m_entries.end(), isBefore);
    }
}

bool ParentTree::readNode(SyntaxScanner &scanner, std::vector<Entry> &entries,
                          std::vector<int> &kids)
{
    entries.clear();
    kids.clear();
    if (!scanner.takeByte('<') || !scanner.takeByte('<')) {
        return false;
    }
    for (;;) {
        std::string_view key;
        if (!scanner.skipBlanks()) {
            return false;
        }
        if (scanner.takeByte('>')) {
            return scanner.takeByte('>');
        }
        if (!scanner.takeName(key) || !scanner.skipBlanks()) {
            return false;
        }
        const bool isTaken = key == "Nums" && scanner.isAt('[')   ? readNumbers(scanner, entries)
                             : key == "Kids" && scanner.isAt('[') ? takeElements(scanner, kids)
                                                                  : scanner.skipValue(1);
        if (!isTaken) {
            return false;
        }
    }
}

/// Takes the pairs of a node's /Nums. Arrays are kept as they stand and looked into when their page
/// is copied.
bool ParentTree::readNumbers(SyntaxScanner &scanner, std::vector<Entry> &entries)
{
    const std::size_t begin = scanner.position();
    std::vector<std::pair<std::size_t, std::size_t>> arrays; ///< entry, where its array begins
    scanner.takeByte('[');
    for (;;) {
        if (!scanner.skipBlanks()) {
            return false;
        }
        if (scanner.takeByte(']')) {
            break;
        }
        Entry entry;
        bool isReference = false;
        if (!scanner.takeInteger(entry.key) || !scanner.skipBlanks()) {
            return false;
        }
        if (scanner.isAt(isNumeral)) {
            if (!scanner.takeReferenceOrInteger(entry.reference, isReference)) {
                return false;
            }
        } else {
            const std::size_t place = scanner.position();
            if (scanner.isAt('[')) {
                arrays.emplace_back(entries.size(), place);
            }
            if (!scanner.skipFlatArray() && !scanner.skipValue(1)) {
                return false;
            }
            isReference = scanner.since(place).front() == '[';
            entry.value = scanner.since(place);
        }
        if (isReference) {
            entries.push_back(entry);
        }
    }
    if (!arrays.empty()) {
        const std::string_view held = m_held.emplace_back(scanner.since(begin));
        for (const auto &[index, place] : arrays) {
            const std::size_t length = entries[index].value.size();
            entries[index].value = held.substr(place - begin, length);
        }
    }
    return true;
}

} // namespace tools
