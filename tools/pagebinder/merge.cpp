#include "tools/pagebinder/merge.h"

#include "tools/common/report.h"
#include "tools/pagebinder/copying/page_writer.h"
#include "tools/pagebinder/document/annotations.h"
#include "tools/pagebinder/document/bookmarks.h"
#include "tools/pagebinder/document/catalog.h"
#include "tools/pagebinder/document/page_labels.h"
#include "tools/pagebinder/output/output_encryption.h"
#include "tools/pagebinder/structure/structure_tags.h"

#include <algorithm>
#include <array>

namespace tools {

/// What is read of a document once, however many outputs there are.
struct DocumentParts
{
    explicit DocumentParts(SourceFile &file)
        : source(file), tree(source), drawings(source, tree), names(source),
          bookmarks(source, names), labels(source), order(source), fieldParents(source),
          structure(source)
    {
    }

    PdfSource source;
    PageTree tree;
    PageDrawings drawings;
    NamedDestinations names;
    BookmarkIndex bookmarks;
    PageLabelIndex labels;
    CalculationOrder order;
    FieldParents fieldParents;
    DocumentStructure structure;
};

namespace {

constexpr long long mostPages = 1'000'000;
constexpr int mostAttempts = 4;
constexpr std::size_t mostHeldObjects = 4096;

/// The copying of one selection of pages. A new one is made when the library repairs the file on
/// the way.
class Merge
{
public:
    Merge(SourceFile &file, DocumentParts &parts, Output &output)
        : m_file(file), m_source(parts.source), m_tree(parts.tree), m_writer(output),
          m_copier(m_source, m_writer), m_resources(m_copier, parts.drawings),
          m_tags(m_copier, parts.structure), m_pageWriter(m_copier, m_resources, m_tree, m_tags),
          m_destinations(m_copier, parts.names),
          m_fields(m_copier, parts.order, parts.fieldParents),
          m_annotations(m_copier, m_resources.drawn(), m_destinations, m_fields, m_tags),
          m_bookmarks(m_copier, m_destinations, parts.bookmarks), m_labels(m_copier, parts.labels),
          m_catalog(m_copier, m_tags), m_encryption(m_source)
    {
        m_copier.setContentResources(&m_resources);
        if (m_tags.isInInput()) {
            m_copier.setStructureTags(&m_tags);
        }
    }

    void run(const std::vector<int> &pages);

    /// Pages of the input that cannot be read, known after run().
    std::vector<int> standIns() const;
    /// Objects that the output has.
    std::size_t objectCount() const noexcept { return m_writer.objectCount(); }

private:
    void findPages(const std::vector<int> &pages);
    void findTags();
    void keepEncryption();
    int version();
    void writePages();
    void writePageTree();
    void writeCatalog(const std::vector<int> &pages);
    std::string identifier();
    void appendIdentifiers();
    void finish();

    SourceFile &m_file;
    PdfSource &m_source;
    PageTree &m_tree;
    PdfWriter m_writer;
    ObjectCopier m_copier;
    ContentResources m_resources;
    StructureTags m_tags;
    PageWriter m_pageWriter;
    Destinations m_destinations;
    FormFields m_fields;
    Annotations m_annotations;
    Bookmarks m_bookmarks;
    PageLabels m_labels;
    Catalog m_catalog;
    OutputEncryption m_encryption;
    std::vector<OutputPage> m_pages;
    int m_root = 0;
    int m_pagesRoot = 0;
    int m_information = 0;
    int m_encrypt = 0;
};

void Merge::run(const std::vector<int> &pages)
{
    m_writer.begin(version());
    m_root = m_writer.allocate();
    m_pagesRoot = m_writer.allocate();
    keepEncryption();
    findPages(pages);
    findTags();
    writePages();
    m_fields.writeFields();
    m_tags.write();
    writeCatalog(pages);
    m_information = m_catalog.writeInformation();
    m_copier.copyQueued();
    writePageTree();
    finish();
}

std::vector<int> Merge::standIns() const
{
    std::vector<int> numbers;
    for (const OutputPage &page : m_pages) {
        if (page.found.isUnreadable) {
            numbers.push_back(page.sourcePage);
        }
    }
    return numbers;
}

void Merge::findPages(const std::vector<int> &pages)
{
    for (const int number : pages) {
        const FoundPage found = m_tree.find(number);
        if (found.page == nullptr && !found.isUnreadable) {
            throw ToolError(m_file.path(), "has no page " + std::to_string(number));
        }
        if (found.isUnreadable) {
            reportLine("pagebinder", m_file.path(),
                       "page " + std::to_string(number) +
                           " cannot be read, a stand-in page takes its place");
        }
        m_pages.push_back({number, found, m_writer.allocate()});
        m_resources.addCopied(number);
        if (found.number != 0 && m_copier.mapped(found.number) == 0) {
            m_copier.map(found.number, m_pages.back().target);
        }
    }
    m_destinations.addPages(m_pages);
    for (const OutputPage &page : m_pages) {
        m_annotations.add(page);
    }
}

void Merge::findTags()
{
    if (!m_tags.isInInput()) {
        return;
    }
    std::vector<TaggedPage> pages;
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        const OutputPage &page = m_pages[i];
        pages.push_back({page.found.isUnreadable ? nullptr : page.found.page, page.found.number,
                         page.target, 0, m_annotations.copiedOn(i)});
    }
    m_tags.addPages(std::move(pages));
}

void Merge::keepEncryption()
{
    if (!m_encryption.isNeeded()) {
        return;
    }
    if (!m_encryption.isPossible()) {
        throw ToolError(m_file.path(), "forbids copying, and its encryption cannot be kept");
    }
    m_writer.setCipher(&m_encryption);
    if (m_encryption.leavesMetadata()) {
        m_copier.setPlainMetadata();
    }
    m_encrypt = m_encryption.write(m_copier);
}

int Merge::version()
{
    int version = 17;
    m_source.attempt(
        [this, &version] { version = pdf_version(m_source.context(), m_source.document()); });
    return version >= 10 && version <= 20 ? version : 17;
}

void Merge::writePages()
{
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        if (m_pages[i].found.isUnreadable) {
            m_pageWriter.writeStandIn(m_pages[i], m_pagesRoot);
            continue;
        }
        m_tags.beginPage(i);
        m_pageWriter.write(m_pages[i], m_pagesRoot, m_annotations.targets(i),
                           m_annotations.appearances(i));
        m_annotations.write(i);
        m_copier.copyQueued();
    }
}

