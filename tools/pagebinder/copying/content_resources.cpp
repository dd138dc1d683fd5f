#include "tools/pagebinder/copying/content_resources.h"

namespace tools {

void ContentResources::writeForPage(pdf_obj *resources, pdf_obj *contents,
                                    const std::vector<Drawing> &appearances)
{
    if (m_source.isDictionary(m_source.resolve(resources))) {
        write(resources, contentStreams(m_source, contents), appearances);
    } else {
        m_copier.writer().key("Resources").beginDictionary().endDictionary();
    }
}

void ContentResources::writeForStream(pdf_obj *stream, int number)
{
    writeForDrawing({stream, number});
}

void ContentResources::writeForFont(pdf_obj *font)
{
    if (m_source.raw(font, PDF_NAME(CharProcs)) != nullptr) {
        writeForDrawing({font, 0});
    }
}

void ContentResources::writeForDrawing(const Drawing &drawing)
{
    pdf_obj *resources = m_source.raw(drawing.object, PDF_NAME(Resources));
    DrawnContent::Node *const node = m_drawn.known(drawing.object);
    if (node == nullptr || node->own == nullptr) {
        write(resources, m_drawn.streamsOf(drawing), {});
        return;
    }
    ResourceUse &use = *node->own;
    if (use.isComplete() || !use.isWorthScanning()) {
        m_copier.writeEntry("Resources", resources, Role::resources);
        return;
    }
    use.keepSmallEntries();
    if (!node->isWhole) {
        keepDoubtful(use);
    }
    writePruned(resources, use);
}

void ContentResources::write(pdf_obj *resources, const Streams &streams,
                             const std::vector<Drawing> &appearances)
{
    pdf_obj *dictionary = m_source.resolve(resources);
    if (!m_source.isDictionary(dictionary)) {
        return;
    }
    ResourceUse use(m_source, dictionary);
    if (use.isComplete() || !use.isWorthScanning()) {
        m_copier.writeEntry("Resources", resources, Role::resources);
        return;
    }
    findUse(use, streams, appearances);
    writePruned(resources, use);
}

void ContentResources::writePruned(pdf_obj *resources, ResourceUse &use)
{
    if (use.isComplete()) {
        m_copier.writeEntry("Resources", resources, Role::resources);
        return;
    }
    const auto isOther = [](std::string_view key) {
        return key != "Font" && key != "XObject" && key != "ExtGState" && key != "ColorSpace" &&
               key != "Pattern" && key != "Shading" && key != "Properties";
    };
    m_copier.writer().key("Resources").beginDictionary();
    if (!m_copier.isForeign(use.dictionary(), m_source.numberOf(resources), Role::resources)) {
        m_copier.writeEntries(use.dictionary(), Role::resources, isOther);
    }
    for (std::size_t i = 0; i < resourceKindCount; ++i) {
        writeKind(use, static_cast<ResourceKind>(i));
    }
    m_copier.writer().endDictionary();
}

void ContentResources::writeKind(ResourceUse &use, ResourceKind kind)
{
    pdf_obj *key = ResourceUse::keyOf(kind);
    const char *name = pdf_to_name(m_source.context(), key);
    const Role role = childRole(Role::resources, name);
    pdf_obj *value = m_source.raw(use.dictionary(), key);
    if (use.isComplete(kind)) {
        m_copier.writeEntry(name, value, role);
        return;
    }
    if (m_copier.isForeign(m_source.resolve(value), m_source.numberOf(value), role)) {
        return;
    }
    m_copier.writer().key(name).beginDictionary();
    for (const ResourceUse::Entry &entry : use.entries(kind)) {
        const Role entryRole = childRole(role, entry.name);
        if (entry.used && entry.longNames.empty()) {
            m_copier.writeEntry(entry.name, entry.value, entryRole);
        }
        for (const std::string &longName : entry.longNames) {
            m_copier.writeEntry(longName, entry.value, entryRole);
        }
    }
    m_copier.writer().endDictionary();
}

void ContentResources::findUse(ResourceUse &use, const Streams &streams,
                               const std::vector<Drawing> &appearances)
{
    std::vector<Found> found;
    use.keepSmallEntries();
    bool isWhole = m_drawn.scan(
        streams,
        [&use, &found](ResourceKind kind, std::string_view name) {
            if (use.mark(kind, name) == ResourceUse::Mark::first) {
                found.push_back({kind, use.find(kind, name)->value});
            }
        },
        [&use] { return !use.isComplete(); });
    for (const Drawing &appearance : appearances) {
        isWhole = takeUnlisted(use, appearance, found) && isWhole;
    }
    while (!found.empty() && !use.isComplete()) {
        const Found next = found.back();
        found.pop_back();
        for (const Drawing &drawing : m_drawn.drawingsOf(next.kind, next.value)) {
            isWhole = takeUnlisted(use, drawing, found) && isWhole;
        }
    }
    if (!isWhole) {
        keepDoubtful(use);
    }
}

bool ContentResources::takeUnlisted(ResourceUse &use, const Drawing &drawing,
                                    std::vector<Found> &found)
{
    pdf_obj *own = m_source.get(drawing.object, PDF_NAME(Resources));
    if (use.isComplete() || (m_source.isDictionary(own) && use.isCoveredBy(own))) {
        return true;
    }
    const DrawnContent::Node &node =
        m_drawn.provide(use, drawing, [&found](ResourceKind kind, pdf_obj *value) {
            found.push_back({kind, value});
        });
    return node.isWhole;
}

void ContentResources::keepDoubtful(ResourceUse &use)
{
    for (std::size_t i = 0; i < resourceKindCount; ++i) {
        const auto kind = static_cast<ResourceKind>(i);
        if (kind != ResourceKind::xObject) {
            use.markAll(kind);
        }
    }
    for (ResourceUse::Entry &entry : use.entries(ResourceKind::xObject)) {
        if (!entry.used && !m_others.draw(m_source.numberOf(entry.value))) {
            use.mark(entry);
        }
    }
}

} // namespace tools
