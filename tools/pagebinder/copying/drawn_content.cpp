#include "tools/pagebinder/copying/drawn_content.h"

#include <algorithm>

namespace tools {

namespace {

/// How much is scanned before the question whether anything is still looked for.
constexpr std::size_t scannedPart = 512;

std::string keyOf(ResourceKind kind, std::string_view name)
{
    return static_cast<char>('0' + static_cast<int>(kind)) + std::string(name);
}

} // namespace

DrawnContent::Node &DrawnContent::look(const Drawing &drawing)
{
    Node &wanted = open(drawing);
    settle();
    return wanted;
}

void DrawnContent::settle()
{
    while (!m_unread.empty() || !m_events.empty()) {
        if (!m_unread.empty()) {
            Node *const node = m_unread.back();
            m_unread.pop_back();
            read(*node);
        } else {
            const Event event = std::move(m_events.back());
            m_events.pop_back();
            take(*event.node, event.name.kind, event.name.text, *event.origin);
        }
    }
}

DrawnContent::Node &DrawnContent::provide(ResourceUse &use, const Drawing &drawing,
                                          const std::function<void(ResourceKind, pdf_obj *)> &isNew)
{
    Node &node = look(drawing);
    for (std::size_t i = 0; i < node.unlisted.size(); ++i) {
        const Name name = node.unlisted[i];
        const ResourceUse::Mark mark = use.mark(name.kind, name.text);
        if (mark == ResourceUse::Mark::unlisted) {
            continue;
        }
        pdf_obj *value = use.find(name.kind, name.text)->value;
        if (mark == ResourceUse::Mark::first) {
            isNew(name.kind, value);
        }
        connectBelow(node, name.kind, name.text, value);
        settle();
    }
    return node;
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
        [this, &node](ResourceKind kind, std::string_view name) { take(node, kind, name, node); },
        [] { return true; });
    if (!isWhole) {
        spoil(node);
    }
}

/// @param origin who needs the name: the node itself, or one that it draws
void DrawnContent::take(Node &node, ResourceKind kind, std::string_view name, Node &origin)
{
    const ResourceUse::Mark mark =
        node.own == nullptr ? ResourceUse::Mark::unlisted : node.own->mark(kind, name);
    if (mark == ResourceUse::Mark::unlisted) {
        need(node, kind, name, origin);
        return;
    }
    pdf_obj *value = node.own->find(kind, name)->value;
    if (mark == ResourceUse::Mark::first) {
        connect(node, kind, value);
    }
    if (&origin != &node) {
        connectBelow(origin, kind, name, value);
    }
}

void DrawnContent::need(Node &node, ResourceKind kind, std::string_view name, Node &origin)
{
    auto [need, isNew] = node.needs.try_emplace(keyOf(kind, name));
    if (!need->second.insert(&origin).second) {
        return;
    }
    if (isNew) {
        node.unlisted.push_back({kind, std::string(name)});
    }
    for (Node *user : node.users) {
        m_events.push_back({user, {kind, std::string(name)}, &node});
    }
}

/// What @p value draws is drawn inside @p top and everything between it and those that need it.
void DrawnContent::connectBelow(Node &top, ResourceKind kind, std::string_view name, pdf_obj *value)
{
    if (drawingsOf(kind, value).empty()) {
        return;
    }
    const std::string key = keyOf(kind, name);
    std::vector<Node *> waiting = {&top};
    std::unordered_set<Node *> met = {&top};
    while (!waiting.empty()) {
        Node *const node = waiting.back();
        waiting.pop_back();
        connect(*node, kind, value);
        const auto need = node->needs.find(key);
        if (need == node->needs.end()) {
            continue;
        }
        for (Node *origin : need->second) {
            if (met.insert(origin).second) {
                waiting.push_back(origin);
            }
        }
    }
}

void DrawnContent::connect(Node &user, ResourceKind kind, pdf_obj *value)
{
    for (const Drawing &drawing : drawingsOf(kind, value)) {
        Node &node = open(drawing);
        if (!node.knownUsers.insert(&user).second) {
            continue;
        }
        node.users.push_back(&user);
        for (const Name &name : node.unlisted) {
            m_events.push_back({&user, name, &node});
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
