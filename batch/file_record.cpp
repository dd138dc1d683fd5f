#include "batch/file_record.h"

#include <algorithm>

namespace quorlin::batch {

namespace {

/// The message that best tells why a tool failed: the last one that is more than a warning.
QString tellingMessage(const FileRecord &record, const QString &file)
{
    for (qsizetype index = record.toolMessages.size() - 1; index >= 0; --index) {
        QString reason = messageReason(record.toolMessages.at(index), file);
        if (!reason.startsWith(QLatin1String("warning: "))) {
            return reason;
        }
    }
    return {};
}

QString spokenReason(const FileRecord &record, const QString &fallback)
{
    const QString reason = tellingMessage(record, record.path);
    return reason.isEmpty() ? fallback : reason;
}

QString missingReason(const FileRecord &record)
{
    QString reason = QString::number(record.missingOutputs.size()) + QStringLiteral(" of ") +
                     QString::number(record.outputs) +
                     QStringLiteral(" outputs were not written, the first is ") +
                     record.missingOutputs.constFirst();
    const QString spoken = tellingMessage(record, record.missingOutputs.constLast());
    if (!spoken.isEmpty()) {
        reason += QStringLiteral(" (") + spoken + u')';
    }
    return reason;
}

QString faultOf(const FileRecord &record)
{
    if (!record.refusal.isEmpty()) {
        return record.refusal;
    }
    if (record.stalled) {
        return QStringLiteral("a tool made no progress and was ended");
    }
    if (record.pageCount.isEmpty()) {
        return spokenReason(record, QStringLiteral("its pages could not be counted"));
    }
    if (record.pageCount.toInt() < 1) {
        return QStringLiteral("it holds no pages");
    }
    if (!record.finished && !record.exported) {
        return QStringLiteral("the run ended before its turn");
    }
    if (!record.exported) {
        return spokenReason(record, QStringLiteral("the text of its pages could not be exported"));
    }
    if (!record.missingOutputs.isEmpty()) {
        return missingReason(record);
    }
    if (!record.finished) {
        return QStringLiteral("the run ended before it was done");
    }
    if (!record.replacedOutputs.isEmpty()) {
        return QStringLiteral("another file of the same name replaced ") +
               QString::number(record.replacedOutputs.size()) +
               QStringLiteral(" of its outputs, the first is ") +
               record.replacedOutputs.constFirst();
    }
    if (record.outputs == 0) {
        return QStringLiteral("no output was made");
    }
    if (record.windowResult != QLatin1String("Succeed")) {
        return QStringLiteral("its last output is missing");
    }
    return {};
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

qsizetype pageWarnings(const FileRecord &record)
{
    return std::count_if(
        record.toolMessages.begin(), record.toolMessages.end(), [&](const QString &message) {
            return messageReason(message, record.path).startsWith(QLatin1String("warning: page "));
        });
}

Verdict judge(const FileRecord &record)
{
    const QString fault = faultOf(record);
    return {fault.isEmpty(), fault};
}

} // namespace quorlin::batch
