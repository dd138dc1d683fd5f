// What an object is follows from where it is reached, not from how its keys are spelt.

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tests/support/room.h"
#include "tool_run.h"
#include "tools/pagebinder/copying/object_role.h"

#include <QTemporaryDir>
#include <QtTest>

using tools::childRole;
using tools::Role;

namespace {

/// Keys that mean something elsewhere: in structure elements, fields, tree nodes, bookmarks,
/// annotations, signatures and streams, and those that are left behind elsewhere.
const QList<QByteArray> oddNames = {
    "S",         "P",       "K",         "FT",        "Kids",     "Parent",
    "Pages",     "Type",    "Length",    "Title",     "Next",     "Prev",
    "Rect",      "Subtype", "ByteRange", "AF",        "Thumb",    "StructParent",
    "Resources", "Annots",  "Contents",  "PieceInfo", "MediaBox", "StructParents"};

QByteArray entriesOf(const QList<QByteArray> &names, const QByteArray &value)
{
    QByteArray entries;
    for (const QByteArray &name : names) {
        entries += "/" + name + " " + value;
    }
    return entries;
}

} // namespace

class PageBinderRolesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void rolesFollowThePlace();
    void keysMayBeFreeNames_data();
    void keysMayBeFreeNames();
    void glyphsMayHaveAnyName();
    void fontsAndPicturesOfAnyNameShow();
    void statesMayHaveAnyName();
    void colorantsMayHaveAnyName();
    void cautionEndsWhereThePlaceIsKnown();
    void cautionEndsEvenAfterACopy();
    void nothingOfOtherPagesTravelsUnderAnyKey_data();
    void nothingOfOtherPagesTravelsUnderAnyKey();
    void actionsKeepOnlyWhatIsCopied();
    void oneObjectMayHaveTwoRoles();
    void aWrongTypeIsNoHindrance();

private:
    std::unique_ptr<PdfInspector> merged(const TestPdf &pdf, const QString &ranges);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_input;
};

void PageBinderRolesTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

std::unique_ptr<PdfInspector> PageBinderRolesTest::merged(const TestPdf &pdf, const QString &ranges)
{
    const QString output = m_folder->filePath("out.pdf");
    m_input = pdf.save(m_folder->path());
    const ToolRun run = merge(m_input, ranges, output);
    if (run.status != 0) {
        qWarning("%s", run.errors.constData());
        return nullptr;
    }
    return std::make_unique<PdfInspector>(output);
}

void PageBinderRolesTest::rolesFollowThePlace()
{
    QCOMPARE(childRole(Role::resources, "Font"), Role::fontMap);
    QCOMPARE(childRole(Role::fontMap, "Font"), Role::font);
    QCOMPARE(childRole(Role::fontMap, "AF"), Role::font);
    QCOMPARE(childRole(Role::font, "AF"), Role::dropped);
    QCOMPARE(childRole(Role::font, "Private"), Role::unknown);
    QCOMPARE(childRole(Role::unknown, "Font"), Role::unknown);
    QCOMPARE(childRole(Role::halftone, "Parent"), Role::halftone);
    QCOMPARE(childRole(Role::halftone, "SpotFunction"), Role::function);
    QCOMPARE(streamRole(Role::appearanceStates), Role::xObject);
}

void PageBinderRolesTest::keysMayBeFreeNames_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<bool>("isIndirect");
    const QList<std::pair<QByteArray, QByteArray>> kinds = {
        {"Font", "3 0 R"},
        {"Font", "<</Subtype/Type1/BaseFont/Helvetica>>"},
        {"XObject", "100 0 R"},
        {"ExtGState", "<</LW 2>>"},
        {"ColorSpace", "[/CalGray<</WhitePoint[1 1 1]>>]"},
        {"Pattern", "101 0 R"},
        {"Shading", "102 0 R"},
        {"Properties", "<</Lang(de)>>"}};
    for (const auto &[kind, value] : kinds) {
        for (const bool isIndirect : {false, true}) {
            QTest::addRow("%s of %s, %s", kind.constData(), value.constData(),
                          isIndirect ? "in an object of its own" : "in the page")
                << kind << value << isIndirect;
        }
    }
}

