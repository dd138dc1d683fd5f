#include "pipeline/existing_outputs.h"
#include "pipeline/name_pattern.h"
#include "pipeline/output_list.h"
#include "tests/support/room.h"

#include <QTemporaryDir>
#include <QTest>

using namespace quorlin;

class TestNamePattern : public QObject
{
    Q_OBJECT

private slots:
    void fieldsAreFilledIn_data();
    void fieldsAreFilledIn();
    void faultsAreNamed_data();
    void faultsAreNamed();
    void namesAreSafeEverywhere_data();
    void namesAreSafeEverywhere();
    void longNamesAreCutInTheText();
    void equalNamesAreNumbered();
    void numberedNamesKeepToTheLimit();
    void rangesArePages();
    void withoutPatternTheNamesAreTheWindows();
    void aPatternNamesTheOutputsOfAFile();
    void flatOutputsOfSeveralFilesStayApart();
    void whatIsThereIsReplacedSkippedOrAFault();
    void otherOutputsInTheFolderAreCounted();
};

void TestNamePattern::fieldsAreFilledIn_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("name");
    QTest::newRow("text and number") << "{text} {number}"
                                     << "A-1 7.pdf";
    QTest::newRow("zeros") << "{number:04}_{first:3}"
                           << "0007_003.pdf";
    QTest::newRow("a number wider than its field") << "{count:01}"
                                                   << "4.pdf";
    QTest::newRow("base and pages") << "{base} {pages}"
                                    << "report 3-5 9.pdf";
    QTest::newRow("first, last and count") << "{first}-{last} ({count})"
                                           << "3-9 (4).pdf";
    QTest::newRow("the ending is not doubled") << "{text}.PDF"
                                               << "A-1.pdf";
    QTest::newRow("doubled braces") << "{{{text}}}"
                                    << "{A-1}.pdf";
    QTest::newRow("no field") << "all"
                              << "all.pdf";
}

void TestNamePattern::fieldsAreFilledIn()
{
    QFETCH(QString, pattern);
    const NamePattern names(pattern);
    QCOMPARE(names.fault(), QString());
    QTEST(names.fileName({7, "A-1", "report", "3-5 9"}), "name");
}

void TestNamePattern::faultsAreNamed_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("named");
    QTest::newRow("empty") << ""
                           << "empty";
    QTest::newRow("a path") << "a/{text}"
                            << "\"/\"";
    QTest::newRow("a path out of the folder") << "../{text}"
                                              << "\"/\"";
    QTest::newRow("unknown field") << "{name}"
                                   << "no field {name}";
    QTest::newRow("an open brace") << "a{text"
                                   << "brace at character 2";
    QTest::newRow("a closing brace alone") << "a}"
                                           << "brace at character 2";
    QTest::newRow("a width of a text") << "{text:04}"
                                       << "{text:04}";
    QTest::newRow("a width that is no number") << "{number:x}"
                                               << "{number:x}";
    QTest::newRow("a width out of all reason") << "{number:99}"
                                               << "{number:99}";
}

void TestNamePattern::faultsAreNamed()
{
    QFETCH(QString, pattern);
    QFETCH(QString, named);
    const QString fault = NamePattern(pattern).fault();
    QVERIFY2(fault.contains(named), qPrintable(fault));
}

void TestNamePattern::namesAreSafeEverywhere_data()
{
    QTest::addColumn<QString>("stem");
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "Smith & Sons"
                           << "Smith & Sons.pdf";
    QTest::newRow("what disks refuse") << "a<b>c:d\"e/f\\g|h?i*j"
                                       << "a-b-c-d-e-f-g-h-i-j.pdf";
    QTest::newRow("control characters") << "a\nb\tc\x7f"
                                        << "a-b-c-.pdf";
    QTest::newRow("the folder itself") << "."
                                       << "_.pdf";
    QTest::newRow("the folder above") << ".."
                                      << "_.pdf";
    QTest::newRow("out of the folder") << "../../etc/passwd"
                                       << "_.-..-etc-passwd.pdf";
    QTest::newRow("hidden") << ".profile"
                            << "_profile.pdf";
    QTest::newRow("full stops and blanks at the end") << " Ltd. . "
                                                      << "Ltd.pdf";
    QTest::newRow("nothing") << ""
                             << "_.pdf";
    QTest::newRow("a device") << "NUL"
                              << "_NUL.pdf";
    QTest::newRow("a device with an ending") << "com1.x"
                                             << "_com1.x.pdf";
    QTest::newRow("no device") << "com"
                               << "com.pdf";
}

void TestNamePattern::namesAreSafeEverywhere()
{
    QFETCH(QString, stem);
    QTEST(safeFileName(stem), "name");
}

void TestNamePattern::longNamesAreCutInTheText()
{
    const NamePattern names("{number:04} {text} {base}");
    const QString text = QString(200, QChar(0x6f22)); // three bytes each
    const QString name = names.fileName({7, text, "report", "1"});
    QVERIFY(name.toUtf8().size() <= 255);
    QVERIFY(name.toUtf8().size() > 240);
    QVERIFY(name.startsWith(QStringLiteral("0007 ") + QChar(0x6f22)));
    QVERIFY2(name.endsWith(QLatin1String("~ report.pdf")), qPrintable(name));
    QVERIFY(names.fileName({7, text, "report", "1"}, 143).toUtf8().size() <= 143);
    QVERIFY(names.fileName({7, "A", QString(300, u'b'), "1"}).size() <= 255);
    QVERIFY(names.fileName({7, text, QString(300, u'b'), "1"}).toUtf8().size() <= 255);
}

