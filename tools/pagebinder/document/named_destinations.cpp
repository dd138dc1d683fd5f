#include "tools/pagebinder/document/named_destinations.h"

#include <algorithm>
#include <cstring>

namespace tools {

namespace {

constexpr int deepestNameTree = 40;
constexpr int mostNameNodes = 200'000;
constexpr int longestChain = 4;
/// A list that is searched more often than this gets an index, which costs as much as some dozen
/// searches.
constexpr int fewSearches = 16;

} // namespace

pdf_obj *NamedDestinations::arrayOf(pdf_obj *destination)
{
    pdf_obj *value = m_source.resolve(destination);
    for (int step = 0; step < longestChain && !m_source.isArray(value); ++step) {
        value = m_source.isDictionary(value) ? m_source.get(value, PDF_NAME(D)) : find(value);
    }
    return m_source.isArray(value) ? value : nullptr;
}

DestinationPage NamedDestinations::pageOf(pdf_obj *array)
{
    fz_context *context = m_source.context();
    DestinationPage page;
    pdf_obj *first = pdf_array_get(context, array, 0);
    if (pdf_is_indirect(context, first)) {
        page.object = m_source.numberOf(first);
        first = m_source.resolve(first);
    }
    if (pdf_is_int(context, first)) {
        page.number = pdf_to_int(context, first) + 1;
    }
    return page;
}

pdf_obj *NamedDestinations::find(pdf_obj *name)
{
    fz_context *context = m_source.context();
    std::string text;
    if (pdf_is_name(context, name)) {
        text = pdf_to_name(context, name);
    } else if (pdf_is_string(context, name)) {
        text = PdfSource::bytes(context, name);
    } else {
        return nullptr;
    }
    pdf_obj *direct = findInDictionary(text);
    if (direct != nullptr) {
        return direct;
    }
    if (!m_isOpened) {
        pdf_obj *names = m_source.get(m_source.catalog(), PDF_NAME(Names));
        setObject(m_root, m_source.get(names, PDF_NAME(Dests)));
        m_isOpened = true;
    }
    m_nodesLeft = mostNameNodes;
    return findInTree(m_root, text, 0);
}

pdf_obj *NamedDestinations::findInDictionary(const std::string &name)
{
    fz_context *context = m_source.context();
    if (m_dictionarySearches > fewSearches) {
        const auto found = m_dictionary.find(name);
        return found == m_dictionary.end() ? nullptr : m_source.resolve(found->second.get());
    }
    pdf_obj *dictionary = m_source.get(m_source.catalog(), PDF_NAME(Dests));
    if (++m_dictionarySearches > fewSearches) {
        const int length = pdf_dict_len(context, dictionary);
        for (int i = 0; i < length; ++i) {
            m_dictionary.try_emplace(pdf_to_name(context, pdf_dict_get_key(context, dictionary, i)),
                                     context, pdf_dict_get_val(context, dictionary, i));
        }
    }
    return m_source.get(dictionary, name.c_str());
}

void NamedDestinations::setObject(Node &node, pdf_obj *object)
{
    fz_context *context = m_source.context();
    node.object = KeptObject(context, object);
    pdf_obj *limits = m_source.get(object, PDF_NAME(Limits));
    pdf_obj *first = m_source.at(limits, 0);
    pdf_obj *last = m_source.at(limits, 1);
    node.hasLimits = pdf_is_string(context, first) && pdf_is_string(context, last);
    if (node.hasLimits) {
        node.first = PdfSource::bytes(context, first);
        node.last = PdfSource::bytes(context, last);
    }
}

pdf_obj *NamedDestinations::findInTree(Node &node, const std::string &name, int depth)
{
    const bool mayHold = !node.hasLimits || (node.first <= name && name <= node.last);
    if (depth > deepestNameTree || --m_nodesLeft < 0 || !mayHold ||
        !m_source.isDictionary(node.object.get())) {
        return nullptr;
    }
    pdf_obj *here = findInLeaf(node, name);
    if (here != nullptr) {
        return here;
    }
    openKids(node);
    for (Node &kid : node.kids) {
        pdf_obj *found = findInTree(kid, name, depth + 1);
        if (found != nullptr) {
            return found;
        }
    }
    return nullptr;
}

void NamedDestinations::openKids(Node &node)
{
    if (node.isOpened) {
        return;
    }
    node.isOpened = true;
    pdf_obj *kids = m_source.get(node.object.get(), PDF_NAME(Kids));
    const int count = pdf_array_len(m_source.context(), kids);
    for (int i = 0; i < count && m_nodes < mostNameNodes; ++i) {
        // Met again, a node holds nothing new; kept too often, the library never lets go of it.
        const int number = m_source.numberOf(pdf_array_get(m_source.context(), kids, i));
        if (number == 0 || m_known.insert(number).second) {
            ++m_nodes;
            setObject(node.kids.emplace_back(), m_source.at(kids, i));
        }
    }
}

pdf_obj *NamedDestinations::findInLeaf(Node &node, const std::string &name)
{
    fz_context *context = m_source.context();
    if (node.searches > fewSearches) {
        const auto found = node.names.find(name);
        return found == node.names.end() ? nullptr : m_source.resolve(found->second.get());
    }
    pdf_obj *names = m_source.get(node.object.get(), PDF_NAME(Names));
    if (++node.searches > fewSearches) {
        indexLeaf(node, names);
    }
    const int length = pdf_array_len(context, names);
    for (int i = 0; i + 1 < length; i += 2) {
        std::size_t size = 0;
        const char *bytes = pdf_to_string(context, m_source.at(names, i), &size);
        if (size == name.size() && std::memcmp(bytes, name.data(), size) == 0) {
            return m_source.at(names, i + 1);
        }
    }
    return nullptr;
}

void NamedDestinations::indexLeaf(Node &node, pdf_obj *names)
{
    fz_context *context = m_source.context();
    const int length = pdf_array_len(context, names);
    for (int i = 0; i + 1 < length; i += 2) {
        node.names.try_emplace(PdfSource::bytes(context, m_source.at(names, i)), context,
                               pdf_array_get(context, names, i + 1));
    }
}

} // namespace tools
