// Files made to do harm: loops, endless nesting, lies. The tool ends soon, with a proper status and
// nothing left behind.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tests/support/room.h"
#include "tool_run.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QtTest>

class PageBinderHostileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void loopsEndInEveryTree_data();
    void loopsEndInEveryTree();
    void endlessNestingIsNoCrash_data();
    void endlessNestingIsNoCrash();
    void aPageTreeThatContainsItselfEnds();
    void aCountBeyondTheFileIsNotBelieved();
    void wrongCountsAreNoticed();
    void aPageWithAListOfKidsIsAPage();
    void anUnreadablePageBecomesAStandIn();
    void oddObjectsInEveryPlaceAreNoCrash_data();
    void oddObjectsInEveryPlaceAreNoCrash();
    void everyCutOfAFileIsNoCrash();
    void warningsAreCapped();

private:
    ToolRun mergeFirst(const TestPdf &pdf);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_output;
};

void PageBinderHostileTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_output = m_folder->filePath("out.pdf");
}

ToolRun PageBinderHostileTest::mergeFirst(const TestPdf &pdf)
{
    return merge(pdf.save(m_folder->path()), "1", m_output);
}

void PageBinderHostileTest::loopsEndInEveryTree_data()
{
    QTest::addColumn<QByteArray>("catalog");
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QByteArray>("source");
    const auto row = [](const char *name, const char *catalog, const char *page,
                        const char *source) {
        QTest::newRow(name) << QByteArray(catalog) << QByteArray(page) << QByteArray(source);
    };
    row("bookmarks after themselves", "/Outlines<</First 90 0 R>>", "",
        "<</Title(x)/Next 90 0 R/Dest[10 0 R/Fit]>>");
    row("bookmarks below themselves", "/Outlines<</First 90 0 R>>", "",
        "<</Title(x)/First 90 0 R/Next 90 0 R/Dest[10 0 R/Fit]>>");
    row("names", "/Names<</Dests 90 0 R>>", "/Annots[<</Subtype/Link/Rect[0 0 1 1]/Dest(x)>>]",
        "<</Kids[90 0 R 90 0 R 90 0 R]>>");
    row("a destination that names itself", "/Names<</Dests<</Names[(x) 90 0 R]>>>>",
        "/Annots[<</Subtype/Link/Rect[0 0 1 1]/Dest(x)>>]", "<</D(x)>>");
    row("page labels", "/PageLabels 90 0 R", "", "<</Kids[90 0 R 90 0 R 90 0 R 90 0 R]>>");
    row("a field above itself", "/AcroForm<</Fields[90 0 R]>>",
        "/Annots[<</Subtype/Widget/Rect[0 0 1 1]/Parent 90 0 R>>]",
        "<</FT/Tx/T(x)/Parent 90 0 R/Kids[90 0 R]>>");
    row("a widget that is its own field", "/AcroForm<</Fields[90 0 R]>>", "/Annots[90 0 R]",
        "<</Subtype/Widget/Rect[0 0 1 1]/FT/Tx/T(x)/Parent 90 0 R>>");
    row("actions", "", "/Annots[<</Subtype/Link/Rect[0 0 1 1]/A 90 0 R>>]",
        "<</S/URI/URI(x)/Next 90 0 R>>");
    row("branching actions", "", "/Annots[<</Subtype/Link/Rect[0 0 1 1]/A 90 0 R>>]",
        "<</S/URI/URI(x)/Next[90 0 R 90 0 R 90 0 R 90 0 R]>>");
    row("replies", "", "/Annots[90 0 R]",
        "<</Subtype/Text/Rect[0 0 1 1]/IRT 90 0 R/Popup 90 0 R>>");
    row("a reference to itself", "", "/Group 90 0 R", "90 0 R");
    row("inherited attributes", "", "/Rotate 90 0 R", "<</Parent 90 0 R>>");
    row("layers", "/OCProperties 90 0 R", "", "<</OCGs 90 0 R/D<</Order[90 0 R]>>>>");
}

void PageBinderHostileTest::loopsEndInEveryTree()
{
    QFETCH(QByteArray, catalog);
    QFETCH(QByteArray, page);
    QFETCH(QByteArray, source);
    TestPdf pdf = TestPdf::pages(2, catalog, page);
    pdf.object(90, source);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(mergeFirst(pdf).status, 0);
    QVERIFY(timer.elapsed() < 30000);
    QCOMPARE(PdfInspector(m_output).text(1), QByteArray("page-1-text"));
}

