// Well-formed files are opened without the library's own reading of the table, all others by the
// library; the pages and what is written of them are the same to the byte.

#include "locked_pdf.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/room.h"
#include "tools/pagebinder/merge.h"
#include "tools/pagebinder/output/output_places.h"
#include "tools/pdf/page_loader.h"
#include "tools/pdf/pdf_source.h"

#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <functional>
#include <numeric>

using quorlin::test::PdfBuilder;
using tools::SourceFile;

namespace {

constexpr int pageCount = 5;

PdfBuilder pagesOf(int count)
{
    PdfBuilder pdf;
    for (int page = 1; page <= count; ++page) {
        pdf.addPage("BT /F1 12 Tf 72 700 Td (Page " + std::to_string(page) + ") Tj ET");
    }
    return pdf;
}

std::string plainFile()
{
    return pagesOf(pageCount).build();
}

void replaceFirst(std::string &text, const std::string &from, const std::string &to)
{
    const std::size_t place = text.find(from);
    QVERIFY2(place != std::string::npos, from.c_str());
    text.replace(place, from.size(), to);
}

std::string with(const std::string &from, const std::string &to)
{
    std::string file = plainFile();
    replaceFirst(file, from, to);
    return file;
}

/// The page list of a file with @p text in place of "/Kids[...]".
std::string withKids(const std::function<std::string(const std::string &)> &change)
{
    PdfBuilder pdf = pagesOf(pageCount);
    std::string kids;
    for (int page = 0; page < pageCount; ++page) {
        kids += std::to_string(7 + 2 * page) + " 0 R ";
    }
    pdf.setPageTree("<</Type/Pages/Count 5" + change(kids) + ">>");
    return pdf.build();
}

/// A second section that gives page 1 another content.
std::string updatedFile()
{
    std::string file = plainFile();
    const std::size_t table = file.rfind("xref\n0 ");
    const std::size_t object = file.size();
    const std::string content = "BT /F1 12 Tf 72 700 Td (Page one, changed) Tj ET";
    file += "6 0 obj\n<</Length " + std::to_string(content.size()) + ">>stream\n" + content +
            "\nendstream\nendobj\n";
    const std::size_t section = file.size();
    char entry[32];
    std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", object);
    file += "xref\n0 0\n6 1\n" + std::string(entry) + "trailer\n<</Size 16/Root 1 0 R/Prev " +
            std::to_string(table) + ">>\nstartxref\n" + std::to_string(section) + "\n%%EOF\n";
    return file;
}

std::string withLineEnds(const char *end)
{
    std::string file = plainFile();
    const std::size_t table = file.rfind("xref\n0 ");
    for (const char *kind : {" n \n", " f \n"}) {
        std::size_t place = table;
        while ((place = file.find(kind, place)) != std::string::npos) {
            file.replace(place + 2, 2, end);
        }
    }
    return file;
}

/// The content of page 1 is free, though its entry leads to it.
std::string withFreeContent()
{
    std::string file = plainFile();
    char place[16];
    std::snprintf(place, sizeof place, "%010zu", file.find("6 0 obj"));
    replaceFirst(file, std::string(place) + " 00000 n", std::string(place) + " 00001 f");
    return file;
}

std::string withLoop()
{
    std::string file = plainFile();
    const std::string table = std::to_string(file.rfind("xref\n0 "));
    replaceFirst(file, "/Root 1 0 R>>\nstartxref", "/Root 1 0 R/Prev " + table + ">>\nstartxref");
    return file;
}

/// A table in the form of a stream.
struct StreamTable
{
    bool compresses = true;
    bool predicts = false;
    std::vector<int> packed = {}; ///< objects that stand in an object stream
    std::string streamType = "/Type/ObjStm";
    int lost = 0;           ///< an object that the table places in a stream that is none
    std::string index = {}; ///< "/Index[...]"
    int cut = 0;            ///< bytes that are missing at the end
    int kindOfPage2 = 1;
    std::string widths = "[1 3 1]";
    std::string entries = {}; ///< of the dictionary
    bool hasKinds = true;     ///< the first field of each entry stands there
};

std::string zlib(const std::string &bytes)
{
    const QByteArray packed = qCompress(QByteArray::fromStdString(bytes));
    return packed.mid(4).toStdString(); // without the length that Qt puts in front
}

/// Each row as its difference from the row above, as a PNG filter of kind 2 has it.
std::string predicted(const std::string &bytes, std::size_t width)
{
    std::string result;
    for (std::size_t row = 0; row < bytes.size(); row += width) {
        result += '\2';
        for (std::size_t i = row; i < row + width && i < bytes.size(); ++i) {
            result += static_cast<char>(bytes[i] - (i < width ? 0 : bytes[i - width]));
        }
    }
    return result;
}

std::string streamObject(int number, const std::string &entries, const std::string &data)
{
    return std::to_string(number) + " 0 obj\n<<" + entries + "/Length " +
           std::to_string(data.size()) + ">>stream\n" + data + "\nendstream\nendobj\n";
}

/// Moves the objects @p numbers of @p file, whose places are @p places, into object stream
/// @p stream at its end.
void pack(std::string &file, std::vector<std::array<std::size_t, 3>> &places,
          const std::vector<int> &numbers, std::size_t stream, const std::string &type)
{
    std::string index;
    std::string objects;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        auto &place = places[static_cast<std::size_t>(numbers[i])];
        const std::size_t start = file.find("<<", place[1]);
        const std::size_t end = file.find("\nendobj", start);
        index += std::to_string(numbers[i]) + " " + std::to_string(objects.size()) + " ";
        objects += file.substr(start, end - start) + " ";
        file.replace(place[1], end + 7 - place[1], end + 7 - place[1], ' ');
        place = {2, stream, i};
    }
    places[stream] = {1, file.size(), 0};
    file += streamObject(static_cast<int>(stream),
                         type + "/N " + std::to_string(numbers.size()) + "/First " +
                             std::to_string(index.size()),
                         index + objects);
}

