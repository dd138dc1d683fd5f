#pragma once

#include "tools/pagebinder/copying/content_scanner.h"
#include "tools/pdf/pdf_source.h"

#include <array>
#include <string>
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
        bool isMissing = false; ///< in use, but there is nothing behind the reference
        /// The names in the content that mean this entry, where the library has cut its name.
        std::vector<std::string> longNames = {};
    };

    /// What is known of a name that content uses.
    enum class Mark {
        first,   ///< an entry of this dictionary that was not in use before
        again,   ///< one that was
        unlisted ///< no entry, or one without a value
    };

    /// @param resources the dictionary, resolved
    ResourceUse(PdfSource &source, pdf_obj *resources);

    /// The key of a kind in a resource dictionary.
    static pdf_obj *keyOf(ResourceKind kind);

    Mark mark(ResourceKind kind, std::string_view name);
    void markAll(ResourceKind kind);
    void mark(Entry &entry);
    /// The entry that @p name means, null for none.
    Entry *find(ResourceKind kind, std::string_view name);
    /// Whether all entries are in use and can be written as they stand.
    bool isComplete() const noexcept { return m_unused == 0 && !m_hasCutNames; }
    bool isComplete(ResourceKind kind) const;
    /// Whether @p other, resolved, lists a name of its own for every entry that is not in use.
    bool isCoveredBy(pdf_obj *other);
    pdf_obj *dictionary() const noexcept { return m_dictionary; }
    std::vector<Entry> &entries(ResourceKind kind)
    {
        return m_entries[static_cast<std::size_t>(kind)];
    }
    const std::vector<Entry> &entries(ResourceKind kind) const
    {
        return m_entries[static_cast<std::size_t>(kind)];
    }

    /// Whether it pays to find out what is used: not for a few standard fonts, but wherever
    /// pictures, forms, patterns or embedded fonts of other pages might come along.
    bool isWorthScanning();

    /// Counts entries as used that cost nothing to keep, so that a search ends sooner.
    void keepSmallEntries();

private:
    void readKind(pdf_obj *resources, ResourceKind kind);
    bool isLarge(ResourceKind kind, pdf_obj *value);
    bool isLargeFont(pdf_obj *font);

    PdfSource &m_source;
    pdf_obj *m_dictionary;
    bool m_hasCutNames = false;
    std::array<std::vector<Entry>, resourceKindCount> m_entries;
    std::array<std::unordered_map<std::string_view, std::size_t>, resourceKindCount> m_index;
    std::size_t m_unused = 0;
};

} // namespace tools
