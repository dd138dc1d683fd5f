#include "tools/pagebinder/copying/resource_use.h"

#include <algorithm>

namespace tools {

namespace {

constexpr std::size_t fewEntries = 12;

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

ResourceUse::ResourceUse(PdfSource &source, pdf_obj *resources) : m_source(source)
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
        entries.push_back(entry);
    }
    if (entries.size() > fewEntries) {
        auto &index = m_index[static_cast<std::size_t>(kind)];
        for (std::size_t i = 0; i < entries.size(); ++i) {
            index.emplace(entries[i].name, i);
        }
    }
}

void ResourceUse::mark(ResourceKind kind, std::string_view name)
{
    auto &entries = m_entries[static_cast<std::size_t>(kind)];
    auto found = entries.end();
    if (entries.size() > fewEntries) {
        const auto &index = m_index[static_cast<std::size_t>(kind)];
        const auto place = index.find(name);
        if (place != index.end()) {
            found = entries.begin() + static_cast<std::ptrdiff_t>(place->second);
        }
    } else {
        found = std::find_if(entries.begin(), entries.end(),
                             [name](const Entry &entry) { return entry.name == name; });
    }
    if (found != entries.end() && !found->used) {
        found->used = true;
        --m_unused;
    }
}

bool ResourceUse::isComplete(ResourceKind kind) const
{
    const auto &kindEntries = entries(kind);
    return std::all_of(kindEntries.begin(), kindEntries.end(),
                       [](const Entry &entry) { return entry.used; });
}

bool ResourceUse::isWorthScanning()
{
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
                        [this, kind](const Entry &entry) { return isHeavy(kind, entry.value); })) {
            return true;
        }
    }
    return false;
}

void ResourceUse::keepLightEntries()
{
    for (const ResourceKind kind :
         {ResourceKind::font, ResourceKind::graphicsState, ResourceKind::colorSpace}) {
        auto &kindEntries = m_entries[static_cast<std::size_t>(kind)];
        if (kindEntries.size() > fewEntries) {
            continue;
        }
        for (Entry &entry : kindEntries) {
            if (!entry.used && !isHeavy(kind, entry.value)) {
                entry.used = true;
                --m_unused;
            }
        }
    }
}

bool ResourceUse::isHeavy(ResourceKind kind, pdf_obj *value)
{
    if (kind == ResourceKind::font) {
        return isHeavyFont(value);
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

bool ResourceUse::isHeavyFont(pdf_obj *font)
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
