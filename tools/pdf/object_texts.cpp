#include "tools/pdf/object_texts.h"

#include "tools/pdf/library_internals.h"

namespace tools {

bool ObjectTexts::read(int number, const Reader &reader)
{
    if (number <= 0 || number >= m_source.objectCount()) {
        return false;
    }
    if (cryptOf(m_source.document()) == nullptr &&
        m_scanner.readBytes(number, m_source.placeOf(number), reader)) {
        return true;
    }
    const int last = m_source.finalNumber(number);
    return !m_source.isStream(last) && read(m_source.object(last), reader);
}

bool ObjectTexts::read(pdf_obj *value, const Reader &reader)
{
    if (value == nullptr) {
        return false;
    }
    fz_context *context = m_source.context();
    std::size_t length = 0;
    char *printed = nullptr;
    if (!m_source.attempt([context, value, &printed, &length] {
            printed = pdf_sprint_obj(context, nullptr, 0, &length, value, 1, 1);
        })) {
        return false;
    }
    std::string text(printed, length);
    fz_free(context, printed);
    text += '\n'; // what ends a number or a name
    SyntaxScanner scanner(text, SyntaxScanner::Escapes::allowed);
    return reader(scanner);
}

} // namespace tools
