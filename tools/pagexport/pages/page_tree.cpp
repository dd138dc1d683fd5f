#include "tools/pagexport/pages/page_tree.h"

#include "tools/pdf/page_lookup.h"

#include <cstddef>

namespace tools {

namespace {

constexpr int longestReferenceChain = 10;
constexpr int mostRepairs = 2;

/// Thrown when the library had to rebuild the cross-reference table on the way: what was read so
/// far may be stale.
struct TreeRepaired
{
};

/// Access to the document's objects for the look-up of pages.
class TreeSource
{
public:
    TreeSource(fz_context *context, pdf_document *document)
        : m_context(context), m_document(document)
    {
    }

    fz_context *context() const noexcept { return m_context; }
    int objectCount() const { return pdf_xref_len(m_context, m_document); }
    pdf_obj *catalog() { return get(pdf_trailer(m_context, m_document), PDF_NAME(Root)); }
    pdf_obj *get(pdf_obj *dictionary, pdf_obj *key)
    {
        return resolve(pdf_dict_get(m_context, resolve(dictionary), key));
    }
    using Kids = pdf_obj *;
    Kids kids(pdf_obj *node) { return get(node, PDF_NAME(Kids)); }
    int countOf(Kids kids) const { return pdf_array_len(m_context, kids); }
    pdf_obj *kidAt(Kids kids, int index) { return resolve(pdf_array_get(m_context, kids, index)); }
    int kidNumber(Kids kids, int index) { return numberOf(pdf_array_get(m_context, kids, index)); }
    pdf_obj *raw(pdf_obj *resolved, pdf_obj *key) const
    {
        return pdf_dict_get(m_context, resolved, key);
    }
    // Nothing is dropped while the pages are looked up.
    void hold(pdf_obj * /*object*/) const noexcept {}
    void holdKids(Kids /*kids*/) const noexcept {}
    bool isDictionary(pdf_obj *resolved) const { return pdf_is_dict(m_context, resolved) != 0; }
    bool isName(pdf_obj *resolved, pdf_obj *name) const
    {
        return pdf_name_eq(m_context, resolved, name) != 0;
    }

private:
    int numberOf(pdf_obj *object);
    pdf_obj *load(int number);
    pdf_obj *resolve(pdf_obj *object);

    fz_context *m_context;
    pdf_document *m_document;
};

pdf_obj *TreeSource::load(int number)
{
    pdf_obj *object = nullptr;
    int code = FZ_ERROR_NONE;
    fz_var(object);
    fz_var(code);
    fz_try(m_context)
    {
        object = pdf_cache_object(m_context, m_document, number)->obj;
    }
    fz_catch(m_context)
    {
        code = fz_caught(m_context);
        object = nullptr;
    }
    if (code == FZ_ERROR_REPAIRED) {
        throw TreeRepaired();
    }
    return object;
}

pdf_obj *TreeSource::resolve(pdf_obj *object)
{
    for (int step = 0; pdf_is_indirect(m_context, object) != 0; ++step) {
        if (step == longestReferenceChain) {
            return nullptr;
        }
        object = load(pdf_to_num(m_context, object));
    }
    return object;
}

int TreeSource::numberOf(pdf_obj *object)
{
    int number = 0;
    for (int step = 0; pdf_is_indirect(m_context, object) != 0 && step < longestReferenceChain;
         ++step) {
        number = pdf_to_num(m_context, object);
        object = load(number);
    }
    return number;
}

template <typename Work> auto withLookup(const PdfFile &file, Work work)
{
    for (int attempt = 0;; ++attempt) {
        try {
            TreeSource source(file.context(), file.document());
            PageLookup<TreeSource> lookup(source);
            return work(lookup);
        } catch (const TreeRepaired &) {
            if (attempt == mostRepairs) {
                throw ToolError(file.path(), "is too damaged");
            }
        }
    }
}

// The library looks a page up by its number through this map when it is there, and else through
// every page before it; and so for each link on the page. One entry, the page wanted, is enough.
void setPageMap(fz_context *context, pdf_document *document, int object)
{
    if (document->fwd_page_map == nullptr) {
        document->fwd_page_map = static_cast<int *>(fz_calloc(context, 1, sizeof(int)));
        document->page_map_nesting = 1;
    }
    if (document->rev_page_map == nullptr) {
        document->rev_page_map =
            static_cast<pdf_rev_page_map *>(fz_calloc(context, 1, sizeof(pdf_rev_page_map)));
    }
    document->map_page_count = 1;
    document->fwd_page_map[0] = object;
    document->rev_page_map[0] = {0, object};
}

} // namespace

int countPages(const PdfFile &file)
{
    return withLookup(file, [](PageLookup<TreeSource> &lookup) { return lookup.pageCount(); });
}

PageObjects findPageObjects(const PdfFile &file, int first, int count)
{
    return withLookup(file, [first, count](PageLookup<TreeSource> &lookup) {
        PageObjects pages;
        pages.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            const FoundPage found = lookup.find(first + i + 1);
            pages.push_back(found.page != nullptr ? found.number : unreadablePage);
        }
        return pages;
    });
}

pdf_page *loadPage(fz_context *context, pdf_document *document, int index, int object)
{
    // The library refuses what lies beyond the count that the root states, which may be a lie.
    document->linear_page_count = index + 1;
    if (object != 0) {
        setPageMap(context, document, object);
        pdf_page *page = pdf_load_page(context, document, 0);
        // Looked up through the map the page's object is owned twice, and given back once only.
        pdf_drop_obj(context, page->obj);
        return page;
    }
    dropPageMap(context, document);
    return pdf_load_page(context, document, index);
}

void dropPageMap(fz_context *context, pdf_document *document) noexcept
{
    fz_free(context, document->fwd_page_map);
    fz_free(context, document->rev_page_map);
    document->fwd_page_map = nullptr;
    document->rev_page_map = nullptr;
    document->map_page_count = 0;
    document->page_map_nesting = 0;
}

} // namespace tools
