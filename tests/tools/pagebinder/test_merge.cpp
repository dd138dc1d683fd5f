// What a merged file holds of its pages and of the document, and that it holds nothing of others.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tests/support/room.h"
#include "tool_run.h"

#include <QTemporaryDir>
#include <QtTest>

class PageBinderMergeTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keepsBoxesRotationUnitAndGroup();
    void aBoxThatIsNoneLeavesThatOfTheNodeAbove();
    void writesInheritedAttributesOntoThePage();
    void keepsTheContentAsItStands();
    void sharedResourcesCarryNoOtherPagesPictures();
    void aPartIsAsSmallAsItsPages();
    void keepsEveryResourceInUse();
    void formsWithoutResourcesUseThePages();
    void nestedFormsArePrunedToo();
    void keepsAnnotationsWithTheirAppearances();
    void popupsAndRepliesStayTogether();
    void eachCopyOfAPageHasItsOwnAnnotations();
    void linksToCopiedPagesStay();
    void linksToOtherPagesGo();
    void linksToOtherPagesKeepTheirLook();
    void namedDestinationsBecomeExplicit();
    void scriptsStayBehind();
    void rebuildsTheFormWithTheCopiedFieldsOnly();
    void aFieldOnSeveralPagesKeepsItsValueAndItsWidgets();
    void signaturesKeepTheirPictureOnly();
    void layersKeepTheirState();
    void pageLabelsRunOn();
    void pageLabelsFollowTheOrderGiven();
    void bookmarksKeepTheirAncestors();
    void keepsInformationMetadataLanguageAndPreferences();
    void dropsTheStructureAndItsClaims();
    void outputIntentsStayWithAPdfAClaim();
    void privateDataThumbnailsAndAttachmentsStayBehind();
    void decryptsWhatMayBeCopied();
    void keepsTheEncryptionOfWhatMayNotBeCopied();
    void largeStreamsPassThrough();

private:
    /// Merges @p ranges of @p pdf and looks into the result.
    std::unique_ptr<PdfInspector> merged(const TestPdf &pdf, const QString &ranges);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void PageBinderMergeTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

std::unique_ptr<PdfInspector> PageBinderMergeTest::merged(const TestPdf &pdf, const QString &ranges)
{
    const QString output = m_folder->filePath("out.pdf");
    const ToolRun run = merge(pdf.save(m_folder->path()), ranges, output);
    if (run.status != 0 || !run.errors.isEmpty()) {
        qWarning("%s", run.errors.constData());
        return nullptr;
    }
    return std::make_unique<PdfInspector>(output);
}

void PageBinderMergeTest::aBoxThatIsNoneLeavesThatOfTheNodeAbove()
{
    TestPdf pdf = TestPdf::pages(3);
    pdf.object(2, "<</Type/Pages/Count 3/Kids[10 0 R 20 0 R 30 0 R]/MediaBox[0 0 200 300]>>");
    const QByteArray page = "<</Type/Page/Parent 2 0 R/MediaBox";
    pdf.object(10, page + "[0 null 792]/CropBox[0 0 (a) 9]>>");
    pdf.object(20, page + "(none)>>");
    pdf.object(30, page + "[9 9 0 0]>>");
    const QString output = m_folder->filePath("boxes.pdf");
    QCOMPARE(merge(pdf.save(m_folder->path(), "odd-boxes.pdf"), "1-3", output).status, 0);
    PdfInspector inspector(output);
    QCOMPARE(inspector.value("Root/Pages/Kids/0/MediaBox"), QByteArray("[0 0 200 300]"));
    QCOMPARE(inspector.value("Root/Pages/Kids/0/CropBox"), QByteArray("null"));
    QCOMPARE(inspector.value("Root/Pages/Kids/1/MediaBox"), QByteArray("[0 0 200 300]"));
    QCOMPARE(inspector.value("Root/Pages/Kids/2/MediaBox"), QByteArray("[9 9 0 0]"));
}

void PageBinderMergeTest::keepsBoxesRotationUnitAndGroup()
{
    const TestPdf pdf = TestPdf::pages(
        2, "",
        "/CropBox[10 20 300 400]/BleedBox[1 2 3 4]/TrimBox[5 6 7 8]/ArtBox[9 9 10 10]"
        "/Rotate 90/UserUnit 2.5/Group<</S/Transparency/CS/DeviceRGB>>/Tabs/R");
    const auto output = merged(pdf, "2");
    QVERIFY(output);
    const QByteArray page = "Root/Pages/Kids/0/";
    QCOMPARE(output->value(page + "MediaBox"), QByteArray("[0 0 595 842]"));
    QCOMPARE(output->value(page + "CropBox"), QByteArray("[10 20 300 400]"));
    QCOMPARE(output->value(page + "BleedBox"), QByteArray("[1 2 3 4]"));
    QCOMPARE(output->value(page + "TrimBox"), QByteArray("[5 6 7 8]"));
    QCOMPARE(output->value(page + "ArtBox"), QByteArray("[9 9 10 10]"));
    QCOMPARE(output->value(page + "Rotate"), QByteArray("90"));
    QCOMPARE(output->value(page + "UserUnit"), QByteArray("2.5"));
    QCOMPARE(output->value(page + "Group/S"), QByteArray("/Transparency"));
    QCOMPARE(output->value(page + "Tabs"), QByteArray("/R"));
}

