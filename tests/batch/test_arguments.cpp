#include "batch/argument_values.h"
#include "batch/arguments.h"
#include "batch/option_table.h"
#include "batch/settings_location.h"
#include "tests/support/room.h"

#include <QRegularExpression>
#include <QTest>

using namespace quorlin::batch;

namespace {

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

class TestArguments : public QObject
{
    Q_OBJECT

private slots:
    void aSplitNamesRuleMethodFolderAndFiles();
    void optionsMayStandBehindFilesAndWithEqualsSigns();
    void afterTwoDashesEveryWordIsAFile();
    void methodOneIsTheDefault();
    void positionsAreTwoNumbers_data();
    void positionsAreTwoNumbers();
    void regionsAreAPlaceAndASize_data();
    void regionsAreAPlaceAndASize();
    void faultsAreNamed_data();
    void faultsAreNamed();
    void faultsAreSaidInFull_data();
    void faultsAreSaidInFull();
    void pagesWithoutTextJoinUnlessTheRunSaysMore();
    void listingModesNeedNoRule();
    void helpWinsOverWhatFollows();
    void everyOptionIsInTheHelp();
    void theHelpNamesTheFoldersOfTheRules();
};

void TestArguments::aSplitNamesRuleMethodFolderAndFiles()
{
    const ParsedArguments parsed = parseArguments(
        {"--rule", "Account number", "--method", "3", "--output", "out put", "a.pdf", "b c.pdf"});
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.arguments.mode, Mode::Split);
    QCOMPARE(parsed.arguments.rule, "Account number");
    QCOMPARE(parsed.arguments.method, 3);
    QCOMPARE(parsed.arguments.outputFolder, "out put");
    QCOMPARE(parsed.arguments.files, QStringList({"a.pdf", "b c.pdf"}));
}

void TestArguments::optionsMayStandBehindFilesAndWithEqualsSigns()
{
    const ParsedArguments parsed = parseArguments(
        words("a.pdf --output=out --position=591,72 --create --quiet --timeout=5 --tools=t b.pdf"));
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.arguments.position, std::optional<QPoint>(QPoint(591, 72)));
    QVERIFY(parsed.arguments.createOutputFolder);
    QVERIFY(parsed.arguments.quiet);
    QCOMPARE(parsed.arguments.timeoutSeconds, 5);
    QCOMPARE(parsed.arguments.toolFolder, "t");
    QCOMPARE(parsed.arguments.files, QStringList({"a.pdf", "b.pdf"}));
}

void TestArguments::afterTwoDashesEveryWordIsAFile()
{
    const ParsedArguments parsed = parseArguments(words("--rule R --output o -- --help -f.pdf --"));
    QCOMPARE(parsed.error, QString());
    QCOMPARE(parsed.arguments.mode, Mode::Split);
    QCOMPARE(parsed.arguments.files, QStringList({"--help", "-f.pdf", "--"}));
}

void TestArguments::methodOneIsTheDefault()
{
    QCOMPARE(parseArguments(words("--rule R --output o a.pdf")).arguments.method, 1);
}

void TestArguments::positionsAreTwoNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("left and top") << "591,72" << true;
    QTest::newRow("left edge") << "0,72" << true;
    QTest::newRow("top edge") << "72,0" << true;
    QTest::newRow("the corner, where lines that are no items would match") << "0,0" << false;
    QTest::newRow("negative") << "-1,72" << false;
    QTest::newRow("a unit") << "10px,72" << false;
    QTest::newRow("a fraction") << "10.5,72" << false;
    QTest::newRow("one number") << "591" << false;
    QTest::newRow("three numbers") << "1,2,3" << false;
    QTest::newRow("too large") << "99999999999,1" << false;
    QTest::newRow("nothing") << "" << false;
}

void TestArguments::positionsAreTwoNumbers()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(parsePosition(text).has_value(), valid);
}

void TestArguments::regionsAreAPlaceAndASize_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("a rectangle") << "560,60,200,30" << true;
    QTest::newRow("the smallest, in the corner") << "0,0,1,1" << true;
    QTest::newRow("as far as numbers go") << "2147483646,2147483646,1,1" << true;
    QTest::newRow("no width") << "560,60,0,30" << false;
    QTest::newRow("no height") << "560,60,200,0" << false;
    QTest::newRow("too far to the right") << "2147483647,60,1,30" << false;
    QTest::newRow("too far down") << "560,2147483647,200,1" << false;
    QTest::newRow("three numbers") << "560,60,200" << false;
    QTest::newRow("five numbers") << "560,60,200,30,1" << false;
}

void TestArguments::regionsAreAPlaceAndASize()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(parseRegion(text).has_value(), valid);
}

