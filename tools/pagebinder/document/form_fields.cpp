#include "tools/pagebinder/document/form_fields.h"

#include "tools/pagebinder/copying/content_scanner.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tools {

namespace {

constexpr int deepestField = 64;

/// What a field above the widgets is made of. Its /Kids are rebuilt, its scripts stay behind, and
/// nothing of a widget that is mixed into it comes along.
bool isFieldKey(std::string_view key)
{
    constexpr std::array<std::string_view, 14> keys = {
        "FT", "T", "TU", "TM", "Ff", "DA", "Q", "DS", "RV", "Opt", "MaxLen", "TI", "I", "DV"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

} // namespace

bool FormFields::isHandledKey(std::string_view key)
{
    return key == "Parent" || key == "V" || key == "Kids" || key == "Lock" || key == "SV";
}

void FormFields::addWidget(pdf_obj *widget, int number, int target)
{
    pdf_obj *appearance = m_source.get(widget, PDF_NAME(DA));
    if (pdf_is_string(m_source.context(), appearance)) {
        m_appearances.push_back(PdfSource::bytes(m_source.context(), appearance));
    }
    const int parentNumber = parentOf(widget, number);
    pdf_obj *above = m_source.object(parentNumber);
    if (parentNumber > 0 && parentNumber != number && m_source.isDictionary(above)) {
        m_parents[target] = addField(above, parentNumber, target, 0);
    } else if (m_source.get(widget, PDF_NAME(FT)) != nullptr ||
               m_source.get(widget, PDF_NAME(T)) != nullptr) {
        m_roots.push_back(target);
    }
}

int FormFields::addField(pdf_obj *dictionary, int number, int kid, int depth)
{
    const auto known = m_byNumber.find(number);
    if (known != m_byNumber.end()) {
        m_fields[known->second].kids.push_back(kid);
        return m_fields[known->second].target;
    }
    const std::size_t place = m_fields.size();
    m_byNumber.emplace(number, place);
    Field field;
    field.dictionary = dictionary;
    field.target = m_copier.writer().allocate();
    field.kids.push_back(kid);
    const int target = field.target;
    m_fields.push_back(std::move(field));
    m_copier.map(number, target);
    pdf_obj *appearance = m_source.get(dictionary, PDF_NAME(DA));
    if (pdf_is_string(m_source.context(), appearance)) {
        m_appearances.push_back(PdfSource::bytes(m_source.context(), appearance));
    }
    const int parentNumber = parentOf(dictionary, number);
    pdf_obj *above = m_source.object(parentNumber);
    const auto met = m_byNumber.find(parentNumber);
    // A field that is met again on the way up from itself would close a circle.
    const bool circle = met != m_byNumber.end() && !m_fields[met->second].isPlaced;
    if (parentNumber <= 0 || !m_source.isDictionary(above) || depth >= deepestField || circle) {
        m_roots.push_back(target);
    } else {
        const int parentTarget = addField(above, parentNumber, target, depth + 1);
        m_fields[place].parent = parentTarget;
    }
    m_fields[place].isPlaced = true;
    return target;
}

/// The number of the field above a widget or field, 0 for none.
int FormFields::parentOf(pdf_obj *dictionary, int number)
{
    pdf_obj *parent = m_source.raw(dictionary, PDF_NAME(Parent));
    // What has a type or name of its own may well stand at the top.
    const bool isField = m_source.raw(dictionary, PDF_NAME(FT)) != nullptr ||
                         m_source.raw(dictionary, PDF_NAME(T)) != nullptr;
    return parent != nullptr || isField || number == 0 ? m_source.numberOf(parent)
                                                       : m_fieldParents.parentOf(number);
}

pdf_obj *FormFields::inherited(pdf_obj *field, int number, pdf_obj *key)
{
    pdf_obj *node = field;
    for (int depth = 0; depth < deepestField && m_source.isDictionary(node); ++depth) {
        pdf_obj *value = m_source.get(node, key);
        if (value != nullptr) {
            return value;
        }
        number = parentOf(node, number);
        node = m_source.object(number);
    }
    return nullptr;
}

bool FormFields::isSigned(pdf_obj *widget, int number)
{
    return m_source.isName(inherited(widget, number, PDF_NAME(FT)), PDF_NAME(Sig)) &&
           inherited(widget, number, PDF_NAME(V)) != nullptr;
}

void FormFields::writeWidgetEntries(pdf_obj *widget, int target)
{
    const auto parent = m_parents.find(target);
    if (parent != m_parents.end()) {
        m_copier.writer().key("Parent").appendReference(parent->second);
    }
    m_copier.writeEntry("V", m_source.raw(widget, PDF_NAME(V)), Role::unknown);
}

void FormFields::writeFields()
{
    for (const Field &field : m_fields) {
        writeField(field);
    }
}

void FormFields::writeField(const Field &field)
{
    PdfWriter &writer = m_copier.writer();
    writer.beginDictionaryObject(field.target);
    m_copier.writeEntries(field.dictionary, Role::field, isFieldKey);
    m_copier.writeEntry("V", m_source.raw(field.dictionary, PDF_NAME(V)), Role::unknown);
    if (field.parent != 0) {
        writer.key("Parent").appendReference(field.parent);
    }
    writer.key("Kids").appendReferences(field.kids);
    writer.endDictionaryObject();
}

void FormFields::writeForm()
{
    pdf_obj *form = m_source.get(m_source.catalog(), PDF_NAME(AcroForm));
    if (m_roots.empty() || !m_source.isDictionary(form)) {
        return;
    }
    const KeyFilter kept = [](std::string_view key) {
        return key == "NeedAppearances" || key == "DA" || key == "Q";
    };
    m_copier.writer().key("AcroForm").beginDictionary().key("Fields").appendReferences(m_roots);
    m_copier.writePlainEntries(form, kept);
    writeCalculationOrder();
    writeDefaultResources(form);
    m_copier.writer().endDictionary();
}

void FormFields::writeCalculationOrder()
{
    std::vector<std::pair<int, int>> placed; // place in the order, number in the output
    for (const auto &[number, target] : m_copier.targets()) {
        if (target != 0) {
            for (const int place : m_order.placesOf(number)) {
                placed.emplace_back(place, target);
            }
        }
    }
    if (placed.empty()) {
        return;
    }
    std::sort(placed.begin(), placed.end());
    PdfWriter &writer = m_copier.writer();
    writer.key("CO").beginArray();
    for (const auto &[place, target] : placed) {
        writer.appendReference(target);
    }
    writer.endArray();
}

std::vector<std::string> FormFields::namedFonts(pdf_obj *form)
{
    std::vector<std::string> fonts = {"Helv", "ZaDb"};
    ContentScanner scanner([&fonts](ResourceKind kind, std::string_view name) {
        if (kind == ResourceKind::font) {
            fonts.emplace_back(name);
        }
    });
    pdf_obj *appearance = m_source.get(form, PDF_NAME(DA));
    if (pdf_is_string(m_source.context(), appearance)) {
        m_appearances.push_back(PdfSource::bytes(m_source.context(), appearance));
    }
    for (const std::string &text : m_appearances) {
        scanner.feed(text);
        scanner.feed("\n");
    }
    std::sort(fonts.begin(), fonts.end());
    fonts.erase(std::unique(fonts.begin(), fonts.end()), fonts.end());
    return fonts;
}

void FormFields::writeDefaultResources(pdf_obj *form)
{
    pdf_obj *resources = m_source.get(form, PDF_NAME(DR));
    if (!m_source.isDictionary(resources)) {
        return;
    }
    PdfWriter &writer = m_copier.writer();
    writer.key("DR").beginDictionary();
    pdf_obj *fonts = m_source.get(resources, PDF_NAME(Font));
    if (m_source.isDictionary(fonts)) {
        writer.key("Font").beginDictionary();
        for (const std::string &name : namedFonts(form)) {
            m_copier.writeEntry(name, pdf_dict_gets(m_source.context(), fonts, name.c_str()),
                                Role::font);
        }
        writer.endDictionary();
    }
    m_copier.writeEntry("Encoding", m_source.raw(resources, PDF_NAME(Encoding)), Role::encodingMap);
    m_copier.writeEntry("ProcSet", m_source.raw(resources, PDF_NAME(ProcSet)), Role::plain);
    writer.endDictionary();
}

} // namespace tools