void PageBinderMergeTest::writesInheritedAttributesOntoThePage()
{
    TestPdf pdf;
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R>>");
    pdf.object(2, "<</Type/Pages/Count 2/Kids[4 0 R]/MediaBox[0 0 200 300]/Rotate 270"
                  "/Resources<</Font<</F 3 0 R>>>>>>");
    pdf.object(3, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    pdf.object(4, "<</Type/Pages/Count 2/Kids[5 0 R 6 0 R]/Parent 2 0 R/CropBox[0 0 100 100]>>");
    pdf.object(5, "<</Type/Page/Parent 4 0 R/Contents 7 0 R>>");
    pdf.object(6, "<</Type/Page/Parent 4 0 R/Rotate 0/Contents 7 0 R>>");
    pdf.stream(7, "", TestPdf::textContent("inherited"));
    const auto output = merged(pdf, "1-2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/MediaBox"), QByteArray("[0 0 200 300]"));
    QCOMPARE(output->value("Root/Pages/Kids/0/CropBox"), QByteArray("[0 0 100 100]"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Rotate"), QByteArray("270"));
    QCOMPARE(output->value("Root/Pages/Kids/1/Rotate"), QByteArray("0"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/Font/F/BaseFont"),
             QByteArray("/Helvetica"));
}

void PageBinderMergeTest::keepsTheContentAsItStands()
{
    TestPdf pdf = TestPdf::pages(2);
    // A stream that no filter can read is copied byte by byte.
    pdf.stream(11, "/Filter/Unheard", QByteArray("\0\1\2\xff binary", 11));
    const QString output = m_folder->filePath("out.pdf");
    QCOMPARE(merge(pdf.save(m_folder->path()), "1", output).status, 0);
    QFile file(output);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains(QByteArray("stream\n\0\1\2\xff binary\nendstream", 28)));
}

void PageBinderMergeTest::sharedResourcesCarryNoOtherPagesPictures()
{
    TestPdf pdf = TestPdf::pages(3);
    QByteArray objects;
    for (int number = 1; number <= 3; ++number) {
        const QByteArray name = QByteArray::number(number);
        pdf.stream(100 + number, "/Subtype/Form/BBox[0 0 100 100]", "% secret of page " + name);
        pdf.stream(200 + number,
                   "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]"
                   "/XStep 9/YStep 9/Resources<<>>",
                   "% pattern of page " + name);
        objects += "/X" + name + " " + QByteArray::number(100 + number) + " 0 R";
        pdf.stream(10 * number + 1, "",
                   "/X" + name + " Do /Pattern cs /P" + name + " scn (/X1 Do) ' ");
        pdf.object(10 * number, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents " +
                                    QByteArray::number(10 * number + 1) + " 0 R/Resources 4 0 R>>");
    }
    pdf.object(4, "<</XObject 5 0 R/Pattern<</P1 201 0 R/P2 202 0 R/P3 203 0 R>>/ProcSet[/PDF]>>");
    pdf.object(5, "<<" + objects + ">>");
    const auto output = merged(pdf, "2");
    QVERIFY(output);
    const QByteArray all = output->everything();
    QVERIFY(all.contains("secret of page 2"));
    QVERIFY(all.contains("pattern of page 2"));
    QVERIFY(!all.contains("of page 1"));
    QVERIFY(!all.contains("of page 3"));
    QVERIFY(output->value("Root/Pages/Kids/0/Resources").contains("/ProcSet"));
}

void PageBinderMergeTest::aPartIsAsSmallAsItsPages()
{
    // All pages share one dictionary of 300 pictures, each page draws two of them.
    TestPdf pdf = TestPdf::pages(300, "", "/Resources 4 0 R");
    QByteArray pictures;
    for (int number = 1; number <= 300; ++number) {
        const QByteArray place = QByteArray::number(5000 + number);
        pdf.stream(5000 + number,
                   "/Type/XObject/Subtype/Image/Width 50/Height 50/ColorSpace/DeviceGray"
                   "/BitsPerComponent 8",
                   QByteArray(2500, char(number)));
        pictures += "/Im" + QByteArray::number(number) + " " + place + " 0 R";
        pdf.object(10 * number, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents " +
                                    QByteArray::number(10 * number + 1) + " 0 R/Resources 4 0 R>>");
        pdf.stream(10 * number + 1, "", "/Im" + QByteArray::number(number) + " Do /Im7 Do");
    }
    pdf.object(4, "<</XObject<<" + pictures + ">>>>");
    QVERIFY(merged(pdf, "100-101"));
    const qint64 size = QFileInfo(m_folder->filePath("out.pdf")).size();
    QVERIFY2(size > 3 * 2500 && size < 3 * 2500 + 2500, qPrintable(QString::number(size)));
}

void PageBinderMergeTest::keepsEveryResourceInUse()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents[11 0 R 12 0 R]"
                   "/Resources 4 0 R>>");
    pdf.object(4, "<</XObject<</X#20a 101 0 R/Unused 102 0 R>>/ExtGState<</G 5 0 R/Unused 6 0 R>>"
                  "/ColorSpace<</C[/ICCBased 103 0 R]/DefaultRGB[/ICCBased 103 0 R]"
                  "/Unused[/ICCBased 104 0 R]>>/Shading<</S 7 0 R/Unused 8 0 R>>"
                  "/Properties<</M<</Used true>>/Unused<</Secret true>>>>"
                  "/Font<</F 9 0 R/Unused 21 0 R>>>>");
    pdf.object(5, "<</SMask<</S/Alpha/G 105 0 R>>>>");
    pdf.object(6, "<</SMask<</S/Alpha/G 106 0 R>>>>");
    pdf.object(7, "<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 1 1]/Function 20 0 R>>");
    pdf.object(8, "<</ShadingType 3/ColorSpace/DeviceGray/Coords[0 0 1 1 1 1]/Function 20 0 R>>");
    pdf.object(9, "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]"
                  "/CharProcs<</a 107 0 R>>/Encoding<</Differences[97/a]>>/FirstChar 97"
                  "/LastChar 97/Widths[1]/Resources<</XObject<</In 101 0 R/Out 102 0 R>>>>>>");
    pdf.object(20, "<</FunctionType 2/N 1/Domain[0 1]>>");
    pdf.object(21, "<</Type/Font/Subtype/TrueType/FontDescriptor<</FontName/Unused>>>>");
    pdf.stream(11, "", "/X#20a Do /G gs /C cs /S sh");
    pdf.stream(12, "", "/OC /M BDC EMC BT /F 9 Tf (a) Tj ET");
    for (int number = 101; number <= 107; ++number) {
        const QByteArray form =
            number == 103 || number == 104 ? "/N 3" : "/Subtype/Form/BBox[0 0 9 9]";
        pdf.stream(number, form,
                   number == 107 ? "1 0 d0 /In Do" : "% stream " + QByteArray::number(number));
    }
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray resources = "Root/Pages/Kids/0/Resources/";
    QVERIFY(output->value(resources + "XObject").contains("X#20a"));
    QCOMPARE(output->value(resources + "Shading/S/ShadingType"), QByteArray("2"));
    QCOMPARE(output->value(resources + "Properties/M/Used"), QByteArray("true"));
    QVERIFY(output->value(resources + "ColorSpace/C") != "null");
    QVERIFY(output->value(resources + "ColorSpace/DefaultRGB") != "null");
    QVERIFY(output->value(resources + "Font/F/Resources/XObject/In") != "null");
    const QByteArray all = output->everything();
    for (const char *kept : {"stream 101", "stream 103", "stream 105"}) {
        QVERIFY2(all.contains(kept), kept);
    }
    for (const char *gone : {"stream 102", "stream 104", "stream 106", "Secret", "Unused"}) {
        QVERIFY2(!all.contains(gone), gone);
    }
}

