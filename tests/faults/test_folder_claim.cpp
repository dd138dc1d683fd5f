#include "app/folder_claim.h"
#include "app/window_folders.h"
#include "common/folders.h"
#include "tests/support/room.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

using quorlin::FolderClaim;
using State = FolderClaim::State;

namespace {

/// Another process that claims @p what "file" or "folder" and keeps the claim until it is ended.
class OtherHolder
{
public:
    OtherHolder(const QString &what, const QString &path)
    {
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--hold"), what, path});
        process.waitForReadyRead(30000);
        answer = process.readLine().trimmed();
    }
    ~OtherHolder()
    {
        process.closeWriteChannel();
        process.waitForFinished(30000);
    }
    void kill()
    {
        process.kill();
        process.waitForFinished(30000);
    }

    QByteArray answer;

private:
    QProcess process;
};

const char *nameOf(State state)
{
    switch (state) {
    case State::Held:
        return "held";
    case State::Refused:
        return "refused";
    case State::Unavailable:
        break;
    }
    return "unavailable";
}

/// What this program does as a child.
int hold(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString what = QCoreApplication::arguments().value(2);
    const QString path = QCoreApplication::arguments().value(3);
    FolderClaim claim;
    const State state =
        what == QLatin1String("file") ? claim.claimFile(path) : claim.claimFolder(path);
    std::printf("%s\n", nameOf(state));
    std::fflush(stdout);
    std::getchar(); // the parent closes our input when it is done
    return 0;
}

void writeFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("%s cannot be written", qPrintable(path));
    }
}

} // namespace

class TestFolderClaim : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aClaimedFileIsRefusedToAnotherProcess();
    void aClaimedFolderIsRefusedToAnotherProcess();
    void theClaimOfAKilledProcessIsGone();
    void theClaimsFileIsForItsOwnerOnlyAndGoesWithTheClaim();
    void aFileLeftBehindBlocksNobody();
    void aPlantedLinkRefusesAndItsTargetStays();
    void aPlantedFolderRefuses();
    void aMissingFolderTakesNoClaims();

    void theFirstWindowUsesTheCommonFolders();
    void aSecondWindowGetsPrivateFoldersThatGoWithIt();
    void pagesOfAnotherUserAreLeftAlone();
    void withoutATemporaryFolderTheWindowGoesOn();

private:
    QString path(const char *name) const { return folder->filePath(QLatin1String(name)); }

    std::unique_ptr<QTemporaryDir> folder;
    QByteArray earlierTemporary;
};

void TestFolderClaim::init()
{
    folder = std::make_unique<QTemporaryDir>();
    earlierTemporary = qgetenv("TMPDIR");
    QDir().mkpath(path("temporary"));
    QDir().mkpath(path("application"));
    qputenv("TMPDIR", QFile::encodeName(path("temporary")));
    quorlin::setApplicationFolder(path("application"));
}

void TestFolderClaim::cleanup()
{
    quorlin::setApplicationFolder({});
    if (earlierTemporary.isNull()) {
        qunsetenv("TMPDIR");
    } else {
        qputenv("TMPDIR", earlierTemporary);
    }
    folder.reset();
}

void TestFolderClaim::aClaimedFileIsRefusedToAnotherProcess()
{
    FolderClaim claim;
    QCOMPARE(claim.claimFile(path("lock")), State::Held);
    const OtherHolder other(QStringLiteral("file"), path("lock"));
    QCOMPARE(other.answer, "refused");
}

void TestFolderClaim::aClaimedFolderIsRefusedToAnotherProcess()
{
    FolderClaim claim;
    QCOMPARE(claim.claimFolder(folder->path()), State::Held);
    const OtherHolder other(QStringLiteral("folder"), folder->path());
    QCOMPARE(other.answer, "refused");
}

void TestFolderClaim::theClaimOfAKilledProcessIsGone()
{
    OtherHolder other(QStringLiteral("file"), path("lock"));
    QCOMPARE(other.answer, "held");
    FolderClaim claim;
    QCOMPARE(claim.claimFile(path("lock")), State::Refused);
    other.kill();
    QVERIFY(QFile::exists(path("lock")));
    QCOMPARE(claim.claimFile(path("lock")), State::Held);
}

