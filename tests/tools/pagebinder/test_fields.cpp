// The form of a merged file: which fields it has, and what they need.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTest>

class TestFields : public QObject
{
    Q_OBJECT

private slots:
    void theFontOfCheckMarksIsKept();
    void fontsAreKeptThatAnyAppearanceNames();
    void defaultResourcesKeepEncodings();
    void aFieldThatIsNotSignedYetStaysAField();
    void aSignatureWithoutAPictureGoes();
    void aSignatureByInheritanceIsOne();
    void fieldsThatAreTheirOwnAncestorsAreWritten_data();
    void fieldsThatAreTheirOwnAncestorsAreWritten();
    void aWidgetWithoutANameIsNoField();
    void aFieldKeepsWhatItsWidgetsInherit();
    void theOrderOfCalculationIsThatOfTheInput();
    void widgetsThatNameNoFieldBelongToTheOneThatListsThem();
    void aFormWithoutFieldsIsNone();

private:
    /// One page with the widgets @p widgets (references) and a form of the entries @p form.
    static TestPdf page(const QByteArray &widgets, const QByteArray &form)
    {
        return TestPdf::pages(1, "/AcroForm<<" + form + ">>", "/Annots[" + widgets + "]");
    }

    MergeBench m_bench;
};

void TestFields::theFontOfCheckMarksIsKept()
{
    TestPdf pdf = page("41 0 R", "/Fields[41 0 R]/DR<</Font<</Helv 3 0 R/ZaDb 42 0 R/Gone 43 0 R>>"
                                 ">>");
    pdf.object(41, "<</FT/Btn/T(box)/Subtype/Widget/Rect[0 0 9 9]>>");
    pdf.object(42, "<</Type/Font/Subtype/Type1/BaseFont/ZapfDingbats>>");
    pdf.object(43, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    const QByteArray fonts = "Root/AcroForm/DR/Font/";
    QCOMPARE(output->value(fonts + "ZaDb/BaseFont"), QByteArray("/ZapfDingbats"));
    QCOMPARE(output->value(fonts + "Helv/BaseFont"), QByteArray("/Helvetica"));
    QCOMPARE(output->value(fonts + "Gone"), QByteArray("null"));
}

void TestFields::fontsAreKeptThatAnyAppearanceNames()
{
    TestPdf pdf =
        page("41 0 R 44 0 R", "/Fields[40 0 R 44 0 R]/DA(/OfForm 9 Tf)/DR<</Font<</OfForm 3 0 R"
                              "/OfField 3 0 R/OfWidget 3 0 R/OfOther 3 0 R/Unused 3 0 R>>>>");
    pdf.object(40, "<</FT/Tx/T(up)/DA(/OfField 9 Tf)/Kids[41 0 R]>>");
    pdf.object(41, "<</T(low)/DA(/OfWidget 9 Tf)/Subtype/Widget/Rect[0 0 9 9]/Parent 40 0 R>>");
    pdf.object(44, "<</FT/Tx/T(b)/DA(0 g /OfOther 9 Tf)/Subtype/Widget/Rect[0 0 9 9]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    for (const char *name : {"OfForm", "OfField", "OfWidget", "OfOther"}) {
        QVERIFY2(output->value(QByteArray("Root/AcroForm/DR/Font/") + name) != "null", name);
    }
    QCOMPARE(output->value("Root/AcroForm/DR/Font/Unused"), QByteArray("null"));
}

void TestFields::defaultResourcesKeepEncodings()
{
    TestPdf pdf = page("41 0 R", "/Fields[41 0 R]/DR<</Encoding<</PDFDoc 42 0 R>>/ProcSet[/PDF]>>");
    pdf.object(41, "<</FT/Tx/T(a)/Subtype/Widget/Rect[0 0 9 9]>>");
    pdf.object(42, "<</Type/Encoding/Differences[24/breve]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm/DR/Encoding/PDFDoc/Differences/0"), QByteArray("24"));
    QCOMPARE(output->value("Root/AcroForm/DR/ProcSet"), QByteArray("[/PDF]"));
    QCOMPARE(output->value("Root/AcroForm/DR/Font"), QByteArray("null"));
}

