#pragma once

#include "tools/pagebinder/opening/pdf_source.h"

#include <unordered_map>
#include <vector>

namespace tools {

/// In which order a form's fields are calculated, read once for all outputs.
class CalculationOrder
{
public:
    explicit CalculationOrder(PdfSource &source) : m_source(source) {}

    /// The places in the order of the field with this object number; none when it has no place.
    const std::vector<int> &placesOf(int number);

private:
    void read();

    PdfSource &m_source;
    bool m_isRead = false;
    std::unordered_map<int, std::vector<int>> m_places;
};

} // namespace tools