void PageBinderRolesTest::keysMayBeFreeNames()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, value);
    QFETCH(bool, isIndirect);
    TestPdf pdf = TestPdf::pages(1);
    const QByteArray names = "<<" + entriesOf(oddNames, value) + ">>";
    pdf.object(5, names);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources<</" +
                       kind + (isIndirect ? QByteArray(" 5 0 R") : names) + ">>>>");
    QByteArray content;
    for (const QByteArray &name : oddNames) {
        content += "/" + name + " anything ";
    }
    pdf.stream(11, "", content);
    pdf.stream(100, "/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
    pdf.object(101, "<</PatternType 2/Shading 102 0 R>>");
    pdf.object(102, "<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 1 1]/Function 103 0 R>>");
    pdf.object(103, "<</FunctionType 2/N 1/Domain[0 1]>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    for (const QByteArray &name : oddNames) {
        QVERIFY2(output->value("Root/Pages/Kids/0/Resources/" + kind + "/" + name) != "null",
                 name.constData());
    }
}

void PageBinderRolesTest::glyphsMayHaveAnyName()
{
    // As converters from printer languages write them: glyphs named by single letters.
    TestPdf pdf = TestPdf::pages(1);
    QByteArray glyphs;
    QByteArray differences;
    QByteArray widths;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        glyphs += QByteArray("/") + letter + " 100 0 R";
        differences += QByteArray("/") + letter;
        widths += "700 ";
    }
    pdf.object(3, "<</Type/Font/Subtype/Type3/FontBBox[0 0 700 700]/FontMatrix[.001 0 0 .001 0 0]"
                  "/FirstChar 65/LastChar 90/Widths[" +
                      widths + "]/Encoding<</Differences[65" + differences +
                      "]>>/CharProcs 4 0 R/Resources<<>>>>");
    pdf.object(4, "<<" + glyphs + ">>");
    pdf.stream(100, "", "700 0 d0 0 0 600 600 re f");
    pdf.stream(11, "", TestPdf::textContent("SPARKASSE"));
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->text(1), QByteArray("SPARKASSE"));
    QCOMPARE(output->picture(1), PdfInspector(m_input).picture(1));
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        QVERIFY(output->value(QByteArray("Root/Pages/Kids/0/Resources/Font/F/CharProcs/") +
                              letter) != "null");
    }
}

void PageBinderRolesTest::fontsAndPicturesOfAnyNameShow()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Contents 11 0 R/Resources"
                   "<</Font<</FT 3 0 R/Parent 4 0 R>>/XObject<</Pages 100 0 R/Kids 101 0 R>>>>>>");
    pdf.object(4, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>");
    pdf.stream(11, "",
               "BT /FT 12 Tf 9 99 Td (first) Tj /Parent 12 Tf 0 -20 Td (second) Tj ET "
               "q 50 0 0 50 0 0 cm /Pages Do Q q 50 0 0 50 99 0 cm /Kids Do Q");
    const QByteArray picture = "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray"
                               "/BitsPerComponent 8";
    pdf.stream(100, picture, "\x20");
    pdf.stream(101, picture, "\x60");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->text(1), QByteArray("first second"));
    QCOMPARE(output->picture(1), PdfInspector(m_input).picture(1));
}

void PageBinderRolesTest::statesMayHaveAnyName()
{
    TestPdf pdf = TestPdf::pages(1, "/AcroForm<</Fields[40 0 R]>>", "/Annots[41 0 R]");
    pdf.object(40, "<</FT/Btn/Ff 49152/T(choice)/V/K/Kids[41 0 R]>>");
    pdf.object(41, "<</Subtype/Widget/Rect[9 9 99 99]/Parent 40 0 R/AS/K/AP<</N 42 0 R/D<<" +
                       entriesOf(oddNames, "43 0 R") + ">>>>>>");
    pdf.object(42, "<<" + entriesOf(oddNames, "43 0 R") + ">>");
    pdf.stream(43, "/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    for (const QByteArray &name : oddNames) {
        for (const char *appearance : {"N/", "D/"}) {
            QVERIFY2(output->value("Root/Pages/Kids/0/Annots/0/AP/" + (appearance + name)) !=
                         "null",
                     name.constData());
        }
    }
    QCOMPARE(output->picture(1), PdfInspector(m_input).picture(1));
}