void TestFields::aFieldThatIsNotSignedYetStaysAField()
{
    TestPdf pdf = page("41 0 R", "/Fields[41 0 R]");
    pdf.object(41, "<</FT/Sig/T(sign here)/Subtype/Widget/Rect[0 0 9 9]/Lock 42 0 R/SV 42 0 R>>");
    pdf.object(42, "<</Type/SigFieldLock/Action/All/Secret true>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/Subtype"), QByteArray("/Widget"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/T"), QByteArray("(sign here)"));
    QVERIFY(!output->everything().contains("Secret"));
}

void TestFields::aSignatureWithoutAPictureGoes()
{
    TestPdf pdf = page("41 0 R", "/Fields[41 0 R]");
    pdf.object(41, "<</FT/Sig/T(signed)/V<</Type/Sig>>/Subtype/Widget/Rect[0 0 9 9]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0"), QByteArray("null"));
    QCOMPARE(output->value("Root/AcroForm"), QByteArray("null"));
}

void TestFields::aSignatureByInheritanceIsOne()
{
    TestPdf pdf = page("42 0 R", "/Fields[40 0 R]");
    pdf.object(40, "<</FT/Sig/T(group)/Kids[41 0 R]>>");
    pdf.object(41, "<</T(signed)/V<</Type/Sig>>/Parent 40 0 R/Kids[42 0 R]>>");
    pdf.object(42, "<</Subtype/Widget/Rect[0 0 9 9]/Parent 41 0 R/F 4/AP<</N 43 0 R>>>>");
    pdf.stream(43, "/Subtype/Form/BBox[0 0 9 9]", "% picture");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/Subtype"), QByteArray("/Stamp"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/F"), QByteArray("4"));
    QCOMPARE(output->value("Root/AcroForm"), QByteArray("null"));
}

void TestFields::fieldsThatAreTheirOwnAncestorsAreWritten_data()
{
    QTest::addColumn<QByteArray>("parent");
    QTest::newRow("its own parent") << QByteArray("40 0 R");
    QTest::newRow("its child's child") << QByteArray("42 0 R");
}

void TestFields::fieldsThatAreTheirOwnAncestorsAreWritten()
{
    QFETCH(QByteArray, parent);
    TestPdf pdf = page("41 0 R", "/Fields[40 0 R]");
    pdf.object(40, "<</T(top)/FT/Tx/Kids[42 0 R]/Parent " + parent + ">>");
    pdf.object(41, "<</T(low)/Subtype/Widget/Rect[0 0 9 9]/Parent 42 0 R>>");
    pdf.object(42, "<</T(middle)/Parent 40 0 R/Kids[41 0 R]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm/Fields/0/T"), QByteArray("(top)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Parent"), QByteArray("null"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/T"), QByteArray("(middle)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/Parent/T"), QByteArray("(top)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/1"), QByteArray("null"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/Kids/0/T"), QByteArray("(low)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/0/Kids/0/Kids/0/Parent/T"),
             QByteArray("(middle)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/1"), QByteArray("null"));
}