void TestArguments::faultsAreNamed_data()
{
    QTest::addColumn<QStringList>("line");
    QTest::addColumn<QString>("named");
    QTest::newRow("nothing at all") << QStringList() << "--rule";
    QTest::newRow("neither rule nor position") << words("--output o a.pdf") << "--position";
    QTest::newRow("both rule and position")
        << words("--rule R --position 1,2 --output o a.pdf") << "either";
    QTest::newRow("no output folder") << words("--rule R a.pdf") << "--output";
    QTest::newRow("no file") << words("--rule R --output o") << "files";
    QTest::newRow("method 0") << words("--method 0") << "1, 2 or 3";
    QTest::newRow("method 4") << words("--method=4") << "1, 2 or 3";
    QTest::newRow("method without value") << words("--method") << "missing value after '--method'";
    QTest::newRow("unknown option") << words("--frobnicate") << "--frobnicate";
    QTest::newRow("unknown short option") << words("-x") << "-x";
    QTest::newRow("value for a switch")
        << words("--quiet=yes") << "unexpected value after '--quiet'";
    QTest::newRow("empty rule name") << QStringList({"--rule", ""}) << "--rule an empty value";
    QTest::newRow("two faults") << words("--method 4 --jobs 0 --timeout 0") << "--method";
    QTest::newRow("page 0") << words("--list-items a.pdf --page 0") << "--page";
    QTest::newRow("no jobs") << words("--jobs 0") << "--jobs takes 1 to 1024";
    QTest::newRow("too many jobs") << words("--jobs 100000") << "--jobs";
    QTest::newRow("unknown choice for pages without text")
        << words("--pages-without-text keep") << "join, separate, drop or fail";
    QTest::newRow("an option twice")
        << words("--rule R --rule S --output o a.pdf") << "--rule is given twice";
    QTest::newRow("a switch twice")
        << words("--quiet --quiet --rule R --output o a.pdf") << "--quiet is given twice";
    QTest::newRow("timeout 0") << words("--timeout 0") << "--timeout";
    QTest::newRow("items of two files") << words("--list-items a.pdf b.pdf") << "one file";
    QTest::newRow("rules of a file") << words("--list-rules a.pdf") << "no file";
    QTest::newRow("an option of another mode")
        << words("--list-rules --method 2") << "--method cannot be used with --list-rules";
    QTest::newRow("an unfinished pattern")
        << words("--match ( --rule R --output o a.pdf") << "--match: missing closing parenthesis";
    QTest::newRow("a tolerance of a region")
        << words("--region 1,2,3,4 --tolerance 5 --output o a")
        << "--tolerance can only be used with --rule or --position";
    QTest::newRow("a tolerance of a label")
        << words("--after No. --tolerance 5 --output o a.pdf")
        << "--tolerance can only be used with --rule or --position";
    QTest::newRow("zeros without a list")
        << words("--rule R --output o a.pdf --null") << "--null can only be used with --files-from";
    QTest::newRow("a rule from a position and an item")
        << words("--save-rule R --position 1,2 --from a.pdf --text T")
        << "--save-rule takes either";
    QTest::newRow("a rule from a position with a text")
        << words("--save-rule R --position 1,2 --text T") << "--save-rule takes either";
    QTest::newRow("a rule from nothing") << words("--save-rule R") << "--save-rule takes either";
    QTest::newRow("a rule from a file alone")
        << words("--save-rule R --from a.pdf") << "--save-rule takes either";
    QTest::newRow("a report of another kind")
        << words("--rule R --output o a.pdf --report r.txt") << ".json or .csv";
}

void TestArguments::faultsAreNamed()
{
    QFETCH(QStringList, line);
    QFETCH(QString, named);
    const QString error = parseArguments(line).error;
    QVERIFY2(error.contains(named), qPrintable(error));
    QVERIFY(!error.contains(u'\n'));
}