void PageBinderMergeTest::formsWithoutResourcesUseThePages()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Annots[30 0 R]"
                   "/Resources<</XObject<</A 101 0 R/B 102 0 R/C 103 0 R/D 104 0 R>>>>>>");
    pdf.stream(11, "", "/A Do");
    pdf.stream(101, "/Subtype/Form/BBox[0 0 9 9]", "/B Do");
    pdf.stream(102, "/Subtype/Form/BBox[0 0 9 9]", "/A Do % in use");
    pdf.stream(103, "/Subtype/Form/BBox[0 0 9 9]", "% in use by an annotation");
    pdf.stream(104, "/Subtype/Form/BBox[0 0 9 9]", "% never drawn");
    pdf.object(30, "<</Type/Annot/Subtype/Stamp/Rect[0 0 9 9]/AP<</N 31 0 R>>>>");
    pdf.stream(31, "/Subtype/Form/BBox[0 0 9 9]", "/C Do");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray all = output->everything();
    QVERIFY(all.contains("% in use\n"));
    QVERIFY(all.contains("in use by an annotation"));
    QVERIFY(!all.contains("never drawn"));
}

void PageBinderMergeTest::nestedFormsArePrunedToo()
{
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(4, "<</XObject<</Outer 101 0 R/Inner 102 0 R/Other 103 0 R>>>>");
    pdf.stream(101, "/Subtype/Form/BBox[0 0 9 9]/Resources 4 0 R", "/Inner Do");
    pdf.stream(102, "/Subtype/Form/BBox[0 0 9 9]/Resources 4 0 R", "% innermost");
    pdf.stream(103, "/Subtype/Form/BBox[0 0 9 9]/Resources 4 0 R", "% belongs to page 2");
    pdf.object(10,
               "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources 4 0 R>>");
    pdf.stream(11, "", "/Outer Do");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray all = output->everything();
    QVERIFY(all.contains("innermost"));
    QVERIFY(!all.contains("belongs to page 2"));
}

void PageBinderMergeTest::keepsAnnotationsWithTheirAppearances()
{
    TestPdf pdf = TestPdf::pages(2, "",
                                 "/Annots[30 0 R<</Subtype/Text/Rect[1 1 2 2]/Contents(direct)>>"
                                 " null 5]");
    pdf.object(30, "<</Type/Annot/Subtype/Square/Rect[0 0 9 9]/C[1 0 0]/Contents(note)"
                   "/P 10 0 R/StructParent 4/AP<</N 31 0 R>>>>");
    pdf.stream(31, "/Subtype/Form/BBox[0 0 9 9]/Resources<<>>", "1 0 0 rg 0 0 9 9 re f");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray annotation = "Root/Pages/Kids/0/Annots/0/";
    QCOMPARE(output->value(annotation + "Contents"), QByteArray("(note)"));
    QCOMPARE(output->value(annotation + "C"), QByteArray("[1 0 0]"));
    QCOMPARE(output->value(annotation + "P/Type"), QByteArray("/Page"));
    QCOMPARE(output->value(annotation + "AP/N/BBox"), QByteArray("[0 0 9 9]"));
    QCOMPARE(output->value(annotation + "StructParent"), QByteArray("null"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/1/Contents"), QByteArray("(direct)"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/2"), QByteArray("null"));
    QVERIFY(!output->everything().contains("page-2-text"));
}

