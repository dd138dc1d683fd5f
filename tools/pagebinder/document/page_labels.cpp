#include "tools/pagebinder/document/page_labels.h"

#include <algorithm>
#include <climits>
#include <iterator>

namespace tools {

namespace {

constexpr int deepestNumberTree = 40;
constexpr int mostLabelNodes = 100'000;
constexpr std::size_t mostStarts = 2'000'000;

} // namespace

void PageLabels::write(const std::vector<int> &pages)
{
    if (!m_index.hasLabels()) {
        return;
    }
    PdfWriter &writer = m_copier.writer();
    writer.key("PageLabels").beginDictionary().key("Nums").beginArray();
    PageLabelIndex::Numbering current;
    int before = INT_MIN;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const int index = pages[i] - 1;
        const bool known = current.first >= 0 && index >= current.first && index < current.next;
        if (known && index == before + 1) {
            before = index;
            continue;
        }
        if (!known) {
            current = m_index.find(index);
        }
        writer.appendNumber(static_cast<std::int64_t>(i));
        writeNumbering(current, index);
        before = index;
    }
    writer.endArray().endDictionary();
}

bool PageLabelIndex::hasLabels()
{
    if (!m_isRead) {
        read();
    }
    return m_hasLabels;
}

void PageLabelIndex::read()
{
    m_isRead = true;
    pdf_obj *root = m_source.get(m_source.catalog(), "PageLabels");
    m_hasLabels = m_source.isDictionary(root);
    m_nodesLeft = mostLabelNodes;
    collect(root, 0);
    // Of two numberings that begin at the same page the one that is met first holds.
    std::stable_sort(m_starts.begin(), m_starts.end(),
                     [](const Start &a, const Start &b) { return a.first < b.first; });
    const auto end = std::unique(m_starts.begin(), m_starts.end(),
                                 [](const Start &a, const Start &b) { return a.first == b.first; });
    m_starts.erase(end, m_starts.end());
}

void PageLabelIndex::collect(pdf_obj *node, int depth)
{
    fz_context *context = m_source.context();
    if (depth > deepestNumberTree || --m_nodesLeft < 0 || !m_source.isDictionary(node)) {
        return;
    }
    pdf_obj *numbers = m_source.get(node, PDF_NAME(Nums));
    const int length = pdf_array_len(context, numbers);
    for (int i = 0; i + 1 < length; i += 2) {
        const int first = pdf_to_int(context, m_source.at(numbers, i));
        if (first >= 0 && m_starts.size() < mostStarts) {
            m_starts.push_back(
                {first, KeptObject(context, pdf_array_get(context, numbers, i + 1))});
        }
    }
    pdf_obj *kids = m_source.get(node, PDF_NAME(Kids));
    const int kidCount = pdf_array_len(context, kids);
    for (int i = 0; i < kidCount && m_nodesLeft > 0; ++i) {
        collect(m_source.at(kids, i), depth + 1);
    }
}

PageLabelIndex::Numbering PageLabelIndex::find(int index)
{
    const auto after =
        std::upper_bound(m_starts.begin(), m_starts.end(), index,
                         [](int page, const Start &start) { return page < start.first; });
    Numbering found;
    found.next = after == m_starts.end() ? INT_MAX : after->first;
    if (after != m_starts.begin()) {
        const Start &start = *std::prev(after);
        found.dictionary = m_source.resolve(start.value.get());
        found.first = start.first;
    }
    if (found.dictionary == nullptr) {
        found.first = 0;
    }
    return found;
}

void PageLabels::writeNumbering(const PageLabelIndex::Numbering &numbering, int index)
{
    fz_context *context = m_source.context();
    PdfWriter &writer = m_copier.writer();
    writer.beginDictionary();
    if (!m_source.isDictionary(numbering.dictionary)) {
        writer.key("S").appendName("D");
    } else {
        const KeyFilter kept = [](std::string_view key) { return key == "S" || key == "P"; };
        m_copier.writePlainEntries(numbering.dictionary, kept);
    }
    pdf_obj *start = m_source.get(numbering.dictionary, "St");
    const long long begin = start == nullptr ? 1 : pdf_to_int(context, start);
    const long long number = begin + index - numbering.first;
    if (number != 1) {
        writer.key("St").appendNumber(number);
    }
    writer.endDictionary();
}

} // namespace tools
