#include "tools/pagebinder/merge.h"

#include "tools/pagebinder/atomic_output.h"
#include "tools/pagebinder/page_writer.h"

#include <array>

namespace tools {

namespace {

constexpr long long mostPages = 1'000'000;

/// The copying of one selection of pages. It is made anew when the library repairs the file on the
/// way.
class Merge
{
public:
    Merge(PdfFile &file, AtomicOutput &output)
        : m_file(file), m_source(file), m_writer(output), m_tree(m_source),
          m_copier(m_source, m_writer), m_resources(m_copier),
          m_pageWriter(m_copier, m_resources, m_tree)
    {
        m_copier.setContentResources(&m_resources);
    }

    void run(const std::vector<int> &pages);

private:
    void findPages(const std::vector<int> &pages);
    int version();
    void writePageTree();
    std::string identifier();
    void finish(int catalog);

    PdfFile &m_file;
    PdfSource m_source;
    PdfWriter m_writer;
    PageTree m_tree;
    ObjectCopier m_copier;
    ContentResources m_resources;
    PageWriter m_pageWriter;
    std::vector<OutputPage> m_pages;
    int m_pagesRoot = 0;
};

void Merge::run(const std::vector<int> &pages)
{
    m_writer.begin(version());
    const int catalog = m_writer.allocate();
    m_pagesRoot = m_writer.allocate();
    findPages(pages);
    for (const OutputPage &page : m_pages) {
        m_pageWriter.write(page, m_pagesRoot, "");
        m_copier.copyQueued();
    }
    writePageTree();
    m_writer.beginObject(catalog);
    m_writer.text() += "<</Type/Catalog/Pages ";
    m_writer.appendReference(m_pagesRoot);
    m_writer.text() += ">>";
    m_writer.endObject();
    m_copier.copyQueued();
    finish(catalog);
}

void Merge::findPages(const std::vector<int> &pages)
{
    for (const int number : pages) {
        const FoundPage found = m_tree.find(number);
        if (found.page == nullptr) {
            throw ToolError(m_file.path(), "has no page " + std::to_string(number));
        }
        m_pages.push_back({number, found, m_writer.allocate()});
        if (m_copier.mapped(found.number) == 0) {
            m_copier.map(found.number, m_pages.back().target);
        }
    }
}

int Merge::version()
{
    int version = 17;
    m_source.attempt(
        [this, &version] { version = pdf_version(m_source.context(), m_source.document()); });
    return version >= 10 && version <= 20 ? version : 17;
}

void Merge::writePageTree()
{
    m_writer.beginObject(m_pagesRoot);
    m_writer.text() += "<</Type/Pages/Count ";
    m_writer.appendNumber(static_cast<std::int64_t>(m_pages.size()));
    m_writer.text() += "/Kids[";
    for (const OutputPage &page : m_pages) {
        m_writer.appendReference(page.target);
        m_writer.text() += ' ';
    }
    m_writer.text() += "]>>";
    m_writer.endObject();
}

std::string Merge::identifier()
{
    fz_md5 digest;
    fz_md5_init(&digest);
    for (const OutputPage &page : m_pages) {
        fz_md5_update_int64(&digest, page.sourcePage);
    }
    fz_md5_update(&digest, reinterpret_cast<const unsigned char *>(m_file.path().data()),
                  m_file.path().size());
    std::array<unsigned char, 16> result;
    fz_md5_final(&digest, result.data());
    return {reinterpret_cast<const char *>(result.data()), result.size()};
}

void Merge::finish(int catalog)
{
    const std::string own = identifier();
    const std::string first = PdfSource::bytes(
        m_source.context(), m_source.at(m_source.get(m_source.trailer(), PDF_NAME(ID)), 0));
    PdfWriter &writer = m_writer;
    std::string body;
    body.swap(writer.text());
    writer.text() += "/Root ";
    writer.appendReference(catalog);
    writer.text() += "/ID[";
    writer.appendString(first.empty() ? own : first);
    writer.appendString(own);
    writer.text() += ']';
    body.swap(writer.text());
    writer.finish(body);
}

} // namespace

void mergePages(PdfFile &file, const std::vector<PageRange> &ranges, const std::string &output)
{
    if (countPages(ranges) > mostPages) {
        throw ToolError(file.path(), "more than 1,000,000 pages in one output are refused");
    }
    const std::vector<int> pages = expandPageRanges(ranges);
    AtomicOutput destination(output);
    for (int attempt = 0;; ++attempt) {
        try {
            Merge(file, destination).run(pages);
            break;
        } catch (const FileRepaired &) {
            if (attempt == 2) {
                throw ToolError(file.path(), "is too damaged");
            }
            destination.restart();
        }
    }
    destination.commit();
}

} // namespace tools
