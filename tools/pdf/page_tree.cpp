#include "tools/pdf/page_tree.h"

#include "tools/pdf/page_walk.h"

#include <algorithm>

namespace tools {

namespace {

std::ptrdiff_t unreadablePages(const PageList &list)
{
    return std::count_if(list.pages.begin(), list.pages.end(),
                         [](const PageList::Page &page) { return !page.isReadable; });
}

/// Whether all pages of @p other are those of @p list, and more of them can be read.
bool isBetter(const PageList &other, const PageList &list)
{
    return other.pages.size() == list.pages.size() &&
           unreadablePages(other) < unreadablePages(list);
}

} // namespace

std::shared_ptr<const PageList> PageTree::sharedList()
{
    SourceFile &file = m_source.file();
    if (!file.pages()) {
        PageList pages = walkPages(m_source);
        // Without a catalog, no other reader finds pages either.
        if (pages.pages.empty() && m_source.isDictionary(m_source.catalog()) &&
            file.readAs(Reading::repaired)) {
            throw FileRepaired();
        }
        if (m_source.isRepaired() && unreadablePages(pages) != 0) {
            tryTableAlone(pages);
        }
        // Who shares these pages must find the same objects under their numbers.
        pages.reading = file.reading() == Reading::asOpened && m_source.isRepaired()
                            ? Reading::repaired
                            : file.reading();
        file.setPages(std::make_shared<const PageList>(std::move(pages)));
    }
    return file.pages();
}

/// A repair takes what looks like objects anywhere in the file, and may miss some that the table
/// knows.
void PageTree::tryTableAlone(const PageList &pages)
{
    SourceFile &file = m_source.file();
    PageList found;
    try {
        SourceFile other(file.libraryContext(), &file.input());
        if (!other.readAs(Reading::leavingLost)) {
            return;
        }
        found = readRepairing(other, [&other] {
            PdfSource source(other);
            return walkPages(source);
        });
    } catch (const ToolError &) {
        return;
    }
    if (isBetter(found, pages)) {
        found.reading = Reading::leavingLost;
        file.setPages(std::make_shared<const PageList>(std::move(found)));
        throw FileRepaired();
    }
}

FoundPage PageTree::find(int page)
{
    if (page < 1 || page > pageCount()) {
        return {};
    }
    const PageList::Page &place = list().pages[static_cast<std::size_t>(page) - 1];
    pdf_obj *found = place.isReadable ? object(place.number, place.node, place.place) : nullptr;
    if (!m_source.isDictionary(found)) {
        return {nullptr, 0, true, place.node};
    }
    return {found, place.number, false, place.node};
}

pdf_obj *PageTree::object(int number, int node, int place)
{
    if (number > 0) {
        return m_source.object(number);
    }
    if (node < 0) {
        return m_source.get(m_source.catalog(), PDF_NAME(Pages));
    }
    return m_source.at(m_source.get(this->node(node), PDF_NAME(Kids)), place);
}

pdf_obj *PageTree::node(int index)
{
    const PageList::Node &node = list().nodes[static_cast<std::size_t>(index)];
    return object(node.number, node.parent, node.place);
}

bool PageTree::isRectangle(pdf_obj *value)
{
    fz_context *context = m_source.context();
    pdf_obj *box = m_source.resolve(value);
    const auto isNumber = [this, context, box](int index) {
        return pdf_is_number(context, m_source.at(box, index)) != 0;
    };
    return pdf_array_len(context, box) == 4 && isNumber(0) && isNumber(1) && isNumber(2) &&
           isNumber(3);
}

pdf_obj *PageTree::inherited(const FoundPage &page, pdf_obj *key)
{
    // Readers pass over a box that is none and take the one above.
    const bool isBox = key == PDF_NAME(MediaBox) || key == PDF_NAME(CropBox);
    pdf_obj *holder = page.page;
    for (int index = page.node;; index = list().nodes[static_cast<std::size_t>(index)].parent) {
        pdf_obj *value = m_source.isDictionary(holder) ? m_source.raw(holder, key) : nullptr;
        if (m_source.resolve(value) != nullptr && (!isBox || isRectangle(value))) {
            return value;
        }
        if (index < 0) {
            return nullptr;
        }
        holder = node(index);
    }
}

} // namespace tools