void TestNamePattern::equalNamesAreNumbered()
{
    UniqueNames names;
    QCOMPARE(names.claim("A.pdf"), "A.pdf");
    QCOMPARE(names.claim("a.pdf"), "a (2).pdf");
    QCOMPARE(names.claim("A (2).pdf"), "A (2) (2).pdf");
    QCOMPARE(names.claim("A.pdf"), "A (3).pdf");
    QCOMPARE(names.claim(QString::fromUtf8("e\xcc\x81.pdf")), QString::fromUtf8("e\xcc\x81.pdf"));
    QCOMPARE(names.claim(QString::fromUtf8("\xc3\xa9.pdf")), QString::fromUtf8("\xc3\xa9 (2).pdf"));
}

void TestNamePattern::numberedNamesKeepToTheLimit()
{
    UniqueNames names;
    const QString name = safeFileName(QString(300, u'n'));
    QCOMPARE(names.claim(name), name);
    const QString second = names.claim(name);
    QVERIFY(second.size() <= 255);
    QVERIFY(second.endsWith(QLatin1String(" (2).pdf")));
}

void TestNamePattern::rangesArePages()
{
    QCOMPARE(pagesOfRange("7"), QList<int>{7});
    QCOMPARE(pagesOfRange("1-3 5 9-10"), QList<int>({1, 2, 3, 5, 9, 10}));
    QCOMPARE(pagesOfRange(""), QList<int>());
}

void TestNamePattern::withoutPatternTheNamesAreTheWindows()
{
    QList<OutputResult> outputs = planOutputs({{"1", "2"}, {"A", "A"}}, "/in/f.pdf", "/out", 1);
    const QString path = outputs.at(0).path;
    UniqueNames names;
    QCOMPARE(nameOutputs(outputs, "/in/f.pdf", SplitSettings(), names), 0);
    QCOMPARE(outputs.at(0).path, path);
}

void TestNamePattern::aPatternNamesTheOutputsOfAFile()
{
    SplitSettings settings;
    settings.outputFolder = "/out";
    settings.names = NamePattern("{text}");
    QList<OutputResult> outputs = planOutputs(
        {{"1", "2", "3", "4"}, {"<A> & B", "C", "<A> & B", " "}}, "/in/f.pdf", "/out", 1);
    UniqueNames names;
    QCOMPARE(nameOutputs(outputs, "/in/f.pdf", settings, names), 1);
    QCOMPARE(outputs.at(0).path, "/out/f/-A- & B.pdf");
    QCOMPARE(outputs.at(1).path, "/out/f/C.pdf");
    QCOMPARE(outputs.at(2).path, "/out/f/-A- & B (2).pdf");
    QCOMPARE(outputs.at(3).path, "/out/f/_.pdf");
}

void TestNamePattern::flatOutputsOfSeveralFilesStayApart()
{
    SplitSettings settings;
    settings.outputFolder = "/out";
    settings.flat = true;
    UniqueNames names;
    QList<OutputResult> first = planOutputs({{"1"}, {"A"}}, "/a/f.pdf", "/out", 0);
    QList<OutputResult> second = planOutputs({{"1"}, {"A"}}, "/b/f.pdf", "/out", 0);
    QCOMPARE(nameOutputs(first, "/a/f.pdf", settings, names), 0);
    QCOMPARE(nameOutputs(second, "/b/f.pdf", settings, names), 1);
    QCOMPARE(first.at(0).path, "/out/1 A f 1.pdf");
    QCOMPARE(second.at(0).path, "/out/1 A f 1 (2).pdf");
}

void TestNamePattern::whatIsThereIsReplacedSkippedOrAFault()
{
    const QList<OutputResult> planned = planOutputs({{"1", "2"}, {"A", "B"}}, "/f.pdf", "/out", 0);
    const auto secondIsThere = [](const QString &path) {
        return path.contains("/2 B") ? path : QString();
    };
    QList<OutputResult> outputs = planned;
    QCOMPARE(applyExistingPolicy(outputs, ExistingOutputs::Replace, secondIsThere), QString());
    QCOMPARE(outputs.at(1).state, OutputResult::State::Planned);
    QCOMPARE(applyExistingPolicy(outputs, ExistingOutputs::Skip, secondIsThere), QString());
    QCOMPARE(outputs.at(0).state, OutputResult::State::Planned);
    QCOMPARE(outputs.at(1).state, OutputResult::State::Skipped);
    outputs = planned;
    const QString fault = applyExistingPolicy(outputs, ExistingOutputs::Fail, secondIsThere);
    QVERIFY2(fault.startsWith("1 of 2 outputs already exist, the first is /out/f/2 B"),
             qPrintable(fault));
    QCOMPARE(outputs.at(1).state, OutputResult::State::Planned);
}

void TestNamePattern::otherOutputsInTheFolderAreCounted()
{
    const QTemporaryDir folder;
    for (const char *name : {"1 A.pdf", "2 B.pdf", "3 C.PDF", "notes.txt"}) {
        QFile file(folder.filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    OutputResult output;
    output.path = folder.filePath("1 A.pdf");
    QCOMPARE(countOtherOutputs(folder.path(), {output}), 2);
    QCOMPARE(countOtherOutputs(folder.filePath("none"), {}), 0);
    QCOMPARE(findOutput(output.path, "/in/f.pdf"), output.path);
    QCOMPARE(findOutput(folder.filePath("none.pdf"), "/in/f.pdf"), QString());
}

QUORLIN_TEST(TestNamePattern)
#include "test_name_pattern.moc"
