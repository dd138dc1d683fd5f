#include "tools/pagexport/picture/page_blending.h"

namespace tools {

namespace {

constexpr int deepestResources = 8;
constexpr int mostDictionaries = 500;

/// Looks through resource dictionaries, not more than some hundred.
class BlendingSearch
{
public:
    explicit BlendingSearch(fz_context *context) : m_context(context) {}

    bool isFoundIn(pdf_obj *resources, int depth)
    {
        if (resources == nullptr) {
            return false;
        }
        if (depth > deepestResources || ++m_dictionaries > mostDictionaries) {
            return true;
        }
        return anyEntry(pdf_dict_get(m_context, resources, PDF_NAME(ExtGState)),
                        [this](pdf_obj *state) { return isBlending(state); }) ||
               anyInner(resources, PDF_NAME(XObject), depth) ||
               anyInner(resources, PDF_NAME(Pattern), depth) ||
               anyInner(resources, PDF_NAME(Font), depth);
    }

private:
    template <typename Test> bool anyEntry(pdf_obj *dictionary, Test test)
    {
        const int count = pdf_dict_len(m_context, dictionary);
        for (int i = 0; i < count; ++i) {
            if (test(pdf_dict_get_val(m_context, dictionary, i))) {
                return true;
            }
        }
        return false;
    }
    bool anyInner(pdf_obj *resources, pdf_obj *kind, int depth)
    {
        return anyEntry(pdf_dict_get(m_context, resources, kind), [this, depth](pdf_obj *object) {
            return isFoundIn(pdf_dict_get(m_context, object, PDF_NAME(Resources)), depth + 1);
        });
    }
    bool isBlending(pdf_obj *state)
    {
        pdf_obj *mode = pdf_dict_get(m_context, state, PDF_NAME(BM));
        pdf_obj *mask = pdf_dict_get(m_context, state, PDF_NAME(SMask));
        const bool plainMode = mode == nullptr || pdf_name_eq(m_context, mode, PDF_NAME(Normal));
        return !plainMode || (mask != nullptr && !pdf_name_eq(m_context, mask, PDF_NAME(None)));
    }

    fz_context *m_context;
    int m_dictionaries = 0;
};

// Colours mixed in another space than the picture's come out differently.
bool isPlainGroup(fz_context *context, pdf_obj *group)
{
    pdf_obj *space = pdf_dict_get(context, group, PDF_NAME(CS));
    if (pdf_is_array(context, space) &&
        pdf_name_eq(context, pdf_array_get(context, space, 0), PDF_NAME(ICCBased))) {
        space = pdf_array_get(context, space, 1);
        return pdf_dict_get_int(context, space, PDF_NAME(N)) == 3;
    }
    return (space == nullptr || pdf_name_eq(context, space, PDF_NAME(DeviceRGB))) &&
           !pdf_dict_get_bool(context, group, PDF_NAME(K));
}

bool search(fz_context *context, pdf_page *page)
{
    pdf_obj *group = pdf_page_group(context, page);
    return group == nullptr || page->overprint != 0 || pdf_first_annot(context, page) != nullptr ||
           pdf_first_widget(context, page) != nullptr || !isPlainGroup(context, group) ||
           BlendingSearch(context).isFoundIn(pdf_page_resources(context, page), 0);
}

} // namespace

bool needsPageGroup(fz_context *context, pdf_page *page) noexcept
{
    bool needed = true;
    fz_var(needed);
    fz_try(context)
    {
        needed = search(context, page);
    }
    fz_catch(context)
    {
        needed = true;
    }
    return needed;
}

} // namespace tools
