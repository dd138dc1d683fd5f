#include "tools/pagebinder/page_tree.h"

#include <algorithm>

namespace tools {

namespace {

constexpr int deepestTree = 200;
constexpr std::size_t mostPages = 2'000'000;

} // namespace

bool PageTree::isNode(pdf_obj *node)
{
    pdf_obj *type = m_source.get(node, PDF_NAME(Type));
    if (pdf_is_name(m_source.context(), type)) {
        return m_source.isName(type, PDF_NAME(Pages));
    }
    return m_source.raw(node, PDF_NAME(Kids)) != nullptr &&
           m_source.raw(node, PDF_NAME(MediaBox)) == nullptr;
}

bool PageTree::isPage(pdf_obj *node)
{
    if (!m_source.isDictionary(node) || isNode(node)) {
        return false;
    }
    pdf_obj *type = m_source.get(node, PDF_NAME(Type));
    return m_source.isName(type, PDF_NAME(Page)) ||
           (type == nullptr && m_source.raw(node, PDF_NAME(Kids)) == nullptr);
}

int PageTree::pageCount()
{
    pdf_obj *pages = m_source.get(m_source.catalog(), PDF_NAME(Pages));
    const int count = pdf_to_int(m_source.context(), m_source.get(pages, PDF_NAME(Count)));
    if (count <= m_source.objectCount()) {
        return count;
    }
    walkOnce(pages);
    return static_cast<int>(m_pages.size());
}

FoundPage PageTree::find(int page)
{
    pdf_obj *root = m_source.get(m_source.catalog(), PDF_NAME(Pages));
    if (page < 1 || !m_source.isDictionary(root)) {
        return {};
    }
    if (!m_walked) {
        const FoundPage found = descend(root, page - 1, 0);
        if (found.page != nullptr || found.isUnreadable) {
            return found;
        }
        walkOnce(root);
    }
    const auto index = static_cast<std::size_t>(page) - 1;
    return index < m_pages.size() ? m_pages[index] : FoundPage();
}

void PageTree::walkOnce(pdf_obj *root)
{
    if (!m_walked) {
        m_walked = true;
        std::vector<int> path;
        walk(root, 0, path);
    }
}

FoundPage PageTree::leafAt(const PageKids &kids, int index)
{
    const OwnedObject reference = m_source.kid(kids, index);
    pdf_obj *kid = m_source.resolve(reference.get());
    if (isPage(kid)) {
        return {kid, m_source.numberOf(reference.get()), false};
    }
    if (pdf_is_indirect(m_source.context(), reference.get()) && !m_source.isDictionary(kid)) {
        return {nullptr, 0, true};
    }
    return {};
}

FoundPage PageTree::descend(pdf_obj *node, int index, int depth)
{
    fz_context *context = m_source.context();
    const PageKids kids = m_source.kids(node);
    const int count = pdf_to_int(context, m_source.get(node, PDF_NAME(Count)));
    const int length = m_source.countOf(kids);
    if (depth > deepestTree || index >= count) {
        return {};
    }
    if (length == count) {
        return leafAt(kids, index);
    }
    for (int i = 0; i < length; ++i) {
        pdf_obj *kid = m_source.resolve(m_source.kid(kids, i).get());
        if (!m_source.isDictionary(kid)) {
            return {};
        }
        if (!isNode(kid)) {
            if (index == 0) {
                return leafAt(kids, i);
            }
            --index;
            continue;
        }
        pdf_obj *below = m_source.get(kid, PDF_NAME(Count));
        const int pages = pdf_to_int(context, below);
        if (!pdf_is_int(context, below) || pages < 0) {
            return {};
        }
        if (index < pages) {
            return descend(kid, index, depth + 1);
        }
        index -= pages;
    }
    return {};
}

void PageTree::walk(pdf_obj *node, int depth, std::vector<int> &path)
{
    const PageKids kids = m_source.kids(node);
    const int length = m_source.countOf(kids);
    for (int i = 0; i < length && m_pages.size() < mostPages; ++i) {
        const OwnedObject reference = m_source.kid(kids, i);
        pdf_obj *kid = m_source.resolve(reference.get());
        const int number = m_source.numberOf(reference.get());
        if (isPage(kid)) {
            m_pages.push_back({kid, number, false});
        } else if (m_source.isDictionary(kid) && isNode(kid) && depth < deepestTree &&
                   (number == 0 || std::find(path.begin(), path.end(), number) == path.end())) {
            path.push_back(number);
            walk(kid, depth + 1, path);
            path.pop_back();
        }
    }
}

pdf_obj *PageTree::inherited(pdf_obj *page, pdf_obj *key)
{
    pdf_obj *node = page;
    for (int depth = 0; depth < deepestTree && m_source.isDictionary(node); ++depth) {
        pdf_obj *value = m_source.raw(node, key);
        if (m_source.resolve(value) != nullptr) {
            return value;
        }
        node = m_source.get(node, PDF_NAME(Parent));
    }
    return nullptr;
}

} // namespace tools
