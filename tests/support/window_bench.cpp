#include "tests/support/window_bench.h"

#include "tests/support/waiting.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>

namespace quorlin::test {

namespace {

constexpr const char *jobButtons[] = {
    "openfileButton",  "removeButton",      "removeallButton", "pushButton_up",
    "pushButton_down", "pushButton_option", "runButton",
};

} // namespace

WindowBench::WindowBench()
{
    installFakeTools(folders.application());
    folders.saveRule(QStringLiteral("Account"), ruleLeft, ruleTop);
}

Process &WindowBench::window()
{
    if (!made) {
        made = std::make_unique<Process>();
        made->show();
        if (!QTest::qWaitForWindowExposed(made.get())) {
            qFatal("The window does not appear");
        }
    }
    return *made;
}

void WindowBench::click(const char *button)
{
    QTest::mouseClick(widget<QPushButton>(button), Qt::LeftButton);
}

QString WindowBench::addBatch(const QString &name, const PageTexts &texts) const
{
    return folders.addInput(name, ordersFor(texts).toUtf8());
}

void WindowBench::addFiles(const QStringList &files)
{
    modals.chooseFiles(files);
    click("openfileButton");
    if (!waitUntil([this] { return controlsEnabled(); }, 60000)) {
        qFatal("The page counts do not end");
    }
}

void WindowBench::drop(const QList<QUrl> &urls)
{
    QMimeData data;
    data.setUrls(urls);
    QDropEvent event(QPointF(100, 100), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    window().dropEvent(&event);
}

void WindowBench::dropFiles(const QStringList &files)
{
    QList<QUrl> urls;
    for (const QString &file : files) {
        urls.append(QUrl::fromLocalFile(file));
    }
    drop(urls);
}

bool WindowBench::controlsEnabled()
{
    return std::all_of(
               std::begin(jobButtons), std::end(jobButtons),
               [this](const char *name) { return widget<QPushButton>(name)->isEnabled(); }) &&
           table()->contextMenuPolicy() == Qt::ActionsContextMenu;
}

bool WindowBench::controlsDisabled()
{
    return std::none_of(
               std::begin(jobButtons), std::end(jobButtons),
               [this](const char *name) { return widget<QPushButton>(name)->isEnabled(); }) &&
           table()->contextMenuPolicy() == Qt::NoContextMenu;
}

void WindowBench::setOutputFolder(const QString &folder)
{
    widget<QLineEdit>("outputfolderEdit")->setText(folder);
}

void WindowBench::split()
{
    const QString end = QStringLiteral("Conversion Finished.");
    const qsizetype before = paneLines().count(end);
    click("runButton");
    const QTextDocument *pane = widget<QTextEdit>("textEdit_process")->document();
    const auto finished = [&] {
        return pane->lastBlock().text() == end && paneLines().count(end) > before;
    };
    if (!waitUntil(finished, 120000)) {
        qFatal("The run does not end");
    }
}

QString WindowBench::cell(int row, int column)
{
    const QTableWidgetItem *item = table()->item(row, column);
    return item == nullptr ? QString() : item->text();
}

QStringList WindowBench::column(int column)
{
    QStringList texts;
    for (int row = 0; row < table()->rowCount(); ++row) {
        texts.append(cell(row, column));
    }
    return texts;
}

QStringList WindowBench::paneLines()
{
    const QTextDocument *document = widget<QTextEdit>("textEdit_process")->document();
    QStringList lines;
    if (document->isEmpty()) {
        return lines;
    }
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        lines.append(block.text());
    }
    return lines;
}

void WindowBench::selectRows(const QList<int> &rows)
{
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    for (const int row : rows) {
        table()->scrollToItem(table()->item(row, 0));
        const QRect place = table()->visualItemRect(table()->item(row, 0));
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, modifiers, place.center());
        modifiers = Qt::ControlModifier;
    }
}

QList<int> WindowBench::selectedRows()
{
    QList<int> rows;
    const QModelIndexList indexes = table()->selectionModel()->selectedRows();
    for (const QModelIndex &index : indexes) {
        rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

} // namespace quorlin::test
