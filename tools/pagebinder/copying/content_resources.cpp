#include "tools/pagebinder/copying/content_resources.h"

#include <algorithm>

namespace tools {

namespace {

/// How much is scanned before the question whether anything is still looked for.
constexpr std::size_t scannedPart = 512;

} // namespace

bool ContentResources::isTypeThreeFont(pdf_obj *dictionary) const
{
    return m_source.raw(dictionary, PDF_NAME(CharProcs)) != nullptr;
}

void ContentResources::writeForPage(pdf_obj *resources, pdf_obj *contents,
                                    const std::vector<int> &borrowers)
{
    fz_context *context = m_source.context();
    Streams streams;
    pdf_obj *resolved = m_source.resolve(contents);
    if (m_source.isArray(resolved)) {
        const int length = pdf_array_len(context, resolved);
        for (int i = 0; i < length; ++i) {
            streams.push_back(m_source.numberOf(pdf_array_get(context, resolved, i)));
        }
    } else {
        streams.push_back(m_source.numberOf(contents));
    }
    if (m_source.isDictionary(m_source.resolve(resources))) {
        write(resources, streams, borrowers);
    } else {
        m_copier.text() += "/Resources<<>>";
    }
}

void ContentResources::writeForStream(pdf_obj *stream, int number)
{
    write(m_source.raw(stream, PDF_NAME(Resources)), {number}, {});
}

void ContentResources::writeForFont(pdf_obj *font)
{
    write(m_source.raw(font, PDF_NAME(Resources)), charProcs(font), {});
}

ContentResources::Streams ContentResources::charProcs(pdf_obj *font)
{
    fz_context *context = m_source.context();
    Streams streams;
    pdf_obj *procedures = m_source.get(font, PDF_NAME(CharProcs));
    const int length = pdf_dict_len(context, procedures);
    for (int i = 0; i < length; ++i) {
        streams.push_back(m_source.numberOf(pdf_dict_get_val(context, procedures, i)));
    }
    return streams;
}

void ContentResources::write(pdf_obj *resources, const Streams &streams, const Streams &borrowers)
{
    pdf_obj *dictionary = m_source.resolve(resources);
    if (!m_source.isDictionary(dictionary)) {
        return;
    }
    ResourceUse use(m_source, dictionary);
    if (!use.isComplete() && use.isWorthScanning()) {
        findUse(use, streams, borrowers);
        if (!use.isComplete()) {
            writePruned(dictionary, use);
            return;
        }
    }
    m_copier.writeEntry("Resources", resources);
}

void ContentResources::writePruned(pdf_obj *resources, const ResourceUse &use)
{
    const auto isKindKey = [](std::string_view key) {
        return key != "Font" && key != "XObject" && key != "ExtGState" && key != "ColorSpace" &&
               key != "Pattern" && key != "Shading" && key != "Properties";
    };
    std::string &text = m_copier.text();
    text += "/Resources<<";
    m_copier.writeEntries(resources, isKindKey);
    for (std::size_t i = 0; i < resourceKindCount; ++i) {
        const auto kind = static_cast<ResourceKind>(i);
        pdf_obj *key = ResourceUse::keyOf(kind);
        if (use.isComplete(kind)) {
            m_copier.writeEntry(pdf_to_name(m_source.context(), key), m_source.raw(resources, key));
            continue;
        }
        m_copier.writer().appendName(pdf_to_name(m_source.context(), key));
        text += "<<";
        for (const ResourceUse::Entry &entry : use.entries(kind)) {
            if (entry.used) {
                m_copier.writeEntry(entry.name, entry.value);
            }
        }
        text += ">>";
    }
    text += ">>";
}

void ContentResources::findUse(ResourceUse &use, const Streams &streams, const Streams &borrowers)
{
    std::unordered_set<int> seen(streams.begin(), streams.end());
    use.keepLightEntries();
    scan(use, streams);
    for (const int borrower : borrowers) {
        if (seen.insert(borrower).second) {
            scan(use, {borrower});
        }
    }
    while (!use.isComplete()) {
        const Streams found = newBorrowers(use, seen);
        if (found.empty()) {
            return;
        }
        for (const int borrower : found) {
            scan(use, {borrower});
        }
    }
}

void ContentResources::scan(ResourceUse &use, const Streams &streams)
{
    ContentScanner scanner(
        [&use](ResourceKind kind, std::string_view name) { use.mark(kind, name); });
    for (const int number : streams) {
        if (number <= 0 || use.isComplete()) {
            continue;
        }
        m_source.readStream(number, true,
                            [&scanner, &use](const unsigned char *data, std::size_t size) {
                                while (size > 0 && !use.isComplete()) {
                                    const std::size_t part = std::min(size, scannedPart);
                                    scanner.feed(data, part);
                                    data += part;
                                    size -= part;
                                }
                                return !use.isComplete();
                            });
        scanner.endStream();
    }
}

ContentResources::Streams ContentResources::newBorrowers(const ResourceUse &use,
                                                         std::unordered_set<int> &seen)
{
    Streams found;
    for (const ResourceKind kind : {ResourceKind::xObject, ResourceKind::pattern}) {
        for (const ResourceUse::Entry &entry : use.entries(kind)) {
            if (entry.used) {
                addBorrower(entry.value, seen, found);
            }
        }
    }
    for (const ResourceUse::Entry &entry : use.entries(ResourceKind::graphicsState)) {
        pdf_obj *mask = entry.used ? m_source.get(entry.value, PDF_NAME(SMask)) : nullptr;
        if (m_source.isDictionary(mask)) {
            addBorrower(m_source.raw(mask, PDF_NAME(G)), seen, found);
        }
    }
    for (const ResourceUse::Entry &entry : use.entries(ResourceKind::font)) {
        pdf_obj *font = entry.used ? m_source.resolve(entry.value) : nullptr;
        if (m_source.isDictionary(font) && isTypeThreeFont(font) &&
            m_source.get(font, PDF_NAME(Resources)) == nullptr) {
            for (const int procedure : charProcs(font)) {
                if (procedure > 0 && seen.insert(procedure).second) {
                    found.push_back(procedure);
                }
            }
        }
    }
    return found;
}

void ContentResources::addBorrower(pdf_obj *stream, std::unordered_set<int> &seen, Streams &found)
{
    pdf_obj *dictionary = m_source.resolve(stream);
    const int number = m_source.numberOf(stream);
    if (number <= 0 || !m_source.isDictionary(dictionary) ||
        m_source.isName(m_source.get(dictionary, PDF_NAME(Subtype)), PDF_NAME(Image)) ||
        m_source.isDictionary(m_source.get(dictionary, PDF_NAME(Resources))) ||
        !seen.insert(number).second) {
        return;
    }
    found.push_back(number);
}

} // namespace tools