std::string streamFile(const StreamTable &table, std::string file = plainFile())
{
    file.resize(file.rfind("xref\n0 "));
    const int objectStream = 16;
    const int own = 17;
    std::vector<std::array<std::size_t, 3>> places(own + 1, {0, 0, 0});
    for (int number = 1; number < objectStream; ++number) {
        places[static_cast<std::size_t>(number)] = {
            1, file.find("\n" + std::to_string(number) + " 0 obj") + 1, 0};
    }
    if (!table.packed.empty()) {
        pack(file, places, table.packed, objectStream, table.streamType);
    }
    if (table.lost != 0) {
        places[static_cast<std::size_t>(table.lost)] = {2, 0, 0};
    }
    places[own] = {1, file.size(), 0};
    places[9][0] = static_cast<std::size_t>(table.kindOfPage2);
    std::string data;
    for (const auto &place : places) {
        if (table.hasKinds) {
            data += static_cast<char>(place[0]);
        }
        data += static_cast<char>(place[1] >> 16U);
        data += static_cast<char>(place[1] >> 8U);
        data += static_cast<char>(place[1]);
        data += static_cast<char>(place[2]);
    }
    data.resize(data.size() - static_cast<std::size_t>(table.cut));
    std::string entries = "/Type/XRef/Size 18/Root 1 0 R/W" + table.widths + table.index;
    if (table.predicts) {
        data = predicted(data, 5);
        entries += "/DecodeParms<</Predictor 12/Columns 5>>";
    }
    if (table.compresses) {
        data = zlib(data);
        entries += "/Filter/FlateDecode";
    }
    const std::size_t start = file.size();
    return file + streamObject(own, entries + table.entries, data) + "startxref\n" +
           std::to_string(start) + "\n%%EOF\n";
}

/// A table for old readers that calls page 1 free, and a stream for others that knows where it is.
std::string hybridFile()
{
    std::string file = streamFile({.packed = {7}, .index = "/Index[7 1]"});
    const std::size_t stream = file.find("\n17 0 obj") + 1;
    file.resize(stream);
    const std::string entry{'\2', '\0', '\0', '\20', '\0'}; // in object stream 16, the first
    file += streamObject(17, "/Type/XRef/Size 18/Root 1 0 R/W[1 3 1]/Index[7 1]", entry);
    const std::size_t table = file.size();
    file += "xref\n0 17\n0000000000 65535 f \n";
    for (int number = 1; number < 17; ++number) {
        char line[32];
        const std::size_t place = file.find("\n" + std::to_string(number) + " 0 obj") + 1;
        std::snprintf(line, sizeof line, "%010zu %s \n", number == 7 ? 0 : place,
                      number == 7 ? "65535 f" : "00000 n");
        file += line;
    }
    return file + "trailer\n<</Size 18/Root 1 0 R/XRefStm " + std::to_string(stream) +
           ">>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n";
}

