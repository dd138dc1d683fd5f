#pragma once

#include "tools/pdf/pdf_source.h"

#include <unordered_map>

namespace tools {

/// Which field of the document's form lists an object among its kids. Some producers leave out
/// the way back, /Parent, of widgets and fields. Read when it is first asked for.
class FieldParents
{
public:
    explicit FieldParents(PdfSource &source) : m_source(source) {}

    /// The number of the field above object @p number, 0 for none.
    int parentOf(int number);

private:
    void read();

    PdfSource &m_source;
    bool m_isRead = false;
    std::unordered_map<int, int> m_parents;
};

} // namespace tools
