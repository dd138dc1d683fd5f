#include "tools/pagexport/output/export_cleanup.h"

#include "tools/common/ending_signals.h"
#include "tools/pagexport/output/export_names.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>

namespace tools {

namespace {

// A signal handler may touch nothing but these and a few system calls.
std::atomic<const ExportNames *> watched = nullptr;
std::atomic<int> watchedFolder = -1;
std::atomic<int> lastPage = 0; ///< of those whose files may exist
std::atomic<int> creating = 0; ///< threads that create a file just now
std::atomic<bool> isEnding = false;
thread_local int createdHere = 0;

constexpr int longestWait = 1000; // milliseconds

void waitForOthers()
{
    for (int i = 0; i < longestWait && creating > createdHere; ++i) {
        poll(nullptr, 0, 1);
    }
}

void cleanUp()
{
    if (const ExportNames *names = watched.exchange(nullptr)) {
        isEnding = true;
        waitForOthers();
        removeExport(watchedFolder, *names);
    }
}

} // namespace

void removeExportOnSignals(int folder, const ExportNames &names)
{
    lastPage = 0;
    watchedFolder = folder;
    watched = &names;
    callBeforeEnding(cleanUp);
}

void forgetExport() noexcept
{
    watched = nullptr;
}

CreatingFile::CreatingFile(int number) noexcept
{
    ++creating;
    ++createdHere;
    if (isEnding) {
        --creating;
        for (;;) {
            poll(nullptr, 0, longestWait);
        }
    }
    int known = lastPage;
    while (known < number && !lastPage.compare_exchange_weak(known, number)) {
    }
}

CreatingFile::~CreatingFile()
{
    --createdHere;
    --creating;
}

void removeExport(int folder, const ExportNames &names) noexcept
{
    unlinkat(folder, names.unfinishedIndex(), 0);
    unlinkat(folder, names.index(), 0);
    const int last = std::min<int>(lastPage, names.mostPages());
    for (int number = 1; number <= last; ++number) {
        unlinkat(folder, names.page(number), 0);
        if (names.hasPictures()) {
            unlinkat(folder, names.picture(number), 0);
        }
    }
}

} // namespace tools
