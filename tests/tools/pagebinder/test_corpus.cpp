// Real and generated files of many producers: every page looks as it did, nothing of another page
// comes along, and whatever cannot be read fails cleanly.

#include "pdf_inspector.h"
#include "tests/support/room.h"
#include "tests/tools/mended_files.h"
#include "tool_run.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

class PageBinderCorpusTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void partsShowTheirPagesAndNothingElse_data();
    void partsShowTheirPagesAndNothingElse();
    void everyFileIsReadOrRefused_data();
    void everyFileIsReadOrRefused();

private:
    static QString corpus() { return QStringLiteral(QUORLIN_CORPUS_DIR); }

    QJsonObject m_files;
};

namespace {

QString rangesOf(const QJsonArray &pages)
{
    QStringList ranges;
    for (const QJsonValue &page : pages) {
        ranges << QString::number(page.toInt());
    }
    return ranges.join(' ');
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What is wrong with @p output, which is to show @p pages of @p whole and nothing of the other
/// pages, whose contents are @p contents; empty when all is well.
QString faultOf(const QString &output, const QJsonArray &pages, PdfInspector &whole,
                const QByteArrayList &contents)
{
    PdfInspector part(output);
    if (part.pageCount() != pages.size()) {
        return QString("%1 pages instead of %2").arg(part.pageCount()).arg(pages.size());
    }
    const QByteArray everything = part.everything();
    for (int page = 1; page <= contents.size(); ++page) {
        const QByteArray &content = contents.at(page - 1);
        if (!pages.contains(page) && content.size() >= 200 && everything.contains(content)) {
            return QString("holds page %1").arg(page);
        }
    }
    for (int i = 0; i < pages.size(); ++i) {
        if (part.picture(i + 1) != whole.picture(pages.at(i).toInt())) {
            return QString("page %1 looks different").arg(pages.at(i).toInt());
        }
    }
    return {};
}

} // namespace

void PageBinderCorpusTest::initTestCase()
{
    QFile file(corpus() + "/expected.json");
    if (!file.open(QIODevice::ReadOnly)) {
        QSKIP("the corpus is absent");
    }
    m_files = QJsonDocument::fromJson(file.readAll()).object().value("files").toObject();
}

void PageBinderCorpusTest::partsShowTheirPagesAndNothingElse_data()
{
    QTest::addColumn<QString>("name");
    for (auto it = m_files.begin(); it != m_files.end(); ++it) {
        const QJsonObject facts = it.value().toObject();
        const QString kind = facts.value("kind").toString();
        if ((kind == "batch" || kind == "features") && facts.value("pages").toInt() <= 40) {
            QTest::newRow(qPrintable(it.key())) << it.key();
        }
    }
}

void PageBinderCorpusTest::partsShowTheirPagesAndNothingElse()
{
    QFETCH(QString, name);
    QTemporaryDir folder;
    const QString input = corpus() + "/" + name;
    const QJsonObject facts = m_files.value(name).toObject();
    QList<QJsonArray> groups;
    for (const QJsonValue &group : facts.value("method3").toArray()) {
        groups.append(group.toObject().value("pages").toArray());
    }
    if (groups.isEmpty()) {
        for (int page = 1; page <= facts.value("pages").toInt(); ++page) {
            groups.append(QJsonArray{page});
        }
    }
    QVERIFY(!groups.isEmpty());
    PdfInspector whole(input);
    QByteArrayList contents;
    for (int page = 1; page <= facts.value("pages").toInt(); ++page) {
        contents.append(whole.content(page));
    }
    // All in one pass as a split writes them, and each alone as a merge does.
    QByteArray list;
    for (int i = 0; i < groups.size(); ++i) {
        list += rangesOf(groups.at(i)).toUtf8() + '\t' +
                QFile::encodeName(folder.filePath(QString::number(i))) + '\0';
    }
    QCOMPARE(runBinder({input, "-split", "-"}, list).status, 0);
    const QString alone = folder.filePath("alone");
    for (int i = 0; i < groups.size(); ++i) {
        QCOMPARE(merge(input, rangesOf(groups.at(i)), alone).status, 0);
        const QString fault = faultOf(alone, groups.at(i), whole, contents);
        QVERIFY2(fault.isEmpty(), qPrintable(fault));
        // Equal bytes need no second look; encryption is never the same twice.
        const QString inOnePass = folder.filePath(QString::number(i));
        const QString splitFault = bytesOf(inOnePass) == bytesOf(alone)
                                       ? QString()
                                       : faultOf(inOnePass, groups.at(i), whole, contents);
        QVERIFY2(splitFault.isEmpty(), qPrintable("in one pass: " + splitFault));
    }
}

void PageBinderCorpusTest::everyFileIsReadOrRefused_data()
{
    QTest::addColumn<QString>("name");
    for (auto it = m_files.begin(); it != m_files.end(); ++it) {
        const QString kind = it.value().toObject().value("kind").toString();
        if (kind == "nasty" || kind == "real") {
            QTest::newRow(qPrintable(it.key())) << it.key();
        }
    }
}

void PageBinderCorpusTest::everyFileIsReadOrRefused()
{
    QFETCH(QString, name);
    if (wantsMending(name)) {
        QSKIP("objects are mended in versions of the library that are known");
    }
    QTemporaryDir folder;
    const QString input = corpus() + "/" + name;
    const QJsonObject facts = m_files.value(name).toObject();
    const QString readable = facts.value("readable").toString();
    const QString information = folder.filePath("info.txt");
    const ToolRun asked = runBinder({input, "-getinfo", "-outfile", information});
    QVERIFY2(asked.status == 0 || asked.status == 1, asked.errors.constData());
    QCOMPARE(QFileInfo::exists(information), asked.status == 0);
    QVERIFY(asked.status == 0 || asked.errors.contains("pagebinder: " + input.toUtf8()));
    int pages = 0;
    if (asked.status == 0) {
        QFile file(information);
        QVERIFY(file.open(QIODevice::ReadOnly));
        pages = file.readLine().trimmed().mid(15).toInt();
    }
    if (readable == "yes") {
        QCOMPARE(pages, facts.value("pages").toInt());
    } else if (readable == "no") {
        QCOMPARE(pages, 0);
    } else {
        QVERIFY(pages == 0 || facts.value("pages_any").toArray().contains(pages));
    }
    const QString output = folder.filePath("out.pdf");
    const ToolRun run = merge(input, QString("1-%1").arg(qMax(1, pages)), output);
    QVERIFY2(run.hasWritten() || run.status == 1, run.errors.constData());
    QCOMPARE(QFileInfo::exists(output), run.hasWritten());
    QStringList left = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    left.removeAll("info.txt");
    left.removeAll("out.pdf");
    QCOMPARE(left, QStringList());
    if (readable == "yes" && !facts.value("merge_may_fail").toBool()) {
        QVERIFY2(run.hasWritten(), run.errors.constData());
        QCOMPARE(PdfInspector(output).pageCount(), pages);
    }
}

QUORLIN_TEST(PageBinderCorpusTest)
#include "test_corpus.moc"