void TestArguments::faultsAreSaidInFull_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *line, const char *error) {
        QTest::newRow(line) << line << error;
    };
    row("--frobnicate", "unknown option --frobnicate");
    row("--method", "missing value after '--method'");
    row("--rule R --rule S", "--rule is given twice");
    row("--position 0,0",
        "--position takes LEFT,TOP as --list-items shows them, for example 591,72");
    row("--region 1,2,3", "--region takes LEFT,TOP,WIDTH,HEIGHT in the units of --list-items, for "
                          "example 560,60,200,30");
    row("--tolerance -1", "--tolerance takes 0 to 100000 units");
    row("--match a(b", "--match: missing closing parenthesis at character 4: a(b <-- here ");
    row("--method 4", "--method takes 1, 2 or 3");
    row("--pages-without-text keep", "--pages-without-text takes join, separate, drop or fail");
    row("--jobs 1025", "--jobs takes 1 to 1024");
    row("--timeout 86401", "--timeout takes 1 to 86400 seconds");
    row("--list-items a.pdf --page 0", "--page takes a page number, counted from 1");
    row("--name {nmuber}", "--name: there is no field {nmuber}, but {number}, {text}, {base}, "
                           "{pages}, {first}, {last} and {count}");
    row("--existing keep", "--existing takes replace, skip or fail");
    row("--report r.txt", "--report takes a file whose name ends in .json or .csv, or \"-\"");
    row("--json", "--json cannot be used with a split");
    row("--list-rules --flat", "--flat cannot be used with --list-rules");
    row("--output o a.pdf", "give either --rule NAME, --position LEFT,TOP, --region "
                            "LEFT,TOP,WIDTH,HEIGHT or --after LABEL");
    row("--after A --tolerance 1 --output o a.pdf",
        "--tolerance can only be used with --rule or --position");
    row("--rule R a.pdf", "give the output folder: --output DIR");
    row("--rule R --output o --null a.pdf", "--null can only be used with --files-from");
    row("--rule R --output o", "give the files to split");
    row("--rule R --output o --files-from - --password-file -",
        "--files-from and --password-file cannot both read standard input");
    row("--list-items a.pdf b.pdf", "--list-items takes one file");
    row("--list-rules a.pdf", "--list-rules takes no file");
    row("--rename-rule A", "--rename-rule takes the old and the new name");
    row("--save-rule A", "--save-rule takes either --position LEFT,TOP or --from FILE --text TEXT");
}

void TestArguments::faultsAreSaidInFull()
{
    QFETCH(QString, line);
    QTEST(parseArguments(words(line.toUtf8().constData())).error, "error");
}

void TestArguments::pagesWithoutTextJoinUnlessTheRunSaysMore()
{
    const auto read = [](const char *choice) {
        return parseArguments(words("--rule R --output o a.pdf --pages-without-text") +
                              QStringList{choice})
            .arguments;
    };
    QVERIFY(!parseArguments(words("--rule R --output o a.pdf")).arguments.blankPages.has_value());
    QCOMPARE(read("join").blankPages, std::optional(quorlin::BlankPages::Join));
    QCOMPARE(read("separate").blankPages, std::optional(quorlin::BlankPages::Separate));
    QCOMPARE(read("drop").blankPages, std::optional(quorlin::BlankPages::Drop));
    QVERIFY(read("fail").blankPagesFail);
}

void TestArguments::listingModesNeedNoRule()
{
    QCOMPARE(parseArguments(words("--list-rules")).error, QString());
    const ParsedArguments items = parseArguments(words("--list-items a.pdf --page 7"));
    QCOMPARE(items.error, QString());
    QCOMPARE(items.arguments.mode, Mode::ListItems);
    QCOMPARE(items.arguments.page, 7);
    QCOMPARE(items.arguments.files, QStringList({"a.pdf"}));
}

void TestArguments::helpWinsOverWhatFollows()
{
    QCOMPARE(parseArguments(words("--help --frobnicate")).arguments.mode, Mode::Help);
    QCOMPARE(parseArguments(words("-h")).arguments.mode, Mode::Help);
    QCOMPARE(parseArguments(words("--version")).arguments.mode, Mode::Version);
}

void TestArguments::everyOptionIsInTheHelp()
{
    const QString help = helpText();
    const QStringList options = {"rule NAME",
                                 "position LEFT,TOP",
                                 "region LEFT,TOP,WIDTH,HEIGHT",
                                 "after LABEL",
                                 "tolerance UNITS",
                                 "match REGEX",
                                 "method N",
                                 "pages-without-text WHAT",
                                 "dry-run",
                                 "files-from FILE",
                                 "null",
                                 "password-file FILE",
                                 "output DIR",
                                 "create",
                                 "flat",
                                 "name PATTERN",
                                 "existing WHAT",
                                 "report FILE",
                                 "jobs N",
                                 "timeout SECONDS",
                                 "quiet",
                                 "verbose",
                                 "list-rules",
                                 "list-items FILE",
                                 "page N",
                                 "json",
                                 "save-rule NAME",
                                 "from FILE",
                                 "text TEXT",
                                 "remove-rule NAME",
                                 "rename-rule OLD NEW",
                                 "export-rules FILE",
                                 "import-rules FILE",
                                 "settings FILE",
                                 "tools DIR",
                                 "help",
                                 "version"};
    for (const QString &option : options) {
        // At the beginning of a line, followed by what it is for.
        QVERIFY2(help.contains(QRegularExpression("\n  --" + option + "( {2,}|\n {23})\\S")),
                 qPrintable(option));
    }
    QCOMPARE(help.count("\n  --"), options.size());
}

void TestArguments::theHelpNamesTheFoldersOfTheRules()
{
    const QString help = helpText().simplified();
    QVERIFY2(
        help.contains(QStringLiteral("setting.ini beside this program or, if there is none, ") +
                      QLatin1String(systemSettingsFolder) + QStringLiteral("/setting.ini")),
        qPrintable(help));
}

QUORLIN_TEST(TestArguments)
#include "test_arguments.moc"
