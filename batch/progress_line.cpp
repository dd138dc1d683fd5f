#include "batch/progress_line.h"

#include <algorithm>

namespace quorlin::batch {

ProgressLine readProgressLine(const QString &line, const QString &nextFile)
{
    static const QString loading = QStringLiteral("Loading ");
    static const QString analyzing = QStringLiteral("Analyzing page ");
    static const QString generating = QStringLiteral("Generating ");
    if (!nextFile.isEmpty() && line == nextFile) {
        return {LineKind::FileStarts, line, 0};
    }
    if (line.startsWith(analyzing)) {
        return {LineKind::PageRead, {}, line.mid(analyzing.size()).toInt()};
    }
    if (line.startsWith(generating)) {
        return {LineKind::Output, line.mid(generating.size()), 0};
    }
    if (line.startsWith(loading)) {
        return {LineKind::Loaded, line.mid(loading.size()), 0};
    }
    if (line == QLatin1String("Finished.")) {
        return {LineKind::CountingDone, {}, 0};
    }
    if (line == QLatin1String("Conversion Start:")) {
        return {LineKind::RunStarts, {}, 0};
    }
    if (line == QLatin1String("Conversion Finished.")) {
        return {LineKind::RunDone, {}, 0};
    }
    return {};
}

QString printable(const QString &text)
{
    QString shown = text;
    std::replace_if(
        shown.begin(), shown.end(),
        [](QChar character) { return character.category() == QChar::Other_Control; }, u'?');
    return shown;
}

QString liveText(qsizetype number, qsizetype count, const QString &name, const QString &what,
                 int columns)
{
    const QString head =
        u'[' + QString::number(number) + u'/' + QString::number(count) + QStringLiteral("] ");
    const QString tail = QStringLiteral(": ") + what;
    QString shown = printable(name);
    const qsizetype room = std::max<qsizetype>(columns - head.size() - tail.size(), 1);
    if (shown.size() > room) {
        shown = shown.left(room - 1) + u'~';
    }
    return (head + shown + tail).left(columns);
}

} // namespace quorlin::batch
