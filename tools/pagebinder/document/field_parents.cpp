#include "tools/pagebinder/document/field_parents.h"

#include <utility>
#include <vector>

namespace tools {

int FieldParents::parentOf(int number)
{
    if (!std::exchange(m_isRead, true)) {
        read();
    }
    const auto found = m_parents.find(number);
    return found == m_parents.end() ? 0 : found->second;
}

void FieldParents::read()
{
    fz_context *context = m_source.context();
    std::vector<int> waiting;
    const auto addKids = [this, context, &waiting](pdf_obj *kids, int parent) {
        const int length = pdf_array_len(context, kids);
        for (int i = 0; i < length; ++i) {
            const int number = m_source.numberOf(pdf_array_get(context, kids, i));
            // The first field that lists an object has it; so loops end.
            if (number != 0 && m_parents.emplace(number, parent).second) {
                waiting.push_back(number);
            }
        }
    };
    addKids(m_source.get(m_source.get(m_source.catalog(), PDF_NAME(AcroForm)), PDF_NAME(Fields)),
            0);
    while (!waiting.empty()) {
        const int number = waiting.back();
        waiting.pop_back();
        addKids(m_source.get(m_source.object(number), PDF_NAME(Kids)), number);
    }
}

} // namespace tools