void TestFolderClaim::theClaimsFileIsForItsOwnerOnlyAndGoesWithTheClaim()
{
    {
        FolderClaim claim;
        QCOMPARE(claim.claimFile(path("lock")), State::Held);
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(path("lock")).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, mode_t(0600));
    }
    QVERIFY(!QFile::exists(path("lock")));
}

void TestFolderClaim::aFileLeftBehindBlocksNobody()
{
    writeFile(path("lock"));
    FolderClaim claim;
    QCOMPARE(claim.claimFile(path("lock")), State::Held);
}

void TestFolderClaim::aPlantedLinkRefusesAndItsTargetStays()
{
    writeFile(path("victim"));
    QVERIFY(QFile::link(path("victim"), path("lock")));
    {
        FolderClaim claim;
        QCOMPARE(claim.claimFile(path("lock")), State::Refused);
    }
    QVERIFY(QFile::exists(path("victim")));
    QVERIFY(QFileInfo(path("lock")).isSymLink());
}

void TestFolderClaim::aPlantedFolderRefuses()
{
    QVERIFY(QDir().mkdir(path("lock")));
    FolderClaim claim;
    QCOMPARE(claim.claimFile(path("lock")), State::Refused);
}

void TestFolderClaim::aMissingFolderTakesNoClaims()
{
    FolderClaim claim;
    QCOMPARE(claim.claimFile(path("none/lock")), State::Unavailable);
    QCOMPARE(claim.claimFolder(path("none")), State::Unavailable);
}

void TestFolderClaim::theFirstWindowUsesTheCommonFolders()
{
    const quorlin::WindowFolders folders;
    QVERIFY(!folders.hasPrivatePages());
    QVERIFY(!folders.hasPrivateTools());
    QCOMPARE(quorlin::temporaryFolder(), QFileInfo(path("temporary")).canonicalFilePath());
    QCOMPARE(quorlin::applicationFolder(), path("application"));
}

void TestFolderClaim::aSecondWindowGetsPrivateFoldersThatGoWithIt()
{
    writeFile(path("application/pagexport"));
    writeFile(path("application/pagebinder"));
    const OtherHolder pages(QStringLiteral("file"), path("temporary/quorlin-cleaver.lock"));
    const OtherHolder tools(QStringLiteral("folder"), path("application"));
    {
        const quorlin::WindowFolders folders;
        QVERIFY(folders.hasPrivatePages());
        QVERIFY(folders.hasPrivateTools());
        const QString pageFolder = quorlin::temporaryFolder();
        QVERIFY(pageFolder.startsWith(QFileInfo(path("temporary")).canonicalFilePath() +
                                      QLatin1Char('/')));
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(pageFolder).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, mode_t(0700));
        QVERIFY(quorlin::applicationFolder() != path("application"));
        for (const char *tool : {"/pagexport", "/pagebinder"}) {
            QCOMPARE(
                QFileInfo(quorlin::applicationFolder() + QLatin1String(tool)).canonicalFilePath(),
                QFileInfo(path("application") + QLatin1String(tool)).canonicalFilePath());
        }
        writeFile(pageFolder + QStringLiteral("/split_pg_0001.htm"));
    }
    QCOMPARE(quorlin::applicationFolder(), path("application"));
    QCOMPARE(quorlin::temporaryFolder(), QFileInfo(path("temporary")).canonicalFilePath());
    QCOMPARE(QDir(path("temporary")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("quorlin-cleaver.lock")});
    QVERIFY(QFile::exists(path("application/pagexport")));
}

void TestFolderClaim::pagesOfAnotherUserAreLeftAlone()
{
    const QString page = path("temporary/split_pg_0001.htm");
    writeFile(page);
    const bool asRoot = ::geteuid() == 0;
    if (asRoot) {
        QCOMPARE(::chown(QFile::encodeName(page).constData(), 12345, 12345), 0);
    }
    const quorlin::WindowFolders folders;
    // Only root can give a file away; for anyone else the page stays an own one.
    QCOMPARE(folders.hasPrivatePages(), asRoot);
    QVERIFY(QFile::exists(page));
}

void TestFolderClaim::withoutATemporaryFolderTheWindowGoesOn()
{
    qputenv("TMPDIR", QFile::encodeName(path("none")));
    const quorlin::WindowFolders folders;
    QVERIFY(!folders.hasPrivateTools());
}

QUORLIN_TEST(TestFolderClaim)
QUORLIN_ROLE("--hold", hold)
#include "test_folder_claim.moc"