void PageBinderHostileTest::endlessNestingIsNoCrash_data()
{
    QTest::addColumn<QByteArray>("open");
    QTest::addColumn<QByteArray>("close");
    QTest::newRow("arrays") << QByteArray("[") << QByteArray("]");
    QTest::newRow("dictionaries") << QByteArray("<</A") << QByteArray(">>");
    QTest::newRow("arrays without an end") << QByteArray("[") << QByteArray();
}

void PageBinderHostileTest::endlessNestingIsNoCrash()
{
    QFETCH(QByteArray, open);
    QFETCH(QByteArray, close);
    for (const int depth : {90, 3000, 300000}) {
        TestPdf pdf = TestPdf::pages(2, "", "/VP 90 0 R/Group 91 0 R");
        pdf.object(90, open.repeated(depth) + (open == "[" ? "1" : "/B") + close.repeated(depth));
        pdf.object(91, "<</S/Transparency/X" + open.repeated(depth) + "/B" + close.repeated(depth) +
                           ">>");
        const ToolRun run = mergeFirst(pdf);
        QVERIFY2(run.status == 0 || run.status == 1 || run.status == 3, run.errors.constData());
        QCOMPARE(QFileInfo::exists(m_output), run.status != 1);
        QFile::remove(m_output);
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden),
                 QStringList{"input.pdf"});
    }
}

void PageBinderHostileTest::aPageTreeThatContainsItselfEnds()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(2, "<</Type/Pages/Count 900/Kids[2 0 R 4 0 R 2 0 R]>>");
    pdf.object(4, "<</Type/Pages/Parent 2 0 R/Count 3/Kids[2 0 R 10 0 R 4 0 R]>>");
    QCOMPARE(mergeFirst(pdf).status, 0);
    QCOMPARE(PdfInspector(m_output).text(1), QByteArray("page-1-text"));
    QCOMPARE(merge(m_folder->filePath("input.pdf"), "50", m_folder->filePath("x.pdf")).status, 1);
}

void PageBinderHostileTest::aCountBeyondTheFileIsNotBelieved()
{
    TestPdf pdf = TestPdf::pages(3);
    pdf.object(2, "<</Type/Pages/Count 2000000000/Kids[10 0 R 20 0 R 30 0 R]>>");
    const QString input = pdf.save(m_folder->path());
    const QString information = m_folder->filePath("info.txt");
    QCOMPARE(runBinder({input, "-getinfo", "-outfile", information}).status, 0);
    QFile file(information);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readLine(), QByteArray("NumberOfPages: 3\n"));
    QCOMPARE(merge(input, "3", m_output).status, 0);
    QCOMPARE(PdfInspector(m_output).text(1), QByteArray("page-3-text"));
    QCOMPARE(merge(input, "1999999999", m_folder->filePath("x.pdf")).status, 1);
}

void PageBinderHostileTest::wrongCountsAreNoticed()
{
    TestPdf pdf = TestPdf::pages(4);
    pdf.object(2, "<</Type/Pages/Count 4/Kids[4 0 R 5 0 R]>>");
    pdf.object(4, "<</Type/Pages/Parent 2 0 R/Count -7/Kids[10 0 R 20 0 R]>>");
    pdf.object(5, "<</Type/Pages/Parent 2 0 R/Count 1/Kids[30 0 R 40 0 R]>>");
    const QString input = pdf.save(m_folder->path());
    QCOMPARE(merge(input, "1-4", m_output).status, 0);
    PdfInspector output(m_output);
    for (int page = 1; page <= 4; ++page) {
        QCOMPARE(output.text(page), "page-" + QByteArray::number(page) + "-text");
    }
}

void PageBinderHostileTest::aPageWithAListOfKidsIsAPage()
{
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 11 0 R/Kids[20 0 R]"
                   "/Resources<</Font<</F 3 0 R>>>>>>");
    const QString input = pdf.save(m_folder->path());
    QVERIFY(
        runBinder({input, "-getinfo", "-outfile", "-"}).output.startsWith("NumberOfPages: 2\n"));
    QCOMPARE(merge(input, "1", m_output).status, 0);
    QCOMPARE(PdfInspector(m_output).text(1), QByteArray("page-1-text"));
}

void PageBinderHostileTest::anUnreadablePageBecomesAStandIn()
{
    TestPdf pdf = TestPdf::pages(3);
    pdf.object(20, "(where a page should be");
    const ToolRun run = merge(pdf.save(m_folder->path()), "1-3", m_output);
    QCOMPARE(run.status, 3);
    QVERIFY(run.errors.contains(
        "/input.pdf: page 2 cannot be read, a stand-in page takes its place\n"));
    PdfInspector output(m_output);
    QCOMPARE(output.pageCount(), 3);
    QCOMPARE(output.text(1), QByteArray("page-1-text"));
    QCOMPARE(output.text(2),
             QByteArray("Page 2 of input.pdf could not be read. This page stands in its place."));
    QCOMPARE(output.text(3), QByteArray("page-3-text"));
}

