#pragma once

#include <QString>

/// Tools that keep the contract of the real ones over plain text files: every line of an input is a
/// page, and stands on it at the position fakePosition(). What a file's name holds makes them fail:
/// "uncountable", "unexportable" and "unmergeable" files are refused by one of the tools,
/// "hangcount", "hangexport" and "hangmerge" make it stand still, "crashexport" makes it crash,
/// "unfolder" takes the whole output
/// folder away, "halfmerge" writes the first output only.
class FakeTools
{
public:
    /// Writes the tools into the existing folder @p toolFolder.
    explicit FakeTools(const QString &toolFolder);

    QString folder() const { return path; }
    /// Replaces a tool by a program whose interpreter does not exist, so that it cannot start.
    void breakTool(const QString &name) const;

    /// Where every page's text stands, as the runner takes it.
    static QString position() { return QStringLiteral("100,50"); }

private:
    QString path;
};
