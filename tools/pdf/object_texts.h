#pragma once

#include "tools/pdf/file_window.h"
#include "tools/pdf/object_scanner.h"
#include "tools/pdf/syntax_scanner.h"

#include <functional>
#include <string>

namespace tools {

/// Gives the source of objects, to be scanned without making objects of the library's of them,
/// which is most of the work where there are many small ones. Objects that are written in any but
/// the plainest syntax, or encrypted, are read by the library, which then gives their source.
class ObjectTexts
{
public:
    /// Reads one value. It is called again from the beginning, with more bytes or other ones, when
    /// it has returned false.
    using Reader = std::function<bool(SyntaxScanner &)>;

    explicit ObjectTexts(PdfSource &source) : m_source(source), m_scanner(source) {}

    /// Has @p reader read object @p number. @returns false when there is no such object, when it is
    /// a stream, or when the reader does not take it. @throws FileRepaired, std::bad_alloc
    bool read(int number, const Reader &reader);

    /// The same for a value that the library has read.
    bool read(pdf_obj *value, const Reader &reader);

private:
    PdfSource &m_source;
    ObjectScanner m_scanner;
};

} // namespace tools
