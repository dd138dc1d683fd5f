#include "tools/pdf/page_tree.h"

namespace tools {

namespace {

constexpr int deepestTree = 200;

} // namespace

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
