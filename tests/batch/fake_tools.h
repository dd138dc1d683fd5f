#pragma once

#include <QString>
#include <QStringList>

/// Tools that keep the contract of the real ones over plain text files: every line of an input is a
/// page, and stands on it at the position position(). They refuse an input that is not the one they
/// are told of. What a file's name holds makes them fail:
///   uncountable, unexportable, unmergeable   one of the tools refuses it
///   protected                                it needs a password
///   hangcount, hangexport, hangmerge         one of the tools stands still
///   hangsecond                               the second output stands still
///   crashexport                              the export crashes
///   cutexport                                the export ends well after one page
///   miscounted                               one page more is counted than there is
///   crashonce, crashtwice                    the second output crashes, the first time or always
///   crashmerge                               every output crashes
///   halfmerge                                every output but the first fails
///   vanishing                                outputs are reported, but not there
///   standin                                  the second output has a stand-in page
///   changing                                 the input grows at the second output
///   piecemeal                                every answer about an output comes in two parts
///   repeating                                every answer is followed by another, of a failure
///   unfolder                                 the whole output folder goes
///   talkative                                warnings are written
class FakeTools
{
public:
    /// Lays the tools into the existing folder @p toolFolder.
    explicit FakeTools(const QString &toolFolder);

    QString folder() const { return path; }
    /// Replaces a tool by a program whose interpreter does not exist, so that it cannot start.
    void breakTool(const QString &name) const;
    /// "start TOOL INPUT" and "end TOOL INPUT" of every call, as they came.
    QStringList calls() const;
    /// How many tools ran at the same time, where none of them crashed or was killed.
    int mostAtOnce() const;

    /// Where every page's text stands, as the runner takes it.
    static QString position() { return QStringLiteral("100,50"); }

private:
    QString path;
};
