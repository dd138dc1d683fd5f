#pragma once

#include "fake_tools.h"
#include "runner_process.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A folder to run the runner in, with tools that fail when told to: inputs go into "in", outputs
/// into "out".
class RunnerBench
{
public:
    RunnerBench();

    QString path(const QString &name = {}) const;
    /// Lays an input down, a line a page, and gives its path as seen from the bench.
    QString input(const QString &name, const QByteArray &pages) const;
    void write(const QString &name, const QByteArray &bytes) const;
    QByteArray read(const QString &name) const;
    /// Names of the files in a folder below "out", sorted.
    QStringList outputs(const QString &subFolder = {}) const;

    RunnerResult run(const QStringList &words, const QByteArray &input = {}) const;
    /// Splits at the position where every page's text stands.
    RunnerResult split(const QStringList &words, const QByteArray &input = {}) const;
    /// Splits by whatever place @p words name.
    RunnerResult splitBy(const QStringList &words, const QByteArray &input = {}) const;

    const FakeTools &tools() const { return fakeTools; }

private:
    QTemporaryDir root;
    FakeTools fakeTools;
};
