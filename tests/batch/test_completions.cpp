#include "batch/option_table.h"
#include "runner_process.h"
#include "tests/support/room.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

using namespace quorlin::batch;

namespace {

QString textOf(const char *name)
{
    QFile file(QStringLiteral(QUORLIN_SOURCE_DIR "/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// What bash offers behind @p line, whose last word is being typed.
QStringList offered(const QStringList &words)
{
    QProcess bash;
    QString script = QStringLiteral("source \"$1\"; shift\nCOMP_WORDS=(\"$@\")\n"
                                    "COMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_quorlin_batch\n"
                                    "printf '%s\\n' \"${COMPREPLY[@]}\"");
    bash.start("bash", QStringList{"--norc", "-c", script, "bash",
                                   QStringLiteral(QUORLIN_SOURCE_DIR
                                                  "/packaging/completions/quorlin-batch.bash"),
                                   runnerPath()} +
                           words);
    if (!bash.waitForFinished()) {
        return {"bash does not end"};
    }
    return QString::fromUtf8(bash.readAllStandardOutput() + bash.readAllStandardError())
        .split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

/// The completions of the shells and the manual page know the options that the program knows.
class TestCompletions : public QObject
{
    Q_OBJECT

private slots:
    void everyOptionIsKnown_data();
    void everyOptionIsKnown();
    void bashCompletesOptions();
    void bashCompletesValues();
    void bashCompletesRules();
    void zshReadsItsCompletion();
};

void TestCompletions::everyOptionIsKnown_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("bash") << textOf("packaging/completions/quorlin-batch.bash");
    QTest::newRow("zsh") << textOf("packaging/completions/_quorlin-batch");
    QTest::newRow("manual page") << textOf("packaging/man/quorlin-batch.1").remove(u'\\');
    QTest::newRow("help") << helpText();
}

void TestCompletions::everyOptionIsKnown()
{
    QFETCH(QString, text);
    for (const OptionGroup &group : optionGroups()) {
        for (const Option &option : group.options) {
            const QRegularExpression word(QStringLiteral("(?<![\\w-])--") +
                                          QLatin1String(option.name) +
                                          QStringLiteral("(?![\\w-])"));
            QVERIFY2(word.match(text).hasMatch(), option.name);
        }
    }
    // And no others.
    const QRegularExpression any("(?<![\\w-])--([a-z][a-z-]*)");
    for (auto match = any.globalMatch(text); match.hasNext();) {
        const QString name = match.next().captured(1);
        QVERIFY2(helpText().contains("--" + name), qPrintable(name));
    }
}

void TestCompletions::bashCompletesOptions()
{
    QCOMPARE(offered({"--pa"}), QStringList({"--pages-without-text", "--password-file", "--page"}));
    QCOMPARE(offered({"--rule", "x", "--exi"}), QStringList{"--existing"});
}

void TestCompletions::bashCompletesValues()
{
    QCOMPARE(offered({"--existing", ""}), QStringList({"replace", "skip", "fail"}));
    QCOMPARE(offered({"--pages-without-text", "d"}), QStringList{"drop"});
    QCOMPARE(offered({"--method", ""}), QStringList({"1", "2", "3"}));
    QCOMPARE(offered({"--after", ""}), QStringList());
}

void TestCompletions::bashCompletesRules()
{
    const QString settings = QStringLiteral(QUORLIN_SAMPLES_DIR "/setting.ini");
    QCOMPARE(offered({"--settings", settings, "--rule", "Cus"}), QStringList{"Customer\\ number"});
}

void TestCompletions::zshReadsItsCompletion()
{
    QProcess zsh;
    zsh.start("zsh",
              {"-n", QStringLiteral(QUORLIN_SOURCE_DIR "/packaging/completions/_quorlin-batch")});
    if (!zsh.waitForStarted()) {
        QSKIP("zsh is not on this machine");
    }
    QVERIFY(zsh.waitForFinished());
    QVERIFY2(zsh.exitCode() == 0, zsh.readAllStandardError().constData());
}

QUORLIN_TEST(TestCompletions)
#include "test_completions.moc"
