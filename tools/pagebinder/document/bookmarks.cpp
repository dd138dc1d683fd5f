#include "tools/pagebinder/document/bookmarks.h"

namespace tools {

int Bookmarks::write(const std::vector<OutputPage> &pages)
{
    std::size_t next = 0;
    std::vector<Item> items = collect(m_index.select(pages), next, -1);
    if (items.empty()) {
        return 0;
    }
    PdfWriter &writer = m_copier.writer();
    const int root = writer.allocate();
    number(items);
    writer.beginDictionaryObject(root, "Outlines");
    writer.key("First").appendReference(items.front().target);
    writer.key("Last").appendReference(items.back().target);
    writer.key("Count").appendNumber(visibleCount(items));
    writer.endDictionaryObject();
    writeItems(items, root);
    return root;
}

/// The items below @p parent. Those of one level follow one another in @p places, with their kids
/// between them.
std::vector<Bookmarks::Item> Bookmarks::collect(const std::vector<int> &places, std::size_t &next,
                                                int parent)
{
    std::vector<Item> items;
    while (next < places.size() && m_index.at(places[next]).parent == parent) {
        const int place = places[next];
        const BookmarkIndex::Entry &entry = m_index.at(place);
        ++next;
        Item item;
        item.dictionary = m_source.resolve(entry.reference.get());
        pdf_obj *destination = m_index.destinationOf(item.dictionary);
        item.destination = m_destinations.pageOf(destination) == 0 ? nullptr : destination;
        item.isOpen = entry.isOpen;
        item.kids = collect(places, next, place);
        items.push_back(std::move(item));
    }
    return items;
}

void Bookmarks::number(std::vector<Item> &items)
{
    for (Item &item : items) {
        item.target = m_copier.writer().allocate();
        number(item.kids);
    }
}

int Bookmarks::visibleCount(const std::vector<Item> &items)
{
    int count = 0;
    for (const Item &item : items) {
        count += 1 + (item.isOpen ? visibleCount(item.kids) : 0);
    }
    return count;
}

void Bookmarks::writeItems(const std::vector<Item> &items, int parent)
{
    for (std::size_t place = 0; place < items.size(); ++place) {
        writeItem(items, place, parent);
        writeItems(items[place].kids, items[place].target);
    }
}

void Bookmarks::writeItem(const std::vector<Item> &items, std::size_t place, int parent)
{
    const Item &item = items[place];
    PdfWriter &writer = m_copier.writer();
    const KeyFilter kept = [](std::string_view key) {
        return key == "Title" || key == "C" || key == "F";
    };
    writer.beginDictionaryObject(item.target);
    m_copier.writePlainEntries(item.dictionary, kept);
    writer.key("Parent").appendReference(parent);
    if (place > 0) {
        writer.key("Prev").appendReference(items[place - 1].target);
    }
    if (place + 1 < items.size()) {
        writer.key("Next").appendReference(items[place + 1].target);
    }
    if (item.destination != nullptr) {
        writer.key("Dest");
        m_destinations.write(item.destination);
    }
    writeChildEntries(item);
    writer.endDictionaryObject();
}

void Bookmarks::writeChildEntries(const Item &item)
{
    if (item.kids.empty()) {
        return;
    }
    PdfWriter &writer = m_copier.writer();
    writer.key("First").appendReference(item.kids.front().target);
    writer.key("Last").appendReference(item.kids.back().target);
    const int count = visibleCount(item.kids);
    writer.key("Count").appendNumber(item.isOpen ? count : -count);
}

} // namespace tools
