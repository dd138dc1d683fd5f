#include "batch/console.h"

#include "batch/shown_text.h"

#include <QList>

#include <cerrno>

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace quorlin::batch {

namespace {

constexpr qint64 liveMilliseconds = 100;
constexpr int usualColumns = 80;

void putError(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

} // namespace

Console::Console(bool quiet) : showsProgress(!quiet), live(!quiet && isatty(STDOUT_FILENO) != 0) {}

bool Console::isLiveDue() const
{
    return live && (!sinceLive.isValid() || sinceLive.elapsed() >= liveMilliseconds);
}

int Console::columns() const
{
    winsize size = {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col < 2) {
        return usualColumns;
    }
    // A line that fills the last column would wrap on some terminals.
    return size.ws_col - 1;
}

void Console::giveAwayOutput()
{
    showsProgress = false;
    showsResults = false;
    live = false;
}

void Console::showLive(const QString &text)
{
    clearLive();
    put(text.toUtf8());
    flush();
    liveShown = true;
    sinceLive.start();
}

void Console::writeProgress(const QString &line)
{
    if (showsProgress && !live) {
        put(line.toUtf8() + '\n');
    }
}

void Console::writeLine(const QString &line)
{
    if (showsResults) {
        clearLive();
        put(line.toUtf8() + '\n');
    }
}

void Console::complain(const QString &line)
{
    flush();
    clearLive();
    putError("quorlin-batch: " + printable(line).toUtf8() + '\n');
}

void Console::passOn(const QString &file, const QByteArray &toolText)
{
    flush();
    clearLive();
    for (const QByteArray &line : toolText.split('\n')) {
        if (!line.isEmpty()) {
            putError(printable(file + QStringLiteral(": ") + QString::fromUtf8(line)).toUtf8() +
                     '\n');
        }
    }
}

void Console::put(const QByteArray &bytes)
{
    errno = 0;
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    readerGone = readerGone || errno == EPIPE;
}

bool Console::flush()
{
    errno = 0;
    const bool flushed = std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
    readerGone = readerGone || errno == EPIPE;
    return flushed;
}

bool Console::hasLostReader() const
{
    if (readerGone) {
        return true;
    }
    pollfd output = {STDOUT_FILENO, 0, 0};
    return poll(&output, 1, 0) > 0 && (output.revents & POLLERR) != 0;
}

void Console::clearLive()
{
    if (liveShown) {
        put("\r\033[K");
        flush();
        liveShown = false;
    }
}

} // namespace quorlin::batch
