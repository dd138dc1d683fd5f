#include "batch/page_request.h"

#include "batch/console.h"
#include "common/stop_signals.h"
#include "pipeline/tool_run.h"

#include <QEventLoop>

#include <utility>

namespace quorlin::batch {

PageRequest::PageRequest(QString folder, QString pdf, int pageNumber, int timeout,
                         QByteArray passwordLines)
    : toolFolder(std::move(folder)), file(std::move(pdf)), page(pageNumber),
      timeoutSeconds(timeout), passwords(std::move(passwordLines))
{
}

int PageRequest::run(Console &console, bool showsMessages)
{
    const QString number = QString::number(page);
    ToolCommand command;
    command.program = toolFolder + QStringLiteral("/pagexport");
    command.arguments = {QStringLiteral("-items"), file,  QStringLiteral("-f"), number,
                         QStringLiteral("-l"),     number};
    command.passwords = passwords;
    QEventLoop loop;
    ToolRun tool(std::move(command), timeoutSeconds, nullptr);
    PageItemsReader reader(gatherer, page);
    int stopSignal = 0;
    const StopSignals stopSignals([&](int signal) {
        stopSignal = signal;
        tool.cancel();
    });
    QObject::connect(&tool, &ToolRun::wrote, &loop,
                     [&](const QByteArray &bytes) { reader.take(bytes); });
    QObject::connect(&tool, &ToolRun::said, &loop, [&](const QByteArray &text) {
        if (showsMessages) {
            console.passOn(file, text);
        }
    });
    QObject::connect(&tool, &ToolRun::ended, &loop, [&](const ToolEnd &end) {
        if (end.kind == ToolEnd::Kind::Stalled) {
            faultText = QStringLiteral("the page took too long");
        } else if (!end.succeeded()) {
            faultText = reasonOf(end, QStringLiteral("pagexport"), file);
        } else if (!reader.isComplete() || !reader.pages().unreadable.isEmpty()) {
            faultText = QStringLiteral("page ") + number + QStringLiteral(" could not be read");
        } else if (reader.pages().partial > 0) {
            console.complain(QStringLiteral("warning: ") + file + QStringLiteral(": page ") +
                             number + QStringLiteral(" could be read only in part"));
        }
        loop.quit();
    });
    tool.start();
    loop.exec();
    return stopSignal;
}

} // namespace quorlin::batch
