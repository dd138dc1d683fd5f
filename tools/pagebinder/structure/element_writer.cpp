#include "tools/pagebinder/structure/element_writer.h"

#include <algorithm>
#include <array>

namespace tools {

namespace {

using Kind = StructureKid::Kind;

/// Texts, names and numbers that say something of the element.
bool isSimple(std::string_view key)
{
    constexpr std::array<std::string_view, 9> keys = {
        "T", "Alt", "Lang", "R", "E", "ActualText", "Phoneme", "PhoneticAlphabet", "ID"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// Texts that stand for the content itself, all of it.
bool standsForContent(std::string_view key)
{
    return key == "ActualText" || key == "E" || key == "Phoneme";
}

} // namespace

void ElementWriter::writeAll()
{
    collectIdentifiers();
    std::vector<int> parents(m_cut.kept().size(), 0);
    for (const StructureCut::Kept &kept : m_cut.kept()) {
        for (const StructureCut::Kid &kid : kept.kids) {
            if (kid.page == StructureCut::none) {
                parents[static_cast<std::size_t>(kid.target)] = kept.target;
            }
        }
    }
    for (std::size_t i = 1; i < parents.size(); ++i) {
        write(m_cut.kept()[i], parents[i]);
    }
}

/// All identifiers are known before the first table cell names those of its headers.
void ElementWriter::collectIdentifiers()
{
    for (const StructureCut::Kept &kept : m_cut.kept()) {
        const std::string &entries = m_cut.tree().element(kept.element).source.entries;
        if (entries.find("/ID") == std::string::npos || kept.element == StructureTree::root) {
            continue;
        }
        forEachEntry(entries, [this, &kept](std::string_view key, std::string_view text) {
            if (key == "ID") {
                const KeptObject value = m_source.parse(text);
                const std::string identifier =
                    PdfSource::bytes(m_source.context(), m_source.resolve(value.get()));
                m_identifiers.emplace(identifierFor(identifier, kept.copy), kept.target);
            }
        });
    }
}

/// Identifiers are unique, so those of elements that are there twice get a number.
std::string ElementWriter::identifierFor(const std::string &identifier, int copy) const
{
    return copy == 0 ? identifier : identifier + "~" + std::to_string(copy + 1);
}

/// Number in the output of the page that most marks of an element are on: the first one's.
int ElementWriter::pageOf(const StructureCut::Kept &kept) const
{
    const auto isMark = [](const StructureCut::Kid &kid) {
        return kid.page != StructureCut::none && kid.target == 0;
    };
    const auto found = std::find_if(kept.kids.begin(), kept.kids.end(), isMark);
    return found == kept.kids.end() ? 0 : m_pages[static_cast<std::size_t>(found->page)].target;
}

void ElementWriter::write(const StructureCut::Kept &kept, int parent)
{
    const int page = pageOf(kept);
    m_writer.beginDictionaryObject(kept.target, "StructElem");
    writeEntries(kept);
    m_writer.key("P").appendReference(parent);
    if (page != 0) {
        m_writer.key("Pg").appendReference(page);
    }
    writeKids(kept, page);
    m_writer.endDictionaryObject();
}

void ElementWriter::writeKids(const StructureCut::Kept &kept, int page)
{
    if (kept.kids.size() == 1) {
        m_writer.key("K").appendBlank();
        writeKid(kept, kept.kids.front(), page);
    } else if (!kept.kids.empty()) {
        m_writer.key("K").beginArray();
        for (const StructureCut::Kid &kid : kept.kids) {
            writeKid(kept, kid, page);
            m_writer.appendBlank();
        }
        m_writer.endArray();
    }
}

void ElementWriter::writeKid(const StructureCut::Kept &kept, const StructureCut::Kid &kid, int page)
{
    if (kid.page == StructureCut::none) {
        m_writer.appendReference(m_cut.kept()[static_cast<std::size_t>(kid.target)].target);
        return;
    }
    const StructureKid &listed = m_cut.tree().kid({kept.element, kid.position});
    const int own = m_pages[static_cast<std::size_t>(kid.page)].target;
    const bool isMark = listed.kind == Kind::content;
    if (isMark && kid.target == 0 && own == page) {
        m_writer.appendNumber(listed.value);
        return;
    }
    m_writer.beginDictionary().key("Type").appendName(isMark ? "MCR" : "OBJR");
    m_writer.key("Pg").appendReference(own);
    if (kid.target != 0) {
        m_writer.key(isMark ? "Stm" : "Obj").appendReference(kid.target);
    }
    if (isMark) {
        m_writer.key("MCID").appendNumber(listed.value);
    }
    m_writer.endDictionary();
}

void ElementWriter::writeEntries(const StructureCut::Kept &kept)
{
    forEachEntry(m_cut.tree().element(kept.element).source.entries,
                 [this, &kept](std::string_view key, std::string_view text) {
                     writeEntry(kept, key, text);
                 });
}

void ElementWriter::writeEntry(const StructureCut::Kept &kept, std::string_view key,
                               std::string_view text)
{
    if (key == "S") {
        writeType(text);
    } else if (key == "ID" && kept.copy != 0) {
        const KeptObject value = m_source.parse(text);
        const std::string identifier =
            PdfSource::bytes(m_source.context(), m_source.resolve(value.get()));
        m_writer.key("ID").appendString(identifierFor(identifier, kept.copy));
    } else if (isSimple(key)) {
        if (kept.isWhole || !standsForContent(key)) {
            writeSimple(key, text);
        }
    } else if (key == "A") {
        const KeptObject value = m_source.parse(text);
        m_writer.key("A");
        writeAttributes(value.get(), kept.copy);
    } else if (key == "C") {
        const KeptObject value = m_source.parse(text);
        noteClasses(m_source.resolve(value.get()));
        m_copier.writeEntry("C", m_source.resolve(value.get()), Role::plain);
    } else if (key == "Ref") {
        writeReferences(text, kept.copy);
    } else if (key == "NS" || (key == "AF" && kept.isWhole)) {
        const KeptObject value = m_source.parse(text);
        m_copier.writeEntry(key, value.get(),
                            key == "NS" ? Role::structureNamespace : Role::fileSpecification);
    }
}

void ElementWriter::writeType(std::string_view text)
{
    if (text.front() != '/') {
        return;
    }
    m_writer.key("S").appendBytes(text);
    if (m_types.find(text) == m_types.end()) {
        m_types.emplace(text);
    }
}

std::set<std::string> ElementWriter::types() const
{
    std::set<std::string> names;
    for (const std::string &type : m_types) {
        names.insert(unescapedName(std::string_view(type).substr(1)));
    }
    return names;
}

void ElementWriter::writeSimple(std::string_view key, std::string_view text)
{
    const KeptObject value = m_source.parse(text);
    pdf_obj *resolved = m_source.resolve(value.get());
    if (pdf_is_null(m_source.context(), resolved) == 0 && !m_source.isArray(resolved) &&
        !m_source.isDictionary(resolved)) {
        m_copier.writeEntry(key, resolved, Role::plain);
    }
}

/// Writes links to other elements, as far as they are kept.
void ElementWriter::writeReferences(std::string_view text, int copy)
{
    const KeptObject value = m_source.parse(text);
    pdf_obj *list = m_source.resolve(value.get());
    const bool isList = m_source.isArray(list);
    const int length = isList ? pdf_array_len(m_source.context(), list) : 1;
    std::vector<int> targets;
    for (int i = 0; i < length; ++i) {
        pdf_obj *one = isList ? pdf_array_get(m_source.context(), list, i) : value.get();
        const int element = m_cut.tree().find(m_source.directNumber(one));
        const int index =
            element == StructureTree::none ? StructureCut::none : m_cut.indexOf(element, copy);
        if (index != StructureCut::none) {
            targets.push_back(m_cut.kept()[static_cast<std::size_t>(index)].target);
        }
    }
    if (!targets.empty()) {
        m_writer.key("Ref").appendReferences(targets);
    }
}

void ElementWriter::writeAttributes(pdf_obj *attributes, int copy)
{
    pdf_obj *list = m_source.resolve(attributes);
    if (!m_source.isArray(list)) {
        writeAttribute(attributes, copy);
        return;
    }
    const int length = pdf_array_len(m_source.context(), list);
    m_writer.beginArray();
    for (int i = 0; i < length; ++i) {
        writeAttribute(pdf_array_get(m_source.context(), list, i), copy);
        m_writer.appendBlank();
    }
    m_writer.endArray();
}

/// Writes a dictionary of attributes, or the number of a revision. One that names headers is
/// written in place, as other cells with the same ones may be elsewhere.
void ElementWriter::writeAttribute(pdf_obj *attribute, int copy)
{
    fz_context *context = m_source.context();
    pdf_obj *resolved = m_source.resolve(attribute);
    pdf_obj *headers =
        m_source.isDictionary(resolved) ? m_source.get(resolved, "Headers") : nullptr;
    m_writer.appendBlank();
    if (headers == nullptr) {
        m_copier.write(attribute, Role::attributes);
        return;
    }
    m_writer.beginDictionary();
    const int length = pdf_dict_len(context, resolved);
    for (int i = 0; i < length; ++i) {
        const std::string_view key = pdf_to_name(context, pdf_dict_get_key(context, resolved, i));
        if (key == "Headers") {
            writeHeaders(headers, copy);
        } else if (childRole(Role::attributes, key) != Role::dropped) {
            m_copier.writeEntry(key, pdf_dict_get_val(context, resolved, i),
                                childRole(Role::attributes, key), 1);
        }
    }
    m_writer.endDictionary();
}

void ElementWriter::writeHeaders(pdf_obj *headers, int copy)
{
    const bool isList = m_source.isArray(headers);
    const int length = isList ? pdf_array_len(m_source.context(), headers) : 1;
    std::vector<std::string> kept;
    for (int i = 0; i < length; ++i) {
        pdf_obj *one = isList ? m_source.at(headers, i) : headers;
        std::string identifier = identifierFor(PdfSource::bytes(m_source.context(), one), copy);
        if (m_identifiers.count(identifier) != 0) {
            kept.push_back(std::move(identifier));
        }
    }
    m_hasLostHeaders = m_hasLostHeaders || kept.size() != static_cast<std::size_t>(length);
    if (kept.empty()) {
        return;
    }
    m_writer.key("Headers").beginArray();
    for (const std::string &identifier : kept) {
        m_writer.appendString(identifier);
    }
    m_writer.endArray();
}

void ElementWriter::noteClasses(pdf_obj *classes)
{
    fz_context *context = m_source.context();
    const int length = m_source.isArray(classes) ? pdf_array_len(context, classes) : 0;
    for (int i = 0; i < length; ++i) {
        m_classes.insert(pdf_to_name(context, m_source.at(classes, i)));
    }
    if (pdf_is_name(context, classes) != 0) {
        m_classes.insert(pdf_to_name(context, classes));
    }
}

} // namespace tools
