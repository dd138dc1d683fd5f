#include "corpus.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString corpusPath(const QString &name)
{
    return QStringLiteral(QUORLIN_CORPUS_DIR "/") + name;
}

QList<int> numbers(const QJsonArray &array)
{
    QList<int> list;
    for (const QJsonValue &value : array) {
        list.append(value.toInt());
    }
    return list;
}

QList<ExpectedGroup> groupsOf(const QJsonArray &array)
{
    QList<ExpectedGroup> groups;
    for (const QJsonValue &value : array) {
        const QJsonObject group = value.toObject();
        groups.append({group["key"].toString(), numbers(group["pages"].toArray())});
    }
    return groups;
}

/// Files whose pages are counted but which the PDF library cannot load: one nests arrays deeper
/// than its stack allows, the other has a dictionary key without a value.
bool isBeyondLibrary(const QString &name)
{
    return name == QLatin1String("nasty/deep_arrays.pdf") ||
           name == QLatin1String("nasty/mediabox_missing.pdf");
}

CorpusFile fileOf(const QString &name, const QJsonObject &known)
{
    CorpusFile file;
    file.name = name;
    file.path = corpusPath(name);
    const QString readable = known["readable"].toString();
    file.readable = readable == QLatin1String("yes")  ? CorpusFile::Readable::Yes
                    : readable == QLatin1String("no") ? CorpusFile::Readable::No
                                                      : CorpusFile::Readable::Either;
    if (file.readable == CorpusFile::Readable::Yes) {
        file.pages = {known["pages"].toInt()};
    } else if (file.readable == CorpusFile::Readable::Either) {
        file.pages = numbers(known["pages_any"].toArray());
    }
    file.mergeMayFail = known["merge_may_fail"].toBool() || isBeyondLibrary(name);
    file.counted = known["strict"].toBool();
    const QJsonObject field = known["field"].toObject();
    file.field = QPointF(field["left_pt"].toDouble(), field["baseline_pt"].toDouble());
    file.firstPage = field["first_page"].toInt(1);
    for (size_t method = 0; method < file.groups.size(); ++method) {
        file.groups[method] =
            groupsOf(known[QStringLiteral("method") + QString::number(method + 1)].toArray());
    }
    return file;
}

} // namespace

bool hasCorpus()
{
    return QFile::exists(corpusPath(QStringLiteral("expected.json")));
}

QList<CorpusFile> corpusFiles(const QString &kind)
{
    QFile source(corpusPath(QStringLiteral("expected.json")));
    if (!source.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject files =
        QJsonDocument::fromJson(source.readAll()).object()["files"].toObject();
    QList<CorpusFile> list;
    for (auto file = files.begin(); file != files.end(); ++file) {
        const QJsonObject known = file.value().toObject();
        if (known["kind"].toString() == kind) {
            list.append(fileOf(file.key(), known));
        }
    }
    return list;
}
