#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

constexpr int longestRun = 120000;

QString source(const QString &name)
{
    return QStringLiteral(QUORLIN_SOURCE_DIR "/") + name;
}

QString textOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The commands of the recipe under a heading of the automation guide, one text for each block.
QStringList recipe(const QString &heading)
{
    const QString guide = textOf(source(QStringLiteral("docs/automation.md")));
    const qsizetype begin = guide.indexOf("\n### " + heading + "\n");
    const QString section = guide.mid(begin + 1).section(QRegularExpression("\n##"), 0, 0);
    QStringList blocks;
    bool isOpen = false;
    for (const QString &line : section.split(u'\n')) {
        const bool isCommand = line.startsWith(QLatin1String("    "));
        if (isCommand && !isOpen) {
            blocks.append(QString());
        }
        isOpen = isCommand;
        if (isCommand) {
            blocks.last() += line.sliced(4) + u'\n';
        }
    }
    return begin < 0 ? QStringList() : blocks;
}

struct ShellResult
{
    int status = -1;
    QString output;
    QString errors;
};

} // namespace

/// The recipes of the automation guide, run as they stand there by a new user: the samples in the
/// inbox, the sample rules beside the program.
class TestRecipes : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aPlanIsApproved();
    void outputsAreImportedIntoAnArchive();
    void everyCustomerGetsAMail();
    void theTimedJobSplitsEveryFileOnce();
    void theTimedJobKeepsQuietAboutAnEmptyInbox();
    void theWatchedFolderMovesFilesByTheirResult();
    void theUnitsForAWatchedFolderAreInOrder();
    void theServiceEmptiesTheInbox();