void TestFields::aWidgetWithoutANameIsNoField()
{
    TestPdf pdf = page("41 0 R 42 0 R", "/Fields[41 0 R 42 0 R]");
    pdf.object(41, "<</Subtype/Widget/Rect[0 0 9 9]>>");
    pdf.object(42, "<</T(named)/Subtype/Widget/Rect[0 0 9 9]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm/Fields/0/T"), QByteArray("(named)"));
    QCOMPARE(output->value("Root/AcroForm/Fields/1"), QByteArray("null"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/Subtype"), QByteArray("/Widget"));
}

void TestFields::aFieldKeepsWhatItsWidgetsInherit()
{
    TestPdf pdf = page("41 0 R", "/Fields[40 0 R]");
    pdf.object(40,
               "<</FT/Ch/T(list)/TU(shown)/TM(mapped)/Ff 2/DA(/Helv 9 Tf)/Q 2/DS(style)/RV(rich)"
               "/Opt[(a)(b)]/MaxLen 7/TI 1/I[0]/DV(a)/V(b)/Kids[41 0 R]/Rect[1 2 3 4]/MK<</R 90>>"
               "/AA<</F 1>>>>");
    pdf.object(41, "<</Subtype/Widget/Rect[0 0 9 9]/Parent 40 0 R>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    const QByteArray field = "Root/AcroForm/Fields/0/";
    const QList<std::pair<const char *, const char *>> kept = {
        {"FT", "/Ch"},      {"T", "(list)"},  {"TU", "(shown)"},
        {"TM", "(mapped)"}, {"Ff", "2"},      {"Q", "2"},
        {"DS", "(style)"},  {"RV", "(rich)"}, {"Opt", "[(a)(b)]"},
        {"MaxLen", "7"},    {"TI", "1"},      {"I", "[0]"},
        {"DV", "(a)"},      {"V", "(b)"},     {"DA", "(/Helv 9 Tf)"},
        {"Rect", "null"},   {"MK", "null"},   {"AA", "null"}};
    for (const auto &[key, value] : kept) {
        QCOMPARE(output->value(field + key), QByteArray(value));
    }
}

void TestFields::theOrderOfCalculationIsThatOfTheInput()
{
    TestPdf pdf = page("41 0 R 42 0 R 43 0 R", "/Fields[41 0 R 42 0 R 43 0 R]"
                                               "/CO[43 0 R 44 0 R 41 0 R 43 0 R 42 0 R]");
    for (int number = 41; number <= 44; ++number) {
        pdf.object(number,
                   "<</FT/Tx/T(" + QByteArray::number(number) + ")/Subtype/Widget/Rect[0 0 9 9]>>");
    }
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm/CO/0/T"), QByteArray("(43)"));
    QCOMPARE(output->value("Root/AcroForm/CO/1/T"), QByteArray("(41)"));
    QCOMPARE(output->value("Root/AcroForm/CO/2/T"), QByteArray("(43)"));
    QCOMPARE(output->value("Root/AcroForm/CO/3/T"), QByteArray("(42)"));
    QCOMPARE(output->value("Root/AcroForm/CO/4"), QByteArray("null"));
}

void TestFields::widgetsThatNameNoFieldBelongToTheOneThatListsThem()
{
    // Neither the widgets nor the field between lead back up; one list closes a circle.
    TestPdf pdf = page("43 0 R 44 0 R", "/Fields[41 0 R]");
    pdf.object(41, "<</FT/Btn/T(group)/V/On/Kids[42 0 R 44 0 R 41 0 R]>>");
    pdf.object(42, "<</Kids[43 0 R 41 0 R]>>");
    pdf.object(43, "<</Subtype/Widget/Rect[0 0 9 9]/AS/On>>");
    pdf.object(44, "<</Subtype/Widget/Rect[9 0 18 9]/AS/Off>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    const QByteArray field = "Root/AcroForm/Fields/0/";
    QCOMPARE(output->value(field + "T"), QByteArray("(group)"));
    QCOMPARE(output->value(field + "Kids/0/Kids/0/AS"), QByteArray("/On"));
    QCOMPARE(output->value(field + "Kids/1/AS"), QByteArray("/Off"));
    QCOMPARE(output->value("Root/Pages/Kids/0/Annots/0/Parent/Parent/V"), QByteArray("/On"));
}

void TestFields::aFormWithoutFieldsIsNone()
{
    TestPdf pdf = TestPdf::pages(2, "/AcroForm<</Fields[41 0 R]/NeedAppearances true>>");
    pdf.object(20, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Annots[41 0 R]>>");
    pdf.object(41, "<</FT/Tx/T(a)/Subtype/Widget/Rect[0 0 9 9]>>");
    const auto output = m_bench.merged(pdf, "1");
    QVERIFY(output);
    QCOMPARE(output->value("Root/AcroForm"), QByteArray("null"));
}

QUORLIN_TEST(TestFields)
#include "test_fields.moc"
