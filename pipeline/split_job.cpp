#include "pipeline/split_job.h"

#include "pipeline/information_file.h"
#include "pipeline/output_list.h"
#include "pipeline/output_path.h"
#include "pipeline/unfinished_outputs.h"
#include "pipeline/verdict.h"

#include <QDir>
#include <QFileInfo>
#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace quorlin {

namespace {

/// Longest answer to a count that is looked at.
constexpr qsizetype maximumAnswer = 65536;

} // namespace

SplitJob::SplitJob(const QString &path, const SplitSettings &splitSettings, ToolBudget &toolBudget,
                   QObject *parent)
    : QObject(parent), settings(splitSettings), budget(toolBudget)
{
    known.path = path;
}

SplitJob::~SplitJob() = default;

void SplitJob::start()
{
    identity = identifyFile(known.path);
    if (!identity) {
        fail(QStringLiteral("it is no longer there"));
    } else if (identity->size == 0) {
        fail(QStringLiteral("it is empty"));
    } else {
        countPages();
    }
}

void SplitJob::cancel()
{
    if (isFinished || std::exchange(isCancelled, true)) {
        return;
    }
    known.facts.cancelled = true;
    if (std::exchange(waitsForNames, false)) {
        finish();
    } else if (writer != nullptr) {
        writer->cancel();
    } else if (!tool.isNull()) {
        tool->cancel();
    }
}

QString SplitJob::toolPath(const QString &name) const
{
    return settings.toolFolder + u'/' + name;
}

ToolRun *SplitJob::startTool(const QString &name, const QStringList &arguments)
{
    ToolCommand command;
    command.program = toolPath(name);
    command.arguments = arguments;
    command.inputIdentity = inputIdentityText(*identity);
    command.passwords = settings.passwords;
    tool = new ToolRun(std::move(command), settings.timeoutSeconds, this);
    connect(tool, &ToolRun::said, this, &SplitJob::toolSaid);
    connect(tool, &ToolRun::ended, tool, &QObject::deleteLater);
    tool->start();
    return tool;
}

void SplitJob::countPages()
{
    const ToolRun *count =
        startTool(QStringLiteral("pagebinder"), {known.path, QStringLiteral("-getinfo"),
                                                 QStringLiteral("-outfile"), QStringLiteral("-")});
    connect(count, &ToolRun::wrote, this, [this](const QByteArray &bytes) {
        answer += bytes.first(std::min(bytes.size(), maximumAnswer - answer.size()));
    });
    connect(count, &ToolRun::ended, this, &SplitJob::takeCount);
}

void SplitJob::takeCount(const ToolEnd &end)
{
    if (!end.succeeded()) {
        failBy(end, QStringLiteral("pagebinder"));
        return;
    }
    known.facts.pages = pageCountDigits(QString::fromUtf8(answer)).toInt();
    if (known.facts.pages < 1) {
        fail(QStringLiteral("it holds no pages"));
        return;
    }
    emit counted(known.facts.pages);
    readTexts();
}

void SplitJob::readTexts()
{
    rule = makeTextRule(settings.place);
    reader = std::make_unique<PageItemsReader>(*rule);
    const int threads = threadsForPages(known.facts.pages, budget.size());
    const ToolRun *texts = startTool(QStringLiteral("pagexport"),
                                     {QStringLiteral("-items"), QStringLiteral("-threads"),
                                      QString::number(threads), known.path});
    connect(texts, &ToolRun::wrote, this, &SplitJob::takeItems);
    connect(texts, &ToolRun::ended, this, &SplitJob::takeTexts);
}

void SplitJob::takeItems(const QByteArray &bytes)
{
    const int before = reader->pagesRead();
    reader->take(bytes);
    known.facts.pagesRead = reader->pagesRead();
    for (int page = before + 1; page <= reader->pagesRead(); ++page) {
        emit pageRead(page);
    }
}

void SplitJob::takeTexts(const ToolEnd &end)
{
    if (!end.succeeded()) {
        failBy(end, QStringLiteral("pagexport"));
        return;
    }
    if (!reader->isComplete()) {
        fail(QStringLiteral("the text of its pages could not be read to the end"));
        return;
    }
    const PageTexts &pages = reader->pages();
    SplitFacts &facts = known.facts;
    if (pages.texts.size() != facts.pages) {
        fail(QStringLiteral("its pages were counted as ") + QString::number(facts.pages) +
             QStringLiteral(", but read as ") + QString::number(pages.texts.size()));
        return;
    }
    facts.pagesWithoutText = pages.withoutText;
    facts.unreadablePages = pages.unreadable;
    facts.doubtfulPages = pages.doubtful;
    facts.pageWarnings = pages.partial - pages.doubtful.size();
    if (!faultOfPages(facts, settings).isEmpty()) {
        finish();
        return;
    }
    planOutputs();
}

