#include "pipeline/tool_process.h"

#include <QDeadlineTimer>

#include <algorithm>

namespace quorlin {

namespace {

constexpr int millisecondsToDie = 1000;

} // namespace

ToolProcesses::~ToolProcesses()
{
    endAll();
}

QProcess *ToolProcesses::create()
{
    processes.removeAll(nullptr);
    auto *process = new QProcess;
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->setStandardOutputFile(QProcess::nullDevice());
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [process](QProcess::ProcessError error) {
                         // Every other error is followed by finished().
                         if (error == QProcess::FailedToStart) {
                             process->deleteLater();
                         }
                     });
    processes.append(process);
    return process;
}

void ToolProcesses::endAll()
{
    processes.removeAll(nullptr);
    for (const QPointer<QProcess> &process : std::as_const(processes)) {
        QObject::disconnect(process, nullptr, nullptr, nullptr);
        process->terminate();
    }
    const QDeadlineTimer deadline(millisecondsToDie);
    for (const QPointer<QProcess> &process : std::as_const(processes)) {
        if (process->state() != QProcess::NotRunning &&
            !process->waitForFinished(std::max<int>(1, int(deadline.remainingTime())))) {
            process->kill();
            process->waitForFinished(millisecondsToDie);
        }
        delete process.data();
    }
    processes.clear();
}

} // namespace quorlin
