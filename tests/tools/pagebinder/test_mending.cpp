// Objects that break the syntax are read the way tolerant readers do.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tests/support/room.h"
#include "tool_run.h"
#include "tools/pdf/library_internals.h"
#include "tools/pdf/object_headers.h"
#include "tools/pdf/object_mender.h"

#include <QTemporaryDir>
#include <QtTest>

class PageBinderMendingTest : public QObject
{
    Q_OBJECT

private slots:
    void oddSyntaxIsMended_data();
    void oddSyntaxIsMended();
    void anotherObjectIsNotTaken();
    void streamsBeginBehindTheirKeyword();
    void deepNestingEnds();
    void pagesAndFontsOfOddSyntaxShow();
    void oneBrokenObjectDoesNotHarmTheOthers();
    void beginningsOfObjectsAreFound_data();
    void beginningsOfObjectsAreFound();
    void objectsBehindAStreamWithoutEndAreFound();

private:
    QTemporaryDir m_folder;
};

void PageBinderMendingTest::oddSyntaxIsMended_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("mended");
    const auto add = [](const char *name, const QByteArray &source, const QByteArray &mended) {
        QTest::addRow("%s", name) << source << mended;
    };
    add("proper", "<</A 1/B[2 3 0 R]/C 4 0 R>>", "<</A 1/B[2 3 0 R]/C 4 0 R>>");
    add("blank in a name", "<</Name/Any,Font MS/B 2>>", "<</Name/Any,Font/B 2>>");
    add("no value", "<</A/B 2/C>>", "<</A/B>>");
    add("a value that makes no sense", "<</A nonsense/B)/C 3>>", "<</A null/B null/C 3>>");
    add("not closed", "<</A[1 2<</B 3 endobj", "<</A[1 2<</B 3>>]>>");
    add("closed too early", "<</A[1 2>>", "<</A[1 2]>>");
    add("strings", "<</A(a\\)(b))/B<41 zz>/C(open", "<</A(a\\)(b))/B<41 zz>>>");
    add("comments", "<</A% >>\n1>>", "<</A 1>>");
    add("words", "<</A true/B false/C null/D -1.5>>", "<</A true/B false/C null/D -1.5>>");
    add("nothing", "endobj", "");
}

void PageBinderMendingTest::oddSyntaxIsMended()
{
    QFETCH(QByteArray, source);
    QFETCH(QByteArray, mended);
    const QByteArray object = "7 0 obj " + source;
    QByteArray found = QByteArray::fromStdString(tools::mendObject(object.toStdString(), 7).text);
    found.replace("\n", " ");
    mended.replace("/", " /").replace("[", " [").replace("(", " (").replace("<", " <");
    const auto words = [](QByteArray text) {
        text.replace("/", " /").replace("[", " [ ").replace("]", " ] ").replace(">", " > ");
        text.replace("<", " < ").replace("(", " (");
        return text.simplified();
    };
    QCOMPARE(words(found), words(mended));
}

void PageBinderMendingTest::anotherObjectIsNotTaken()
{
    QVERIFY(tools::mendObject("8 0 obj <</A 1>>", 7).text.empty());
    QVERIFY(!tools::mendObject("8 0 obj <</A 1>>", 7).isThere);
    QVERIFY(!tools::mendObject("", 7).isThere);
    QVERIFY(tools::mendObject("7 garbage obj <</A 1>>", 7).isThere);
    QVERIFY(tools::mendObject("7 garbage obj <</A 1>>", 7).text.empty());
}

void PageBinderMendingTest::streamsBeginBehindTheirKeyword()
{
    QCOMPARE(tools::mendObject("7 0 obj <</A 1>>", 7).stream, std::size_t(0));
    QCOMPARE(tools::mendObject("7 0 obj <<>>stream\ndata", 7).stream, std::size_t(19));
    QCOMPARE(tools::mendObject("7 0 obj <<>>stream\r\ndata", 7).stream, std::size_t(20));
}

void PageBinderMendingTest::deepNestingEnds()
{
    std::string source = "7 0 obj ";
    for (int i = 0; i < 100000; ++i) {
        source += "[";
    }
    QVERIFY(!tools::mendObject(source, 7).text.empty());
}

void PageBinderMendingTest::pagesAndFontsOfOddSyntaxShow()
{
    if (!tools::knowsLibrary) {
        QSKIP("objects are mended in versions of the library that are known");
    }
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(3, "<</Type/Font/Subtype/Type1/Name/Any Name/BaseFont/Helvetica>>");
    pdf.object(20, "<</Type/Page/Parent 2 0 R odd /MediaBox[0 0 99 99]/Contents 21 0 R"
                   "/Resources<</Font<</F 3 0 R>>>>>>");
    pdf.object(21,
               "<<odd/Length 36>>\nstream\n" + TestPdf::textContent("mended-text") + "\nendstream");
    const QString output = m_folder.filePath("out.pdf");
    QCOMPARE(merge(pdf.save(m_folder.path()), "1-2", output).status, 0);
    PdfInspector inspector(output);
    QCOMPARE(inspector.text(1), QByteArray("page-1-text"));
    QCOMPARE(inspector.text(2), QByteArray("mended-text"));
}

