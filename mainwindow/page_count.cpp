#include "common/debug_line.h"
#include "common/folders.h"
#include "common/tool_commands.h"
#include "mainwindow/number_item.h"
#include "mainwindow/process.h"
#include "pipeline/information_file.h"

#include <QDebug>
#include <QFile>

#include <memory>
#include <optional>
#include <utility>

namespace {

QString informationFilePath()
{
    return quorlin::applicationFolder() + QStringLiteral("/fileinfo.txt");
}

/// Text of the information file, which is deleted once read; empty without the file, nothing when
/// it cannot be opened.
std::optional<QString> takeInformation(const QString &path)
{
    QFile file(path);
    if (!file.exists()) {
        return QString();
    }
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return std::nullopt;
    }
    const QString information = QString::fromUtf8(file.readAll());
    file.close();
    file.remove();
    return information;
}

} // namespace

QByteArray Process::identityTextOf(const QString &path)
{
    const std::optional<quorlin::FileIdentity> identity = quorlin::identifyFile(path);
    return identity ? quorlin::inputIdentityText(*identity) : QByteArray();
}

void Process::getpdfpage()
{
    if (infoQueueIndex >= infoQueueFiles.size()) {
        addProgressLine(QStringLiteral("Finished."));
        enableJobControls(true);
        counting = false;
        resumeSorting();
        return;
    }
    const QString command = quorlin::pageCountCommand(
        quorlin::applicationFolder(), infoQueueFiles.at(infoQueueIndex), informationFilePath());
    quorlin::debugLine({quorlin::quoted(command)});
    // Taken before the count: a file that changes during the count is another one at its split.
    countedIdentity = identityTextOf(infoQueueFiles.at(infoQueueIndex));
    infoProcess = prepareTool(command, SLOT(setpdfpage()));
    // A query that cannot start still answers, with no count, so that the queue goes on. Queued, so
    // that it never answers before the caller has disabled the controls.
    connect(
        infoProcess, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                setpdfpage();
            }
        },
        Qt::QueuedConnection);
    infoProcess->startCommand(command, QIODevice::ReadWrite);
}

void Process::setpdfpage()
{
    // A queue may have started meanwhile: closing its process would kill it.
    QProcess *finished = qobject_cast<QProcess *>(sender());
    if (finished == nullptr) {
        finished = infoProcess;
    }
    if (finished != nullptr) {
        finished->close();
    }
    const QString path = informationFilePath();
    quorlin::debugLine({QStringLiteral("Information file is:"), quorlin::quoted(path)});
    QString digits;
    if (QFile::exists(path)) {
        const std::optional<QString> information = takeInformation(path);
        if (!information) {
            quorlin::debugLine({QStringLiteral("No information file.")});
            return;
        }
        digits = quorlin::pageCountDigits(*information);
        pageCount = digits.toInt();
        qDebug("Page number is:%d.\n", pageCount);
    }
    auto count = std::make_unique<NumberItem>(digits, digits.toLongLong());
    if (!digits.isEmpty()) {
        count->setData(identityRole, countedIdentity);
    }
    setCell(infoQueueRows.value(infoQueueIndex, QStringLiteral("-1")).toInt(), 1, std::move(count));
    addProgressLine(QStringLiteral("Loading ") + infoQueueFiles.value(infoQueueIndex));
    ++infoQueueIndex;
    getpdfpage();
}
