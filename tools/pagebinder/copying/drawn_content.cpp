#include "tools/pagebinder/copying/drawn_content.h"

#include <algorithm>

namespace tools {

namespace {

/// How much is scanned before the question whether anything is still looked for.
constexpr std::size_t scannedPart = 512;

} // namespace

DrawnContent::Node &DrawnContent::look(const Drawing &drawing)
{
    Node &wanted = open(drawing);
    while (!m_unread.empty() || !m_events.empty()) {
        if (!m_unread.empty()) {
            Node *const node = m_unread.back();
            m_unread.pop_back();
            read(*node);
        } else {
            const Event event = std::move(m_events.back());
            m_events.pop_back();
            take(*event.node, event.name.kind, event.name.text);
        }
    }
    return wanted;
}

DrawnContent::Node *DrawnContent::known(pdf_obj *object) const
{
    const auto found = m_nodes.find(object);
    return found == m_nodes.end() ? nullptr : found->second.get();
}

DrawnContent::Node &DrawnContent::open(const Drawing &drawing)
{
    std::unique_ptr<Node> &node = m_nodes[drawing.object];
    if (node == nullptr) {
        node = std::make_unique<Node>();
        node->drawing = drawing;
        pdf_obj *resources = m_source.get(drawing.object, PDF_NAME(Resources));
        if (m_source.isDictionary(resources)) {
            node->own = std::make_unique<ResourceUse>(m_source, resources);
        }
        m_unread.push_back(node.get());
    }
    return *node;
}

void DrawnContent::read(Node &node)
{
    const bool isWhole = scan(
        streamsOf(node.drawing),
        [this, &node](ResourceKind kind, std::string_view name) { take(node, kind, name); },
        [] { return true; });
    if (!isWhole) {
        spoil(node);
    }
}

void DrawnContent::take(Node &node, ResourceKind kind, std::string_view name)
{
    const ResourceUse::Mark mark =
        node.own == nullptr ? ResourceUse::Mark::unlisted : node.own->mark(kind, name);
    if (mark == ResourceUse::Mark::first) {
        connect(node, kind, node.own->find(kind, name)->value);
    }
    if (mark != ResourceUse::Mark::unlisted ||
        !node.seen.insert(static_cast<char>('0' + static_cast<int>(kind)) + std::string(name))
             .second) {
        return;
    }
    node.unlisted.push_back({kind, std::string(name)});
    for (Node *user : node.users) {
        m_events.push_back({user, node.unlisted.back()});
    }
}

void DrawnContent::connect(Node &user, ResourceKind kind, pdf_obj *value)
{
    for (const Drawing &drawing : drawingsOf(kind, value)) {
        Node &node = open(drawing);
        node.users.push_back(&user);
        for (const Name &name : node.unlisted) {
            m_events.push_back({&user, name});
        }
        if (!node.isWhole) {
            spoil(user);
        }
    }
}

void DrawnContent::spoil(Node &node)
{
    std::vector<Node *> spoiled = {&node};
    while (!spoiled.empty()) {
        Node *const next = spoiled.back();
        spoiled.pop_back();
        if (next->isWhole) {
            next->isWhole = false;
            spoiled.insert(spoiled.end(), next->users.begin(), next->users.end());
        }
    }
}

std::vector<Drawing> DrawnContent::drawingsOf(ResourceKind kind, pdf_obj *value)
{
    if (kind == ResourceKind::xObject || kind == ResourceKind::pattern) {
        return formOf(value);
    }
    pdf_obj *font = nullptr;
    std::vector<Drawing> drawings;
    if (kind == ResourceKind::font) {
        font = m_source.resolve(value);
    } else if (kind == ResourceKind::graphicsState) {
        font = m_source.at(m_source.get(value, PDF_NAME(Font)), 0);
        pdf_obj *mask = m_source.get(value, PDF_NAME(SMask));
        if (m_source.isDictionary(mask)) {
            drawings = formOf(m_source.raw(mask, PDF_NAME(G)));
        }
    }
    if (m_source.isDictionary(font) && m_source.raw(font, PDF_NAME(CharProcs)) != nullptr) {
        drawings.push_back({font, 0});
    }
    return drawings;
}

std::vector<Drawing> DrawnContent::formOf(pdf_obj *value)
{
    const int number = m_source.numberOf(value);
    pdf_obj *dictionary = m_source.resolve(value);
    if (number <= 0 || !m_source.isDictionary(dictionary) ||
        m_source.isName(m_source.get(dictionary, PDF_NAME(Subtype)), PDF_NAME(Image)) ||
        !m_source.isStream(number)) {
        return {};
    }
    return {{dictionary, number}};
}

std::vector<int> DrawnContent::streamsOf(const Drawing &drawing)
{
    if (drawing.stream != 0) {
        return {drawing.stream};
    }
    fz_context *context = m_source.context();
    std::vector<int> streams;
    pdf_obj *procedures = m_source.get(drawing.object, PDF_NAME(CharProcs));
    const int length = pdf_dict_len(context, procedures);
    streams.reserve(static_cast<std::size_t>(length));
    for (int i = 0; i < length; ++i) {
        streams.push_back(m_source.numberOf(pdf_dict_get_val(context, procedures, i)));
    }
    return streams;
}

bool DrawnContent::scan(const std::vector<int> &streams, const ContentScanner::NameFound &found,
                        const std::function<bool()> &isWanted)
{
    ContentScanner scanner(found);
    bool isWhole = true;
    for (const int number : streams) {
        if (number <= 0 || !isWanted() || !m_source.isStream(number)) {
            continue;
        }
        const StreamEnd end = m_source.readStream(
            number, true, [&scanner, &isWanted](const unsigned char *data, std::size_t size) {
                while (size > 0 && isWanted()) {
                    const std::size_t part = std::min(size, scannedPart);
                    scanner.feed(data, part);
                    data += part;
                    size -= part;
                }
                return isWanted();
            });
        isWhole = isWhole && end == StreamEnd::whole;
        scanner.endStream();
    }
    return (isWhole && scanner.isSound()) || !isWanted();
}

} // namespace tools
