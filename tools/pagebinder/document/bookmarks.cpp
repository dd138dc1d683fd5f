#include "tools/pagebinder/document/bookmarks.h"

namespace tools {

namespace {

constexpr int deepestLevel = 64;
constexpr std::size_t mostItems = 500'000;

} // namespace

int Bookmarks::write()
{
    pdf_obj *outlines = m_source.get(m_source.catalog(), PDF_NAME(Outlines));
    if (!m_source.isDictionary(outlines)) {
        return 0;
    }
    std::vector<Item> items = collect(m_source.raw(outlines, PDF_NAME(First)), 0);
    if (items.empty()) {
        return 0;
    }
    const int root = m_copier.writer().allocate();
    number(items);
    m_copier.writer().beginObject(root);
    std::string &text = m_copier.text();
    text += "<</Type/Outlines/First ";
    m_copier.writer().appendReference(items.front().target);
    text += "/Last ";
    m_copier.writer().appendReference(items.back().target);
    text += "/Count ";
    m_copier.writer().appendNumber(visibleCount(items));
    text += ">>";
    m_copier.writer().endObject();
    writeItems(items, root);
    return root;
}

std::vector<Bookmarks::Item> Bookmarks::collect(pdf_obj *first, int depth)
{
    std::vector<Item> items;
    pdf_obj *next = first;
    while (next != nullptr && depth < deepestLevel && m_seen.size() < mostItems) {
        pdf_obj *dictionary = m_source.resolve(next);
        if (!m_source.isDictionary(dictionary) || !m_seen.insert(m_source.numberOf(next)).second) {
            break;
        }
        Item item;
        item.dictionary = dictionary;
        item.destination = destinationOf(dictionary);
        item.isOpen = pdf_to_int(m_source.context(), m_source.get(dictionary, PDF_NAME(Count))) > 0;
        pdf_obj *below = m_source.raw(dictionary, PDF_NAME(First));
        if (below != nullptr) {
            item.kids = collect(below, depth + 1);
        }
        if (item.destination != nullptr || !item.kids.empty()) {
            items.push_back(std::move(item));
        }
        next = m_source.raw(dictionary, PDF_NAME(Next));
    }
    return items;
}

pdf_obj *Bookmarks::destinationOf(pdf_obj *item)
{
    pdf_obj *destination = m_source.raw(item, PDF_NAME(Dest));
    if (destination == nullptr) {
        pdf_obj *action = m_source.get(item, PDF_NAME(A));
        if (!m_source.isDictionary(action) ||
            !m_source.isName(m_source.get(action, PDF_NAME(S)), PDF_NAME(GoTo))) {
            return nullptr;
        }
        destination = m_source.raw(action, PDF_NAME(D));
    }
    return m_destinations.pageOf(destination) == 0 ? nullptr : destination;
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
    writer.beginObject(item.target);
    writer.text() += "<<";
    m_copier.writePlainEntries(item.dictionary, kept);
    writer.text() += "/Parent ";
    writer.appendReference(parent);
    if (place > 0) {
        writer.text() += "/Prev ";
        writer.appendReference(items[place - 1].target);
    }
    if (place + 1 < items.size()) {
        writer.text() += "/Next ";
        writer.appendReference(items[place + 1].target);
    }
    if (item.destination != nullptr) {
        writer.text() += "/Dest";
        m_destinations.write(item.destination);
    }
    writeChildEntries(item);
    writer.text() += ">>";
    writer.endObject();
}

void Bookmarks::writeChildEntries(const Item &item)
{
    if (item.kids.empty()) {
        return;
    }
    PdfWriter &writer = m_copier.writer();
    writer.text() += "/First ";
    writer.appendReference(item.kids.front().target);
    writer.text() += "/Last ";
    writer.appendReference(item.kids.back().target);
    writer.text() += "/Count ";
    const int count = visibleCount(item.kids);
    writer.appendNumber(item.isOpen ? count : -count);
}

} // namespace tools