/// Object numbers of the pages; 0 for one that has none or cannot be read.
std::vector<int> pageObjects(SourceFile &file)
{
    std::vector<int> numbers;
    const auto pages = tools::PageLoader(file).pages();
    for (const tools::PageList::Page &page : pages->pages) {
        numbers.push_back(page.isReadable ? page.number : 0);
    }
    return numbers;
}

} // namespace

class PageBinderOpeningTest : public QObject
{
    Q_OBJECT

private slots:
    void wellFormedFilesAreReadQuickly_data();
    void wellFormedFilesAreReadQuickly();
    void oddPageListsHoldTheSamePages_data();
    void oddPageListsHoldTheSamePages();
    void referencesToReferencesLeadToThePage();
    void nodesListedTwiceHaveTheirPagesTwice();
    void brokenPageListsAreReadAlike_data();
    void brokenPageListsAreReadAlike();
    void longListsAreReadWhole();
    void hybridFilesShowWhatTheirTableHides();
    void tablesThatBeginWithObject1AreReadRight();
    void emptyOwnerPasswordsOpenTheFile_data();
    void emptyOwnerPasswordsOpenTheFile();
    void filesWithoutPagesAreRepaired();
    void oddTablesAreLeftToTheLibrary_data();
    void oddTablesAreLeftToTheLibrary();
    void aTableShowsWhatTheRepairMisses();
    void aTableWithOtherPagesThanTheRepairIsNotTaken();
    void wrongOffsetEndsInTheLibrary();
    void newerSectionHolds();
    void corpusFilesGiveTheSameOutputs_data();
    void corpusFilesGiveTheSameOutputs();

private:
    /// What opening @p path this way and merging @p ranges gives: the output, or the reason why
    /// not.
    static QByteArray merged(const QString &path, const QString &output,
                             SourceFile::Opening opening,
                             const std::vector<tools::PageRange> &ranges);
    void compareOutputs(const QString &path);
    QString save(const std::string &file) const;

    QTemporaryDir m_folder;
};

