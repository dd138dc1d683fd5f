#include "tools/pdf/page_loader.h"

#include "tools/pdf/page_tree.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

constexpr int deepestForms = 5;
constexpr int deepestParts = 5;
constexpr int mostParts = 1000;
constexpr int mostDrawn = 200;

/// What a page may take over from the nodes above it.
struct Inherited
{
    pdf_obj *key;
    pdf_obj *value;
};

/// What the page has by its own account, through the nodes that it names as its parents.
pdf_obj *ownValue(fz_context *context, pdf_obj *page, pdf_obj *key)
{
    pdf_obj *value = nullptr;
    fz_var(value);
    fz_try(context)
    {
        value = pdf_dict_get_inheritable(context, page, key);
    }
    fz_catch(context)
    {
        value = nullptr; // parents in a circle
    }
    return value;
}

/// A page tree of one page. @returns it, owned by the caller. @throws the library's error
pdf_obj *newTree(fz_context *context, pdf_document *document, const FoundPage &page)
{
    pdf_obj *tree = pdf_new_dict(context, document, 3);
    fz_try(context)
    {
        pdf_dict_put(context, tree, PDF_NAME(Type), PDF_NAME(Pages));
        pdf_dict_put_int(context, tree, PDF_NAME(Count), 1);
        pdf_obj *kids = pdf_dict_put_array(context, tree, PDF_NAME(Kids), 1);
        if (page.number > 0) {
            pdf_array_push_drop(context, kids, pdf_new_indirect(context, document, page.number, 0));
        } else {
            pdf_array_push(context, kids, page.page);
        }
    }
    fz_catch(context)
    {
        pdf_drop_obj(context, tree);
        fz_rethrow(context);
    }
    return tree;
}

/// Shows the library a tree of this page alone while it loads the page. @throws the library's error
pdf_page *loadFromOwnTree(fz_context *context, pdf_document *document, const FoundPage &found)
{
    dropPageMap(context, document); // or the page loaded before would come again
    pdf_obj *catalog = pdf_dict_get(context, pdf_trailer(context, document), PDF_NAME(Root));
    pdf_obj *tree = newTree(context, document, found);
    pdf_obj *former = pdf_keep_obj(context, pdf_dict_get(context, catalog, PDF_NAME(Pages)));
    pdf_page *page = nullptr;
    fz_var(page);
    fz_try(context)
    {
        if (pdf_name_eq(context, pdf_dict_get(context, found.page, PDF_NAME(Type)),
                        PDF_NAME(Page)) == 0) {
            pdf_dict_put(context, found.page, PDF_NAME(Type), PDF_NAME(Page));
        }
        pdf_dict_put(context, catalog, PDF_NAME(Pages), tree);
        page = pdf_load_page(context, document, 0);
    }
    fz_always(context)
    {
        pdf_dict_put(context, catalog, PDF_NAME(Pages), former);
        pdf_drop_obj(context, former);
        pdf_drop_obj(context, tree);
    }
    fz_catch(context)
    {
        fz_rethrow(context);
    }
    return page;
}

} // namespace

PageLoader::~PageLoader()
{
    if (m_file.document() != nullptr) {
        dropPageMap(m_file.context(), m_file.document());
    }
}

std::shared_ptr<const PageList> PageLoader::pages()
{
    return readRepairing(m_file, [this] {
        PdfSource source(m_file);
        return PageTree(source).sharedList();
    });
}

pdf_page *PageLoader::load(int page, std::string &reason)
{
    return readRepairing(m_file, [this, page, &reason]() -> pdf_page * {
        PdfSource source(m_file);
        PageTree tree(source);
        const FoundPage found = tree.find(page);
        if (found.page == nullptr) {
            reason = "cannot be read";
            return nullptr;
        }
        mendPage(source, tree, found);
        return loadFound(tree, found, reason);
    });
}

/// Loads what the page's text is made of: the source mends what is broken, and the library finds it
/// loaded then.
void PageLoader::mendPage(PdfSource &source, PageTree &tree, const FoundPage &page)
{
    if (m_wasRepaired != source.isRepaired()) {
        m_wasRepaired = source.isRepaired();
        m_mended.clear();
    }
    mend(source, source.raw(page.page, PDF_NAME(Contents)), 0);
    mendResources(source, tree.inherited(page, PDF_NAME(Resources)), 0);
}

void PageLoader::mendResources(PdfSource &source, pdf_obj *resources, int depth)
{
    fz_context *context = source.context();
    resources = source.resolve(resources);
    if (depth == deepestForms || !source.isDictionary(resources)) {
        return;
    }
    mend(source, source.raw(resources, PDF_NAME(Font)), 0);
    pdf_obj *drawn = source.get(resources, PDF_NAME(XObject));
    const int count = std::min(pdf_dict_len(context, drawn), mostDrawn);
    for (int i = 0; i < count; ++i) {
        pdf_obj *reference = pdf_dict_get_val(context, drawn, i);
        if (m_mended.insert(source.directNumber(reference)).second) {
            pdf_obj *form = source.resolve(reference);
            if (source.isDictionary(form)) {
                mendResources(source, source.raw(form, PDF_NAME(Resources)), depth + 1);
            }
        }
    }
}

/// Loads @p object and what it refers to, some steps far.
void PageLoader::mend(PdfSource &source, pdf_obj *object, int depth)
{
    fz_context *context = source.context();
    const int number = source.directNumber(object);
    if (depth > deepestParts || (number != 0 && !m_mended.insert(number).second)) {
        return;
    }
    object = source.resolve(object);
    const int length = std::min(pdf_array_len(context, object), mostParts);
    for (int i = 0; i < length; ++i) {
        mend(source, pdf_array_get(context, object, i), depth + 1);
    }
    const int entries = std::min(pdf_dict_len(context, object), mostParts);
    for (int i = 0; i < entries; ++i) {
        mend(source, pdf_dict_get_val(context, object, i), depth + 1);
    }
}

pdf_page *PageLoader::loadFound(PageTree &tree, const FoundPage &found, std::string &reason)
{
    fz_context *context = m_file.context();
    std::array<Inherited, 4> entries = {{{PDF_NAME(Resources), nullptr},
                                         {PDF_NAME(MediaBox), nullptr},
                                         {PDF_NAME(CropBox), nullptr},
                                         {PDF_NAME(Rotate), nullptr}}};
    for (Inherited &entry : entries) {
        entry.value = tree.inherited(found, entry.key);
    }
    pdf_page *page = nullptr;
    fz_var(page);
    fz_try(context)
    {
        for (const Inherited &entry : entries) {
            if (entry.value != nullptr && entry.value != ownValue(context, found.page, entry.key)) {
                pdf_dict_put(context, found.page, entry.key, entry.value);
            }
        }
        page = knowsLibrary && found.number > 0
                   ? loadPageObject(context, m_file.document(), found.number)
                   : loadFromOwnTree(context, m_file.document(), found);
    }
    fz_catch(context)
    {
        reason = fz_caught_message(context);
        page = nullptr;
    }
    return page;
}

} // namespace tools
