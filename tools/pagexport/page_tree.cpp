#include "tools/pagexport/page_tree.h"

#include <algorithm>
#include <cstddef>

namespace tools {

namespace {

constexpr int deepestTree = 200;
constexpr long long spareSteps = 1000000; // beyond the pages wanted; a tree may fan out without any

/// A node being walked: its kids and the next of them to visit.
struct OpenNode
{
    pdf_obj *kids;
    int number;
    int next;
    int count;
};

bool isBranch(fz_context *context, pdf_obj *node)
{
    pdf_obj *type = pdf_dict_get(context, node, PDF_NAME(Type));
    if (type != nullptr) {
        return pdf_name_eq(context, type, PDF_NAME(Pages)) != 0;
    }
    return pdf_dict_get(context, node, PDF_NAME(Kids)) != nullptr &&
           pdf_dict_get(context, node, PDF_NAME(MediaBox)) == nullptr;
}

pdf_obj *rootNode(fz_context *context, pdf_document *document)
{
    return pdf_dict_getp(context, pdf_trailer(context, document), "Root/Pages");
}

OpenNode opened(fz_context *context, pdf_obj *node)
{
    pdf_obj *kids = pdf_dict_get(context, node, PDF_NAME(Kids));
    return {kids, pdf_to_num(context, node), 0, pdf_array_len(context, kids)};
}

// The kid that holds page "index" of the node's pages; "index" becomes its place among the kid's
// own. Null when the counts do not add up.
pdf_obj *kidWithPage(fz_context *context, pdf_obj *node, int &index)
{
    pdf_obj *kids = pdf_dict_get(context, node, PDF_NAME(Kids));
    const int length = pdf_array_len(context, kids);
    if (length == pdf_dict_get_int(context, node, PDF_NAME(Count))) {
        pdf_obj *kid = pdf_array_get(context, kids, index);
        if (isBranch(context, kid)) {
            return nullptr; // an empty branch and a larger one may hide behind equal numbers
        }
        index = 0;
        return kid;
    }
    for (int i = 0; i < length; ++i) {
        pdf_obj *kid = pdf_array_get(context, kids, i);
        const int pages =
            isBranch(context, kid) ? pdf_dict_get_int(context, kid, PDF_NAME(Count)) : 1;
        if (pages < 0) {
            return nullptr;
        }
        if (index < pages) {
            return kid;
        }
        index -= pages;
    }
    return nullptr;
}

int descendToPage(fz_context *context, pdf_document *document, int index)
{
    pdf_obj *node = rootNode(context, document);
    for (int depth = 0; depth < deepestTree && node != nullptr; ++depth) {
        if (!isBranch(context, node)) {
            return depth > 0 && index == 0 ? pdf_to_num(context, node) : 0;
        }
        node = kidWithPage(context, node, index);
    }
    return 0;
}

// One step of the walk; returns the object number of a page, or -1 when the step gave none.
int walkStep(fz_context *context, std::vector<OpenNode> &path)
{
    OpenNode &node = path.back();
    if (node.next >= node.count) {
        path.pop_back();
        return -1;
    }
    pdf_obj *kid = pdf_array_get(context, node.kids, node.next++);
    if (!isBranch(context, kid)) {
        return pdf_to_num(context, kid);
    }
    const int number = pdf_to_num(context, kid);
    const bool isLoop = std::any_of(path.begin(), path.end(), [number](const OpenNode &open) {
        return open.number == number && number != 0;
    });
    if (!isLoop && path.size() < static_cast<std::size_t>(deepestTree)) {
        path.push_back(opened(context, kid));
    }
    return -1;
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

int findPageObject(fz_context *context, pdf_document *document, int index) noexcept
{
    int number = 0;
    fz_var(number);
    fz_try(context)
    {
        number = descendToPage(context, document, index);
    }
    fz_catch(context)
    {
        number = 0;
    }
    return number;
}

PageObjects listPageObjects(fz_context *context, pdf_document *document, int limit)
{
    PageObjects pages;
    pages.reserve(static_cast<std::size_t>(std::max(limit, 0)));
    std::vector<OpenNode> path;
    path.reserve(deepestTree);
    long long steps = limit + spareSteps;
    bool done = false;
    fz_var(steps);
    fz_var(done);
    while (!done) {
        fz_try(context)
        {
            if (path.empty()) {
                path.push_back(opened(context, rootNode(context, document)));
            }
            while (!path.empty() && pages.size() < static_cast<std::size_t>(limit) && --steps > 0) {
                const int page = walkStep(context, path);
                if (page >= 0) {
                    pages.push_back(page);
                }
            }
            done = true;
        }
        fz_catch(context)
        {
            done = path.empty(); // a kid that cannot be read is passed over
        }
    }
    return pages;
}

pdf_page *loadPage(fz_context *context, pdf_document *document, int index, int object)
{
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
