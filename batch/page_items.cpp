#include "batch/page_items.h"

#include "batch/item_listing.h"
#include "common/folders.h"
#include "common/stop_signals.h"
#include "common/tool_commands.h"

#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTimer>

#include <chrono>

namespace quorlin::batch {

namespace {

constexpr int millisecondsToEnd = 2000;

void endTool(QProcess &tool)
{
    if (tool.state() == QProcess::NotRunning) {
        return;
    }
    tool.terminate();
    if (!tool.waitForFinished(millisecondsToEnd)) {
        tool.kill();
        tool.waitForFinished(millisecondsToEnd);
    }
}

} // namespace

PageItems readPageItems(const QString &file, int page, int timeoutSeconds)
{
    PageItems result;
    QEventLoop loop;
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    tool.setStandardOutputFile(QProcess::nullDevice());
    QObject::connect(&tool, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&tool, &QProcess::errorOccurred, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    const StopSignals stopSignals([&](int signal) {
        result.stopSignal = signal;
        loop.quit();
    });
    QTimer::singleShot(std::chrono::seconds(timeoutSeconds), &loop, &QEventLoop::quit);
    tool.startCommand(pageExportCommand(applicationFolder(), file, page,
                                        temporaryFolder() + QStringLiteral("/text.xml")));
    loop.exec();
    if (result.stopSignal == 0 && tool.state() != QProcess::NotRunning) {
        result.fault = QStringLiteral("the page took too long");
    }
    endTool(tool);
    QFile pageFile(temporaryFolder() + QStringLiteral("/text_pg_0001.htm"));
    if (result.fault.isEmpty() && (tool.exitCode() != 0 || !pageFile.open(QIODevice::ReadOnly))) {
        result.fault =
            QStringLiteral("page ") + QString::number(page) + QStringLiteral(" could not be read");
    }
    if (result.fault.isEmpty()) {
        result.items = itemsOfPage(QString::fromUtf8(pageFile.readAll()));
    }
    return result;
}

} // namespace quorlin::batch