void PageBinderMergeTest::popupsAndRepliesStayTogether()
{
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R"
                   "/Annots[30 0 R 31 0 R 32 0 R]>>");
    pdf.object(20,
               "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 21 0 R/Annots[33 0 R]>>");
    pdf.object(30, "<</Subtype/Text/Rect[0 0 9 9]/Popup 31 0 R/Contents(first)>>");
    pdf.object(31, "<</Subtype/Popup/Rect[0 0 9 9]/Parent 30 0 R>>");
    pdf.object(32, "<</Subtype/Text/Rect[0 0 9 9]/IRT 30 0 R/Contents(reply)>>");
    pdf.object(33, "<</Subtype/Text/Rect[0 0 9 9]/IRT 30 0 R/Contents(reply on page 2)>>");
    const auto first = merged(pdf, "1");
    QVERIFY(first);
    QCOMPARE(first->value("Root/Pages/Kids/0/Annots/0/Popup/Subtype"), QByteArray("/Popup"));
    QCOMPARE(first->value("Root/Pages/Kids/0/Annots/1/Parent/Contents"), QByteArray("(first)"));
    QCOMPARE(first->value("Root/Pages/Kids/0/Annots/2/IRT/Contents"), QByteArray("(first)"));
    QVERIFY(!first->everything().contains("reply on page 2"));
    const auto second = merged(pdf, "2");
    QVERIFY(second);
    QVERIFY(!second->everything().contains("(first)"));
}

void PageBinderMergeTest::eachCopyOfAPageHasItsOwnAnnotations()
{
    TestPdf pdf = TestPdf::pages(1, "", "/Annots[30 0 R]");
    pdf.object(30, "<</Subtype/Text/Rect[0 0 9 9]/Contents(note)/P 10 0 R>>");
    const auto output = merged(pdf, "1 1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/1/Annots/0/Contents"), QByteArray("(note)"));
    QCOMPARE(output->everything().count("/Subtype/Text"), 2);
}

void PageBinderMergeTest::linksToCopiedPagesStay()
{
    TestPdf pdf = TestPdf::pages(3, "", "/Annots[34 0 R 31 0 R 32 0 R 33 0 R]");
    pdf.object(34, "<</Subtype/Link/Rect[0 0 1 1]/Dest[20 0 R/XYZ 1 2 0]>>");
    pdf.object(31, "<</Subtype/Link/Rect[0 0 1 1]/A<</S/GoTo/D[10 0 R/Fit]>>>>");
    pdf.object(32, "<</Subtype/Link/Rect[0 0 1 1]/A<</S/URI/URI(https://example.org)>>>>");
    pdf.object(33, "<</Subtype/Link/Rect[0 0 1 1]/Dest[1/Fit]>>");
    const auto output = merged(pdf, "2 1");
    QVERIFY(output);
    const QByteArray annotations = "Root/Pages/Kids/1/Annots/";
    QCOMPARE(output->value(annotations + "0/Dest/1"), QByteArray("/XYZ"));
    QCOMPARE(output->value(annotations + "0/Dest/0"), output->value("Root/Pages/Kids/0"));
    QCOMPARE(output->value(annotations + "1/A/D/0"), output->value("Root/Pages/Kids/1"));
    QCOMPARE(output->value(annotations + "2/A/URI"), QByteArray("(https://example.org)"));
    QCOMPARE(output->value(annotations + "3/Dest/0"), output->value("Root/Pages/Kids/0"));
}

void PageBinderMergeTest::linksToOtherPagesGo()
{
    TestPdf pdf = TestPdf::pages(3, "", "/Annots[31 0 R 32 0 R 33 0 R 34 0 R]");
    pdf.object(31, "<</Subtype/Link/Rect[0 0 1 1]/Border[0 0 0]/Dest[30 0 R/Fit]>>");
    pdf.object(32, "<</Subtype/Link/Rect[0 0 1 1]/BS<</W 0>>/A<</S/GoTo/D[30 0 R/Fit]>>>>");
    pdf.object(33, "<</Subtype/Link/Rect[0 0 1 1]/Border[0 0 0]/Dest(nowhere)>>");
    pdf.object(34,
               "<</Subtype/Link/Rect[0 0 1 1]/A<</S/URI/URI(x)/Next<</S/GoTo/D[30 0 R/Fit]>>>>>>");
    // Page 3 is object 30, which the helper has made.
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/A/URI"), QByteArray("(x)"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/1"), QByteArray("null"));
    QVERIFY(!output->everything().contains("page-3-text"));
}

