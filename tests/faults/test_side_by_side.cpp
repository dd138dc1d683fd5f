#include "app/message_log.h"
#include "app/window_folders.h"
#include "tests/faults/real_bench.h"
#include "tests/faults/statements.h"

#include "common/folders.h"
#include "tests/support/programs.h"
#include "tests/support/room.h"
#include "tests/support/waiting.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <memory>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

using quorlin::test::ScratchFolders;
using quorlin::test::statementPdf;

namespace {

/// The input that is long enough for its runner to be killed on the way.
constexpr int longInput = 9;

int pagesOfInput(int number)
{
    return number == longInput ? 9000 : 60;
}

constexpr int pagesOfAnOutput = 3;
const QString secret = QStringLiteral("Secret");

/// Texts of an input of window or runner @p number: each stands on three pages.
QStringList textsOf(int number)
{
    QStringList texts;
    for (int page = 0; page < pagesOfInput(number); ++page) {
        texts.append(
            QStringLiteral("%1-%2-%3").arg(secret).arg(number).arg(page / pagesOfAnOutput));
    }
    return texts;
}

/// The outputs that belong to the input "inN.pdf" with these texts, sorted.
QStringList outputsOf(int number)
{
    QStringList outputs;
    for (int group = 0; group < pagesOfInput(number) / pagesOfAnOutput; ++group) {
        outputs.append(QStringLiteral("in%1/%2 %3-%1-%4 in%1 %5-%6.pdf")
                           .arg(number)
                           .arg(group + 1)
                           .arg(secret)
                           .arg(group)
                           .arg(group * pagesOfAnOutput + 1)
                           .arg((group + 1) * pagesOfAnOutput));
    }
    outputs.sort();
    return outputs;
}

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator iterator(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        files.append(QDir(folder).relativeFilePath(iterator.next()));
    }
    files.sort();
    return files;
}

/// Makes what the children of this program leave behind its own children, so that they can be
/// waited for.
void adoptOrphans()
{
#ifdef Q_OS_LINUX
    prctl(PR_SET_CHILD_SUBREAPER, 1);
#endif
}

/// Whether no process of @p group is left.
bool isGone(pid_t group)
{
    while (waitpid(-group, nullptr, WNOHANG) > 0) {
    }
    return kill(-group, 0) != 0 && errno == ESRCH;
}

/// What this program does as a child: a main window of its own, as start-up makes it, splits
/// @p input into @p output three times over.
int splitInAWindow(const QString &application, const QString &input, const QString &output)
{
    quorlin::setApplicationFolder(application);
    QDir::setCurrent(application);
    const quorlin::WindowFolders folders;
    Process window;
    window.show();
    int finished = 0;
    window.progressObserver = [&](const QString &line) {
        finished += line == QLatin1String("Conversion Finished.") ? 1 : 0;
    };
    // Everyone begins at the same time: when the parent says so.
    std::printf("%s\n",
                folders.hasPrivatePages() && folders.hasPrivateTools() ? "private" : "common");
    std::fflush(stdout);
    std::getchar();
    window.addFiles({input});
    auto *split = window.findChild<QPushButton *>(QStringLiteral("runButton"));
    window.findChild<QLineEdit *>(QStringLiteral("outputfolderEdit"))->setText(output);
    for (int run = 1; run <= 3; ++run) {
        if (!quorlin::test::waitUntil([&] { return split->isEnabled(); }, 60000)) {
            return 1;
        }
        QTest::mouseClick(split, Qt::LeftButton);
        if (!quorlin::test::waitUntil([&] { return finished == run; }, 120000)) {
            return 1;
        }
    }
    std::getchar(); // the folders stay until everyone has been looked at
    return 0;
}

int beWindow(int argc, char **argv)
{
    qInstallMessageHandler(customMessageHandler);
    const QApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    return splitInAWindow(words.value(2), words.value(3), words.value(4));
}

} // namespace

/// Windows and runs of the headless runner at the same time, as processes of their own.
class TestSideBySide : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void twoWindowsKeepTheirPagesApart();
    void aWindowBesideRunsOfTheRunner();
    void eightRunsAtOnce();
    void aKilledRunnerLeavesWholeOutputsOnly();
    void theLogHoldsNoPageText();

private:
    QString addInput(int number) const;
    QString outputOf(int number) const;
    std::unique_ptr<QProcess> startWindow(int number, const QByteArray &expected) const;
    std::unique_ptr<QProcess> startRunner(int number, const QStringList &more = {}) const;

    std::unique_ptr<ScratchFolders> folders;
};

void TestSideBySide::init()
{
    folders = std::make_unique<ScratchFolders>();
    for (const char *tool : {"/pagexport", "/pagebinder"}) {
        QVERIFY(QFile::link(quorlin::test::startedPrograms() + QLatin1String(tool),
                            folders->application() + QLatin1String(tool)));
    }
    folders->saveRule(QStringLiteral("Account"), quorlin::test::statementLeft,
                      quorlin::test::statementTop);
}

void TestSideBySide::cleanup()
{
    folders.reset();
}

QString TestSideBySide::addInput(int number) const
{
    return folders->addInput(QStringLiteral("in%1.pdf").arg(number), statementPdf(textsOf(number)));
}

QString TestSideBySide::outputOf(int number) const
{
    const QString folder = folders->outputs() + QLatin1Char('/') + QString::number(number);
    QDir().mkpath(folder);
    return folder;
}

