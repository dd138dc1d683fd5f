#include "pipeline/tool_run.h"

#include "common/debug_line.h"
#include "pipeline/input_identity.h"

#include <QProcessEnvironment>

#include <algorithm>
#include <utility>

namespace quorlin {

namespace {

constexpr int millisecondsToEnd = 2000;
constexpr qsizetype maximumMessages = 100;
constexpr qsizetype maximumLineLength = 8192;
const QString sandboxReport = QStringLiteral(": sandbox: "); // no message about the file

QProcessEnvironment environmentWith(const QByteArray &inputIdentity)
{
    static const QProcessEnvironment system = QProcessEnvironment::systemEnvironment();
    QProcessEnvironment environment = system;
    environment.remove(QLatin1String(inputIdentityVariable));
    if (!inputIdentity.isEmpty()) {
        environment.insert(QLatin1String(inputIdentityVariable),
                           QString::fromLatin1(inputIdentity));
    }
    return environment;
}

} // namespace

QString messageReason(const QString &message, const QString &file)
{
    const qsizetype tool = message.indexOf(QLatin1String(": "));
    if (tool < 0) {
        return message;
    }
    const QString rest = message.mid(tool + 2);
    const QString head = file + QStringLiteral(": ");
    return rest.startsWith(head) ? rest.mid(head.size()) : rest;
}

QString reasonOf(const ToolEnd &end, const QString &tool, const QString &input)
{
    switch (end.kind) {
    case ToolEnd::Kind::NotStarted:
        return tool + QStringLiteral(" cannot be started");
    case ToolEnd::Kind::Crashed:
        return tool + QStringLiteral(" ended abruptly");
    case ToolEnd::Kind::Stalled:
        return QStringLiteral("a tool made no progress and was ended");
    case ToolEnd::Kind::Cancelled:
        return QStringLiteral("the run ended before it was done");
    case ToolEnd::Kind::Exited:
        break;
    }
    for (auto message = end.messages.crbegin(); message != end.messages.crend(); ++message) {
        QString reason = messageReason(*message, input);
        if (!reason.startsWith(QLatin1String("warning: "))) {
            return reason;
        }
    }
    return tool + QStringLiteral(" ended with status ") + QString::number(end.status);
}

ToolRun::ToolRun(ToolCommand toolCommand, int timeoutSeconds, QObject *parent)
    : QObject(parent), command(std::move(toolCommand)), timeoutMilliseconds(timeoutSeconds * 1000)
{
    process.setProgram(command.program);
    process.setArguments(command.arguments);
    process.setProcessEnvironment(environmentWith(command.inputIdentity));
    if (!command.nextInput) {
        process.setStandardInputFile(QProcess::nullDevice());
    }
    stallTimer.setSingleShot(true);
    killTimer.setSingleShot(true);
    connect(&process, &QProcess::readyReadStandardOutput, this, &ToolRun::readOutput);
    connect(&process, &QProcess::readyReadStandardError, this, &ToolRun::hear);
    connect(&process, &QProcess::bytesWritten, this, &ToolRun::feed);
    connect(&process, &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
        finish(how == QProcess::NormalExit ? ToolEnd::Kind::Exited : ToolEnd::Kind::Crashed,
               status);
    });
    connect(
        &process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            // Every other error is followed by finished().
            if (error == QProcess::FailedToStart) {
                finish(ToolEnd::Kind::NotStarted, 0);
            }
        },
        Qt::QueuedConnection);
    connect(&stallTimer, &QTimer::timeout, this, &ToolRun::watch);
    connect(&killTimer, &QTimer::timeout, this, [this] {
        killed = true;
        process.kill();
    });
}

ToolRun::~ToolRun()
{
    disconnect(&process, nullptr, this, nullptr);
    if (process.state() != QProcess::NotRunning) {
        process.terminate();
        if (!process.waitForFinished(millisecondsToEnd)) {
            process.kill();
            process.waitForFinished(millisecondsToEnd);
        }
    }
}

void ToolRun::start()
{
    debugLine({quoted((QStringList(command.program) + command.arguments).join(u' '))});
    sinceProgress.start();
    stallTimer.start(timeoutMilliseconds);
    if (!preparePasswords()) {
        QMetaObject::invokeMethod(
            this, [this] { finish(ToolEnd::Kind::NotStarted, 0); }, Qt::QueuedConnection);
        return;
    }
    process.start();
    passwordPipe.close();
    if (command.nextInput) {
        feed();
    }
}

bool ToolRun::preparePasswords()
{
    if (command.passwords.isEmpty()) {
        return true;
    }
    if (!passwordPipe.open(command.passwords)) {
        return false;
    }
    const int descriptor = passwordPipe.descriptor();
    process.setArguments(command.arguments +
                         QStringList{QStringLiteral("-passwords"), QString::number(descriptor)});
    process.setChildProcessModifier([descriptor] { PasswordPipe::keepInChild(descriptor); });
    return true;
}

void ToolRun::cancel()
{
    if (!done) {
        endProcess(ToolEnd::Kind::Cancelled);
    }
}

void ToolRun::feed()
{
    if (!command.nextInput || process.bytesToWrite() > 0) {
        return;
    }
    const QByteArray piece = command.nextInput();
    if (piece.isEmpty()) {
        command.nextInput = nullptr;
        process.closeWriteChannel();
    } else {
        process.write(piece);
    }
}

void ToolRun::readOutput()
{
    sinceProgress.start();
    const QByteArray bytes = process.readAllStandardOutput();
    if (!bytes.isEmpty()) {
        emit wrote(bytes);
    }
}

void ToolRun::hear()
{
    unfinishedLine += process.readAllStandardError();
    const qsizetype end = unfinishedLine.lastIndexOf('\n') + 1;
    if (end > 0) {
        noteMessages(std::exchange(unfinishedLine, unfinishedLine.sliced(end)).first(end));
    }
    unfinishedLine.truncate(maximumLineLength);
}

void ToolRun::noteMessages(const QByteArray &lines)
{
    for (const QByteArray &line : lines.split('\n')) {
        const QString message = QString::fromUtf8(line).trimmed();
        if (!message.isEmpty() && !message.contains(sandboxReport) &&
            messages.size() < maximumMessages) {
            messages.append(message);
        }
    }
    emit said(lines);
}

void ToolRun::watch()
{
    const qint64 left = timeoutMilliseconds - sinceProgress.elapsed();
    if (left > 0) {
        stallTimer.start(static_cast<int>(left));
    } else if (!done) {
        endProcess(ToolEnd::Kind::Stalled);
    }
}

void ToolRun::endProcess(ToolEnd::Kind why)
{
    if (endReason != ToolEnd::Kind::Exited) {
        return; // it is being ended already
    }
    endReason = why;
    stallTimer.stop();
    process.terminate();
    killTimer.start(millisecondsToEnd);
}

void ToolRun::finish(ToolEnd::Kind kind, int status)
{
    if (std::exchange(done, true)) {
        return;
    }
    stallTimer.stop();
    killTimer.stop();
    readOutput();
    hear();
    if (!unfinishedLine.isEmpty()) {
        noteMessages(std::exchange(unfinishedLine, {}) + '\n');
    }
    if (endReason != ToolEnd::Kind::Exited) {
        kind = endReason;
    }
    emit ended({kind, status, messages});
}

} // namespace quorlin
