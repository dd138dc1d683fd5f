#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>

#include <cstdio>

namespace quorlin::batch {

/// What the runner prints. On a terminal progress is one line that is rewritten; elsewhere every
/// progress line is written as it is. Results go to standard output, complaints and the tools'
/// words to the error stream.
class Console
{
public:
    /// @param quiet leaves the progress out
    explicit Console(bool quiet);
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;

    /// Leaves standard output to somebody else: progress and results are no longer printed there.
    void giveAwayOutput();
    bool isOutputGivenAway() const { return !showsResults; }

    /// Whether progress is shown as one line that is rewritten.
    bool isLive() const { return live; }
    /// Whether the live line may be drawn again: it is at most every tenth of a second.
    bool isLiveDue() const;
    /// Width of the terminal in characters.
    int columns() const;

    /// Replaces the live line.
    void showLive(const QString &text);
    /// Writes one progress line, where progress is written line by line.
    void writeProgress(const QString &line);
    /// Writes one line to standard output.
    void writeLine(const QString &line);
    /// Writes one line to the error stream, with the program's name in front.
    void complain(const QString &line);
    /// Hands on the lines that a tool wrote on its error stream about @p file, with its name in
    /// front of each.
    void passOn(const QString &file, const QByteArray &toolText);
    /// Writes out what is still buffered. False when standard output took not everything.
    bool flush();
    /// Whether whoever read standard output has gone away. Nothing has to be written to see it.
    bool hasLostReader() const;

private:
    void put(const QByteArray &bytes);
    void clearLive();

    bool showsProgress;
    bool live;
    bool showsResults = true;
    bool liveShown = false;
    bool readerGone = false;
    QElapsedTimer sinceLive;
};

} // namespace quorlin::batch