void PageBinderHostileTest::oddObjectsInEveryPlaceAreNoCrash_data()
{
    QTest::addColumn<QByteArray>("value");
    for (const char *value : {"null",
                              "-1",
                              "99999999999999999999",
                              "1e99",
                              "(text)",

                              "/Name",
                              "[]",
                              "[null]",
                              "[[[]]]",
                              "<<>>",
                              "<</Type/Page>>",
                              "1 0 R",
                              "2 0 R",
                              "10 0 R",
                              "11 0 R",
                              "20 0 R",
                              "[[20 0 R]]",
                              "<</X 20 0 R>>",
                              "999 0 R",
                              "0 0 R",
                              "-5 0 R",
                              "true",
                              "[1 0 R 2 0 R 10 0 R 20 0 R]",
                              "<</Kids 2 0 R>>",
                              "<</S/GoTo/D 20 0 R>>",
                              "<</First 20 0 R>>",
                              "[20 0 R/Fit]"}) {
        QTest::newRow(value) << QByteArray(value);
    }
}

void PageBinderHostileTest::oddObjectsInEveryPlaceAreNoCrash()
{
    QFETCH(QByteArray, value);
    const QByteArrayList catalogKeys = {
        "Outlines", "Names",         "Dests", "AcroForm",          "OCProperties", "PageLabels",
        "Metadata", "OutputIntents", "Lang",  "ViewerPreferences", "PageMode",     "Version"};
    const QByteArrayList pageKeys = {"Contents", "Resources", "Annots", "CropBox",
                                     "Rotate",   "Group",     "Tabs",   "MediaBox",
                                     "Parent",   "UserUnit",  "VP",     "Trans"};
    const QByteArrayList annotationKeys = {"A",  "Dest", "Parent", "AP", "P",  "Popup", "IRT",
                                           "FT", "V",    "DA",     "MK", "OC", "Rect",  "Kids"};
    for (const QByteArray &key : catalogKeys) {
        const ToolRun run = mergeFirst(TestPdf::pages(2, "/" + key + " " + value));
        QVERIFY2(run.status == 0, (key + ": " + run.errors).constData());
        QVERIFY2(!PdfInspector(m_output).everything().contains("page-2-text"), key.constData());
    }
    for (const QByteArray &key : pageKeys) {
        const ToolRun run = mergeFirst(TestPdf::pages(2, "", "/" + key + " " + value));
        QVERIFY2(run.status == 0 || run.status == 1, (key + ": " + run.errors).constData());
    }
    for (const QByteArray &kind : {QByteArray("Widget"), QByteArray("Link"), QByteArray("Popup")}) {
        for (const QByteArray &key :
             kind == "Widget" ? annotationKeys : QByteArrayList{"A", "Dest", "Parent"}) {
            TestPdf pdf = TestPdf::pages(2, "/AcroForm<</Fields[90 0 R]>>", "/Annots[90 0 R]");
            pdf.object(90, "<</Subtype/" + kind + "/Rect[0 0 1 1]/" + key + " " + value + ">>");
            const ToolRun run = mergeFirst(pdf);
            QVERIFY2(run.status == 0, (key + ": " + run.errors).constData());
            QVERIFY2(!PdfInspector(m_output).everything().contains("page-2-text"), key.constData());
        }
    }
}

void PageBinderHostileTest::everyCutOfAFileIsNoCrash()
{
    const QByteArray whole = TestPdf::pages(2, "/Outlines<</First 40 0 R>>").bytes();
    const QString input = m_folder->filePath("cut.pdf");
    for (qsizetype length = 0; length < whole.size(); length += 23) {
        QFile file(input);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(whole.left(length));
        file.close();
        const ToolRun run = merge(input, "1-2", m_output);
        QVERIFY2(run.status == 0 || run.status == 1 || run.status == 3, run.errors.constData());
        QCOMPARE(QFileInfo::exists(m_output), run.status != 1);
        QFile::remove(m_output);
    }
}

void PageBinderHostileTest::warningsAreCapped()
{
    const QString input = m_folder->filePath("input.pdf");
    QFile file(input);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("%PDF-1.7\n" + QByteArray(500000, '<'));
    file.close();
    const ToolRun run = merge(input, "1", m_output);
    QCOMPARE(run.status, 1);
    QCOMPARE(run.errors.count('\n'), 1); // the rest went with the file that cannot be read
}

QUORLIN_TEST(PageBinderHostileTest)
#include "test_hostile.moc"