void PageBinderRolesTest::colorantsMayHaveAnyName()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources"
                   "<</ColorSpace<</C[/DeviceN[/S/P/K]/DeviceGray 103 0 R 5 0 R]>>"
                   "/ExtGState<</G<</HT 6 0 R>>>>>>>>");
    pdf.stream(11, "", "/C cs 1 1 1 scn /G gs");
    pdf.object(5, "<</Colorants 7 0 R/MixingHints<</Solidities 8 0 R>>>>");
    pdf.object(6, "<</HalftoneType 5/Default 9 0 R/S 9 0 R/P 9 0 R/K 9 0 R/AF 9 0 R>>");
    pdf.object(7, "<<" + entriesOf(oddNames, "[/Separation/S/DeviceGray 103 0 R]") + ">>");
    pdf.object(8, "<</S 1/P 1/K 1/AF 1>>");
    pdf.object(9, "<</HalftoneType 1/Frequency 9/Angle 0/SpotFunction/Round>>");
    pdf.object(103, "<</FunctionType 2/N 1/Domain[0 1]>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray attributes = "Root/Pages/Kids/0/Resources/ColorSpace/C/4/";
    for (const QByteArray &name : oddNames) {
        QVERIFY2(output->value(attributes + "Colorants/" + name + "/1") != "null",
                 name.constData());
    }
    QCOMPARE(output->value(attributes + "MixingHints/Solidities/AF"), QByteArray("1"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/ExtGState/G/HT/K/SpotFunction"),
             QByteArray("/Round"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/ExtGState/G/HT/AF/SpotFunction"),
             QByteArray("/Round"));
}

void PageBinderRolesTest::cautionEndsWhereThePlaceIsKnown()
{
    // The same font under a private key, where its entry /Parent makes it suspicious.
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources"
                   "<</Private 4 0 R/Font<</F 4 0 R>>>>>>");
    pdf.object(4, "<</Subtype/Type1/BaseFont/Courier/Parent(none)>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/Font/F/BaseFont"), QByteArray("/Courier"));
    QCOMPARE(output->text(1), QByteArray("page-1-text"));
}

void PageBinderRolesTest::cautionEndsEvenAfterACopy()
{
    // Page 1 has the font under a private key only; it is written before page 2 uses it.
    TestPdf pdf = TestPdf::pages(2);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources"
                   "<</Private 4 0 R>>>>");
    pdf.object(20, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 21 0 R/Resources"
                   "<</Font<</F 4 0 R>>>>>>");
    pdf.object(4, "<</Type/Font/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[.1 0 0 .1 0 0]"
                  "/FirstChar 80/LastChar 80/Widths[9]/Encoding<</Differences[80/P]>>"
                  "/CharProcs<</S 100 0 R/P 100 0 R/K 100 0 R>>>>");
    pdf.stream(100, "", "9 0 d0 0 0 6 6 re f");
    const auto output = merged(pdf, "1-2");
    QVERIFY(output);
    QVERIFY(output->value("Root/Pages/Kids/1/Resources/Font/F/CharProcs/P") != "null");
}

void PageBinderRolesTest::nothingOfOtherPagesTravelsUnderAnyKey_data()
{
    QTest::addColumn<QByteArray>("resources");
    const auto add = [](const char *name, const QByteArray &resources) {
        QTest::addRow("%s", name) << resources;
    };
    add("a page as a font", "/Font<</F 3 0 R/G 20 0 R>>");
    add("a page as the map of fonts", "/Font 20 0 R");
    add("a page as a graphics state", "/ExtGState<</G 20 0 R>>");
    add("a page under a private key", "/Private<</Page 20 0 R>>");
    add("a page in an array under a private key", "/Private[[20 0 R]]");
    add("the page tree as the map of pictures", "/XObject 2 0 R");
    add("the catalog as a property list", "/Properties<</M 1 0 R>>");
    add("a note as a picture", "/XObject<</X 50 0 R>>");
    add("a note under a private key", "/Private 50 0 R");
    add("a paragraph as a property list's private data", "/Properties<</M<</Private 51 0 R>>>>");
    add("a field under a private key", "/Private 52 0 R");
    add("a bookmark under a private key", "/Private 53 0 R");
    add("a page that no list holds under a private key", "/Private 54 0 R");
}