void Merge::writePageTree()
{
    std::vector<int> kids;
    for (const OutputPage &page : m_pages) {
        kids.push_back(page.target);
    }
    m_writer.beginDictionaryObject(m_pagesRoot, "Pages");
    m_writer.key("Count").appendNumber(static_cast<std::int64_t>(kids.size()));
    m_writer.key("Kids").appendReferences(kids);
    m_writer.endDictionaryObject();
}

void Merge::writeCatalog(const std::vector<int> &pages)
{
    const int bookmarks = m_bookmarks.write(m_pages);
    m_writer.beginDictionaryObject(m_root, "Catalog").key("Pages").appendReference(m_pagesRoot);
    if (bookmarks != 0) {
        m_writer.key("Outlines").appendReference(bookmarks);
    }
    m_fields.writeForm();
    m_labels.write(pages);
    m_catalog.writeEntries(bookmarks != 0);
    m_writer.endDictionaryObject();
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

void Merge::appendIdentifiers()
{
    const std::string own = identifier();
    pdf_obj *identifiers = m_source.get(m_source.trailer(), PDF_NAME(ID));
    const std::string first = PdfSource::bytes(m_source.context(), m_source.at(identifiers, 0));
    m_writer.key("ID").beginArray();
    // The key of an encryption that is kept depends on the first one.
    m_writer.appendString(first.empty() && m_encrypt == 0 ? own : first);
    m_writer.appendString(own).endArray();
}

void Merge::finish()
{
    m_writer.beginTrailer().key("Root").appendReference(m_root);
    if (m_information != 0) {
        m_writer.key("Info").appendReference(m_information);
    }
    if (m_encrypt != 0) {
        m_writer.key("Encrypt").appendReference(m_encrypt);
    }
    appendIdentifiers();
    m_writer.finish();
}

} // namespace

PageMerger::PageMerger(SourceFile &file) : m_file(file) {}

PageMerger::~PageMerger() = default;

MergeResult PageMerger::merge(const std::vector<PageRange> &ranges, Output &output)
{
    if (countPages(ranges) > mostPages) {
        throw ToolError(m_file.path(), "more than 1,000,000 pages in one output are refused");
    }
    try {
        MergeResult result = copyPages(expandPageRanges(ranges), output);
        output.complete();
        m_file.input().checkUnchanged();
        output.publish();
        forgetObjects();
        return result;
    } catch (const ToolError &) {
        m_file.input().checkUnchanged(); // what a file that changes looks like means nothing
        throw;
    }
}

MergeResult PageMerger::copyPages(const std::vector<int> &pages, Output &output)
{
    for (int attempt = 1;; ++attempt) {
        try {
            if (!m_parts) {
                m_parts = std::make_unique<DocumentParts>(m_file);
            }
            Merge merge(m_file, *m_parts, output);
            merge.run(pages);
            m_copied +=
                merge.objectCount() + static_cast<std::size_t>(m_parts->drawings.takeReadCount());
            return {output.size(), merge.standIns()};
        } catch (const FileRepaired &) {
            if (attempt == mostAttempts) {
                throw ToolError(m_file.path(), "is too damaged");
            }
            m_parts.reset();
            output.restart();
        }
    }
}

// The library holds on to every object it has read. Many outputs would in the end hold the whole
// document; a look at every entry of its table after each of them would cost more than the outputs.
void PageMerger::forgetObjects()
{
    m_parts->structure.forget();
    const auto share = static_cast<std::size_t>(m_parts->source.objectCount()) / 8;
    if (m_copied > std::max(mostHeldObjects, share)) {
        m_parts->source.dropUnused();
        m_parts->drawings.forgetObjects();
        m_copied = 0;
    }
}

MergeResult mergePages(SourceFile &file, const std::vector<PageRange> &ranges,
                       const OutputPlace &output)
{
    const std::unique_ptr<Output> destination = openOutput(output);
    return PageMerger(file).merge(ranges, *destination);
}

} // namespace tools
