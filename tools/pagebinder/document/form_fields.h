#pragma once

#include "tools/pagebinder/copying/object_copier.h"
#include "tools/pagebinder/document/calculation_order.h"
#include "tools/pagebinder/document/field_parents.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace tools {

/// Rebuilds the form of the copied pages: only the fields with a widget on them, with the fields
/// above those, their values and the form's default resources.
class FormFields
{
public:
    FormFields(ObjectCopier &copier, CalculationOrder &order, FieldParents &fieldParents)
        : m_copier(copier), m_source(copier.source()), m_order(order), m_fieldParents(fieldParents)
    {
    }

    /// Takes up a widget that is going to be copied.
    /// @param widget its dictionary, resolved
    /// @param number its object number, 0 for none
    /// @param target its number in the output
    void addWidget(pdf_obj *widget, int number, int target);

    /// Whether a widget shows a signature that has been given. On anything but the whole signed
    /// file it is void.
    /// @param number its object number, 0 for none
    bool isSigned(pdf_obj *widget, int number);

    /// Writes what a widget needs of its field: /Parent, or the field's own value.
    void writeWidgetEntries(pdf_obj *widget, int target);

    /// Writes the fields above the widgets.
    void writeFields();

    /// Writes the catalog's entry /AcroForm, if any field was copied.
    void writeForm();

    /// Whether an entry of a widget is one of its field that is written here.
    static bool isHandledKey(std::string_view key);

private:
    struct Field
    {
        pdf_obj *dictionary = nullptr;
        int target = 0;
        int parent = 0; ///< number in the output, 0 at the top
        std::vector<int> kids;
        bool isPlaced = false; ///< its parents are known
    };

    int addField(pdf_obj *dictionary, int number, int kid, int depth);
    int parentOf(pdf_obj *dictionary, int number);
    pdf_obj *inherited(pdf_obj *field, int number, pdf_obj *key);
    void writeField(const Field &field);
    void writeDefaultResources(pdf_obj *form);
    void writeCalculationOrder();
    std::vector<std::string> namedFonts(pdf_obj *form);

    ObjectCopier &m_copier;
    PdfSource &m_source;
    CalculationOrder &m_order;
    FieldParents &m_fieldParents;
    std::vector<Field> m_fields;
    std::unordered_map<int, std::size_t> m_byNumber; ///< object number to place in m_fields
    std::unordered_map<int, int> m_parents;          ///< widget to parent, both in the output
    std::vector<int> m_roots;
    std::vector<std::string> m_appearances; ///< default appearance strings
};

} // namespace tools
