#include "tools/pagebinder/structure/structure_tags.h"

#include <algorithm>

namespace tools {

namespace {

constexpr int longestRoleChain = 32;

bool isMarkInformation(std::string_view key)
{
    return key == "Marked" || key == "UserProperties" || key == "Suspects";
}

/// The level of a numbered heading; 0 for anything else.
int headingLevel(const std::string &type)
{
    const bool isHeading = type.size() == 2 && type[0] == 'H' && type[1] >= '1' && type[1] <= '6';
    return isHeading ? type[1] - '0' : 0;
}

} // namespace

bool StructureTags::isInInput()
{
    return m_structure.isThere();
}

void StructureTags::addPages(std::vector<TaggedPage> pages)
{
    m_keys = std::make_unique<StructureKeys>(m_source, m_structure);
    m_keys->addPages(std::move(pages));
}

void StructureTags::writeKey(std::string_view name, int key)
{
    if (key != StructureKeys::none) {
        m_writer.key(name).appendNumber(key);
    }
}

void StructureTags::writePageKey()
{
    if (m_keys) {
        writeKey("StructParents", m_keys->keyOfPage(m_page));
    }
}

void StructureTags::writeAnnotationKey(int target)
{
    if (m_keys) {
        writeKey("StructParent", m_keys->keyOfAnnotation(target));
    }
}

void StructureTags::writeStreamKey(pdf_obj *dictionary, int number, int target)
{
    const bool isList = m_source.raw(dictionary, PDF_NAME(StructParents)) != nullptr;
    if (!m_keys || m_isWritten ||
        (!isList && m_source.raw(dictionary, PDF_NAME(StructParent)) == nullptr)) {
        return;
    }
    writeKey(isList ? "StructParents" : "StructParent",
             m_keys->addStream(dictionary, number, target, m_page));
}

void StructureTags::write()
{
    m_isWritten = true;
    StructureCut *const cut = m_keys ? m_keys->cut() : nullptr;
    if (cut == nullptr) {
        return;
    }
    cut->complete(m_writer);
    ElementWriter elements(m_copier, *cut, m_keys->pages());
    elements.writeAll();
    m_hasLostHeaders = elements.hasLostHeaders();
    writeRoot(elements);
}

void StructureTags::writeRoot(ElementWriter &elements)
{
    pdf_obj *root = m_source.get(m_source.catalog(), "StructTreeRoot");
    const StructureCut::Kept &kept = m_keys->cut()->kept().front();
    m_writer.beginDictionaryObject(kept.target, "StructTreeRoot");
    elements.writeKids(kept, 0);
    writeParentTree();
    writeIdentifiers(elements);
    writeClassMap(m_source.get(root, "ClassMap"), elements);
    writeRoleMap(m_source.get(root, "RoleMap"), elements.types());
    writeNamespaces(m_source.get(root, "Namespaces"));
    m_writer.endDictionaryObject();
}

void StructureTags::writeParentTree()
{
    const std::vector<StructureCut::Kept> &kept = m_keys->cut()->kept();
    const auto targetOf = [&kept](int index) {
        return kept[static_cast<std::size_t>(index)].target;
    };
    int key = 0;
    m_writer.key("ParentTree").beginDictionary().key("Nums").beginArray();
    for (const StructureKeys::Entry &entry : m_keys->entries()) {
        m_writer.appendNumber(key++).appendBlank();
        if (!entry.isList) {
            m_writer.appendReference(targetOf(entry.kept)).appendBlank();
            continue;
        }
        std::vector<std::pair<int, int>> marks = entry.marks;
        std::stable_sort(marks.begin(), marks.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        std::vector<int> targets; // 0 for a mark of no element
        for (const auto &[mark, index] : marks) {
            // Two elements may have it; the first one counts.
            if (mark >= static_cast<int>(targets.size())) {
                targets.resize(static_cast<std::size_t>(mark));
                targets.push_back(targetOf(index));
            }
        }
        m_writer.appendReferences(targets);
    }
    m_writer.endArray().endDictionary();
    m_writer.key("ParentTreeNextKey").appendNumber(key);
}

void StructureTags::writeIdentifiers(const ElementWriter &elements)
{
    if (elements.identifiers().empty()) {
        return;
    }
    m_writer.key("IDTree").beginDictionary().key("Names").beginArray();
    for (const auto &[identifier, target] : elements.identifiers()) {
        m_writer.appendString(identifier).appendReference(target).appendBlank();
    }
    m_writer.endArray().endDictionary();
}

/// Types that only other pages use may be named by what stands there, so they stay behind.
void StructureTags::writeRoleMap(pdf_obj *roles, const std::set<std::string> &types)
{
    fz_context *context = m_source.context();
    if (!m_source.isDictionary(roles)) {
        return;
    }
    std::set<std::string> used;
    for (const std::string &type : types) {
        std::string name = type;
        for (int step = 0; step < longestRoleChain && used.insert(name).second; ++step) {
            pdf_obj *next = m_source.get(roles, name.c_str());
            name = pdf_is_name(context, next) != 0 ? pdf_to_name(context, next) : name;
        }
    }
    m_writer.key("RoleMap").beginDictionary();
    const int length = pdf_dict_len(context, roles);
    for (int i = 0; i < length; ++i) {
        const char *const key = pdf_to_name(context, pdf_dict_get_key(context, roles, i));
        pdf_obj *value = m_source.resolve(pdf_dict_get_val(context, roles, i));
        if (used.count(key) != 0 && pdf_is_name(context, value) != 0) {
            m_copier.writeEntry(key, value, Role::plain);
        }
    }
    m_writer.endDictionary();
}

void StructureTags::writeClassMap(pdf_obj *classes, ElementWriter &elements)
{
    fz_context *context = m_source.context();
    const int length = m_source.isDictionary(classes) ? pdf_dict_len(context, classes) : 0;
    if (elements.classes().empty() || length == 0) {
        return;
    }
    m_writer.key("ClassMap").beginDictionary();
    for (int i = 0; i < length; ++i) {
        const char *const key = pdf_to_name(context, pdf_dict_get_key(context, classes, i));
        if (elements.classes().count(key) != 0) {
            m_writer.key(key);
            elements.writeAttributes(pdf_dict_get_val(context, classes, i), 0);
        }
    }
    m_writer.endDictionary();
}

void StructureTags::writeNamespaces(pdf_obj *spaces)
{
    const int length = pdf_array_len(m_source.context(), spaces);
    std::vector<int> kept;
    for (int i = 0; i < length; ++i) {
        const int number = m_source.numberOf(pdf_array_get(m_source.context(), spaces, i));
        const int target = m_copier.copied(number);
        if (target != 0) {
            kept.push_back(target);
        }
    }
    if (!kept.empty()) {
        m_writer.key("Namespaces").appendReferences(kept);
    }
}

void StructureTags::writeCatalogEntries()
{
    StructureCut *const cut = m_keys ? m_keys->cut() : nullptr;
    if (cut == nullptr) {
        return;
    }
    m_writer.key("StructTreeRoot").appendReference(cut->kept().front().target);
    pdf_obj *marks = m_source.get(m_source.catalog(), "MarkInfo");
    if (m_source.isDictionary(marks)) {
        m_writer.key("MarkInfo").beginDictionary();
        m_copier.writePlainEntries(marks, isMarkInformation);
        m_writer.endDictionary();
    }
}

bool StructureTags::isWhole()
{
    pdf_obj *marks = m_source.get(m_source.catalog(), "MarkInfo");
    const auto isTrue = [this](pdf_obj *value) {
        return pdf_to_bool(m_source.context(), value) != 0;
    };
    pdf_obj *language = m_source.get(m_source.catalog(), PDF_NAME(Lang));
    return m_keys && m_keys->cut() != nullptr && m_keys->isWhole() &&
           isTrue(m_source.get(marks, "Marked")) && !isTrue(m_source.get(marks, "Suspects")) &&
           !PdfSource::bytes(m_source.context(), language).empty();
}

bool StructureTags::isAccessible()
{
    pdf_obj *preferences = m_source.get(m_source.catalog(), "ViewerPreferences");
    pdf_obj *isTitleShown = m_source.get(preferences, "DisplayDocTitle");
    return isWhole() && pdf_to_bool(m_source.context(), isTitleShown) != 0 && !m_hasLostHeaders &&
           haveTabOrder() && haveAnnotations() && haveHeadingsInOrder();
}

bool StructureTags::haveTabOrder()
{
    return std::all_of(m_keys->pages().begin(), m_keys->pages().end(),
                       [this](const TaggedPage &page) {
                           return page.annotations.empty() ||
                                  m_source.isName(m_source.get(page.page, "Tabs"), PDF_NAME(S));
                       });
}

/// Whether every annotation that an element of the output's pages lists is there.
bool StructureTags::haveAnnotations()
{
    std::set<int> numbers;
    for (const TaggedPage &page : m_keys->pages()) {
        numbers.insert(page.number);
    }
    StructureTree &tree = m_keys->cut()->tree();
    for (const StructureCut::Kept &kept : m_keys->cut()->kept()) {
        const std::vector<StructureKid> &kids = tree.element(kept.element).source.kids;
        const auto count = [&numbers](const StructureKid &kid) {
            return kid.kind == StructureKid::Kind::object &&
                   (kid.page == 0 || numbers.count(kid.page) != 0);
        };
        const auto isKept = [](const StructureCut::Kid &kid) {
            return kid.target != 0 && kid.page != StructureCut::none;
        };
        const auto listed = std::count_if(kids.begin(), kids.end(), count);
        if (listed > std::count_if(kept.kids.begin(), kept.kids.end(), isKept)) {
            return false;
        }
    }
    return true;
}

std::string StructureTags::standardType(std::string type)
{
    pdf_obj *roles = m_source.get(m_source.get(m_source.catalog(), "StructTreeRoot"), "RoleMap");
    for (int step = 0; step < longestRoleChain; ++step) {
        pdf_obj *next = m_source.get(roles, type.c_str());
        if (pdf_is_name(m_source.context(), next) == 0) {
            break;
        }
        type = pdf_to_name(m_source.context(), next);
    }
    return type;
}

bool StructureTags::haveHeadingsInOrder()
{
    const std::vector<StructureCut::Kept> &kept = m_keys->cut()->kept();
    std::vector<int> waiting = {0};
    int level = 0;
    while (!waiting.empty()) {
        const StructureCut::Kept &next = kept[static_cast<std::size_t>(waiting.back())];
        waiting.pop_back();
        const int own =
            headingLevel(standardType(m_keys->cut()->tree().element(next.element).source.type()));
        if (own > level + 1) {
            return false;
        }
        level = own == 0 ? level : own;
        for (auto kid = next.kids.rbegin(); kid != next.kids.rend(); ++kid) {
            if (kid->page == StructureCut::none) {
                waiting.push_back(kid->target);
            }
        }
    }
    return true;
}

} // namespace tools
