#include "tests/support/fake_batch.h"

#include <QFile>

namespace quorlin::test {

QString ordersFor(const PageTexts &texts)
{
    QString orders = QStringLiteral("info NumberOfPages: %1\n").arg(texts.size());
    for (const std::optional<QString> &text : texts) {
        orders += QStringLiteral("page\nitem 20 30 Statement\n");
        if (text) {
            orders += QStringLiteral("item %1 %2 ").arg(ruleLeft).arg(ruleTop) + *text +
                      QLatin1Char('\n');
        }
    }
    return orders;
}

void installFakeTools(const QString &folder)
{
    for (const char *name : {"/pagebinder", "/pagexport"}) {
        QFile::remove(folder + QLatin1String(name));
        if (!QFile::copy(QStringLiteral(QUORLIN_FAKE_TOOL), folder + QLatin1String(name))) {
            qFatal("The stand-in for the tools is missing");
        }
    }
}

QStringList toolCalls(const QString &folder)
{
    QStringList calls;
    const QStringList lines = linesOf(folder + QStringLiteral("/calls.txt"));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("start "))) {
            calls.append(line.sliced(6));
        }
    }
    return calls;
}

bool toolsRanOneAtATime(const QString &folder)
{
    const QStringList lines = linesOf(folder + QStringLiteral("/calls.txt"));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QLatin1String expected(i % 2 == 0 ? "start " : "end ");
        if (!lines.at(i).startsWith(expected)) {
            return false;
        }
    }
    return !lines.isEmpty();
}

} // namespace quorlin::test
