#include "tools/pdf/node_scan.h"

#include "tools/pdf/syntax_scanner.h"

#include <utility>

namespace tools {

namespace {

/// The entries of a dictionary that tell a page from a node.
class NodeReader
{
public:
    NodeReader(std::string_view bytes, bool wantsKids) : m_scanner(bytes), m_wantsKids(wantsKids) {}

    bool readHeader(int number) { return takeHeader(m_scanner, number); }
    /// A glance is enough in the file, where "endobj" follows and odd syntax is mended.
    bool glanceAtDictionary()
    {
        return m_scanner.skipBlanks() &&
               ((!m_wantsKids && m_scanner.skipDictionaryWithoutKids()) || readDictionary());
    }
    bool readDictionary()
    {
        return m_scanner.skipBlanks() && m_scanner.takeByte('<') && m_scanner.takeByte('<') &&
               readEntries();
    }
    bool readEnd() { return m_scanner.skipBlanks() && m_scanner.takeWord("endobj"); }

    NodeScan result(bool isRead)
    {
        NodeScan &scan = m_result;
        scan.end = m_scanner.position();
        // One that calls itself a page and has content is one, whatever else it lists.
        const bool isPage = !m_hasKids || (m_isCalledPage && m_hasContents);
        scan.kind = isRead && isPage      ? NodeScan::Kind::page
                    : isRead              ? NodeScan::Kind::node
                    : m_scanner.isAtEnd() ? NodeScan::Kind::cutOff
                                          : NodeScan::Kind::unclear;
        return std::move(m_result);
    }

private:
    bool readEntries();
    bool readEntry(std::string_view key);
    bool readType();
    bool readKids();

    SyntaxScanner m_scanner;
    NodeScan m_result;
    bool m_wantsKids;
    bool m_hasKids = false;
    bool m_hasType = false;
    bool m_isCalledPage = false;
    bool m_hasContents = false;
};

bool NodeReader::readEntries()
{
    std::string_view key;
    for (;;) {
        if (!m_scanner.skipBlanks()) {
            return false;
        }
        if (m_scanner.takeByte('>')) {
            return m_scanner.takeByte('>');
        }
        if (!m_scanner.takeName(key) || !m_scanner.skipBlanks() || !readEntry(key)) {
            return false;
        }
    }
}

bool NodeReader::readEntry(std::string_view key)
{
    if (key == "Kids") {
        return !std::exchange(m_hasKids, true) && readKids();
    }
    if (key == "Type") {
        return !std::exchange(m_hasType, true) && readType();
    }
    if (key == "Contents") {
        // A null would be no content.
        return !std::exchange(m_hasContents, true) && !m_scanner.isAt('n') &&
               m_scanner.skipValue(1);
    }
    return m_scanner.skipValue(1);
}

bool NodeReader::readType()
{
    std::string_view name;
    const bool isName = m_scanner.takeName(name);
    m_isCalledPage = name == "Page";
    return isName;
}

bool NodeReader::readKids()
{
    m_result.listBegin = m_scanner.position();
    const bool isRead =
        m_scanner.takeByte('[') && m_scanner.takeReferences(m_wantsKids ? &m_result.kids : nullptr);
    m_result.listEnd = m_scanner.position() - 1;
    return isRead;
}

} // namespace

NodeScan scanObject(std::string_view bytes, int number, bool wantsKids)
{
    NodeReader reader(bytes, wantsKids);
    return reader.result(reader.readHeader(number) && reader.glanceAtDictionary() &&
                         reader.readEnd());
}

NodeScan scanDictionary(std::string_view bytes, bool wantsKids)
{
    NodeReader reader(bytes, wantsKids);
    return reader.result(reader.readDictionary());
}

bool takeHeader(SyntaxScanner &scanner, int number)
{
    int found = 0;
    int generation = 0;
    return scanner.skipBlanks() && scanner.takeInteger(found) && found == number &&
           scanner.skipBlanks() && scanner.takeInteger(generation) && scanner.skipBlanks() &&
           scanner.takeWord("obj");
}

bool startsObject(std::string_view bytes, int number)
{
    return NodeReader(bytes, false).readHeader(number);
}

} // namespace tools
