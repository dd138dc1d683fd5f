#include "tools/pdf/page_tree.h"

#include "tools/pdf/page_walk.h"

namespace tools {

std::shared_ptr<const PageList> PageTree::sharedList()
{
    SourceFile &file = m_source.file();
    if (!file.pages()) {
        auto pages = std::make_shared<PageList>(walkPages(m_source));
        pages->needsRepair = file.isRebuilt();
        // Without a catalog, no other reader finds pages either.
        if (pages->pages.empty() && m_source.isDictionary(m_source.catalog()) && file.repair()) {
            throw FileRepaired();
        }
        file.setPages(std::move(pages));
    }
    return file.pages();
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

pdf_obj *PageTree::inherited(const FoundPage &page, pdf_obj *key)
{
    pdf_obj *holder = page.page;
    for (int index = page.node;; index = list().nodes[static_cast<std::size_t>(index)].parent) {
        pdf_obj *value = m_source.isDictionary(holder) ? m_source.raw(holder, key) : nullptr;
        if (m_source.resolve(value) != nullptr) {
            return value;
        }
        if (index < 0) {
            return nullptr;
        }
        holder = node(index);
    }
}

} // namespace tools