QString PageBinderOpeningTest::save(const std::string &bytes) const
{
    QFile file(m_folder.filePath("in.pdf"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return {};
    }
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return file.fileName();
}

QByteArray PageBinderOpeningTest::merged(const QString &path, const QString &output,
                                         SourceFile::Opening opening,
                                         const std::vector<tools::PageRange> &ranges)
{
    QFile::remove(output);
    try {
        tools::PdfContext context("test");
        tools::InputFile input(path.toStdString());
        const tools::OutputPlaces places(input, {output.toStdString()});
        SourceFile file(context, std::move(input), opening);
        tools::mergePages(file, ranges, places.at(0));
    } catch (const tools::ToolError &error) {
        return QByteArray("refused: ") + error.what();
    }
    QFile file(output);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void PageBinderOpeningTest::compareOutputs(const QString &path)
{
    int pages = 1;
    try {
        tools::PdfContext context("test");
        SourceFile file(context, path.toStdString(), SourceFile::Opening::byLibrary);
        pages = std::max(1, static_cast<int>(pageObjects(file).size()));
    } catch (const tools::ToolError &) {
        pages = 1;
    }
    const QString output = m_folder.filePath("out.pdf");
    const int middle = (pages + 1) / 2;
    for (const tools::PageRange &range :
         {tools::PageRange{1, 1}, tools::PageRange{middle, std::min(pages, middle + 3)},
          tools::PageRange{pages, pages}, tools::PageRange{pages + 1, pages + 1}}) {
        const QByteArray quick = merged(path, output, SourceFile::Opening::quick, {range});
        const QByteArray slow = merged(path, output, SourceFile::Opening::byLibrary, {range});
        QVERIFY(!quick.isEmpty());
        // An encryption that is kept begins with random bytes, in every output anew.
        if (slow.contains("/Encrypt")) {
            QCOMPARE(quick.size(), slow.size());
        } else {
            QVERIFY2(quick == slow, qPrintable(path));
        }
    }
}

void PageBinderOpeningTest::wellFormedFilesAreReadQuickly_data()
{
    QTest::addColumn<QByteArray>("file");
    const auto row = [](const char *name, const std::string &file) {
        QTest::newRow(name) << QByteArray::fromStdString(file);
    };
    row("plain", plainFile());
    row("line ends of two characters", withLineEnds("\r\n"));
    row("line ends with a carriage return", withLineEnds(" \r"));
    row("updated", updatedFile());
    row("table in a stream", streamFile({}));
    row("table in a plain stream", streamFile({.compresses = false}));
    row("table in a stream of differences", streamFile({.predicts = true}));
    row("table in a stream by parts", streamFile({.index = "/Index[0 7 7 11]"}));
    row("table in a stream, a page in another", streamFile({.packed = {7}}));
    row("table in a stream without kinds", streamFile({.widths = "[0 3 1]", .hasKinds = false}));
    row("a free object with an offset", withFreeContent());
    row("free by an offset of zero", with("0000000000 65535 f", "0000000000 65535 n"));
    row("list over several lines",
        withKids([](const std::string &kids) { return "/Kids [\r\n" + kids + "\n]"; }));
    row("list at the end of the node", withKids([](const std::string &kids) {
            return "/MediaBox[0 0 10 10]/Resources<</Font<</F1 3 0 R>>>>/Kids[" + kids + "]";
        }));
    row("list without a blank at its end", withKids([](const std::string &kids) {
            return "/Kids[" + kids.substr(0, kids.size() - 1) + "]";
        }));
}

void PageBinderOpeningTest::wellFormedFilesAreReadQuickly()
{
    QFETCH(QByteArray, file);
    const QString path = save(file.toStdString());
    {
        tools::PdfContext context("test");
        SourceFile source(context, path.toStdString());
        QCOMPARE(source.isQuick(), tools::knowsLibrary);
        QCOMPARE(pageObjects(source), std::vector<int>({7, 9, 11, 13, 15}));
    }
    compareOutputs(path);
}

void PageBinderOpeningTest::oddPageListsHoldTheSamePages_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QList<int>>("pages"); // object numbers, 0 for one that cannot be read
    const QList<int> five{7, 9, 11, 13, 15};
    const auto row = [&five](const char *name,
                             const std::function<std::string(const std::string &)> &change,
                             const QList<int> &before = {}, const QList<int> &behind = {}) {
        QTest::newRow(name) << QByteArray::fromStdString(withKids(change))
                            << before + five + behind;
    };
    row("a comment in the list", [](const auto &kids) { return "/Kids[%[\n" + kids + "]"; });
    // The root states five pages, so what is missing is none.
    row("nothing in the list", [](const auto &kids) { return "/Kids[null " + kids + "]"; });
    row("an object number out of range",
        [](const auto &kids) { return "/Kids[99 0 R " + kids + "]"; });
    row("object 0", [](const auto &kids) { return "/Kids[0 0 R " + kids + "]"; });
    row("an object in the list",
        [](const auto &kids) { return "/Kids[<</Type/Page>>" + kids + "]"; }, {0});
    row("a list in a string first",
        [](const auto &kids) { return "/Title(/Kids[7 0 R])/Kids[" + kids + "]"; });
    row("a list in a comment first",
        [](const auto &kids) { return "%/Kids[7 0 R]\n/Kids[" + kids + "]"; });
    row("a list of another dictionary first",
        [](const auto &kids) { return "/PieceInfo<</Kids[7 0 R]>>/Kids[" + kids + "]"; });
    row("two lists", [](const auto &kids) { return "/Kids[7 0 R]/Kids[" + kids + "]"; });
    row("an escape in the key", [](const auto &kids) { return "/#4Bid#73[" + kids + "]"; });
}

void PageBinderOpeningTest::oddPageListsHoldTheSamePages()
{
    QFETCH(QByteArray, file);
    QFETCH(QList<int>, pages);
    const QString path = save(file.toStdString());
    for (const SourceFile::Opening opening :
         {SourceFile::Opening::quick, SourceFile::Opening::byLibrary}) {
        tools::PdfContext context("test");
        SourceFile source(context, path.toStdString(), opening);
        QCOMPARE(pageObjects(source), std::vector<int>(pages.begin(), pages.end()));
    }
    compareOutputs(path);
}

void PageBinderOpeningTest::referencesToReferencesLeadToThePage()
{
    PdfBuilder pdf = pagesOf(2);
    const int reference = pdf.add("7 0 R");
    pdf.setPageTree("<</Type/Pages/Count 2/Kids[" + std::to_string(reference) + " 0 R 9 0 R]>>");
    const QString path = save(pdf.build());
    for (const SourceFile::Opening opening :
         {SourceFile::Opening::quick, SourceFile::Opening::byLibrary}) {
        tools::PdfContext context("test");
        SourceFile source(context, path.toStdString(), opening);
        QCOMPARE(pageObjects(source), std::vector<int>({7, 9}));
    }
}

void PageBinderOpeningTest::nodesListedTwiceHaveTheirPagesTwice()
{
    PdfBuilder pdf = pagesOf(2);
    const std::string node =
        std::to_string(pdf.add("<</Type/Pages/Parent 2 0 R/Count 1/Kids[7 0 R]>>")) + " 0 R ";
    pdf.setPageTree("<</Type/Pages/Count 3/Kids[" + node + "9 0 R " + node + "]>>");
    tools::PdfContext context("test");
    SourceFile source(context, save(pdf.build()).toStdString());
    QCOMPARE(pageObjects(source), std::vector<int>({7, 9, 7}));
}

void PageBinderOpeningTest::brokenPageListsAreReadAlike_data()
{
    QTest::addColumn<QByteArray>("file");
    const auto row = [](const char *name,
                        const std::function<std::string(const std::string &)> &change) {
        QTest::newRow(name) << QByteArray::fromStdString(withKids(change));
    };
    row("an incomplete reference", [](const auto &kids) { return "/Kids[" + kids + "7 0]"; });
    row("a word against the reference",
        [](const auto &kids) { return "/Kids[7 0 Rx " + kids + "]"; });
    row("an unclosed list", [](const auto &kids) { return "/Kids[" + kids; });
    row("no list", [](const auto & /*kids*/) { return std::string(); });
}

void PageBinderOpeningTest::brokenPageListsAreReadAlike()
{
    QFETCH(QByteArray, file);
    compareOutputs(save(file.toStdString()));
}

/// A list too long for one reading of the file, and longer than what is held of it.
void PageBinderOpeningTest::longListsAreReadWhole()
{
    for (const int pages : {5000, 30000}) {
        PdfBuilder pdf;
        const int content = pdf.addStream({}, "BT /F1 12 Tf 72 700 Td (Page) Tj ET");
        for (int page = 0; page < pages; ++page) {
            pdf.addPageWithContents(content);
        }
        const QString path = save(pdf.build());
        for (const SourceFile::Opening opening :
             {SourceFile::Opening::quick, SourceFile::Opening::byLibrary}) {
            tools::PdfContext context("test");
            SourceFile source(context, path.toStdString(), opening);
            std::vector<int> expected(static_cast<std::size_t>(pages));
            std::iota(expected.begin(), expected.end(), content + 1);
            QCOMPARE(pageObjects(source), expected);
        }
    }
}

/// Readers that know object streams find page 1 through the stream beside the table.
void PageBinderOpeningTest::hybridFilesShowWhatTheirTableHides()
{
    const QString path = save(hybridFile());
    for (const SourceFile::Opening opening :
         {SourceFile::Opening::quick, SourceFile::Opening::byLibrary}) {
        tools::PdfContext context("test");
        SourceFile source(context, path.toStdString(), opening);
        QCOMPARE(pageObjects(source), std::vector<int>({7, 9, 11, 13, 15}));
    }
    const QByteArray output = merged(path, m_folder.filePath("out.pdf"), SourceFile::Opening::quick,
                                     {tools::PageRange{1, 1}});
    QVERIFY(output.contains("(Page 1)"));
    compareOutputs(path);
}

/// A known slip: the table begins with object 0 and calls it 1.
void PageBinderOpeningTest::tablesThatBeginWithObject1AreReadRight()
{
    const QString path = save(with("xref\n0 16", "xref\n1 16"));
    for (const SourceFile::Opening opening :
         {SourceFile::Opening::quick, SourceFile::Opening::byLibrary}) {
        tools::PdfContext context("test");
        SourceFile source(context, path.toStdString(), opening);
        QCOMPARE(pageObjects(source), std::vector<int>({7, 9, 11, 13, 15}));
        QVERIFY(!tools::PdfSource(source).isRepaired());
    }
    compareOutputs(path);
    // Any other first entry is that of object 1, as stated: the file has no catalog then.
    const QString stated =
        save(with("xref\n0 16\n0000000000 65535 f", "xref\n1 16\n0000000000 00000 f"));
    tools::PdfContext context("test");
    SourceFile source(context, stated.toStdString());
    QCOMPARE(pageObjects(source), std::vector<int>());
}

void PageBinderOpeningTest::emptyOwnerPasswordsOpenTheFile_data()
{
    QTest::addColumn<int>("revision");
    QTest::addColumn<bool>("isEmpty");
    for (const int revision : {2, 3}) {
        QTest::addRow("revision %d, empty", revision) << revision << true;
        QTest::addRow("revision %d, given", revision) << revision << false;
    }
}

void PageBinderOpeningTest::emptyOwnerPasswordsOpenTheFile()
{
    QFETCH(int, revision);
    QFETCH(bool, isEmpty);
    const QString path = save(lockedFile({.revision = revision, .owner = isEmpty ? "" : "owner"}));
    const QByteArray output = merged(path, m_folder.filePath("out.pdf"), SourceFile::Opening::quick,
                                     {tools::PageRange{1, 1}});
    if (isEmpty) {
        QVERIFY(output.contains("(Secret)"));
    } else {
        QCOMPARE(output, QByteArray("refused: needs a password"));
    }
}

/// Without pages in its table the file is looked through for them.
void PageBinderOpeningTest::filesWithoutPagesAreRepaired()
{
    const QString path = save(with("/Root 1 0 R", "/Root 3 0 R"));
    tools::PdfContext context("test");
    SourceFile source(context, path.toStdString());
    QCOMPARE(pageObjects(source).size(), std::size_t{0});
    QVERIFY(tools::PdfSource(source).isRepaired());
    // A table that leads the catalog to nothing.
    std::string file = plainFile();
    char entry[16];
    std::snprintf(entry, sizeof entry, "%010zu", file.find("2 0 obj"));
    replaceFirst(file, std::string(entry) + " 00000 n", "0000000000 65535 f");
    SourceFile lost(context, save(file).toStdString());
    QCOMPARE(pageObjects(lost), std::vector<int>({7, 9, 11, 13, 15}));
}

void PageBinderOpeningTest::oddTablesAreLeftToTheLibrary_data()
{
    QTest::addColumn<QByteArray>("file");
    const auto row = [](const char *name, const std::string &file) {
        QTest::newRow(name) << QByteArray::fromStdString(file);
    };
    row("something before the header", "\n" + plainFile());
    row("entries of 19 bytes", with(" f \n", " f\n"));
    row("a letter in an offset", with("00000 n", "000x0 n"));
    for (const char *offset : {":000000009", "0/00000009", "000p000009", "0000 00009",
                               "0000000\xb0"
                               "09",
                               "00000000:9", "000000000/"}) {
        row(offset, with("0000000009 ", std::string(offset) + ' '));
    }
    row("an offset beyond the file", with("0000000009 ", "9999999999 "));
    row("an unknown kind", with("00000 n", "00000 o"));
    row("no blank behind an offset", with("0000000009 00000", "0000000009x00000"));
    row("a letter for a line end", with("00000 n \n", "00000 nx\n"));
    row("a generation too large", with("00000 n", "70000 n"));
    row("a number of eleven digits", with("xref\n0 16", "xref\n00000000000 16"));
    row("a comment in the table", with("xref\n0", "xref\n%\n0"));
    row("fewer entries than stated", with("xref\n0 16", "xref\n0 17"));
    row("more entries than stated", with("xref\n0 16", "xref\n0 15"));
    row("a larger table than promised", with("/Size 16", "/Size 15"));
    row("an indirect size", with("/Size 16", "/Size 3 0 R"));
    row("object 0 in use", with("0000000000 65535 f", "0000000009 65535 n"));
    row("encryption", with("/Root 1 0 R>>\n", "/Root 1 0 R/Encrypt 3 0 R>>\n"));
    row("a table and a stream", with("/Root 1 0 R>>\n", "/Root 1 0 R/XRefStm 9>>\n"));
    row("a stream that is too short", streamFile({.cut = 5}));
    row("a stream of two fields", streamFile({.widths = "[1 3]"}));
    row("a stream of wide fields", streamFile({.widths = "[1 9 1]"}));
    row("a stream without offsets", streamFile({.widths = "[5 0 0]"}));
    row("a stream of kinds and generations", streamFile({.widths = "[1 0 4]"}));
    row("a stream of odd parts", streamFile({.index = "/Index[0 7 7]"}));
    row("a stream of negative parts", streamFile({.index = "/Index[0 -7]"}));
    row("an unknown kind in a stream", streamFile({.kindOfPage2 = 3}));
    row("a page in a stream that is none", streamFile({.kindOfPage2 = 2}));
    row("an encrypted file's stream", streamFile({.entries = "/Encrypt 3 0 R"}));
    row("a stream with a table", streamFile({.entries = "/XRefStm 9"}));
    row("a stream with an indirect filter", streamFile({.entries = "/F 3 0 R"}));
    row("no end", with("startxref", "startyref"));
    row("a wrong start", with("startxref\n", "startxref\n1"));
    row("sections in a circle", withLoop());
    row("nothing", std::string());
}

void PageBinderOpeningTest::oddTablesAreLeftToTheLibrary()
{
    QFETCH(QByteArray, file);
    const QString path = save(file.toStdString());
    bool quick = false;
    try {
        tools::PdfContext context("test");
        const SourceFile source(context, path.toStdString());
        quick = source.isQuick();
    } catch (const tools::ToolError &) {
        quick = false; // refused, and by the library, as the comparison shows
    }
    QVERIFY(!quick);
    compareOutputs(path);
}

/// One object that the table places nowhere makes the library repair the file, and the repair does
/// not see that a stream without a type holds a page.
void PageBinderOpeningTest::aTableShowsWhatTheRepairMisses()
{
    const QString path = save(streamFile({.packed = {7}, .streamType = "", .lost = 5}));
    tools::PdfContext context("test");
    SourceFile source(context, path.toStdString());
    QVERIFY(!source.isQuick());
    QCOMPARE(pageObjects(source), std::vector<int>({7, 9, 11, 13, 15}));
}

/// Here the object that the table places nowhere is a node, whose two pages the repair sees. The
/// table shows two others, so it leaves fewer pages unread, but it has fewer in all.
void PageBinderOpeningTest::aTableWithOtherPagesThanTheRepairIsNotTaken()
{
    PdfBuilder pdf = pagesOf(pageCount);
    pdf.set(5, "<</Type/Pages/Parent 2 0 R/Count 2/Kids[13 0 R 15 0 R]>>");
    pdf.setPageTree("<</Type/Pages/Count 5/Kids[7 0 R 9 0 R 11 0 R 5 0 R]>>");
    const QString path =
        save(streamFile({.packed = {7, 11}, .streamType = "", .lost = 5}, pdf.build()));
    tools::PdfContext context("test");
    SourceFile source(context, path.toStdString());
    QCOMPARE(pageObjects(source), std::vector<int>({0, 9, 0, 13, 15}));
}

void PageBinderOpeningTest::wrongOffsetEndsInTheLibrary()
{
    // Page 3's entry leads to page 4's object: seen when the page is read.
    std::string file = plainFile();
    char good[16];
    char wrong[16];
    std::snprintf(good, sizeof good, "%010zu", file.find("11 0 obj"));
    std::snprintf(wrong, sizeof wrong, "%010zu", file.find("13 0 obj"));
    replaceFirst(file, good, wrong);
    const QString path = save(file);
    const QByteArray output = merged(path, m_folder.filePath("out.pdf"), SourceFile::Opening::quick,
                                     {tools::PageRange{3, 3}});
    QVERIFY(output.contains("(Page 3)"));
    compareOutputs(path);
}

void PageBinderOpeningTest::newerSectionHolds()
{
    const QString path = save(updatedFile());
    const QByteArray output = merged(path, m_folder.filePath("out.pdf"), SourceFile::Opening::quick,
                                     {tools::PageRange{1, 2}});
    QVERIFY(output.contains("(Page one, changed)"));
    QVERIFY(!output.contains("(Page 1)"));
    QVERIFY(output.contains("(Page 2)"));
}

void PageBinderOpeningTest::corpusFilesGiveTheSameOutputs_data()
{
    QTest::addColumn<QString>("path");
    QDirIterator files(QStringLiteral(QUORLIN_CORPUS_DIR), {"*.pdf"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QTest::newRow(qPrintable(path)) << path;
    }
}

void PageBinderOpeningTest::corpusFilesGiveTheSameOutputs()
{
    if (!QDir(QStringLiteral(QUORLIN_CORPUS_DIR)).exists()) {
        QSKIP("the corpus is absent");
    }
    QFETCH(QString, path);
    compareOutputs(path);
}

QUORLIN_TEST(PageBinderOpeningTest)
#include "test_opening.moc"
