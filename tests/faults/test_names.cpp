#include "tests/faults/real_bench.h"
#include "tests/faults/statements.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QTest>

using quorlin::test::pagesOf;
using quorlin::test::RealBench;

/// Names and texts of every kind through the whole pipeline with the real tools.
class TestNames : public QObject
{
    Q_OBJECT

private slots:
    void inputs_data();
    void inputs();
    void hiddenFilesAreSplit_data();
    void hiddenFilesAreSplit();
    void theLongestNamesKeepTheirPages();
    void quotesFailOnlyTheirOwnFile();
    void deepPathsAreSplit();
    void texts_data();
    void texts();
    void textsTooLongForANameKeepTheirPages();
};

void TestNames::inputs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("base");
    const auto row = [](const char *kind, const QString &name, const QString &base) {
        QTest::newRow(kind) << name << base;
    };
    row("blanks", " two  blanks .pdf", " two  blanks ");
    row("leading dash", "-merge.pdf", "-merge");
    row("option", "-outfile", "-outfile");
    row("single quotes", "it's 'one'.pdf", "it's 'one'");
    row("percent", "100%41 %1.pdf", "100%41 %1");
    row("hash", "#1.pdf", "#1");
    row("question mark", "what?.pdf", "what?");
    row("ampersand", "A & B &amp; C.pdf", "A & B &amp; C");
    row("semicolon", "a;b$(c)`d`.pdf", "a;b$(c)`d`");
    row("line feed", "two\nlines.pdf", "two\nlines");
    row("tabulator", "two\tcolumns.pdf", "two\tcolumns");
    row("CJK", QString::fromUtf8("漢字かな.pdf"), QString::fromUtf8("漢字かな"));
    row("emoji", QString::fromUtf8("📄🎉.pdf"), QString::fromUtf8("📄🎉"));
    row("combining accents", QString::fromUtf8("e\u0301a\u0308.pdf"),
        QString::fromUtf8("e\u0301a\u0308"));
    row("no extension", "statement", "statement");
    row("upper-case extension", "LOUD.PDF", "LOUD");
    row("several dots", "report.v2.pdf", "report");
    row("backslash", "back\\slash.pdf", "back\\slash");
    row("markup", "<b>bold &lt;.pdf", "<b>bold &lt;");
    row("100 bytes", QString(96, QLatin1Char('n')) + ".pdf", QString(96, QLatin1Char('n')));
}

void TestNames::inputs()
{
    QFETCH(QString, name);
    QFETCH(QString, base);
    RealBench bench;
    const QString input =
        bench.addStatements(name, {QStringLiteral("A"), QStringLiteral("A"), QStringLiteral("B")});
    bench.list({input});
    QCOMPARE(bench.cell(0, 1), QStringLiteral("3"));
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    const QStringList expected = {base + QStringLiteral("/1 A ") + base +
                                      QStringLiteral(" 1-2.pdf"),
                                  base + QStringLiteral("/2 B ") + base + QStringLiteral(" 3.pdf")};
    QCOMPARE(bench.folders.outputFiles(), expected);
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
    QVERIFY(bench.outputsAreWhole());
    QVERIFY(bench.inputsAreUntouched());
}

void TestNames::hiddenFilesAreSplit_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("dropped");
    for (const char *name : {".statement.pdf", ".pdf", "..pdf"}) {
        QTest::addRow("%s, by the dialog", name) << QString(name) << false;
        QTest::addRow("%s, dropped", name) << QString(name) << true;
    }
}

void TestNames::hiddenFilesAreSplit()
{
    QFETCH(QString, name);
    QFETCH(bool, dropped);
    RealBench bench;
    const QString input =
        bench.addStatements(name, {QStringLiteral("A"), QStringLiteral("A"), QStringLiteral("B")});
    if (dropped) {
        bench.dropFiles({input});
        QTRY_VERIFY(bench.controlsEnabled());
    } else {
        bench.addFiles({input});
    }
    QCOMPARE(bench.column(0), QStringList{input});
    QCOMPARE(bench.cell(0, 1), QStringLiteral("3"));
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    // Nothing stands before the first dot: no folder of their own, and no name in the outputs'.
    QCOMPARE(bench.folders.outputFiles(),
             QStringList({QStringLiteral("1 A  1-2.pdf"), QStringLiteral("2 B  3.pdf")}));
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
    QVERIFY(bench.outputsAreWhole());
    QVERIFY(bench.inputsAreUntouched());
}

