#include "pipeline/split_batch.h"

#include "pipeline/output_path.h"
#include "pipeline/verdict.h"

#include <QMap>
#include <QMetaObject>

#include <algorithm>
#include <utility>
#include <vector>

namespace quorlin {

namespace {

/// How far the files that are started may be ahead of the one that is told of.
constexpr qsizetype maximumAhead = 256;
constexpr qsizetype maximumHeldOutputs = 20000;
/// After so many hung tools the run is given up: the fault is not in one file.
constexpr int maximumStalls = 3;

/// Folder name in the one form that all spellings have which some disk takes for the same.
QString folderKey(const QString &file)
{
    return nameKey(inputBaseName(file));
}

} // namespace

QList<QList<qsizetype>> filesSharingFolders(const QStringList &files)
{
    // Hashes first: of a long list, few names are alike.
    std::vector<std::pair<size_t, qsizetype>> hashes;
    hashes.reserve(static_cast<size_t>(files.size()));
    for (qsizetype index = 0; index < files.size(); ++index) {
        hashes.emplace_back(qHash(folderKey(files.at(index))), index);
    }
    std::sort(hashes.begin(), hashes.end());
    QList<QList<qsizetype>> shared;
    for (auto begin = hashes.begin(); begin != hashes.end();) {
        const auto end = std::find_if(
            begin, hashes.end(), [&](const auto &entry) { return entry.first != begin->first; });
        if (end - begin > 1) {
            QMap<QString, QList<qsizetype>> byName;
            for (auto entry = begin; entry != end; ++entry) {
                byName[folderKey(files.at(entry->second))].append(entry->second);
            }
            byName.removeIf([](const auto &entry) { return entry.value().size() < 2; });
            shared += byName.values();
        }
        begin = end;
    }
    std::sort(shared.begin(), shared.end());
    return shared;
}

SplitBatch::SplitBatch(QStringList fileList, SplitSettings splitSettings, int jobs, QObject *parent)
    : QObject(parent), files(std::move(fileList)), settings(std::move(splitSettings)), budget(jobs)
{
}

SplitBatch::~SplitBatch() = default;

void SplitBatch::start()
{
    // In one folder for all no file takes another's name.
    chains = settings.flat ? QList<QList<qsizetype>>() : filesSharingFolders(files);
    for (qsizetype chain = 0; chain < chains.size(); ++chain) {
        for (const qsizetype index : chains.at(chain)) {
            chainOf.insert(index, chain);
        }
    }
    startMore();
    if (running.empty()) {
        QMetaObject::invokeMethod(this, &SplitBatch::tell, Qt::QueuedConnection);
    }
}

void SplitBatch::cancel()
{
    if (std::exchange(cancelled, true)) {
        return;
    }
    for (const auto &[index, job] : running) {
        job->cancel();
    }
    if (running.empty()) {
        QMetaObject::invokeMethod(this, &SplitBatch::tell, Qt::QueuedConnection);
    }
}

const SplitResult *SplitBatch::current() const
{
    if (const auto job = running.find(nextToTell); job != running.end()) {
        return &job->second->result();
    }
    const auto result = done.find(nextToTell);
    return result == done.end() ? nullptr : &result->second;
}

bool SplitBatch::mayStartMore() const
{
    return !cancelled && nextToStart < files.size() && nextToStart - nextToTell < maximumAhead &&
           heldOutputs < maximumHeldOutputs;
}

void SplitBatch::startMore()
{
    while (mayStartMore()) {
        // The later files of a chain are started by the earlier ones.
        const qsizetype chain = chainOf.value(nextToStart, -1);
        if (chain >= 0 && chains.at(chain).constFirst() != nextToStart) {
            ++nextToStart;
        } else if (budget.tryTake()) {
            startFile(nextToStart++);
        } else {
            return;
        }
    }
}

void SplitBatch::startFile(qsizetype index)
{
    auto *job = new SplitJob(files.at(index), settings, budget, this);
    running.emplace(index, job);
    connect(job, &SplitJob::toolSaid, this,
            [this, index](const QByteArray &text) { emit toolSaid(index, text); });
    connect(job, &SplitJob::namesWanted, this, &SplitBatch::nameOutputs, Qt::QueuedConnection);
    connect(job, &SplitJob::pageRead, this, [this, index](int page) {
        if (isTelling && index == nextToTell) {
            emit pageRead(index, page);
        }
    });
    connect(job, &SplitJob::outputReported, this, [this, index, job](qsizetype output) {
        if (isTelling && index == nextToTell) {
            emit outputReported(index, job->result().facts.outputs.at(output));
        }
    });
    connect(job, &SplitJob::finished, this, [this, index] { endFile(index); });
    job->start();
    tell();
}

void SplitBatch::nameOutputs()
{
    // In the order of the list, so that equal names get the same numbers in every run.
    for (; settings.flat && nextToName < files.size(); ++nextToName) {
        const auto job = running.find(nextToName);
        if (job == running.end()) {
            if (nextToName >= nextToTell && !done.contains(nextToName)) {
                return;
            }
        } else if (job->second->isWaitingForNames()) {
            job->second->nameOutputs(names);
        } else {
            return;
        }
    }
}

qsizetype SplitBatch::nextInChain(qsizetype index) const
{
    const qsizetype chain = chainOf.value(index, -1);
    if (chain < 0) {
        return -1;
    }
    const QList<qsizetype> &members = chains.at(chain);
    return members.value(members.indexOf(index) + 1, -1);
}

void SplitBatch::endFile(qsizetype index)
{
    const auto job = running.find(index);
    SplitResult &result = done[index];
    result = job->second->result();
    heldOutputs += result.facts.outputs.size();
    noteTakenOutputs(index, result);
    job->second->deleteLater();
    running.erase(job);
    if (result.facts.stalled && ++stalls >= maximumStalls) {
        givenUp = true;
        cancel();
    }
    const qsizetype next = nextInChain(index);
    if (next >= 0 && !cancelled) {
        startFile(next);
    } else {
        budget.giveBack();
    }
    tell();
    nameOutputs();
    startMore();
}

void SplitBatch::noteTakenOutputs(qsizetype index, SplitResult &result)
{
    if (!chainOf.contains(index) || settings.existing != ExistingOutputs::Skip) {
        return;
    }
    QSet<QString> &written = writtenInChains[chainOf.value(index)];
    for (const OutputResult &output : std::as_const(result.facts.outputs)) {
        if (output.state == OutputResult::State::Written) {
            written.insert(output.path);
        } else if (output.state == OutputResult::State::Skipped && written.contains(output.path)) {
            result.facts.takenOutputs.append(output.path);
        }
    }
}

bool SplitBatch::isReady(qsizetype index) const
{
    const qsizetype chain = chainOf.value(index, -1);
    if (chain < 0) {
        return done.contains(index);
    }
    const QList<qsizetype> &members = chains.at(chain);
    return std::all_of(members.begin(), members.end(),
                       [this](qsizetype i) { return i < nextToTell || done.contains(i); });
}

void SplitBatch::tell()
{
    while (nextToTell < files.size()) {
        if (cancelled && running.empty()) {
            failUnstarted();
        }
        const SplitResult *known = current();
        if (known == nullptr) {
            return;
        }
        if (!isTelling) {
            beginTelling(*known);
        }
        if (!isReady(nextToTell)) {
            return;
        }
        endTelling();
    }
    if (running.empty() && !std::exchange(isFinished, true)) {
        emit finished();
    }
}

void SplitBatch::failUnstarted()
{
    const qsizetype last = chainOf.contains(nextToTell)
                               ? chains.at(chainOf.value(nextToTell)).constLast()
                               : nextToTell;
    for (qsizetype index = nextToTell; index <= last; ++index) {
        if (!done.contains(index)) {
            SplitResult &result = done[index];
            result.path = files.at(index);
            result.facts.fault = QStringLiteral("the run ended before its turn");
            result.verdict = judge(result.facts, settings);
        }
    }
}

void SplitBatch::beginTelling(const SplitResult &known)
{
    isTelling = true;
    const qsizetype index = nextToTell;
    emit fileBegins(index);
    for (int page = 1; page <= known.facts.pagesRead; ++page) {
        emit pageRead(index, page);
    }
    for (const OutputResult &output : known.facts.outputs) {
        if (output.state != OutputResult::State::Planned) {
            emit outputReported(index, output);
        }
    }
}

void SplitBatch::endTelling()
{
    SplitResult &result = done.at(nextToTell);
    if (chainOf.contains(nextToTell)) {
        noteReplacedOutputs(result.facts);
        result.verdict = judge(result.facts, settings);
    } else if (!settings.flat && !result.facts.outputs.isEmpty()) {
        result.facts.otherOutputs = countOtherOutputs(
            outputFolderOf(result.path, settings.outputFolder), result.facts.outputs);
    }
    heldOutputs -= result.facts.outputs.size();
    emit fileEnds(nextToTell, result);
    done.erase(nextToTell);
    isTelling = false;
    ++nextToTell;
}

} // namespace quorlin
