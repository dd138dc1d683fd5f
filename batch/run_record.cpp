#include "batch/run_record.h"

#include <utility>

namespace quorlin::batch {

namespace {

/// Most tool messages kept for one file; the tools cap theirs too.
constexpr qsizetype maximumMessages = 100;

/// Names a file whatever its path is spelt like, so that two spellings of one name on a disk that
/// ignores case count as the same output.
OutputKey identityKey(const FileIdentity &identity)
{
    return {identity.device, identity.inode};
}

} // namespace

RunRecord::RunRecord(const QStringList &files, DiskView diskView) : disk(std::move(diskView))
{
    for (const QString &path : files) {
        FileRecord record;
        record.path = path;
        records.append(record);
    }
}

Step RunRecord::take(const QString &line)
{
    last = readProgressLine(line, nextFile());
    switch (last.kind) {
    case LineKind::Loaded:
        ++turn;
        return Step::None;
    case LineKind::CountingDone:
        return Step::Split;
    case LineKind::FileStarts:
        return startFile();
    case LineKind::PageRead:
        return readPage();
    case LineKind::Output:
        endOutput();
        beginOutput(last.path);
        return Step::None;
    case LineKind::RunDone:
        endFile();
        return Step::RunDone;
    case LineKind::RunStarts:
    case LineKind::Other:
        break;
    }
    return Step::None;
}

void RunRecord::setPageCounts(const QStringList &counts)
{
    for (qsizetype index = 0; index < records.size(); ++index) {
        records[index].pageCount = counts.value(index);
    }
    splitOrder = countedFiles();
    splitting = true;
    turn = -1;
}

QList<qsizetype> RunRecord::countedFiles() const
{
    QList<qsizetype> counted;
    for (qsizetype index = 0; index < records.size(); ++index) {
        if (!records.at(index).pageCount.isEmpty()) {
            counted.append(index);
        }
    }
    return counted;
}

void RunRecord::setResults(const QStringList &results)
{
    for (qsizetype row = 0; row < splitOrder.size(); ++row) {
        records[splitOrder.at(row)].windowResult = results.value(row);
    }
}

void RunRecord::addToolMessages(const QString &text)
{
    FileRecord *record = current();
    if (record == nullptr) {
        return;
    }
    for (const QString &line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (record->toolMessages.size() < maximumMessages) {
            record->toolMessages.append(line.trimmed());
        }
    }
}

void RunRecord::noteStall()
{
    if (FileRecord *record = current()) {
        record->stalled = true;
    }
}

const FileRecord *RunRecord::currentFile() const
{
    return const_cast<RunRecord *>(this)->current();
}

qsizetype RunRecord::turnCount() const
{
    return splitting ? splitOrder.size() : records.size();
}

FileRecord *RunRecord::current()
{
    const qsizetype index = splitting ? splitOrder.value(turn, -1) : turn;
    return index >= 0 && index < records.size() ? &records[index] : nullptr;
}

QString RunRecord::nextFile() const
{
    const qsizetype index = splitting ? splitOrder.value(turn + 1, -1) : -1;
    return index >= 0 ? records.at(index).path : QString();
}

Step RunRecord::startFile()
{
    endFile();
    ++turn;
    fileOpen = true;
    return Step::FileBegins;
}

Step RunRecord::readPage()
{
    FileRecord *record = current();
    if (record == nullptr || last.page != 1) {
        return Step::None;
    }
    record->exported = disk.exportIsWhole();
    return record->exported ? Step::None : Step::SkipFile;
}

void RunRecord::beginOutput(const QString &path)
{
    if (FileRecord *record = current()) {
        ++record->outputs;
        outputPath = path;
        outputBefore = disk.identify(path);
    }
}

void RunRecord::endOutput()
{
    FileRecord *record = current();
    if (outputPath.isEmpty() || record == nullptr) {
        return;
    }
    const FileIdentity now = disk.identify(outputPath);
    if (!now.exists || now.size == 0 || now == outputBefore) {
        record->missingOutputs.append(outputPath);
    } else {
        if (outputBefore.exists && madeOutputs.contains(identityKey(outputBefore))) {
            const qsizetype owner = madeOutputs.take(identityKey(outputBefore));
            records[owner].replacedOutputs.append(outputPath);
        }
        madeOutputs.insert(identityKey(now), splitOrder.at(turn));
    }
    outputPath.clear();
}

void RunRecord::endFile()
{
    endOutput();
    if (fileOpen) {
        current()->finished = true;
        fileOpen = false;
    }
}

} // namespace quorlin::batch
