#include "tests/support/room.h"
#include "tests/tools/mended_files.h"
#include "tests/tools/pagexport/export_here.h"

#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>

using namespace quorlin::test;

namespace {

const QString corpus = QStringLiteral(QUORLIN_CORPUS_DIR "/");

QJsonObject expectedFiles()
{
    QFile file(corpus + "expected.json");
    return file.open(QIODevice::ReadOnly)
               ? QJsonDocument::fromJson(file.readAll()).object().value("files").toObject()
               : QJsonObject();
}

QString plain(QString text)
{
    text = text.normalized(QString::NormalizationForm_KC);
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Format; });
    return text.simplified();
}

QString unescaped(QString text)
{
    return text.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&amp;", "&");
}

QString reversed(const QString &text)
{
    QString result;
    for (const QChar c : text) {
        result.prepend(c);
    }
    return result;
}

/// The text of the first item at a position, as a split looks for it; null when there is none.
QString textAt(const QList<ItemLine> &items, int left, int top)
{
    for (const ItemLine &item : items) {
        if (item.left == left && item.top == top) {
            return plain(unescaped(item.text));
        }
    }
    return {};
}

} // namespace

/// Real files and files of every producer, with known contents.
class TestExportCorpus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void accountStandsAtOnePlaceOnEveryPage_data();
    void accountStandsAtOnePlaceOnEveryPage();
    void everyFileEndsAsItShould_data();
    void everyFileEndsAsItShould();

private:
    static void addRows(const std::function<bool(const QJsonObject &)> &isWanted);
};

void TestExportCorpus::init()
{
    if (!QFileInfo::exists(corpus + "expected.json")) {
        QSKIP("the files with known contents are not here");
    }
}

void TestExportCorpus::addRows(const std::function<bool(const QJsonObject &)> &isWanted)
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QJsonObject>("expected");
    const QJsonObject files = expectedFiles();
    for (auto file = files.begin(); file != files.end(); ++file) {
        const QJsonObject expected = file.value().toObject();
        if (isWanted(expected)) {
            QTest::newRow(qPrintable(file.key())) << corpus + file.key() << expected;
        }
    }
    if (files.isEmpty()) { // a table without rows is an error of its own
        QTest::newRow("none") << QString() << QJsonObject();
    }
}

void TestExportCorpus::accountStandsAtOnePlaceOnEveryPage_data()
{
    addRows([](const QJsonObject &expected) { return expected.contains("accounts"); });
}

void TestExportCorpus::accountStandsAtOnePlaceOnEveryPage()
{
    QFETCH(QString, file);
    QFETCH(QJsonObject, expected);
    ExportHere whole;
    QCOMPARE(whole.run(file), 0);
    const QJsonArray accounts = expected["accounts"].toArray();
    const QJsonObject field = expected["field"].toObject();
    const QJsonObject differs = expected["readers"].toObject()["text_in_file_differs"].toObject();
    // The place is taken as a user takes it: from the page on which the field is first shown.
    const int firstPage = field["first_page"].toInt();
    const int left = static_cast<int>(std::floor(field["left_pt"].toDouble() * 1.5 + 0.5));
    const double baseline = field["baseline_pt"].toDouble() * 1.5;
    int top = 0;
    for (const ItemLine &item : whole.items(firstPage)) {
        if (item.left == left && std::abs(item.top + item.height * 0.9 / 1.15 - baseline) < 2.5) {
            top = item.top;
        }
    }
    QVERIFY2(top > 0, "no item where the account stands");
    for (int page = 1; page <= accounts.size(); ++page) {
        const QString account = accounts[page - 1].toString();
        const QString found = textAt(whole.items(page), left, top);
        const QString wanted = plain(differs.value(account).toString(account));
        const bool isRightToLeft = found.isRightToLeft();
        QVERIFY2(
            found == wanted || (isRightToLeft && reversed(found) == wanted),
            qPrintable(QStringLiteral("page %1: \"%2\" for \"%3\"").arg(page).arg(found, wanted)));
    }
    ExportHere single;
    const QString last = QString::number(std::min<qsizetype>(accounts.size(), 7));
    QCOMPARE(single.run(file, {"-f", last, "-l", last}), 0);
    QCOMPARE(single.content("page_pg_0001.htm"), whole.content(ExportRun::pageName(last.toInt())));
}

void TestExportCorpus::everyFileEndsAsItShould_data()
{
    addRows([](const QJsonObject &expected) { return expected["kind"].toString() != "batch"; });
}

void TestExportCorpus::everyFileEndsAsItShould()
{
    QFETCH(QString, file);
    QFETCH(QJsonObject, expected);
    if (wantsMending(file)) {
        QSKIP("objects are mended in versions of the library that are known");
    }
    const QString readable = expected["readable"].toString();
    ExportHere run;
    const int status = run.run(file);
    if (readable == "yes") {
        QCOMPARE(status, 0);
        QCOMPARE(run.written().size(), expected["pages"].toInt() + 1);
    } else if (readable == "no" || status == 1) {
        QCOMPARE(status, 1);
        QCOMPARE(run.written(), QStringList());
        QVERIFY(run.errors().contains(QFileInfo(file).fileName().toUtf8()));
    } else {
        QCOMPARE(status, 0);
        QVERIFY(expected["pages_any"].toArray().contains(
            QJsonValue(static_cast<int>(run.written().size()) - 1)));
    }
    if (status != 0) {
        return;
    }
    const QByteArray firstPage = run.content("page_pg_0001.htm");
    QCOMPARE(run.run(file, {"-f", "1", "-l", "1"}), 0);
    QCOMPARE(run.content("page_pg_0001.htm"), firstPage);
    if (run.written().contains("page_pg_0001.png")) {
        const QByteArray index = run.content("page.xml");
        const QImage picture(run.path("page_pg_0001.png"));
        QVERIFY(!picture.isNull());
        QVERIFY(index.contains("width=\"" + QByteArray::number(picture.width()) + "\" height=\"" +
                               QByteArray::number(picture.height()) + "\"") ||
                picture.width() == 1 || picture.height() == 1);
    } else {
        QVERIFY(run.errors().contains("page 1:"));
    }
}

QUORLIN_TEST(TestExportCorpus)
#include "test_export_corpus.moc"
