#include "tools/pagebinder/document/calculation_order.h"

namespace tools {

const std::vector<int> &CalculationOrder::placesOf(int number)
{
    static const std::vector<int> none;
    if (!m_isRead) {
        read();
    }
    const auto found = m_places.find(number);
    return found == m_places.end() ? none : found->second;
}

void CalculationOrder::read()
{
    m_isRead = true;
    pdf_obj *form = m_source.get(m_source.catalog(), PDF_NAME(AcroForm));
    pdf_obj *order = m_source.get(form, "CO");
    const int length = pdf_array_len(m_source.context(), order);
    for (int i = 0; i < length; ++i) {
        const int number = m_source.numberOf(pdf_array_get(m_source.context(), order, i));
        if (number != 0) {
            m_places[number].push_back(i);
        }
    }
}

} // namespace tools