private:
    ShellResult shell(const QString &commands, const QProcessEnvironment &more = {});
    QString home(const QString &name) const { return root->filePath(name); }
    QStringList files(const QString &folder) const
    {
        return QDir(home(folder)).entryList(QDir::Files, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> root;
};

void TestRecipes::init()
{
    root = std::make_unique<QTemporaryDir>();
    for (const char *folder : {"bin", "inbox", "outbox"}) {
        QVERIFY(QDir(root->path()).mkdir(QLatin1String(folder)));
    }
    const QString built = QStringLiteral(QUORLIN_BIN_DIR "/");
    QVERIFY(QFile::copy(built + "quorlin-batch", home("bin/quorlin-batch")));
    for (const char *tool : {"pagexport", "pagebinder"}) {
        QVERIFY(QFile::link(built + QLatin1String(tool), home("bin/") + QLatin1String(tool)));
    }
    QVERIFY(QFile::copy(source("samples/setting.ini"), home("bin/setting.ini")));
    for (const char *sample : {"statements.pdf", "invoices.pdf"}) {
        QVERIFY(QFile::copy(source(QLatin1String("samples/") + QLatin1String(sample)),
                            home("inbox/") + QLatin1String(sample)));
    }
}

ShellResult TestRecipes::shell(const QString &commands, const QProcessEnvironment &more)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(more);
    environment.insert("HOME", root->path());
    environment.insert("PATH", home("bin") + u':' + environment.value("PATH"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(root->path());
    process.start("/bin/sh", {"-c", commands});
    if (!process.waitForFinished(longestRun)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

void TestRecipes::aPlanIsApproved()
{
    const QStringList blocks = recipe("Plan and approve");
    QCOMPARE(blocks.size(), 2);
    const ShellResult plan = shell(blocks.at(0));
    QCOMPARE(plan.errors, QString());
    QCOMPARE(plan.status, 0);
    QVERIFY(plan.output.contains("1 10-44710 statements 1-3.pdf"));
    QVERIFY(QDir(home("outbox")).isEmpty());
    QCOMPARE(shell(blocks.at(1)).status, 0);
    QCOMPARE(files("outbox/statements").size(), 5);
    QCOMPARE(files("outbox/invoices").size(), 7);
    // What was planned is what was done, apart from sizes and words for it.
    QString planned = textOf(home("plan.csv"));
    QString done = textOf(home("done.csv"));
    planned.replace("planned", "succeeded");
    const QRegularExpression size(",\\d+,succeeded\r");
    QCOMPARE(planned.replace(size, ",succeeded\r"), done.replace(size, ",succeeded\r"));
}

void TestRecipes::outputsAreImportedIntoAnArchive()
{
    if (QStandardPaths::findExecutable("python3").isEmpty()) {
        QSKIP("python3 is not on this machine");
    }
    const QStringList blocks = recipe("Import into an archive");
    QCOMPARE(blocks.size(), 1);
    const ShellResult result = shell(blocks.at(0));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    const ShellResult rows =
        shell("python3 -c \"import sqlite3; print(sqlite3.connect('archive.db').execute("
              "'SELECT count(*), count(DISTINCT customer), min(length(pdf)) > 500 FROM document')"
              ".fetchone())\"");
    QCOMPARE(rows.output, "(12, 5, 1)\n");
}

void TestRecipes::everyCustomerGetsAMail()
{
    if (QStandardPaths::findExecutable("python3").isEmpty()) {
        QSKIP("python3 is not on this machine");
    }
    QFile customers(home("customers.csv"));
    QVERIFY(customers.open(QIODevice::WriteOnly));
    customers.write("10-44710,ada@example.com\n10-51822,ben@example.com\n10-73341,c@example.com\n"
                    "10-88094,d@example.com\n");
    customers.close();
    const QStringList blocks = recipe("One mail for each customer");
    QCOMPARE(blocks.size(), 1);
    const ShellResult result = shell(blocks.at(0));
    QCOMPARE(result.status, 0);
    QCOMPARE(result.errors, "no mail for 10-60359\n");
    const QString mails = textOf(home("outbox/mails.mbox"));
    QCOMPARE(mails.count(QRegularExpression("^To: ", QRegularExpression::MultilineOption)), 4);
    QVERIFY(mails.contains("To: ben@example.com"));
    QVERIFY(mails.contains("filename=\"10-51822.pdf\""));
}

void TestRecipes::theTimedJobSplitsEveryFileOnce()
{
    const QStringList blocks = recipe("A timed job");
    QCOMPARE(blocks.size(), 1);
    const QRegularExpression entry("^0 6 \\* \\* \\*  (.*)\n$");
    const QString command = entry.match(blocks.at(0)).captured(1);
    // cron takes a "%" for a line feed.
    QVERIFY(!command.isEmpty() && !command.contains('%'));
    const ShellResult first = shell(command);
    QCOMPARE(first.output + first.errors, QString());
    QCOMPARE(first.status, 0);
    QCOMPARE(files("outbox/statements").size(), 5);
    QFile mark(home("outbox/statements/") + files("outbox/statements").constFirst());
    QVERIFY(mark.open(QIODevice::WriteOnly));
    mark.write("still the same");
    mark.close();
    const ShellResult second = shell(command);
    QCOMPARE(second.output + second.errors, QString());
    QCOMPARE(second.status, 0);
    QCOMPARE(textOf(mark.fileName()), "still the same");
}

void TestRecipes::theTimedJobKeepsQuietAboutAnEmptyInbox()
{
    for (const QString &name : files("inbox")) {
        QVERIFY(QFile::remove(home("inbox/" + name)));
    }
    const QString command =
        recipe("A timed job").value(0).section(QStringLiteral("*  "), 1).trimmed();
    QVERIFY(command.startsWith("find "));
    const ShellResult result = shell(command);
    QCOMPARE(result.output + result.errors, QString());
    QCOMPARE(result.status, 0);
}

void TestRecipes::theWatchedFolderMovesFilesByTheirResult()
{
    QFile broken(home("inbox/broken.pdf"));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no PDF");
    broken.close();
    // Stands in for the program that waits: it tells of the files that are there, and ends.
    QFile waiting(home("bin/inotifywait"));
    QVERIFY(waiting.open(QIODevice::WriteOnly));
    waiting.write("#!/bin/sh\nfor last; do :; done\nprintf '%s\\n' \"$last\"/*.pdf\n");
    waiting.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    waiting.close();
    const QStringList blocks = recipe("A watched folder");
    QCOMPARE(blocks.size(), 1);
    const ShellResult result = shell(blocks.at(0));
    QVERIFY2(result.errors.contains("broken.pdf: cannot be read as PDF"),
             qPrintable(result.errors));
    QCOMPARE(files("inbox"), QStringList());
    QCOMPARE(files("done"), QStringList({"invoices.pdf", "statements.pdf"}));
    QCOMPARE(files("failed"), QStringList{"broken.pdf"});
    QCOMPARE(files("outbox/invoices").size(), 7);
}

void TestRecipes::theUnitsForAWatchedFolderAreInOrder()
{
    QProcess verify;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", root->path());
    verify.setProcessEnvironment(environment);
    verify.start("systemd-analyze",
                 {"--user", "verify", source("packaging/systemd/quorlin-inbox.path"),
                  source("packaging/systemd/quorlin-inbox.service")});
    if (!verify.waitForStarted()) {
        QSKIP("systemd is not on this machine");
    }
    QVERIFY(verify.waitForFinished(longestRun));
    QVERIFY2(verify.exitCode() == 0, verify.readAllStandardError().constData());
}

void TestRecipes::theServiceEmptiesTheInbox()
{
    const QString unit = textOf(source("packaging/systemd/quorlin-inbox.service"));
    QString command = unit.section("ExecStart=", 1).section(QRegularExpression("'\n"), 0, 0);
    QVERIFY(command.startsWith("/bin/sh -c '"));
    // As systemd reads it: lines are continued, "$$" is a "$".
    command += u'\'';
    command.replace("\\\n", " ").replace("$$", "$");
    QProcessEnvironment more;
    const QRegularExpression variable("Environment=\"QUORLIN_RULE=(.*)\"");
    more.insert("QUORLIN_RULE", variable.match(unit).captured(1));
    const ShellResult result = shell(command, more);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.status, 0);
    QCOMPARE(files("inbox"), QStringList());
    QCOMPARE(files("done").size(), 2);
    QCOMPARE(files("outbox/statements").size(), 5);
    QVERIFY(textOf(source("packaging/systemd/quorlin-inbox.path")).contains("=%h/inbox/*.pdf"));
}

QUORLIN_TEST(TestRecipes)
#include "test_recipes.moc"
