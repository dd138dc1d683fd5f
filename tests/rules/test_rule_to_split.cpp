#include "editor_scene.h"

#include "analysis/line_parser.h"
#include "mainwindow/process.h"
#include "rules/rule_store.h"
#include "tests/support/programs.h"
#include "tests/support/room.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QProcess>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QUrl>

#include <cmath>

namespace {

const QString corpus = QStringLiteral(QUORLIN_CORPUS_DIR);
const QString tools = quorlin::test::startedPrograms();

QJsonObject expectation(const QString &name)
{
    QFile file(corpus + QStringLiteral("/expected.json"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const QJsonObject files = QJsonDocument::fromJson(file.readAll()).object()["files"].toObject();
    return files[QStringLiteral("batch/") + name].toObject();
}

/// Pages as the output's name tells them: runs of neighbours as "first-last".
QString pageRanges(const QJsonArray &pages)
{
    QStringList runs;
    for (qsizetype i = 0; i < pages.size();) {
        const int first = pages.at(i).toInt();
        int last = first;
        while (++i < pages.size() && pages.at(i).toInt() == last + 1) {
            ++last;
        }
        runs.append(first == last ? QString::number(first)
                                  : QStringLiteral("%1-%2").arg(first).arg(last));
    }
    return runs.join(QLatin1Char(' '));
}

int pageCount(const QString &pdf, const QString &scratch)
{
    const QString answer = scratch + QStringLiteral("/count.txt");
    QProcess::execute(tools + QStringLiteral("/pagebinder"), {pdf, "-getinfo", "-outfile", answer});
    QFile file(answer);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readLine().trimmed().mid(int(qstrlen("NumberOfPages: "))).toInt();
}

/// Text at the rule's place on page @p page of @p pdf.
QString textAt(const Subtext &rule, const QString &pdf, int page, const QString &scratch)
{
    const QString number = QString::number(page);
    QProcess::execute(tools + QStringLiteral("/pagexport"),
                      {"-htmlformat", "-f", number, "-l", number, pdf, scratch + "/out.xml"});
    QFile file(scratch + QStringLiteral("/out_pg_0001.htm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    const auto lines = quorlin::pageFileLines(QString::fromUtf8(file.readAll()));
    for (const QString &line : lines) {
        const Subtext item = quorlin::parseItem(line);
        if (item.left == rule.left && item.top == rule.top) {
            return item.text;
        }
    }
    return {};
}

} // namespace

/// From a listed document over a rule made on it to the outputs on disk, as a user goes.
class TestRuleToSplit : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ruleMadeOnADocumentSplitsIt_data();
    void ruleMadeOnADocumentSplitsIt();

private:
    static void addFile(Process &window, const QString &file);
    static void makeRule(Process &window, const QJsonObject &expected);
    static void split(Process &window, int method, const QString &folder);
};

void TestRuleToSplit::initTestCase()
{
    if (!QFileInfo::exists(corpus + QStringLiteral("/batch"))) {
        QSKIP("The corpus is absent");
    }
}

void TestRuleToSplit::addFile(Process &window, const QString &file)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QDropEvent event(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    window.dropEvent(&event);
    QTRY_VERIFY(window.findChild<QPushButton *>("pushButton_option")->isEnabled());
}

void TestRuleToSplit::makeRule(Process &window, const QJsonObject &expected)
{
    const QJsonObject field = expected["field"].toObject();
    const QPointF place(field["left_pt"].toDouble() * 1.5, field["baseline_pt"].toDouble() * 1.5);
    QTimer::singleShot(0, &window, [&] {
        auto *editor = qobject_cast<Rules *>(QApplication::activeModalWidget());
        QVERIFY(editor);
        EditorView view(*editor);
        QTRY_VERIFY(!view.frames().isEmpty());
        const QList<QRect> frames = view.frameRects();
        int picked = -1;
        for (int i = 0; i < frames.size(); ++i) {
            if (std::abs(frames.at(i).x() - place.x()) <= 1 &&
                frames.at(i).adjusted(-2, 0, 0, 0).contains(place.toPoint())) {
                picked = i;
            }
        }
        if (picked < 0) {
            editor->reject();
        }
        QVERIFY(picked >= 0);
        view.clickFrame(picked);
        view.click("ruleButton");
        view.typeName("Account, 1st");
        view.click("pushButton_save");
    });
    QTest::mouseClick(window.findChild<QPushButton *>("pushButton_option"), Qt::LeftButton);
    QCOMPARE(window.findChild<QComboBox *>("comboBox_rule")->currentText(),
             QStringLiteral("Account, 1st"));
}

void TestRuleToSplit::split(Process &window, int method, const QString &folder)
{
    window.findChild<QComboBox *>("comboBox_method")->setCurrentIndex(method);
    window.findChild<QLineEdit *>("outputfolderEdit")->setText(folder);
    QTest::mouseClick(window.findChild<QPushButton *>("runButton"), Qt::LeftButton);
    auto *pane = window.findChild<QTextEdit *>("textEdit_process");
    QTRY_VERIFY_WITH_TIMEOUT(pane->toPlainText().endsWith("Conversion Finished."), 120000);
    QCOMPARE(window.findChild<QTableWidget *>("inputfiletableWidget")->item(0, 3)->text(),
             QStringLiteral("Succeed"));
}

void TestRuleToSplit::ruleMadeOnADocumentSplitsIt_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("method");
    QTest::newRow("accents, method 1") << "cairo_accent" << 0;
    QTest::newRow("slashes on turned pages, method 1") << "rl_rotated" << 0;
    QTest::newRow("landscape, method 2") << "landscape" << 1;
    QTest::newRow("accounts that come back, method 3") << "lo_mailmerge" << 2;
    QTest::newRow("Chinese characters, method 1") << "xetex_cjk" << 0;
}

void TestRuleToSplit::ruleMadeOnADocumentSplitsIt()
{
    QFETCH(QString, name);
    QFETCH(int, method);
    const QJsonObject expected = expectation(name + ".pdf");
    const QJsonArray groups = expected[QStringLiteral("method%1").arg(method + 1)].toArray();
    QVERIFY(groups.size() > 3);

    ToolBench bench;
    bench.useRealTools(tools);
    const QString outputs = bench.scratchPath() + QStringLiteral("/outputs");
    QVERIFY(QDir().mkdir(outputs));
    Process window;
    window.show();
    addFile(window, corpus + "/batch/" + name + ".pdf");
    makeRule(window, expected);
    split(window, method, outputs);
    if (QTest::currentTestFailed()) {
        return;
    }

    const QDir folder(outputs + QLatin1Char('/') + name);
    const Subtext rule = quorlin::readRule("Account, 1st");
    QCOMPARE(folder.entryList(QDir::Files).size(), groups.size());
    for (qsizetype i = 0; i < groups.size(); ++i) {
        const QJsonObject group = groups.at(i).toObject();
        const QString key = group["key"].toString();
        const QJsonArray pages = group["pages"].toArray();
        QString output = QString::number(i + 1) + ' ' + QString(key).replace('/', '-') + ' ' + name;
        output += (method == 2 ? QString() : ' ' + pageRanges(pages)) + ".pdf";
        QVERIFY2(folder.exists(output), qPrintable(output + "\n" + folder.entryList().join('\n')));
        QCOMPARE(pageCount(folder.filePath(output), bench.scratchPath()), int(pages.size()));
        QCOMPARE(textAt(rule, folder.filePath(output), 1, bench.scratchPath()), key);
    }
}

QUORLIN_TEST(TestRuleToSplit)
#include "test_rule_to_split.moc"