void PageBinderMergeTest::linksToOtherPagesKeepTheirLook()
{
    TestPdf pdf = TestPdf::pages(2, "", "/Annots[31 0 R 32 0 R 33 0 R]");
    pdf.object(31, "<</Subtype/Link/Rect[9 9 99 99]/Border[0 0 3]/C[1 0 0]/Dest[20 0 R/Fit]"
                   "/Contents(page-2-text)>>");
    pdf.object(32, "<</Subtype/Link/Rect[99 99 199 199]/BS<</W 2/S/D>>/A<</S/GoTo/D[20 0 R/Fit]>>"
                   ">>");
    pdf.object(33, "<</Subtype/Link/Rect[199 199 299 299]/Dest[20 0 R/Fit]>>");
    const QString input = pdf.save(m_folder->path());
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    for (const QByteArray place : {"0", "1", "2"}) {
        const QByteArray annotation = "Root/Pages/Kids/0/Annots/" + place + "/";
        QCOMPARE(output->value(annotation + "Subtype"), QByteArray("/Link"));
        QCOMPARE(output->value(annotation + "Dest"), QByteArray("null"));
        QCOMPARE(output->value(annotation + "A"), QByteArray("null"));
    }
    QCOMPARE(output->picture(1), PdfInspector(input).picture(1));
    QVERIFY(!output->everything().contains("page-2-text"));
}

void PageBinderMergeTest::namedDestinationsBecomeExplicit()
{
    TestPdf pdf = TestPdf::pages(2, "/Dests<</old 40 0 R>>/Names<</Dests<</Kids[41 0 R 42 0 R]>>>>",
                                 "/Annots[31 0 R 32 0 R 33 0 R 34 0 R]");
    pdf.object(31, "<</Subtype/Link/Rect[0 0 1 1]/Dest/old>>");
    pdf.object(32, "<</Subtype/Link/Rect[0 0 1 1]/Dest(in tree)>>");
    pdf.object(33, "<</Subtype/Link/Rect[0 0 1 1]/A<</S/GoTo/D(zz)>>>>");
    pdf.object(34, "<</Subtype/Link/Rect[0 0 1 1]/Border[0 0 0]/A<</S/GoTo/D(outside)>>>>");
    pdf.object(40, "<</D[10 0 R/FitH 5]>>");
    pdf.object(41, "<</Limits[(a)(n)]/Names[(in tree)[10 0 R/FitV 6]]>>");
    pdf.object(42, "<</Limits[(o)(zz)]/Names[(outside)[20 0 R/Fit](zz)<</D[10 0 R/FitB]>>]>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray annotations = "Root/Pages/Kids/0/Annots/";
    QCOMPARE(output->value(annotations + "0/Dest/1"), QByteArray("/FitH"));
    QCOMPARE(output->value(annotations + "1/Dest/1"), QByteArray("/FitV"));
    QCOMPARE(output->value(annotations + "2/A/D/1"), QByteArray("/FitB"));
    QCOMPARE(output->value(annotations + "3"), QByteArray("null"));
    QCOMPARE(output->value("Root/Names"), QByteArray("null"));
    QCOMPARE(output->value("Root/Dests"), QByteArray("null"));
}

void PageBinderMergeTest::scriptsStayBehind()
{
    TestPdf pdf = TestPdf::pages(1,
                                 "/OpenAction<</S/JavaScript/JS(script1)>>/AA<</WC 50 0 R>>"
                                 "/Names<</JavaScript<</Names[(n) 50 0 R]>>>>",
                                 "/AA<</O 50 0 R>>/Annots[31 0 R]");
    pdf.object(
        31, "<</Subtype/Link/Rect[0 0 1 1]/A<</S/Named/N/NextPage/Next 50 0 R>>/AA<</E 50 0 R>>>>");
    pdf.object(50, "<</S/JavaScript/JS(script2)>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QVERIFY(!output->everything().contains("script"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/A/N"), QByteArray("/NextPage"));
}

