#include "analysis/grouping.h"
#include "analysis/line_parser.h"
#include "common/folders.h"
#include "mainwindow/process.h"
#include "pipeline/page_file.h"
#include "ui_process.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

#include <utility>

void Process::getAlltheText()
{
    pageCount = currentPageText().toInt();
    if (currentPage <= pageCount) {
        requestPage(currentPage);
        return;
    }
    currentPage = 1;
    const quorlin::PageGroups groups =
        quorlin::groupPages(pageTexts, ui->comboBox_method->currentIndex());
    pageRanges = groups.ranges;
    rangeTexts = groups.texts;
    // A run that stopped inside a file left its number here.
    groupIndex = 0;
    splitpdffile();
}

void Process::requestPage(int page)
{
    addProgressLine(QStringLiteral("Analyzing page ") + QString::number(page));
    ++currentPage;
    // A read ends within the turn of the event loop that began it. Begun at once, all pages of a
    // file would be read in a single turn, and the window would stand still as long.
    requestedPages.append(page);
    pageTurn.start();
}

void Process::readRequestedPages()
{
    const QList<int> pages = std::exchange(requestedPages, {});
    const QString folder = pageFolder.isEmpty() ? quorlin::temporaryFolder() : pageFolder;
    for (const int page : pages) {
        const QString path = quorlin::pageFilePath(folder, page);
        pageReply = networkManager->get(QNetworkRequest(quorlin::pageFileUrl(path)));
        connect(pageReply, SIGNAL(finished()), this, SLOT(gethtm()));
    }
}

void Process::gethtm()
{
    // A second press of "Split" may have replaced the pending reply; each is read once.
    QNetworkReply *reply = qobject_cast<QNetworkReply *>(sender());
    if (reply == nullptr) {
        reply = pageReply;
    }
    if (reply == nullptr) {
        return;
    }
    const QByteArray bytes = reply->readAll();
    reply->deleteLater();
    pageReader.clear();
    pageReader.addData(bytes);
    getTextPosition(QString::fromUtf8(bytes));
}

void Process::getTextPosition(const QString &sxml)
{
    pageHtml = sxml;
    pageLines = quorlin::pageFileLinesWithin(pageHtml);
    QString text = quorlin::noTextMarker();
    for (qsizetype i = 0; i < pageLines.size(); ++i) {
        const Subtext item = getSubtextInfo(pageLines.at(i));
        if (i < quorlin::maximumPageItems) {
            pageItems[static_cast<std::size_t>(i)] = item;
        }
        if (item.left == ruleX && item.top == ruleY) {
            text = item.text;
            break;
        }
    }
    pageTexts.append(text);
    getAlltheText();
}

Subtext Process::getSubtextInfo(const QString &sRow)
{
    return quorlin::parseItem(sRow);
}

int Process::getpos(const QString &sPos, const QString &sRow)
{
    return quorlin::styleValue(sPos, sRow);
}

QString Process::gettext(const QString &sRow)
{
    return quorlin::itemText(sRow);
}