void TestNames::theLongestNamesKeepTheirPages()
{
    RealBench bench;
    // 255 bytes, the most a name can have; as many again would be needed for the outputs.
    const QString base = QString(83, QChar(0x6f22)) + QStringLiteral("xy");
    const QString input =
        bench.addStatements(base + QStringLiteral(".pdf"),
                            {QStringLiteral("A"), QStringLiteral("A"), QStringLiteral("B")});
    bench.list({input});
    QCOMPARE(bench.cell(0, 1), QStringLiteral("3"));
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    const QStringList outputs = bench.folders.outputFiles();
    QCOMPARE(outputs.size(), 2);
    int pages = 0;
    for (const QString &output : outputs) {
        QVERIFY(output.startsWith(base + QLatin1Char('/')));
        pages += pagesOf(bench.folders.outputs() + QLatin1Char('/') + output);
    }
    QCOMPARE(pages, 3);
    QVERIFY(bench.inputsAreUntouched());
}

void TestNames::quotesFailOnlyTheirOwnFile()
{
    RealBench bench;
    const QString odd =
        bench.addStatements(QStringLiteral("double\"quote.pdf"), {QStringLiteral("A")});
    const QString plain = bench.addStatements(QStringLiteral("plain.pdf"), {QStringLiteral("B")});
    bench.list({odd, plain});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Failed"), QStringLiteral("Succeed")}));
    QCOMPARE(bench.folders.outputFiles(), QStringList{QStringLiteral("plain/1 B plain 1.pdf")});
    QVERIFY(bench.inputsAreUntouched());
}

void TestNames::deepPathsAreSplit()
{
    RealBench bench;
    QString folder;
    for (int depth = 0; depth < 12; ++depth) {
        folder += QString(100, QLatin1Char('d')) + QString::number(depth) + QLatin1Char('/');
    }
    QVERIFY(QDir(bench.folders.inputs()).mkpath(folder));
    QVERIFY(QDir(bench.folders.outputs()).mkpath(folder));
    const QString input =
        bench.addStatements(folder + QStringLiteral("deep.pdf"), {QStringLiteral("A")});
    bench.list({input});
    bench.setOutputFolder(bench.folders.outputs() + QLatin1Char('/') + folder.chopped(1));
    bench.split();
    QCOMPARE(bench.folders.outputFiles(),
             QStringList{folder + QStringLiteral("deep/1 A deep 1.pdf")});
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
}

void TestNames::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("named");
    QTest::newRow("dot") << "."
                         << ".";
    QTest::newRow("two dots") << ".."
                              << "..";
    QTest::newRow("path upwards") << "../../evil"
                                  << "..-..-evil";
    QTest::newRow("absolute path") << "/etc/passwd"
                                   << "-etc-passwd";
    QTest::newRow("percent") << "50%2 %1"
                             << "50%2 %1";
    QTest::newRow("shell") << "$(touch x);`y`|z"
                           << "$(touch x);`y`|z";
    QTest::newRow("option") << "-outfile x"
                            << "-outfile x";
    QTest::newRow("backslash") << "a\\b"
                               << "a\\b";
    QTest::newRow("ampersand") << "A & B"
                               << "A & B";
    QTest::newRow("Latin-1") << QString::fromUtf8("é ü") << QString::fromUtf8("é ü");
}

void TestNames::texts()
{
    QFETCH(QString, text);
    QFETCH(QString, named);
    RealBench bench;
    bench.list({bench.addStatements(QStringLiteral("in.pdf"), {text, text})});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    QCOMPARE(bench.folders.outputFiles(),
             QStringList{QStringLiteral("in/1 ") + named + QStringLiteral(" in 1-2.pdf")});
    QCOMPARE(bench.cell(0, 3), QStringLiteral("Succeed"));
    QVERIFY(bench.outputsAreWhole());
}

void TestNames::textsTooLongForANameKeepTheirPages()
{
    RealBench bench;
    const QString base(251, QLatin1Char('n'));
    const QString longText = QString(40, QLatin1Char('t')) + QStringLiteral(" and more of it");
    const QString longName =
        bench.addStatements(base + QStringLiteral(".pdf"), {longText, longText, "B"});
    const QString plain =
        bench.addStatements(QStringLiteral("in.pdf"), {longText.repeated(6), longText.repeated(6)});
    bench.list({longName, plain});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    // The names are shortened, and no page is missing.
    QStringList pages;
    for (const QString &output : bench.folders.outputFiles()) {
        pages.append(output.section(QLatin1Char('/'), 0, 0).left(2) + QLatin1Char(':') +
                     QString::number(pagesOf(bench.folders.outputs() + QLatin1Char('/') + output)));
    }
    QCOMPARE(pages,
             QStringList({QStringLiteral("in:2"), QStringLiteral("nn:2"), QStringLiteral("nn:1")}));
    QVERIFY(bench.outputsAreWhole());
    QVERIFY(bench.inputsAreUntouched());
}

QUORLIN_TEST(TestNames)
#include "test_names.moc"