void PageBinderMergeTest::rebuildsTheFormWithTheCopiedFieldsOnly()
{
    TestPdf pdf =
        TestPdf::pages(2, "/AcroForm<</Fields[40 0 R 43 0 R]/NeedAppearances true"
                          "/DA(/Helv 9 Tf)/Q 1/CO[42 0 R 41 0 R]/XFA(xfa)/SigFlags 3"
                          "/DR<</Font<</Helv 3 0 R/Cour 44 0 R>>/XObject<</S 45 0 R>>>>>>");
    pdf.object(10,
               "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Annots[41 0 R]>>");
    pdf.object(20, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 21 0 R"
                   "/Annots[42 0 R 43 0 R]>>");
    pdf.object(40, "<</T(group)/FT/Tx/Kids[41 0 R 42 0 R]/AA<</K<</S/JavaScript/JS(script)>>>>>>");
    pdf.object(41, "<</T(one)/V(value one)/Subtype/Widget/Rect[0 0 9 9]/Parent 40 0 R>>");
    pdf.object(42, "<</T(two)/V(value two)/Subtype/Widget/Rect[0 0 9 9]/Parent 40 0 R>>");
    pdf.object(43, "<</T(three)/FT/Tx/V(value three)/Subtype/Widget/Rect[0 0 9 9]>>");
    pdf.object(44, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>");
    pdf.stream(45, "/Subtype/Form/BBox[0 0 9 9]", "% stamp of somebody");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm/Fields/0/T"), QByteArray("(group)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/1"), QByteArray("null"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/V"), QByteArray("(value one)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/1"), QByteArray("null"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/Parent/T"), QByteArray("(group)"));
    QCOMPARE(output->value("Root/AcroForm/CO/0/T"), QByteArray("(one)"));
    QCOMPARE(output->value("Root/AcroForm/CO/1"), QByteArray("null"));
    QCOMPARE(output->value("Root/AcroForm/NeedAppearances"), QByteArray("true"));
    QCOMPARE(output->value("Root/AcroForm/DA"), QByteArray("(/Helv 9 Tf)"));
    QCOMPARE(output->value("Root/AcroForm/Q"), QByteArray("1"));
    QCOMPARE(output->value("Root/AcroForm/DR/Font/Helv/BaseFont"), QByteArray("/Helvetica"));
    const QByteArray all = output->everything();
    for (const char *gone : {"value two", "value three", "xfa", "SigFlags", "script", "stamp",
                             "Courier", "page-2-text"}) {
        QVERIFY2(!all.contains(gone), gone);
    }
    const auto noForm = merged(TestPdf::pages(1, "/AcroForm<</Fields[]>>"), "1");
    QCOMPARE(noForm->value("Root/AcroForm"), QByteArray("null"));
}

void PageBinderMergeTest::aFieldOnSeveralPagesKeepsItsValueAndItsWidgets()
{
    TestPdf pdf = TestPdf::pages(3, "/AcroForm<</Fields[60 0 R]>>");
    QByteArray kids;
    for (int page = 1; page <= 3; ++page) {
        const QByteArray widget = QByteArray::number(60 + page) + " 0 R";
        kids += widget + " ";
        pdf.object(10 * page,
                   "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Annots[" + widget + "]>>");
        pdf.object(60 + page, "<</Subtype/Widget/Rect[0 0 9 9]/AS/On" + QByteArray::number(page) +
                                  "/Parent 60 0 R>>");
    }
    pdf.object(60, "<</T(radio)/FT/Btn/Ff 49152/V/On3/Kids[" + kids + "]>>");
    const auto output = merged(pdf, "1 3");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm/Fields/0/V"), QByteArray("/On3"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Ff"), QByteArray("49152"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/AS"), QByteArray("/On1"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/1/AS"), QByteArray("/On3"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/2"), QByteArray("null"));
    QVERIFY(!output->everything().contains("On2"));
}

void PageBinderMergeTest::signaturesKeepTheirPictureOnly()
{
    TestPdf pdf = TestPdf::pages(
        1, "/AcroForm<</Fields[41 0 R]/SigFlags 3>>/Perms<</DocMDP 42 0 R>>", "/Annots[41 0 R]");
    pdf.object(41, "<</FT/Sig/T(signed)/V 42 0 R/Subtype/Widget/Rect[0 0 9 9]/AP<</N 43 0 R>>>>");
    pdf.object(42,
               "<</Type/Sig/Filter/Adobe.PPKLite/Contents<00ff>/ByteRange[0 1 2 3]/Name(signer)>>");
    pdf.stream(43, "/Subtype/Form/BBox[0 0 9 9]", "% picture of the signature");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/Subtype"), QByteArray("/Stamp"));
    QCOMPARE(output->value("Root/AcroForm"), QByteArray("null"));
    QVERIFY(output->everything().contains("picture of the signature"));
    QVERIFY(!output->everything().contains("ByteRange"));
}

void PageBinderMergeTest::layersKeepTheirState()
{
    TestPdf pdf = TestPdf::pages(1, "/OCProperties<</OCGs[40 0 R 41 0 R]/D<</OFF[41 0 R]"
                                    "/Locked[41 0 R]/Order[40 0 R 41 0 R]>>>>");
    pdf.object(40, "<</Type/OCG/Name(shown)>>");
    pdf.object(41, "<</Type/OCG/Name(hidden)>>");
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources"
                   "<</Font<</F 3 0 R>>/Properties<</A 40 0 R/B 41 0 R>>>>>>");
    pdf.stream(11, "", "/OC/A BDC 0 0 9 9 re f EMC /OC/B BDC 0 0 99 99 re f EMC");
    const QString input = pdf.save(m_folder->path());
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/OCProperties/D/OFF/0/Name"), QByteArray("(hidden)"));
    QCOMPARE(output->value("Root/OCProperties/D/Locked/0/Name"), QByteArray("(hidden)"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/Properties/B/Name"),
             QByteArray("(hidden)"));
    QCOMPARE(output->picture(1), PdfInspector(input).picture(1));
}

void PageBinderMergeTest::pageLabelsRunOn()
{
    const TestPdf pdf =
        TestPdf::pages(8, "/PageLabels<</Nums[0<</S/r>>3<</S/D/St 5/P(A-)>>6<</S/D>>]>>");
    const auto output = merged(pdf, "2-3 5-8");
    QVERIFY(output);
    const QByteArray labels = "Root/PageLabels/Nums/";
    QCOMPARE(output->value(labels + "0"), QByteArray("0"));
    QCOMPARE(output->value(labels + "1/S"), QByteArray("/r"));
    QCOMPARE(output->value(labels + "1/St"), QByteArray("2"));
    QCOMPARE(output->value(labels + "2"), QByteArray("2"));
    QCOMPARE(output->value(labels + "3/P"), QByteArray("(A-)"));
    QCOMPARE(output->value(labels + "3/St"), QByteArray("6"));
    QCOMPARE(output->value(labels + "4"), QByteArray("4"));
    QCOMPARE(output->value(labels + "5"), QByteArray("<</S/D>>"));
    QCOMPARE(output->value(labels + "6"), QByteArray("null"));
    const auto none = merged(TestPdf::pages(3), "2");
    QCOMPARE(none->value("Root/PageLabels"), QByteArray("null"));
}

void PageBinderMergeTest::pageLabelsFollowTheOrderGiven()
{
    TestPdf pdf = TestPdf::pages(4, "/PageLabels<</Kids[40 0 R 41 0 R]>>");
    pdf.object(40, "<</Limits[0 0]/Nums[0<</S/A>>]>>");
    pdf.object(41, "<</Limits[2 2]/Nums[2<</S/D/St 10>>]>>");
    const auto output = merged(pdf, "4 2 3");
    QVERIFY(output);
    const QByteArray labels = "Root/PageLabels/Nums/";
    QCOMPARE(output->value(labels + "1/St"), QByteArray("11"));
    QCOMPARE(output->value(labels + "2"), QByteArray("1"));
    QCOMPARE(output->value(labels + "3/S"), QByteArray("/A"));
    QCOMPARE(output->value(labels + "3/St"), QByteArray("2"));
    QCOMPARE(output->value(labels + "4"), QByteArray("2"));
    QCOMPARE(output->value(labels + "5/St"), QByteArray("10"));
}

void PageBinderMergeTest::bookmarksKeepTheirAncestors()
{
    TestPdf pdf = TestPdf::pages(3, "/Outlines 40 0 R/PageMode/UseOutlines");
    pdf.object(40, "<</Type/Outlines/First 41 0 R/Last 44 0 R/Count 4>>");
    pdf.object(41, "<</Title(Part)/Parent 40 0 R/First 42 0 R/Last 43 0 R/Count 2/Next 44 0 R"
                   "/Dest[10 0 R/Fit]>>");
    pdf.object(42, "<</Title(One)/Parent 41 0 R/Next 43 0 R/Dest[10 0 R/Fit]>>");
    pdf.object(43, "<</Title(Two)/Parent 41 0 R/Prev 42 0 R/A<</S/GoTo/D[20 0 R/XYZ 0 9 0]>>"
                   "/C[1 0 0]/F 2>>");
    pdf.object(44, "<</Title(Three)/Parent 40 0 R/Prev 41 0 R/Dest[30 0 R/Fit]>>");
    const auto output = merged(pdf, "2");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Outlines/First/Title"), QByteArray("(Part)"));
    QCOMPARE(output->value("Root/Outlines/First/Dest"), QByteArray("null"));
    QCOMPARE(output->value("Root/Outlines/First/Next"), QByteArray("null"));
    QCOMPARE(output->value("Root/Outlines/First/Count"), QByteArray("1"));
    QCOMPARE(output->value("Root/Outlines/Count"), QByteArray("2"));
    const QByteArray two = "Root/Outlines/First/First/";
    QCOMPARE(output->value(two + "Title"), QByteArray("(Two)"));
    QCOMPARE(output->value(two + "Dest/1"), QByteArray("/XYZ"));
    QCOMPARE(output->value(two + "F"), QByteArray("2"));
    QCOMPARE(output->value("Root/PageMode"), QByteArray("/UseOutlines"));
    QVERIFY(!output->everything().contains("(One)"));
    QVERIFY(!output->everything().contains("(Three)"));
}

void PageBinderMergeTest::keepsInformationMetadataLanguageAndPreferences()
{
    TestPdf pdf = TestPdf::pages(2, "/Lang(de)/ViewerPreferences<</DisplayDocTitle true"
                                    "/PrintPageRange[1 2]>>/Metadata 41 0 R/PageLayout/OneColumn"
                                    "/URI<</Base(https://example.org/)>>");
    pdf.object(40, "<</Title(\\376\\377\\0T)/Author(A \\(B\\))/Custom(kept)/Page 20 0 R>>");
    pdf.stream(41, "/Type/Metadata/Subtype/XML", "<x:xmpmeta>title</x:xmpmeta>");
    const auto output = merged(pdf.trailer("/Info 40 0 R/ID[<aa><bb>]"), "1");
    QVERIFY(output);
    QCOMPARE(output->value("Info/Author"), QByteArray("(A \\(B\\))"));
    QCOMPARE(output->value("Info/Custom"), QByteArray("(kept)"));
    QCOMPARE(output->value("Info/Page"), QByteArray("null"));
    QVERIFY(output->value("Info/Title") != "null");
    QCOMPARE(output->value("Root/Lang"), QByteArray("(de)"));
    QCOMPARE(output->value("Root/ViewerPreferences"), QByteArray("<</DisplayDocTitle true>>"));
    QCOMPARE(output->value("Root/PageLayout"), QByteArray("/OneColumn"));
    QCOMPARE(output->value("Root/URI/Base"), QByteArray("(https://example.org/)"));
    QVERIFY(output->everything().contains("<x:xmpmeta>title</x:xmpmeta>"));
    QCOMPARE(output->value("ID/0"), QByteArray("<AA>"));
}

void PageBinderMergeTest::dropsTheStructureAndItsClaims()
{
    TestPdf pdf = TestPdf::pages(2,
                                 "/StructTreeRoot 40 0 R/MarkInfo<</Marked true>>/Lang(en)"
                                 "/Metadata 42 0 R/OutputIntents[43 0 R]",
                                 "/StructParents 0");
    pdf.object(40, "<</Type/StructTreeRoot/K 41 0 R>>");
    pdf.object(41, "<</Type/StructElem/S/P/P 40 0 R/Pg 20 0 R/ActualText(page two aloud)>>");
    pdf.stream(42, "/Type/Metadata/Subtype/XML",
               "<pdfaid:part>1</pdfaid:part>"
               "<pdfaid:conformance>A</pdfaid:conformance>");
    pdf.object(43, "<</Type/OutputIntent/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)"
                   "/DestOutputProfile 44 0 R>>");
    pdf.stream(44, "/N 3", QByteArray(100000, 'p'));
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/StructParents 0"
                   "/Resources<</XObject<</X 45 0 R>>>>>>");
    pdf.stream(11, "", "/X Do");
    pdf.stream(45, "/Subtype/Form/BBox[0 0 9 9]/StructParents 3/Odd 41 0 R", "0 0 9 9 re f");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/StructTreeRoot"), QByteArray("null"));
    QCOMPARE(output->value("Root/MarkInfo"), QByteArray("null"));
    QCOMPARE(output->value("Root/Lang"), QByteArray("(en)"));
    const QByteArray all = output->everything();
    QVERIFY(!all.contains("StructParents"));
    QVERIFY(!all.contains("aloud"));
    QVERIFY(all.contains("<pdfaid:conformance>B</pdfaid:conformance>"));
    QCOMPARE(output->value("Root/OutputIntents/0/DestOutputProfile/N"), QByteArray("3"));
}

