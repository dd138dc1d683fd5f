#include "tools/pagebinder/document/page_labels.h"

#include <algorithm>
#include <climits>

namespace tools {

namespace {

constexpr int deepestTree = 40;
constexpr int mostNodes = 100'000;

} // namespace

void PageLabels::write(const std::vector<int> &pages)
{
    pdf_obj *root = m_source.get(m_source.catalog(), "PageLabels");
    if (!m_source.isDictionary(root)) {
        return;
    }
    m_nodesLeft = mostNodes;
    m_copier.text() += "/PageLabels<</Nums[";
    Numbering current;
    int before = INT_MIN;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const int index = pages[i] - 1;
        const bool known = current.first >= 0 && index >= current.first && index < current.next;
        if (known && index == before + 1) {
            before = index;
            continue;
        }
        if (!known) {
            current = find(root, index);
        }
        m_copier.writer().appendNumber(static_cast<std::int64_t>(i));
        writeNumbering(current, index);
        before = index;
    }
    m_copier.text() += "]>>";
}

PageLabels::Numbering PageLabels::find(pdf_obj *root, int index)
{
    Numbering best;
    best.next = INT_MAX;
    search(root, index, 0, best);
    if (best.dictionary == nullptr) {
        best.first = 0;
    }
    return best;
}

void PageLabels::search(pdf_obj *node, int index, int depth, Numbering &best)
{
    fz_context *context = m_source.context();
    if (depth > deepestTree || --m_nodesLeft < 0 || !m_source.isDictionary(node)) {
        return;
    }
    pdf_obj *limits = m_source.get(node, PDF_NAME(Limits));
    if (pdf_array_len(context, limits) >= 2) {
        const int first = pdf_to_int(context, m_source.at(limits, 0));
        const int last = pdf_to_int(context, m_source.at(limits, 1));
        if (first > index) {
            best.next = std::min(best.next, first);
            return;
        }
        if (last < best.first) {
            return;
        }
    }
    pdf_obj *numbers = m_source.get(node, PDF_NAME(Nums));
    const int length = pdf_array_len(context, numbers);
    for (int i = 0; i + 1 < length; i += 2) {
        const int first = pdf_to_int(context, m_source.at(numbers, i));
        if (first > index) {
            best.next = std::min(best.next, first);
        } else if (first > best.first) {
            best.first = first;
            best.dictionary = m_source.at(numbers, i + 1);
        }
    }
    pdf_obj *kids = m_source.get(node, PDF_NAME(Kids));
    const int kidCount = pdf_array_len(context, kids);
    for (int i = 0; i < kidCount; ++i) {
        search(m_source.at(kids, i), index, depth + 1, best);
    }
}

void PageLabels::writeNumbering(const Numbering &numbering, int index)
{
    fz_context *context = m_source.context();
    std::string &text = m_copier.text();
    text += "<<";
    if (!m_source.isDictionary(numbering.dictionary)) {
        text += "/S/D";
    } else {
        const KeyFilter kept = [](std::string_view key) { return key == "S" || key == "P"; };
        m_copier.writePlainEntries(numbering.dictionary, kept);
    }
    pdf_obj *start = m_source.get(numbering.dictionary, "St");
    const long long begin = start == nullptr ? 1 : pdf_to_int(context, start);
    const long long number = begin + index - numbering.first;
    if (number != 1) {
        text += "/St ";
        m_copier.writer().appendNumber(number);
    }
    text += ">>";
}

} // namespace tools
