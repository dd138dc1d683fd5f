#pragma once

#include "pipeline/output_writer.h"
#include "pipeline/page_items.h"
#include "pipeline/split_result.h"
#include "pipeline/split_settings.h"
#include "pipeline/tool_budget.h"
#include "pipeline/tool_run.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace quorlin {

/// Splits one file: counts its pages, reads their texts, groups them, has the outputs written and
/// judges what came of it. Nothing waits; several jobs can go on at once. What a tool may do goes
/// through pipes, so no file but the outputs is made.
class SplitJob : public QObject
{
    Q_OBJECT

public:
    /// @param path the file to split, absolute
    /// @param budget places for tools; the job takes further ones where they pay. The caller has
    /// taken one for it.
    SplitJob(const QString &path, const SplitSettings &settings, ToolBudget &budget,
             QObject *parent);
    ~SplitJob() override;

    void start();
    /// Ends the tools; finished() still comes.
    void cancel();

    /// Whether the job waits for nameOutputs().
    bool isWaitingForNames() const { return waitsForNames; }
    /// Names the outputs and goes on.
    /// @param names that the files before this one have left
    void nameOutputs(UniqueNames &names);

    /// What is known of the file so far; whole once finished() has come.
    const SplitResult &result() const { return known; }

signals:
    void counted(int pages);
    /// Page @p page, counted from 1, was read.
    void pageRead(int page);
    /// The output at @p index was written or failed.
    void outputReported(qsizetype index);
    /// The outputs are known and want names. Where all files share one folder, the job waits for
    /// nameOutputs(); otherwise it goes on itself.
    void namesWanted();
    /// A tool wrote whole lines to its error stream.
    void toolSaid(const QByteArray &text);
    /// Comes once, from the event loop.
    void finished();

private:
    void countPages();
    void takeCount(const ToolEnd &end);
    void readTexts();
    void takeItems(const QByteArray &bytes);
    void takeTexts(const ToolEnd &end);
    void planOutputs();
    void settleOutputs();
    void writeOutputs();
    OutputJob outputJob() const;
    void takeOutputs();
    void finish();
    void fail(const QString &fault);
    void failBy(const ToolEnd &end, const QString &tool);
    void cleanUp();
    bool makeFolder();
    ToolRun *startTool(const QString &name, const QStringList &arguments);
    QString toolPath(const QString &name) const;

    SplitSettings settings;
    ToolBudget &budget;
    SplitResult known;
    std::optional<FileIdentity> identity;
    QByteArray answer; ///< of the count
    std::unique_ptr<TextRule> rule;
    std::unique_ptr<PageItemsReader> reader;
    QPointer<ToolRun> tool;
    OutputWriter *writer = nullptr;
    QString folder;               ///< of this file's outputs
    bool madeFolder = false;      ///< whether this job made it
    QStringList unfinishedBefore; ///< what other runs were writing there
    bool waitsForNames = false;
    bool isCancelled = false;
    bool isFinished = false;
};

} // namespace quorlin
