#include "tools/pagebinder/document/annotations.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

bool isPlainAnnotationKey(std::string_view key)
{
    constexpr std::array<std::string_view, 8> handled = {"P",  "Popup", "IRT",  "A",
                                                         "AA", "PA",    "Dest", "Type"};
    return !FormFields::isHandledKey(key) &&
           std::find(handled.begin(), handled.end(), key) == handled.end();
}

} // namespace

void Annotations::add(const OutputPage &page)
{
    fz_context *context = m_source.context();
    PageAnnotations &added = m_pages.emplace_back();
    added.page = page.target;
    pdf_obj *annotations = m_source.get(page.found.page, PDF_NAME(Annots));
    const int length = pdf_array_len(context, annotations);
    for (int i = 0; i < length; ++i) {
        pdf_obj *dictionary = m_source.at(annotations, i);
        const int number = m_source.numberOf(pdf_array_get(context, annotations, i));
        const Extent extent =
            m_source.isDictionary(dictionary) ? extentOf(dictionary, number) : Extent::none;
        if (extent == Extent::none || (number != 0 && added.targets.count(number) != 0)) {
            continue;
        }
        const int target = m_copier.writer().allocate();
        added.annotations.push_back({dictionary, number, target, extent});
        if (number != 0) {
            added.targets.emplace(number, target);
            if (m_copier.mapped(number) == 0) {
                m_copier.map(number, target);
            }
        }
        const bool isWidget =
            m_source.isName(m_source.get(dictionary, PDF_NAME(Subtype)), PDF_NAME(Widget));
        if (isWidget && extent == Extent::whole) {
            m_fields.addWidget(dictionary, number, target);
        }
    }
}

Annotations::Extent Annotations::extentOf(pdf_obj *annotation, int number)
{
    pdf_obj *kind = m_source.get(annotation, PDF_NAME(Subtype));
    if (m_source.isName(kind, PDF_NAME(Link)) && m_destinations.leadsOutside(annotation)) {
        return isVisible(annotation) ? Extent::look : Extent::none;
    }
    if (m_source.isName(kind, PDF_NAME(Widget)) && m_fields.isSigned(annotation, number)) {
        return m_source.get(annotation, PDF_NAME(AP)) == nullptr ? Extent::none : Extent::seal;
    }
    return pdf_is_name(m_source.context(), kind) != 0 ? Extent::whole : Extent::none;
}

bool Annotations::isVisible(pdf_obj *link)
{
    fz_context *context = m_source.context();
    if (m_source.get(link, PDF_NAME(AP)) != nullptr) {
        return true;
    }
    pdf_obj *style = m_source.get(link, PDF_NAME(BS));
    pdf_obj *border = m_source.get(link, PDF_NAME(Border));
    pdf_obj *width =
        m_source.isDictionary(style) ? m_source.get(style, PDF_NAME(W)) : m_source.at(border, 2);
    return pdf_is_number(context, width) == 0 || pdf_to_real(context, width) > 0;
}

std::vector<TaggedPage::Annotation> Annotations::copiedOn(std::size_t index) const
{
    std::vector<TaggedPage::Annotation> copied;
    for (const Annotation &annotation : m_pages[index].annotations) {
        copied.push_back({annotation.dictionary, annotation.number, annotation.target});
    }
    return copied;
}

void Annotations::write(std::size_t index)
{
    const PageAnnotations &page = m_pages[index];
    m_copier.setLocalTargets(&page.targets);
    for (const Annotation &annotation : page.annotations) {
        if (annotation.extent == Extent::whole) {
            writeAnnotation(annotation, page.page);
        } else {
            writeLook(annotation, page.page);
        }
    }
    m_copier.setLocalTargets(nullptr);
}

void Annotations::writeAnnotation(const Annotation &annotation, int page)
{
    PdfWriter &writer = m_copier.writer();
    pdf_obj *dictionary = annotation.dictionary;
    pdf_obj *kind = m_source.get(dictionary, PDF_NAME(Subtype));
    writer.beginDictionaryObject(annotation.target, "Annot").key("P").appendReference(page);
    m_copier.writeEntries(dictionary, Role::annotation, isPlainAnnotationKey);
    m_tags.writeAnnotationKey(annotation.target);
    writeReference("Popup", m_source.raw(dictionary, PDF_NAME(Popup)));
    writeReference("IRT", m_source.raw(dictionary, PDF_NAME(IRT)));
    if (m_source.isName(kind, PDF_NAME(Widget))) {
        m_fields.writeWidgetEntries(dictionary, annotation.target);
    } else {
        writeReference("Parent", m_source.raw(dictionary, PDF_NAME(Parent)));
    }
    pdf_obj *destination = m_source.raw(dictionary, PDF_NAME(Dest));
    if (destination == nullptr) {
        m_destinations.writeAction("A", m_source.raw(dictionary, PDF_NAME(A)));
    } else if (m_destinations.pageOf(destination) != 0) {
        writer.key("Dest");
        m_destinations.write(destination);
    }
    writer.endDictionaryObject();
}

void Annotations::writeLook(const Annotation &annotation, int page)
{
    const KeyFilter kept = [](std::string_view key) {
        return key == "Rect" || key == "AP" || key == "AS" || key == "F" || key == "OC";
    };
    const KeyFilter keptOfLink = [](std::string_view key) {
        return key == "Rect" || key == "AP" || key == "AS" || key == "F" || key == "OC" ||
               key == "Border" || key == "BS" || key == "C" || key == "QuadPoints";
    };
    const bool isSeal = annotation.extent == Extent::seal;
    PdfWriter &writer = m_copier.writer();
    writer.beginDictionaryObject(annotation.target, "Annot");
    writer.key("Subtype").appendName(isSeal ? "Stamp" : "Link").key("P").appendReference(page);
    m_copier.writeEntries(annotation.dictionary, Role::annotation, isSeal ? kept : keptOfLink);
    m_tags.writeAnnotationKey(annotation.target);
    writer.endDictionaryObject();
}

void Annotations::writeReference(std::string_view key, pdf_obj *value)
{
    const int number = m_source.numberOf(value);
    const int target = number == 0 ? 0 : m_copier.mapped(number);
    if (target != 0) {
        m_copier.writer().key(key).appendReference(target);
    }
}

std::vector<int> Annotations::targets(std::size_t index) const
{
    std::vector<int> targets;
    for (const Annotation &annotation : m_pages[index].annotations) {
        targets.push_back(annotation.target);
    }
    return targets;
}

std::vector<Drawing> Annotations::appearances(std::size_t index)
{
    std::vector<Drawing> found;
    for (const Annotation &annotation : m_pages[index].annotations) {
        const std::vector<Drawing> own = appearancesOf(m_source, m_drawn, annotation.dictionary);
        found.insert(found.end(), own.begin(), own.end());
    }
    return found;
}

} // namespace tools
