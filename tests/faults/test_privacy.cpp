#include "options/opdialog.h"
#include "tests/faults/real_bench.h"
#include "tests/options/opdialog_fixture.h"
#include "tests/support/programs.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

using quorlin::test::RealBench;

namespace {

const QString userPassword = QStringLiteral("user-pass-4711");
const QString ownerPassword = QStringLiteral("owner-pass-0815");
/// Stands on every page of a statement, away from the rule's position.
const QString pageText = QStringLiteral("Page 1 of");

QStringList logged;

void keepMessage(QtMsgType, const QMessageLogContext &, const QString &message)
{
    logged.append(message);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool holdsSecret(const QString &text)
{
    return text.contains(userPassword) || text.contains(ownerPassword) || text.contains(pageText);
}

} // namespace

/// What a run tells the log, the pane, its tools and the error stream.
class TestPrivacy : public QObject
{
    Q_OBJECT

private slots:
    void aRunTellsNobodyPasswordsAndPageTexts();
    void theRunnerTellsNobodyPageTexts_data();
    void theRunnerTellsNobodyPageTexts();
};

void TestPrivacy::aRunTellsNobodyPasswordsAndPageTexts()
{
    RealBench bench;
    const QString good =
        bench.addStatements(QStringLiteral("good.pdf"), {QStringLiteral("A"), QStringLiteral("B")});
    const QString locked = bench.folders.inputs() + QStringLiteral("/locked.pdf");
    QCOMPARE(QProcess::execute(QStringLiteral("qpdf"),
                               {QStringLiteral("--encrypt"), userPassword, ownerPassword,
                                QStringLiteral("256"), QStringLiteral("--"), good, locked}),
             0);
    // The tools' commands, surroundings and complaints, side by side with the run.
    const QString heard = bench.folders.temporary() + QStringLiteral("/heard");
    const QByteArray listen = "{ echo \"$0 $*\"; env; } >>'" + QFile::encodeName(heard) +
                              "'\n\"$REAL\" \"$@\" 2>>'" + QFile::encodeName(heard) + "'\n";
    bench.replaceTool(QStringLiteral("pagebinder"), listen);
    bench.replaceTool(QStringLiteral("pagexport"), listen);

    logged.clear();
    const QtMessageHandler earlier = qInstallMessageHandler(keepMessage);
    {
        OpDialog dialog;
        open(dialog);
        openPage(dialog, 2);
        type(dialog, "lineEdit_userpassword", userPassword);
        type(dialog, "lineEdit_ownerpassword", ownerPassword);
        QTest::mouseClick(child(dialog, "pushButton_apply"), Qt::LeftButton);
    }
    bench.list({good, locked});
    bench.setOutputFolder(bench.folders.outputs());
    bench.split();
    qInstallMessageHandler(earlier);

    // They were typed and kept, where the options say, and nowhere else.
    const QString settings = QString::fromUtf8(contentOf(bench.folders.settingsFile()));
    QVERIFY(settings.contains(userPassword));
    QVERIFY(settings.contains(ownerPassword));
    QCOMPARE(bench.column(3), QStringList({QStringLiteral("Succeed"), QStringLiteral("Failed")}));
    const QString told = QString::fromUtf8(contentOf(heard));
    QVERIFY(told.contains(QStringLiteral("-getinfo")));
    QVERIFY(told.contains(QStringLiteral("needs a password")));
    QVERIFY(!holdsSecret(told));
    QVERIFY(!logged.filter(QStringLiteral("-getinfo")).isEmpty());
    QVERIFY(!holdsSecret(logged.join(QLatin1Char('\n'))));
    QVERIFY(!holdsSecret(bench.paneLines().join(QLatin1Char('\n'))));
    QVERIFY(!holdsSecret(QString::fromUtf8(
        contentOf(bench.folders.application() + QStringLiteral("/pdfinfo.txt")))));
}

void TestPrivacy::theRunnerTellsNobodyPageTexts_data()
{
    QTest::addColumn<QString>("temporary");
    QTest::newRow("run") << "temporary";
    QTest::newRow("missing temporary folder") << "none";
}

void TestPrivacy::theRunnerTellsNobodyPageTexts()
{
    QFETCH(QString, temporary);
    RealBench bench;
    const QString input =
        bench.addStatements(QStringLiteral("in.pdf"), {QStringLiteral("A"), QStringLiteral("B")});
    QProcess runner;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"),
                       bench.folders.temporary() + QLatin1Char('/') +
                           (temporary == QLatin1String("none") ? temporary : QString()));
    runner.setProcessEnvironment(environment);
    runner.start(quorlin::test::startedPrograms() + QStringLiteral("/quorlin-batch"),
                 {QStringLiteral("--verbose"), QStringLiteral("--position"),
                  QStringLiteral("108,123"), QStringLiteral("--output"), bench.folders.outputs(),
                  input});
    QVERIFY(runner.waitForFinished(60000));
    const QString errors = QString::fromUtf8(runner.readAllStandardError());
    const QString output = QString::fromUtf8(runner.readAllStandardOutput());
    QVERIFY(!holdsSecret(errors));
    QVERIFY(!holdsSecret(output));
    QCOMPARE(runner.exitCode(), 0);
    QVERIFY(errors.contains(QStringLiteral("-getinfo")));
    QCOMPARE(bench.folders.outputFiles().size(), 2);
    QVERIFY(bench.inputsAreUntouched());
}

QUORLIN_TEST(TestPrivacy)
#include "test_privacy.moc"
