#include "tools/pagexport/output/page_files.h"

#include "tools/pagexport/output/page_html.h"

namespace tools {

namespace {

void appendEscaped(std::string &xml, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
        case '<':
            xml += "&lt;";
            break;
        case '&':
            xml += "&amp;";
            break;
        case '"':
            xml += "&quot;";
            break;
        default:
            xml += static_cast<unsigned char>(c) < 0x20 ? '?' : c;
            break;
        }
    }
}

void appendAttribute(std::string &xml, std::string_view name, std::string_view value)
{
    xml += ' ';
    xml += name;
    xml += "=\"";
    appendEscaped(xml, value);
    xml += '"';
}

} // namespace

void PageFiles::begin(int first, int count)
{
    if (count > m_folder.names().mostPages()) {
        throw ToolError(m_input, "has more pages than a file of its size can have: " +
                                     std::to_string(count));
    }
    m_first = first;
    m_records.resize(static_cast<std::size_t>(count));
}

void PageFiles::take(const ExportedPage &page)
{
    thread_local std::string html;
    const int number = page.position + 1;
    Record &record = m_records[static_cast<std::size_t>(page.position)];
    record = {page.width, page.height, static_cast<int>(page.items.items.size()),
              !page.picture.empty(), page.state == PageState::whole};
    if (record.hasPicture) {
        m_folder.writePicture(number, page.picture);
    }
    writePageHtml(html, page.items, m_first + page.position);
    m_folder.writePage(number, html);
}

std::string PageFiles::index() const
{
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<export";
    appendAttribute(xml, "version", QUORLIN_VERSION);
    appendAttribute(xml, "unit", "1/108 inch");
    appendAttribute(xml, "pages", std::to_string(m_records.size()));
    xml += ">\n";
    for (std::size_t i = 0; i < m_records.size(); ++i) {
        const Record &record = m_records[i];
        const int number = static_cast<int>(i) + 1;
        xml += "<page";
        appendAttribute(xml, "number", std::to_string(m_first + static_cast<int>(i)));
        appendAttribute(xml, "width", std::to_string(record.width));
        appendAttribute(xml, "height", std::to_string(record.height));
        appendAttribute(xml, "items", std::to_string(record.items));
        appendAttribute(xml, "file", m_folder.names().page(number));
        if (record.hasPicture) {
            appendAttribute(xml, "picture", m_folder.names().picture(number));
        }
        if (!record.isComplete) {
            appendAttribute(xml, "complete", "no");
        }
        xml += "/>\n";
    }
    xml += "</export>\n";
    return xml;
}

} // namespace tools
