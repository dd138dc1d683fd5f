#include "tools/pagebinder/copying/other_pages.h"

namespace tools {

PageDrawings::PageDrawings(PdfSource &source, PageTree &tree)
    : m_source(source), m_tree(tree), m_drawn(std::make_unique<DrawnContent>(source))
{
}

bool PageDrawings::isDrawnBeside(const std::unordered_set<int> &copied, int object)
{
    for (const Run &run : m_runs[object]) {
        for (int page = run.first; page <= run.last; ++page) {
            if (copied.count(page) == 0) {
                return true;
            }
        }
    }
    const int count = m_tree.pageCount();
    while (m_page < count) {
        read(++m_page);
        const std::vector<Run> &runs = m_runs[object];
        if (!runs.empty() && runs.back().last == m_page && copied.count(m_page) == 0) {
            return true;
        }
    }
    return false;
}

void PageDrawings::forgetObjects()
{
    m_drawn = std::make_unique<DrawnContent>(m_source);
    m_seen.clear();
}

void PageDrawings::note(int object)
{
    std::vector<Run> &runs = m_runs[object];
    if (!runs.empty() && runs.back().last >= m_page - 1) {
        runs.back().last = m_page;
    } else {
        runs.push_back({m_page, m_page});
    }
}

void PageDrawings::read(int page)
{
    ++m_readCount;
    m_seen.clear();
    const FoundPage found = m_tree.find(page);
    if (found.page == nullptr) {
        return;
    }
    std::vector<Drawing> appearances;
    pdf_obj *annotations = m_source.get(found.page, PDF_NAME(Annots));
    const int length = pdf_array_len(m_source.context(), annotations);
    for (int i = 0; i < length; ++i) {
        const std::vector<Drawing> own =
            appearancesOf(m_source, *m_drawn, m_source.at(annotations, i));
        appearances.insert(appearances.end(), own.begin(), own.end());
    }
    readContent(found, appearances);
    while (!m_waiting.empty()) {
        const Drawing drawing = m_waiting.back();
        m_waiting.pop_back();
        const DrawnContent::Node &node = m_drawn->look(drawing);
        if (node.own != nullptr) {
            add(*node.own);
        }
    }
}

void PageDrawings::readContent(const FoundPage &page, const std::vector<Drawing> &appearances)
{
    pdf_obj *resources = m_source.resolve(m_tree.inherited(page, PDF_NAME(Resources)));
    ResourceUse use(m_source, resources);
    m_drawn->scan(
        contentStreams(m_source, m_source.raw(page.page, PDF_NAME(Contents))),
        [&use](ResourceKind kind, std::string_view name) { use.mark(kind, name); },
        [&use] { return !use.isComplete(); });
    for (const Drawing &appearance : appearances) {
        takeUnlisted(use, appearance);
        addDrawing(appearance);
    }
    while (takeUnlistedOfAll(use)) {
    }
    add(use);
}

bool PageDrawings::takeUnlistedOfAll(ResourceUse &use)
{
    bool grows = false;
    for (std::size_t i = 0; i < resourceKindCount; ++i) {
        const auto kind = static_cast<ResourceKind>(i);
        for (const ResourceUse::Entry &entry : use.entries(kind)) {
            if (!entry.used) {
                continue;
            }
            for (const Drawing &drawing : m_drawn->drawingsOf(kind, entry.value)) {
                grows = takeUnlisted(use, drawing) || grows;
            }
        }
    }
    return grows;
}

bool PageDrawings::takeUnlisted(ResourceUse &use, const Drawing &drawing)
{
    bool grows = false;
    m_drawn->provide(use, drawing, [&grows](ResourceKind, pdf_obj *) { grows = true; });
    return grows;
}

void PageDrawings::add(ResourceUse &use)
{
    for (std::size_t i = 0; i < resourceKindCount; ++i) {
        const auto kind = static_cast<ResourceKind>(i);
        for (const ResourceUse::Entry &entry : use.entries(kind)) {
            if (entry.used) {
                addEntry(kind, entry.value);
            }
        }
    }
}

void PageDrawings::addEntry(ResourceKind kind, pdf_obj *value)
{
    if (kind == ResourceKind::xObject) {
        note(m_source.numberOf(value));
    }
    for (const Drawing &drawing : m_drawn->drawingsOf(kind, value)) {
        addDrawing(drawing);
    }
}

void PageDrawings::addDrawing(const Drawing &drawing)
{
    if (m_seen.insert(drawing.object).second) {
        m_waiting.push_back(drawing);
    }
}

std::vector<int> contentStreams(PdfSource &source, pdf_obj *contents)
{
    pdf_obj *resolved = source.resolve(contents);
    if (!source.isArray(resolved)) {
        return {source.numberOf(contents)};
    }
    std::vector<int> streams;
    const int length = pdf_array_len(source.context(), resolved);
    streams.reserve(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) {
        streams.push_back(source.numberOf(pdf_array_get(source.context(), resolved, i)));
    }
    return streams;
}

std::vector<Drawing> appearancesOf(PdfSource &source, DrawnContent &drawn, pdf_obj *annotation)
{
    fz_context *context = source.context();
    std::vector<Drawing> found;
    const auto add = [&drawn, &found](pdf_obj *value) {
        const std::vector<Drawing> forms = drawn.formOf(value);
        found.insert(found.end(), forms.begin(), forms.end());
        return !forms.empty();
    };
    pdf_obj *appearances = source.get(annotation, PDF_NAME(AP));
    const int length = pdf_dict_len(context, appearances);
    for (int i = 0; i < length; ++i) {
        pdf_obj *appearance = pdf_dict_get_val(context, appearances, i);
        pdf_obj *states = add(appearance) ? nullptr : source.resolve(appearance);
        const int stateCount = pdf_dict_len(context, states);
        for (int state = 0; state < stateCount; ++state) {
            add(pdf_dict_get_val(context, states, state));
        }
    }
    return found;
}

} // namespace tools
