#include "app/window_folders.h"

#include "common/folders.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdlib>

#include <unistd.h>

namespace quorlin {

namespace {

WindowFolders *current = nullptr; ///< the one object of the process

std::unique_ptr<QTemporaryDir> makePrivateFolder(const QString &parent)
{
    auto folder =
        std::make_unique<QTemporaryDir>(parent + QStringLiteral("/quorlin-cleaver-XXXXXX"));
    return folder->isValid() ? std::move(folder) : nullptr;
}

bool holdsForeignPages(const QString &temporary)
{
    const QFileInfoList pages =
        QDir(temporary).entryInfoList({QStringLiteral("split.xml"), QStringLiteral("split_pg_*"),
                                       QStringLiteral("text.xml"), QStringLiteral("text_pg_*")},
                                      QDir::AllEntries | QDir::System | QDir::Hidden);
    return std::any_of(pages.begin(), pages.end(),
                       [](const QFileInfo &page) { return page.ownerId() != uint(::geteuid()); });
}

bool linkTools(const QString &application, const QString &folder)
{
    return QFile::link(application + QStringLiteral("/pagexport"),
                       folder + QStringLiteral("/pagexport")) &&
           QFile::link(application + QStringLiteral("/pagebinder"),
                       folder + QStringLiteral("/pagebinder"));
}

} // namespace

WindowFolders::WindowFolders()
{
    static const int registered = std::atexit(takeBackAtExit);
    Q_UNUSED(registered);
    current = this;
    // Both are asked for before either changes: private tools must not lie in private pages.
    const QString temporary = temporaryFolder();
    const QString application = applicationFolder();
    const FolderClaim::State pagesState =
        temporaryClaim.claimFile(temporary + QStringLiteral("/quorlin-cleaver.lock"));
    const FolderClaim::State toolsState = applicationClaim.claimFolder(application);
    if (pagesState == FolderClaim::State::Refused || holdsForeignPages(temporary)) {
        usePrivatePages(temporary);
    }
    if (toolsState == FolderClaim::State::Refused) {
        usePrivateTools(application, temporary);
    }
}

WindowFolders::~WindowFolders()
{
    takeBack();
    current = nullptr;
}

void WindowFolders::takeBackAtExit()
{
    if (current != nullptr) {
        current->takeBack();
    }
}

void WindowFolders::takeBack()
{
    if (pages) {
        if (commonTemporary.isNull()) {
            qunsetenv("TMPDIR");
        } else {
            qputenv("TMPDIR", commonTemporary);
        }
    }
    if (tools) {
        setApplicationFolder(commonApplication);
    }
    pages.reset();
    tools.reset();
    temporaryClaim.release();
    applicationClaim.release();
}

void WindowFolders::usePrivatePages(const QString &temporary)
{
    pages = makePrivateFolder(temporary);
    if (pages) {
        commonTemporary = qgetenv("TMPDIR");
        qputenv("TMPDIR", QFile::encodeName(pages->path()));
    }
}

void WindowFolders::usePrivateTools(const QString &application, const QString &temporary)
{
    tools = makePrivateFolder(temporary);
    if (tools && !linkTools(application, tools->path())) {
        tools.reset();
    }
    if (tools) {
        commonApplication = application;
        setApplicationFolder(tools->path());
    }
}

} // namespace quorlin