void PageBinderRolesTest::nothingOfOtherPagesTravelsUnderAnyKey()
{
    QFETCH(QByteArray, resources);
    TestPdf pdf = TestPdf::pages(2, "/Private(page-2-text)");
    pdf.object(2, "<</Count 2/Kids[10 0 R 20 0 R]/Private(page-2-text)>>");
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R/Resources<<" +
                       resources + ">>>>");
    // Without a type only its place in the tree tells that it is a page.
    pdf.object(20, "<</Parent 2 0 R/MediaBox[0 0 99 99]/Contents 21 0 R/Annots[50 0 R]>>");
    pdf.object(50, "<</Subtype/Text/Rect[0 0 9 9]/Contents(page-2-text)>>");
    pdf.object(51, "<</S/P/P 20 0 R/K 0/ActualText(page-2-text)>>");
    pdf.object(52, "<</FT/Tx/T(field)/V(page-2-text)>>");
    pdf.object(53, "<</Title(page-2-text)/Next 53 0 R>>");
    pdf.object(54, "<</Type/Page/Contents 21 0 R>>");
    pdf.stream(11, "", "/F 9 Tf /G gs /X Do /M BDC /Private odd");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QVERIFY(!output->everything().contains("page-2-text"));
}

void PageBinderRolesTest::actionsKeepOnlyWhatIsCopied()
{
    TestPdf pdf = TestPdf::pages(2, "/AcroForm<</Fields[40 0 R 41 0 R]>>");
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R"
                   "/Annots[40 0 R 42 0 R]>>");
    pdf.object(20, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 21 0 R"
                   "/Annots[41 0 R]>>");
    pdf.object(40, "<</Subtype/Widget/Rect[0 0 9 9]/FT/Tx/T(here)>>");
    pdf.object(41, "<</Subtype/Widget/Rect[0 0 9 9]/FT/Tx/T(there)/V(page-2-text)>>");
    pdf.object(42, "<</Subtype/Link/Rect[0 0 9 9]/A<</S/ResetForm/Fields[40 0 R 41 0 R]"
                   "/Next<</S/Hide/T[40 0 R 41 0 R]>>>>>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    const QByteArray action = "Root/Pages/Kids/0/Annots/1/A/";
    QCOMPARE(output->value(action + "Fields/0/T"), QByteArray("(here)"));
    QCOMPARE(output->value(action + "Fields/1"), QByteArray("null"));
    QCOMPARE(output->value(action + "Next/0/T/0/T"), QByteArray("(here)"));
    QVERIFY(!output->everything().contains("page-2-text"));
}

void PageBinderRolesTest::oneObjectMayHaveTwoRoles()
{
    // Seen in a damaged form: the number of a font is that of the field above a widget too.
    TestPdf pdf = TestPdf::pages(1, "/AcroForm<</Fields[3 0 R]>>", "/Annots[41 0 R]");
    pdf.object(41, "<</Subtype/Widget/Rect[0 0 9 9]/Parent 3 0 R/FT/Tx/T(part)>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Resources/Font/F/BaseFont"),
             QByteArray("/Helvetica"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/T"), QByteArray("(part)"));
    QCOMPARE(output->text(1), QByteArray("page-1-text"));
}

void PageBinderRolesTest::aWrongTypeIsNoHindrance()
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 11 0 R"
                   "/Resources 4 0 R>>");
    pdf.object(4, "<</Type/Page/Font<</F 3 0 R>>>>");
    pdf.object(3, "<</Type/Catalog/Subtype/Type1/BaseFont/Helvetica>>");
    const auto output = merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->text(1), QByteArray("page-1-text"));
}

QUORLIN_TEST(PageBinderRolesTest)
#include "test_roles.moc"
