#include "tools/pagebinder/copying/resource_use.h"

#include <algorithm>

namespace tools {

namespace {

constexpr std::size_t fewEntries = 12;
/// The library cuts names in dictionaries after so many characters; those in content are whole.
constexpr std::size_t longestName = 127;

} // namespace

pdf_obj *ResourceUse::keyOf(ResourceKind kind)
{
    switch (kind) {
    case ResourceKind::font:
        return PDF_NAME(Font);
    case ResourceKind::xObject:
        return PDF_NAME(XObject);
    case ResourceKind::graphicsState:
        return PDF_NAME(ExtGState);
    case ResourceKind::colorSpace:
        return PDF_NAME(ColorSpace);
    case ResourceKind::pattern:
        return PDF_NAME(Pattern);
    case ResourceKind::shading:
        return PDF_NAME(Shading);
    case ResourceKind::properties:
        return PDF_NAME(Properties);
    }
    return nullptr;
}

ResourceUse::ResourceUse(PdfSource &source, pdf_obj *resources)
    : m_source(source), m_dictionary(resources)
{
    for (std::size_t kind = 0; kind < resourceKindCount; ++kind) {
        readKind(resources, static_cast<ResourceKind>(kind));
    }
}

void ResourceUse::readKind(pdf_obj *resources, ResourceKind kind)
{
    fz_context *context = m_source.context();
    pdf_obj *dictionary = m_source.get(resources, keyOf(kind));
    const int length = pdf_dict_len(context, dictionary);
    auto &entries = m_entries[static_cast<std::size_t>(kind)];
    for (int i = 0; i < length; ++i) {
        Entry entry;
        entry.name = pdf_to_name(context, pdf_dict_get_key(context, dictionary, i));
        entry.value = pdf_dict_get_val(context, dictionary, i);
        // These replace the device's own colours without being named in the content.
        entry.used = kind == ResourceKind::colorSpace && entry.name.substr(0, 7) == "Default";
        m_unused += entry.used ? 0 : 1;
        m_hasCutNames = m_hasCutNames || entry.name.size() >= longestName;
        entries.push_back(entry);
    }
    if (entries.size() > fewEntries) {
        auto &index = m_index[static_cast<std::size_t>(kind)];
        for (std::size_t i = 0; i < entries.size(); ++i) {
            index.emplace(entries[i].name, i);
        }
    }
}

ResourceUse::Entry *ResourceUse::find(ResourceKind kind, std::string_view name)
{
    auto &entries = m_entries[static_cast<std::size_t>(kind)];
    name = name.substr(0, longestName);
    if (entries.size() > fewEntries) {
        const auto &index = m_index[static_cast<std::size_t>(kind)];
        const auto place = index.find(name);
        return place == index.end() ? nullptr : &entries[place->second];
    }
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [name](const Entry &entry) { return entry.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

ResourceUse::Mark ResourceUse::mark(ResourceKind kind, std::string_view name)
{
    Entry *const found = find(kind, name);
    if (found == nullptr) {
        return Mark::unlisted;
    }
    if (name.size() > longestName && std::find(found->longNames.begin(), found->longNames.end(),
                                               name) == found->longNames.end()) {
        found->longNames.emplace_back(name);
    }
    const bool wasUsed = found->used;
    mark(*found);
    if (wasUsed) {
        return found->isMissing ? Mark::unlisted : Mark::again;
    }
    found->isMissing = m_source.resolve(found->value) == nullptr;
    return found->isMissing ? Mark::unlisted : Mark::first;
}

void ResourceUse::mark(Entry &entry)
{
    m_unused -= entry.used ? 0 : 1;
    entry.used = true;
}

void ResourceUse::markAll(ResourceKind kind)
{
    for (Entry &entry : entries(kind)) {
        mark(entry);
    }
}

bool ResourceUse::isComplete(ResourceKind kind) const
{
    const auto &kindEntries = m_entries[static_cast<std::size_t>(kind)];
    return std::all_of(kindEntries.begin(), kindEntries.end(), [](const Entry &entry) {
        return entry.used && entry.name.size() < longestName;
    });
}

bool ResourceUse::isCoveredBy(pdf_obj *other)
{
    if (other == m_dictionary) {
        return true;
    }
    for (std::size_t i = 0; i < resourceKindCount; ++i) {
        const auto kind = static_cast<ResourceKind>(i);
        pdf_obj *names = nullptr;
        for (const Entry &entry : entries(kind)) {
            if (entry.used) {
                continue;
            }
            names = names != nullptr ? names : m_source.get(other, keyOf(kind));
            const std::string name(entry.name);
            if (pdf_dict_gets(m_source.context(), names, name.c_str()) == nullptr) {
                return false;
            }
        }
    }
    return true;
}

bool ResourceUse::isWorthScanning()
{
    if (m_hasCutNames) {
        return true;
    }
    for (const ResourceKind kind : {ResourceKind::xObject, ResourceKind::pattern,
                                    ResourceKind::shading, ResourceKind::properties}) {
        if (!entries(kind).empty()) {
            return true;
        }
    }
    for (const ResourceKind kind :
         {ResourceKind::font, ResourceKind::graphicsState, ResourceKind::colorSpace}) {
        const auto &kindEntries = entries(kind);
        if (std::any_of(kindEntries.begin(), kindEntries.end(),
                        [this, kind](const Entry &entry) { return isLarge(kind, entry.value); })) {
            return true;
        }
    }
    return false;
}

void ResourceUse::keepSmallEntries()
{
    for (const ResourceKind kind :
         {ResourceKind::font, ResourceKind::graphicsState, ResourceKind::colorSpace}) {
        auto &kindEntries = m_entries[static_cast<std::size_t>(kind)];
        if (kindEntries.size() > fewEntries) {
            continue;
        }
        for (Entry &entry : kindEntries) {
            if (!entry.used && !isLarge(kind, entry.value)) {
                mark(entry);
            }
        }
    }
}

bool ResourceUse::isLarge(ResourceKind kind, pdf_obj *value)
{
    if (kind == ResourceKind::font) {
        return isLargeFont(value);
    }
    if (kind == ResourceKind::graphicsState) {
        return m_source.isDictionary(m_source.get(value, PDF_NAME(SMask))) ||
               m_source.get(value, PDF_NAME(Font)) != nullptr;
    }
    pdf_obj *resolved = m_source.resolve(value);
    return m_source.isArray(resolved) &&
           (entries(kind).size() > 1 ||
            !m_source.isName(m_source.at(resolved, 0), PDF_NAME(ICCBased)));
}

bool ResourceUse::isLargeFont(pdf_obj *font)
{
    if (m_source.get(font, PDF_NAME(CharProcs)) != nullptr) {
        return true;
    }
    if (entries(ResourceKind::font).size() == 1) {
        return false;
    }
    return m_source.get(font, PDF_NAME(FontDescriptor)) != nullptr ||
           m_source.get(font, PDF_NAME(DescendantFonts)) != nullptr;
}

} // namespace tools