void PageBinderMergeTest::outputIntentsStayWithAPdfAClaim()
{
    TestPdf pdf = TestPdf::pages(1, "/OutputIntents[43 0 R]");
    pdf.object(43, "<</Type/OutputIntent/S/GTS_PDFX/DestOutputProfile 44 0 R>>");
    pdf.stream(44, "/N 3", QByteArray(100000, 'p'));
    const auto plain = merged(pdf, "1");
    QVERIFY(plain);
    QCOMPARE(plain->value("Root/OutputIntents"), QByteArray("null"));
    pdf.object(45, "<</GTS_PDFXVersion(PDF/X-3:2002)>>");
    const auto printing = merged(pdf.trailer("/Info 45 0 R"), "1");
    QVERIFY(printing);
    QCOMPARE(printing->value("Root/OutputIntents/0/S"), QByteArray("/GTS_PDFX"));
}

void PageBinderMergeTest::privateDataThumbnailsAndAttachmentsStayBehind()
{
    TestPdf pdf =
        TestPdf::pages(2,
                       "/Names<</EmbeddedFiles<</Names[(f) 40 0 R]>>>>/AF[40 0 R]"
                       "/PieceInfo<</App<</Private(secret)>>>>/Threads[42 0 R]",
                       "/PieceInfo<</App<</Private(secret)>>>>/Thumb 41 0 R/B[43 0 R]/AF[40 0 R]");
    pdf.object(40, "<</Type/Filespec/F(f)/EF<</F 41 0 R>>>>");
    pdf.stream(41, "/Type/EmbeddedFile", "secret file");
    pdf.object(42, "<</Type/Thread/F 43 0 R/I<</Title(secret)>>>>");
    pdf.object(43, "<</Type/Bead/T 42 0 R/P 20 0 R/N 43 0 R>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QVERIFY(!output->everything().contains("secret"));
    QVERIFY(!output->everything().contains("page-2-text"));
}

void PageBinderMergeTest::decryptsWhatMayBeCopied()
{
    const QString input = QStringLiteral(QUORLIN_CORPUS_DIR "/batch/enc_emptyuser_aes256.pdf");
    if (!QFileInfo::exists(input)) {
        QSKIP("the corpus is absent");
    }
    const QString output = m_folder->filePath("out.pdf");
    QCOMPARE(merge(input, "2-3", output).status, 0);
    PdfInspector inspector(output);
    QVERIFY(!inspector.isEncrypted());
    QCOMPARE(inspector.picture(1), PdfInspector(input).picture(2));
}

void PageBinderMergeTest::keepsTheEncryptionOfWhatMayNotBeCopied()
{
    for (const char *name : {"nasty/enc128_aes_noextract.pdf", "real/qpdf/enc-R3,V2.pdf",
                             "real/qpdf/enc-XI-R6,V5,O=master.pdf"}) {
        const QString input = QStringLiteral(QUORLIN_CORPUS_DIR "/") + name;
        if (!QFileInfo::exists(input)) {
            QSKIP("the corpus is absent");
        }
        const QString output = m_folder->filePath("out.pdf");
        QCOMPARE(merge(input, "2-3", output).status, 0);
        PdfInspector inspector(output);
        QVERIFY(inspector.isEncrypted());
        PdfInspector original(input);
        QCOMPARE(inspector.picture(1), original.picture(2));
        QCOMPARE(inspector.text(2), original.text(3));
        QCOMPARE(inspector.value("Info"), original.value("Info"));
    }
}

void PageBinderMergeTest::largeStreamsPassThrough()
{
    TestPdf pdf = TestPdf::pages(1);
    const QByteArray content = QByteArray("% line of a long content\n").repeated(400000);
    pdf.stream(11, "", content);
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->content(1), content);
    QCOMPARE(output->value("Root/Pages/Kids/0/Contents/Length"),
             QByteArray::number(content.size()));
}

QUORLIN_TEST(PageBinderMergeTest)
#include "test_merge.moc"
