#include "rules/rule_store.h"

#include "common/settings_text.h"
#include "tests/support/room.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <memory>

using namespace quorlin;

/// Settings classes of one process share what they have read, so what survives a restart is seen
/// only by another process: this program starts itself again to read a rule back.
class TestRuleStore : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void savingLeavesTheStatedKeys();
    void savedNamesSurviveARestart_data();
    void savedNamesSurviveARestart();
    void savedTextsSurviveARestart_data();
    void savedTextsSurviveARestart();
    void namesSpeltLikeGeneralLoseTheirValues();
    void namesWithASlashAreUsableAndTakenButNotListed();
    void programSectionsKeepWorkingUnderARuleOfTheirName();
    void ruleNamedLikeTheListShowsItsKeysInIt();
    void takenMeansTheMarkerIsOne();
    void markerWithoutValuesReadsAsZeros();
    void missingFileIsEmptyAndStaysMissing();
    void unreadableFileIsEmpty();
    void unwritableFileIsSilent();
    void changesMadeByHandAreSeen();
    void handWrittenListReadsAsText();
    void namesAreListedInTheOrderOfTheirCodePoints();

private:
    std::unique_ptr<QTemporaryDir> folder;
    QString former;
};

namespace {

const Subtext invoice{72, 104, 210, 12, QStringLiteral("INV-1")};

QJsonObject readInAnotherProcess(const QString &name)
{
    QProcess reader;
    reader.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--read-rule"), name});
    if (!reader.waitForFinished()) {
        return {};
    }
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

QJsonObject describe(const QString &name)
{
    const Subtext rule = readRule(name);
    return {{"names", QJsonArray::fromStringList(ruleNames())},
            {"current", currentRuleName()},
            {"taken", isRuleNameTaken(name)},
            {"left", rule.left},
            {"top", rule.top},
            {"width", rule.width},
            {"height", rule.height},
            {"text", rule.text}};
}

/// What this program does as a child.
int describeToParent(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QJsonObject rule = describe(QCoreApplication::arguments().value(2));
    const QByteArray json = QJsonDocument(rule).toJson();
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
    return 0;
}

Subtext ruleOf(const QJsonObject &object)
{
    return {object["left"].toInt(), object["top"].toInt(), object["width"].toInt(),
            object["height"].toInt(), object["text"].toString()};
}

void writeSettings(const QByteArray &content)
{
    QFile file(settingsFileName());
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
}

} // namespace

void TestRuleStore::init()
{
    former = QDir::currentPath();
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(folder->path()));
}

void TestRuleStore::cleanup()
{
    QDir::setCurrent(former);
    folder.reset();
}

void TestRuleStore::savingLeavesTheStatedKeys()
{
    saveRule(QStringLiteral("Invoice"), invoice);
    QFile file(settingsFileName());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("[Invoice]\nhei=12\ntext=INV-1\nwid=210\nxpos=72\nypos=104\n"
                        "\n[currule]\nrule=Invoice\n\n[orbi]\nInvoice=1\n"));
}

void TestRuleStore::savedNamesSurviveARestart_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names{"Invoice",
                            "two words",
                            " blanks around ",
                            "50% off",
                            "%1",
                            "a,b",
                            "a;b",
                            "a=b",
                            "[x]",
                            "\"quoted\"",
                            "it's",
                            "back\\slash",
                            "tab\there",
                            "M\u00fcller & S\u00f6hne",
                            "\u8acb\u6c42\u66f8",
                            "\U0001F4C4",
                            "@Invalid()",
                            "@ByteArray(x)",
                            "General",
                            "%General",
                            "#1",
                            "12"};
    for (const QString &name : names) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

void TestRuleStore::savedNamesSurviveARestart()
{
    QFETCH(QString, name);
    saveRule(name, invoice);
    const QJsonObject after = readInAnotherProcess(name);
    QCOMPARE(after["names"].toArray(), QJsonArray({name}));
    QCOMPARE(after["current"].toString(), name);
    QVERIFY(after["taken"].toBool());
    QCOMPARE(ruleOf(after), invoice);
}

void TestRuleStore::savedTextsSurviveARestart_data()
{
    QTest::addColumn<QString>("text");
    const QStringList texts{"",
                            " ",
                            "INV-1",
                            "Smith, John, \"Jack\"",
                            "a;b=c",
                            "  blanks around  ",
                            "A &amp; B",
                            "100 %",
                            "\u8acb\u6c42\u66f8 \u65e5\u672c",
                            "@Invalid()",
                            "@@at",
                            "\\x41\\n",
                            "tab\there",
                            "0012"};
    for (const QString &text : texts) {
        QTest::newRow(qPrintable('<' + text + '>')) << text;
    }
}

void TestRuleStore::savedTextsSurviveARestart()
{
    QFETCH(QString, text);
    Subtext rule = invoice;
    rule.text = text;
    saveRule(QStringLiteral("Rule"), rule);
    QCOMPARE(ruleOf(readInAnotherProcess(QStringLiteral("Rule"))), rule);
}

void TestRuleStore::namesSpeltLikeGeneralLoseTheirValues()
{
    saveRule(QStringLiteral("general"), invoice);
    const QJsonObject after = readInAnotherProcess(QStringLiteral("general"));
    QCOMPARE(after["names"].toArray(), QJsonArray({"general"}));
    QCOMPARE(ruleOf(after), Subtext());
}