std::unique_ptr<QProcess> TestSideBySide::startWindow(int number, const QByteArray &expected) const
{
    auto window = std::make_unique<QProcess>();
    window->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    window->start(
        QCoreApplication::applicationFilePath(),
        {QStringLiteral("--window"), folders->application(), addInput(number), outputOf(number)});
    window->waitForReadyRead(30000);
    if (window->readLine().trimmed() != expected) {
        qWarning("The window does not use the folders that it should");
        return nullptr;
    }
    return window;
}

std::unique_ptr<QProcess> TestSideBySide::startRunner(int number, const QStringList &more) const
{
    auto runner = std::make_unique<QProcess>();
    runner->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    runner->setStandardOutputFile(QProcess::nullDevice());
    runner->setChildProcessModifier([] { setpgid(0, 0); });
    runner->start(quorlin::test::startedPrograms() + QStringLiteral("/quorlin-batch"),
                  QStringList{QStringLiteral("--position"),
                              QStringLiteral("%1,%2")
                                  .arg(quorlin::test::statementLeft)
                                  .arg(quorlin::test::statementTop),
                              QStringLiteral("--output"), outputOf(number), addInput(number)} +
                      more);
    return runner;
}

void TestSideBySide::twoWindowsKeepTheirPagesApart()
{
    const auto first = startWindow(1, "common");
    const auto second = startWindow(2, "private");
    QVERIFY(first && second);
    first->write("g");
    second->write("g");
    for (const auto &window : {first.get(), second.get()}) {
        window->write("e");
        QVERIFY(window->waitForFinished(180000));
        QCOMPARE(window->exitCode(), 0);
    }
    QCOMPARE(filesBelow(outputOf(1)), outputsOf(1));
    QCOMPARE(filesBelow(outputOf(2)), outputsOf(2));
    // The first window's pages stay, as ever; of the second nothing is left.
    const QStringList left =
        QDir(folders->temporary())
            .entryList({QStringLiteral("quorlin*")}, QDir::AllEntries | QDir::Hidden);
    QVERIFY2(left.isEmpty(), qPrintable(left.join(QLatin1Char(' '))));
    QVERIFY(QFile::exists(folders->temporary() + QStringLiteral("/split.xml")));
}

void TestSideBySide::aWindowBesideRunsOfTheRunner()
{
    const auto window = startWindow(1, "common");
    QVERIFY(window);
    window->write("ge");
    for (int number = 2; number <= 4; ++number) {
        const auto runner = startRunner(number);
        QVERIFY(runner->waitForFinished(120000));
        QCOMPARE(runner->exitCode(), 0);
        QCOMPARE(filesBelow(outputOf(number)), outputsOf(number));
    }
    QVERIFY(window->waitForFinished(180000));
    QCOMPARE(window->exitCode(), 0);
    QCOMPARE(filesBelow(outputOf(1)), outputsOf(1));
}

void TestSideBySide::eightRunsAtOnce()
{
    std::vector<std::unique_ptr<QProcess>> runners;
    for (int number = 1; number <= 8; ++number) {
        runners.push_back(startRunner(number));
    }
    for (const auto &runner : runners) {
        QVERIFY(runner->waitForFinished(180000));
        QCOMPARE(runner->exitCode(), 0);
    }
    for (int number = 1; number <= 8; ++number) {
        QCOMPARE(filesBelow(outputOf(number)), outputsOf(number));
    }
    QVERIFY(QDir(folders->temporary()).isEmpty());
}

void TestSideBySide::aKilledRunnerLeavesWholeOutputsOnly()
{
    adoptOrphans();
    const auto runner = startRunner(longInput);
    QVERIFY(QTest::qWaitFor([this] { return !filesBelow(outputOf(longInput)).isEmpty(); }, 60000));
    const auto group = static_cast<pid_t>(runner->processId());
    runner->kill();
    QVERIFY(runner->waitForFinished(120000));
    // Its tool notices that nobody listens any more.
    QVERIFY(QTest::qWaitFor([group] { return isGone(group); }, 60000));
    const QStringList outputs = filesBelow(outputOf(longInput));
    const QStringList whole = outputsOf(longInput);
    QVERIFY(outputs.size() < whole.size());
    for (const QString &output : outputs) {
        QVERIFY2(whole.contains(output), qPrintable(output));
        QCOMPARE(quorlin::test::pagesOf(outputOf(longInput) + QLatin1Char('/') + output),
                 pagesOfAnOutput);
    }
}

void TestSideBySide::theLogHoldsNoPageText()
{
    const QString data = folders->temporary() + QStringLiteral("/data");
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    QDir().mkpath(data + QLatin1Char('/') + program);
    qputenv("XDG_DATA_HOME", QFile::encodeName(data));
    const auto window = startWindow(1, "common");
    qunsetenv("XDG_DATA_HOME");
    QVERIFY(window);
    window->write("ge");
    QVERIFY(window->waitForFinished(180000));
    const QStringList lines = quorlin::test::linesOf(data + QLatin1Char('/') + program +
                                                     QStringLiteral("/splitterlog.txt"));
    QVERIFY(!lines.filter(QStringLiteral("-getinfo")).isEmpty());
    QCOMPARE(lines.filter(secret), QStringList());
}

QUORLIN_TEST(TestSideBySide)
QUORLIN_ROLE("--window", beWindow)
#include "test_side_by_side.moc"