void PageBinderMendingTest::oneBrokenObjectDoesNotHarmTheOthers()
{
    // A rebuilt table would hold the "objects" within page 1's uncompressed stream.
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(30, "<</Type/Page>>");
    QByteArray file = pdf.stream(11, "", "% 21 0 obj (another) endobj\n").bytes();
    const qsizetype broken = file.indexOf("30 0 obj");
    file.replace(broken, 8, "30 ? obj");
    file.replace("/Resources<</Font<</F 3 0 R>>>>>>\nendobj\n11",
                 "/Resources<</XX 30 0 R/F 3 0 R>>>>\nendobj\n11");
    QFile input(m_folder.filePath("broken.pdf"));
    QVERIFY(input.open(QIODevice::WriteOnly));
    input.write(file);
    input.close();
    const QString output = m_folder.filePath("out.pdf");
    QCOMPARE(merge(input.fileName(), "1-2", output).status, 0);
    QCOMPARE(PdfInspector(output).text(2), QByteArray("page-2-text"));
}

void PageBinderMendingTest::beginningsOfObjectsAreFound_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QList<int>>("found"); // number, offset, generation
    const auto add = [](const char *name, const QByteArray &file, const QList<int> &found) {
        QTest::addRow("%s", name) << file << found;
    };
    add("first and last", "7 0 obj null endobj\n8 2 obj", {7, 0, 0, 8, 20, 2});
    add("no blank behind", "\n7 0 obj<<>>", {7, 1, 0});
    add("several blanks", "x \r\n 7 \n 0\tobj ", {7, 5, 0});
    add("the last one counts", "7 0 obj 7 1 obj ", {7, 8, 1});
    add("part of a number", "a7 0 obj", {});
    add("part of a word", "7 0 object 7 0 endobj 7 0obj 70 obj", {7, 22, 0});
    add("no object's number", "0 0 obj 100 0 obj -1 0 obj 99999999999 0 obj", {});
    add("within a long file", QByteArray(100000, '.') + "\n9 0 obj ", {9, 100001, 0});
}

void PageBinderMendingTest::beginningsOfObjectsAreFound()
{
    QFETCH(QByteArray, file);
    QFETCH(QList<int>, found);
    for (const qsizetype piece : {qsizetype(1), qsizetype(50), qsizetype(70), file.size()}) {
        tools::ObjectHeaderScan scan(100);
        for (qsizetype i = 0; i < file.size(); i += piece) {
            scan.feed(file.mid(i, piece).toStdString());
        }
        QList<int> numbers;
        for (int number = 0; number < 100; ++number) {
            const auto header = scan.finish().find(number);
            if (header != scan.finish().end()) {
                numbers << number << int(header->second.offset) << header->second.generation;
            }
        }
        QCOMPARE(numbers, found);
    }
}

void PageBinderMendingTest::objectsBehindAStreamWithoutEndAreFound()
{
    if (!tools::knowsLibrary) {
        QSKIP("objects are mended in versions of the library that are known");
    }
    // The repair takes everything up to the next "endstream" for the data of the damaged stream.
    TestPdf pdf = TestPdf::pages(2);
    pdf.stream(19, "/Damaged true", "some data");
    pdf.object(22, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>");
    pdf.object(20, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 21 0 R/Resources"
                   "<</Font<</F 22 0 R>>>>>>");
    QByteArray file = pdf.bytes();
    file.replace(file.indexOf("some data\nendstream"), 19,
                 "some data\nendstr\x05"
                 "am");
    file.replace(file.indexOf("/Damaged true/Length 9"), 22, "/Damaged true/Length 0");
    file.replace("startxref", "startxxxx");
    QFile input(m_folder.filePath("endless.pdf"));
    QVERIFY(input.open(QIODevice::WriteOnly));
    input.write(file);
    input.close();
    const QString output = m_folder.filePath("out.pdf");
    QCOMPARE(merge(input.fileName(), "1-2", output).status, 0);
    PdfInspector inspector(output);
    QCOMPARE(inspector.text(2), QByteArray("page-2-text"));
    QCOMPARE(inspector.value("Root/Pages/Kids/1/Resources/Font/F/BaseFont"),
             QByteArray("/Courier"));
}

QUORLIN_TEST(PageBinderMendingTest)
#include "test_mending.moc"
