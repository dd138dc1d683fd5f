#include "pipeline/output_writer.h"

#include <algorithm>
#include <utility>

namespace quorlin {

namespace {

constexpr qsizetype outputsWorthAProcess = 250;

} // namespace

qsizetype passCount(qsizetype outputs, qsizetype places)
{
    return std::clamp<qsizetype>(outputs / outputsWorthAProcess, 1, std::max<qsizetype>(places, 1));
}

OutputWriter::OutputWriter(OutputJob outputJob, QList<OutputResult> &allOutputs,
                           ToolBudget &toolBudget, QObject *parent)
    : QObject(parent), job(std::move(outputJob)), outputs(allOutputs), budget(toolBudget)
{
}

void OutputWriter::start()
{
    // The first place is the caller's, each further one is given back as its pass ends.
    qsizetype places = 1;
    while (passCount(outputs.size(), places + 1) > places && budget.tryTake()) {
        ++places;
    }
    running = places;
    for (qsizetype place = 0; place < places; ++place) {
        startPass(outputs.size() * place / places, outputs.size() * (place + 1) / places);
    }
}

void OutputWriter::startPass(qsizetype begin, qsizetype end)
{
    auto *pass = new OutputPass(job, outputs, begin, end, this);
    passes.append(pass);
    connect(pass, &OutputPass::reported, this, &OutputWriter::reported);
    connect(pass, &OutputPass::said, this, &OutputWriter::said);
    connect(pass, &OutputPass::ended, this, [this, pass] { finishPass(*pass); });
    pass->start();
}

void OutputWriter::cancel()
{
    for (OutputPass *pass : std::as_const(passes)) {
        pass->cancel();
    }
}

void OutputWriter::finishPass(const OutputPass &pass)
{
    const bool wasInOrder = !inputChanged && !stalled;
    inputChanged = inputChanged || pass.foundInputChanged();
    stalled = stalled || pass.hasStalled();
    killed = killed || pass.killedATool();
    if (--running == 0) {
        emit ended();
        return;
    }
    budget.giveBack();
    if (wasInOrder && (inputChanged || stalled)) {
        cancel(); // what the others write would be thrown away
    }
}

} // namespace quorlin