void TestRuleStore::namesWithASlashAreUsableAndTakenButNotListed()
{
    saveRule(QStringLiteral("a/b"), invoice);
    const QJsonObject after = readInAnotherProcess(QStringLiteral("a/b"));
    QVERIFY(after["names"].toArray().isEmpty());
    QVERIFY(after["taken"].toBool());
    QCOMPARE(ruleOf(after), invoice);
    QVERIFY(isRuleNameTaken(QStringLiteral("a//b")));
    QVERIFY(!isRuleNameTaken(QStringLiteral("a")));
}

void TestRuleStore::programSectionsKeepWorkingUnderARuleOfTheirName()
{
    {
        QSettings settings(settingsFileName(), QSettings::IniFormat);
        settings.setValue("dir/input", "/in");
        settings.setValue("file/file", "/in/a.pdf");
        settings.setValue("Image/Image", "Ok");
    }
    const QStringList names{"dir", "file", "Image", "currule", "Set", "Fonts", "Secur", "Annot"};
    for (const QString &name : names) {
        saveRule(name, invoice);
    }
    for (const QString &name : names) {
        QCOMPARE(ruleOf(readInAnotherProcess(name)), invoice);
    }
    const QSettings settings(settingsFileName(), QSettings::IniFormat);
    QCOMPARE(settings.value("dir/input").toString(), QStringLiteral("/in"));
    QCOMPARE(settings.value("file/file").toString(), QStringLiteral("/in/a.pdf"));
    QCOMPARE(settings.value("Image/Image").toString(), QStringLiteral("Ok"));
    QCOMPARE(currentRuleName(), QStringLiteral("Annot"));
}

void TestRuleStore::ruleNamedLikeTheListShowsItsKeysInIt()
{
    saveRule(QStringLiteral("orbi"), invoice);
    const QJsonObject after = readInAnotherProcess(QStringLiteral("orbi"));
    QCOMPARE(after["names"].toArray(), QJsonArray({"hei", "orbi", "text", "wid", "xpos", "ypos"}));
    QCOMPARE(ruleOf(after), invoice);
}

void TestRuleStore::takenMeansTheMarkerIsOne()
{
    writeSettings("[orbi]\none=1\nzero=0\nyes=yes\n");
    QVERIFY(isRuleNameTaken(QStringLiteral("one")));
    QVERIFY(!isRuleNameTaken(QStringLiteral("zero")));
    QVERIFY(!isRuleNameTaken(QStringLiteral("yes")));
    QVERIFY(!isRuleNameTaken(QStringLiteral("other")));
}

void TestRuleStore::markerWithoutValuesReadsAsZeros()
{
    writeSettings("[orbi]\nGone=1\n");
    QCOMPARE(ruleNames(), QStringList{"Gone"});
    QCOMPARE(readRule(QStringLiteral("Gone")), Subtext());
}

void TestRuleStore::missingFileIsEmptyAndStaysMissing()
{
    QCOMPARE(ruleNames(), QStringList());
    QVERIFY(!isRuleNameTaken(QStringLiteral("Invoice")));
    QCOMPARE(readRule(QStringLiteral("Invoice")), Subtext());
    QCOMPARE(currentRuleName(), QString());
    QVERIFY(!QFile::exists(settingsFileName()));
}

void TestRuleStore::unreadableFileIsEmpty()
{
    // A folder of that name can be neither read nor written, whoever runs the test.
    QVERIFY(QDir().mkdir(settingsFileName()));
    QCOMPARE(ruleNames(), QStringList());
    QCOMPARE(readRule(QStringLiteral("Invoice")), Subtext());
}

void TestRuleStore::unwritableFileIsSilent()
{
    QVERIFY(QDir().mkdir(settingsFileName()));
    saveRule(QStringLiteral("Invoice"), invoice);
    QVERIFY(QDir(settingsFileName()).exists());
}

void TestRuleStore::changesMadeByHandAreSeen()
{
    saveRule(QStringLiteral("Invoice"), invoice);
    QCOMPARE(readRule(QStringLiteral("Invoice")).left, 72);
    writeSettings("[Invoice]\nxpos=73\nypos=x\n[orbi]\nInvoice=1\nOther=1\n");
    QCOMPARE(readRule(QStringLiteral("Invoice")), (Subtext{73, 0, 0, 0, QString()}));
    QCOMPARE(ruleNames(), (QStringList{"Invoice", "Other"}));
}

void TestRuleStore::handWrittenListReadsAsText()
{
    writeSettings("[Invoice]\ntext=Smith, John\n[orbi]\nInvoice=1\n");
    QCOMPARE(readRule(QStringLiteral("Invoice")).text, QStringLiteral("Smith, John"));
}

void TestRuleStore::namesAreListedInTheOrderOfTheirCodePoints()
{
    for (const char *name : {"b", "A", "\u00e9", "10", "a", "Z"}) {
        saveRule(QString::fromUtf8(name), invoice);
    }
    QCOMPARE(ruleNames(), (QStringList{"10", "A", "Z", "a", "b", QString::fromUtf8("\u00e9")}));
}

QUORLIN_TEST(TestRuleStore)
QUORLIN_ROLE("--read-rule", describeToParent)

#include "test_rule_store.moc"