void SplitJob::planOutputs()
{
    SplitFacts &facts = known.facts;
    const BlankPages blankPages = settings.blankPages.value_or(BlankPages::Join);
    facts.droppedPages = blankPages == BlankPages::Drop ? facts.pagesWithoutText : 0;
    facts.outputs =
        quorlin::planOutputs(groupPages(reader->pages().texts, settings.method, blankPages),
                             known.path, settings.outputFolder, settings.method);
    waitsForNames = settings.flat;
    emit namesWanted();
    if (!settings.flat) {
        UniqueNames names;
        nameOutputs(names);
    }
}

void SplitJob::nameOutputs(UniqueNames &names)
{
    waitsForNames = false;
    known.facts.numberedOutputs =
        quorlin::nameOutputs(known.facts.outputs, known.path, settings, names);
    settleOutputs();
}

void SplitJob::settleOutputs()
{
    SplitFacts &facts = known.facts;
    const QString fault =
        applyExistingPolicy(facts.outputs, settings.existing,
                            [this](const QString &path) { return findOutput(path, known.path); });
    const bool isWritingAny =
        std::any_of(facts.outputs.begin(), facts.outputs.end(), [](const OutputResult &output) {
            return output.state == OutputResult::State::Planned;
        });
    if (!fault.isEmpty()) {
        fail(fault);
    } else if (settings.dryRun || !isWritingAny) {
        finish();
    } else {
        writeOutputs();
    }
}

OutputJob SplitJob::outputJob() const
{
    OutputJob job;
    job.program = toolPath(QStringLiteral("pagebinder"));
    job.input = known.path;
    job.inputIdentity = inputIdentityText(*identity);
    job.passwords = settings.passwords;
    job.timeoutSeconds = settings.timeoutSeconds;
    return job;
}

void SplitJob::writeOutputs()
{
    SplitFacts &facts = known.facts;
    if (!makeFolder()) {
        fail(QStringLiteral("its output folder could not be created: ") + folder);
        return;
    }
    writer = new OutputWriter(outputJob(), facts.outputs, budget, this);
    connect(writer, &OutputWriter::reported, this, &SplitJob::outputReported);
    connect(writer, &OutputWriter::said, this, &SplitJob::toolSaid);
    connect(writer, &OutputWriter::ended, this, &SplitJob::takeOutputs);
    writer->start();
}

bool SplitJob::makeFolder()
{
    if (settings.flat) {
        folder = settings.outputFolder;
        return QFileInfo(folder).isDir();
    }
    const QDir outputFolder(settings.outputFolder);
    const QString name = inputBaseName(known.path);
    folder = outputFolderOf(known.path, settings.outputFolder);
    madeFolder = !name.isEmpty() && outputFolder.mkdir(name);
    if (!madeFolder) {
        unfinishedBefore = unfinishedOutputs(folder);
    }
    return QFileInfo(folder).isDir();
}

void SplitJob::takeOutputs()
{
    SplitFacts &facts = known.facts;
    facts.stalled = writer->hasStalled();
    facts.inputChanged = writer->foundInputChanged();
    finish();
}

void SplitJob::fail(const QString &fault)
{
    known.facts.fault = fault;
    finish();
}

void SplitJob::failBy(const ToolEnd &end, const QString &name)
{
    known.facts.stalled = end.kind == ToolEnd::Kind::Stalled;
    fail(reasonOf(end, name, known.path));
}

void SplitJob::finish()
{
    if (std::exchange(isFinished, true)) {
        return;
    }
    cleanUp();
    known.verdict = judge(known.facts, settings);
    QMetaObject::invokeMethod(this, &SplitJob::finished, Qt::QueuedConnection);
}

void SplitJob::cleanUp()
{
    SplitFacts &facts = known.facts;
    // A tool that was ended early may not have had the time to notice.
    if (identity && identifyFile(known.path) != identity) {
        facts.inputChanged = true;
    }
    if (facts.inputChanged) {
        removeOutputs(facts.outputs);
    } else {
        inspectOutputs(facts.outputs);
    }
    // In a folder that all files share, the unfinished outputs may be those of others.
    if (writer != nullptr && writer->killedATool() && !settings.flat) {
        removeUnfinishedOutputs(folder, unfinishedBefore);
    }
    if (madeFolder) {
        QDir(settings.outputFolder).rmdir(inputBaseName(known.path)); // where it is empty
    }
}

} // namespace quorlin
