#pragma once

#include "tools/pagebinder/copying/content_scanner.h"
#include "tools/pdf/pdf_source.h"

#include <array>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tools {

/// The entries of one resource dictionary and which of them are in use.
class ResourceUse
{
public:
    struct Entry
    {
        std::string_view name;
        pdf_obj *value = nullptr; ///< as it stands, a reference perhaps
        bool used = false;
    };

    /// @param resources the dictionary, resolved
    ResourceUse(PdfSource &source, pdf_obj *resources);

    /// The key of a kind in a resource dictionary.
    static pdf_obj *keyOf(ResourceKind kind);

    void mark(ResourceKind kind, std::string_view name);
    bool isComplete() const noexcept { return m_unused == 0; }
    bool isComplete(ResourceKind kind) const;
    const std::vector<Entry> &entries(ResourceKind kind) const
    {
        return m_entries[static_cast<std::size_t>(kind)];
    }

    /// Whether it pays to find out what is used: not for a few standard fonts, but wherever
    /// pictures, forms, patterns or embedded fonts of other pages might come along.
    bool isWorthScanning();

    /// Counts entries as used that cost nothing to keep, so that a search ends sooner.
    void keepLightEntries();

private:
    void readKind(pdf_obj *resources, ResourceKind kind);
    bool isHeavy(ResourceKind kind, pdf_obj *value);
    bool isHeavyFont(pdf_obj *font);

    PdfSource &m_source;
    std::array<std::vector<Entry>, resourceKindCount> m_entries;
    std::array<std::unordered_map<std::string_view, std::size_t>, resourceKindCount> m_index;
    std::size_t m_unused = 0;
};

} // namespace tools
