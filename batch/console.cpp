#include "batch/console.h"

#include "batch/progress_line.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace quorlin::batch {

namespace {

constexpr qint64 liveMilliseconds = 100;
constexpr int usualColumns = 80;

void put(std::FILE *stream, const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
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

void Console::showLive(const QString &text)
{
    clearLive();
    put(stdout, text.toUtf8());
    std::fflush(stdout);
    liveShown = true;
    sinceLive.start();
}

void Console::writeProgress(const QString &line)
{
    if (showsProgress && !live) {
        put(stdout, line.toUtf8() + '\n');
    }
}

void Console::writeLine(const QString &line)
{
    clearLive();
    put(stdout, line.toUtf8() + '\n');
}

void Console::complain(const QString &line)
{
    flush();
    clearLive();
    put(stderr, "quorlin-batch: " + printable(line).toUtf8() + '\n');
}

void Console::passOn(const QByteArray &toolText)
{
    flush();
    clearLive();
    put(stderr, toolText);
}

bool Console::flush()
{
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void Console::clearLive()
{
    if (liveShown) {
        put(stdout, "\r\033[K");
        std::fflush(stdout);
        liveShown = false;
    }
}

} // namespace quorlin::batch
