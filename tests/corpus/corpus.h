#pragma once

#include <QList>
#include <QPointF>
#include <QString>

#include <array>
#include <optional>

/// An output that a file must give: the text it is named after and its pages, counted from 1.
struct ExpectedGroup
{
    QString key;
    QList<int> pages;
};

/// What is known about one file of the corpus.
struct CorpusFile
{
    enum class Readable { Yes, No, Either };

    QString name; ///< path below the corpus folder
    QString path; ///< absolute path
    Readable readable = Readable::Yes;
    /// Page counts that are right; empty for a file that cannot be read.
    QList<int> pages;
    /// Whether its pages may fail to be merged.
    bool mergeMayFail = false;

    // Batches only.
    /// Whether its groups count; some files are hard in ways that no position can settle.
    bool counted = false;
    /// First character of the field that decides, on page firstPage: its left edge and its baseline
    /// in points from the page's top left corner.
    QPointF field;
    int firstPage = 1;
    /// Groups by method, 1 at index 0.
    std::array<QList<ExpectedGroup>, 3> groups;
};

/// Whether the corpus lies on this machine.
bool hasCorpus();

/// The files of one kind ("batch", "nasty", "features", "real"), in the order of their names.
QList<CorpusFile> corpusFiles(const QString &kind);
