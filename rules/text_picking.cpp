#include "rules/rules.h"

#include "pipeline/page_file_text.h"
#include "rules/editor_text.h"
#include "rules/item_frame.h"
#include "rules/preview_geometry.h"
#include "widgets/plain_tip.h"

#include "ui_rules.h"

#include <QApplication>
#include <QCursor>
#include <QLabel>
#include <QMouseEvent>
#include <QNetworkReply>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QToolTip>
#include <QXmlStreamReader>

#include <vector>

using namespace quorlin;

void Rules::gethtmlinfo()
{
    auto *reply = qobject_cast<QNetworkReply *>(sender());
    if (reply == nullptr) {
        reply = htmlReply;
    }
    if (reply == nullptr) {
        return;
    }
    reply->deleteLater();
    if (reply != htmlReply) {
        return;
    }
    htmlReply = nullptr;
    const QString text = QString::fromUtf8(reply->readAll());
    xmlReader = std::make_unique<QXmlStreamReader>(text);
    getTextPosition(text);
    drawlabels();
}

void Rules::getdiv()
{
    if (!xmlReader) {
        return;
    }
    while (!xmlReader->atEnd()) {
        if (xmlReader->readNext() == QXmlStreamReader::StartElement &&
            xmlReader->name() == QLatin1String("span")) {
            xmlReader->readElementText(QXmlStreamReader::IncludeChildElements);
        }
    }
}

void Rules::getTextPosition(const QString &sxml)
{
    pageLines = pageFileLines(sxml);
    if (pageLines.size() > maximumPageItems) {
        pageLines.resize(maximumPageItems);
    }
    for (qsizetype i = 0; i < pageLines.size(); ++i) {
        items[static_cast<std::size_t>(i)] = getSubtextInfo(pageLines.at(i));
    }
}

Subtext Rules::getSubtextInfo(const QString &sRow)
{
    return parseItem(sRow);
}

int Rules::getpos(const QString &sPos, const QString &sRow)
{
    return styleValue(sPos, sRow);
}

QString Rules::gettext(const QString &sRow)
{
    return itemText(sRow);
}

void Rules::drawlabels()
{
    // The braces are not balanced on purpose: the text stands inside a rule of its own, so that it
    // reads as two rules, one for the button and one for the pressed button.
    const QString sheet =
        QStringLiteral("border:2px dotted green;} QPushButton:Pressed{border:2px dotted red;");
    deleteItemButtons();
    const QImage picture = imageLabel->pixmap().toImage();
    for (std::size_t i = 0; i < static_cast<std::size_t>(pageLines.size()); ++i) {
        auto *button = new ItemFrame(imageLabel);
        itemButtons[i] = button;
        button->setAutoDefault(false);
        button->setAccessibleName(items[i].text);
        if (coversTheStartOnly(items[i])) {
            button->setToolTip(plainTip(plainText(items[i].text)));
        }
        button->setGeometry(itemFrame(items[i], frameZoom));
        button->adaptTo(picture);
        button->setFlat(true);
        button->setStyleSheet(sheet);
        button->show();
        connect(button, SIGNAL(clicked()), this, SLOT(textmessagebox()));
    }
}

void Rules::deleteItemButtons()
{
    for (QPushButton *&button : itemButtons) {
        delete button;
        button = nullptr;
    }
}

void Rules::textmessagebox()
{
    std::vector<QRect> frames;
    frames.reserve(static_cast<std::size_t>(pageLines.size()));
    for (const QPushButton *button : itemButtons) {
        if (button == nullptr) {
            break;
        }
        frames.push_back(button->geometry());
    }
    const QPoint cursor = QCursor::pos();
    const auto index = frameAt(frames, imageLabel->mapFromGlobal(QPointF(cursor)));
    const auto chosen = static_cast<std::size_t>(index.value_or(0));
    currentItem = items[chosen];
    picked = true;
    placeRuleButton(index ? frames[chosen] : QRect());
    showPositionTip(cursor);
}

void Rules::placeRuleButton(const QRect &frame)
{
    ruleButton->setText(tr("Make it be the rule"));
    ruleButton->setGeometry(confirmGeometry(frame, imageLabel->size()));
    ruleButton->raise();
    ruleButton->show();
    bringIntoView(ruleButton->geometry());
}

void Rules::showPositionTip(QPoint cursor)
{
    // Without a widget: it would lend the tip its style sheet.
    QToolTip::showText(cursor, positionTip(currentItem));
    const QRect button(ruleButton->mapToGlobal(QPoint()), ruleButton->size());
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        // The tip's own window: only there can it be seen how large it is.
        if (!window->inherits("QTipLabel") || !window->isVisible() ||
            !window->geometry().intersects(button)) {
            continue;
        }
        const bool roomBelow =
            button.bottom() + window->height() < window->screen()->availableGeometry().bottom();
        window->move(window->x(),
                     roomBelow ? button.bottom() + 1 : button.top() - window->height());
    }
}

void Rules::hideRuleButton()
{
    // The focus of a button that goes would move to another item, and the view after it.
    if (ruleButton->hasFocus()) {
        scrollArea->setFocus();
    }
    ruleButton->hide();
}

void Rules::mousePressEvent(QMouseEvent *event)
{
    hideRuleButton();
    event->accept();
}

void Rules::mouseMoveEvent(QMouseEvent *) {}

void Rules::getSpecifytext() {}

void Rules::addtorules()
{
    const bool confirmedHere = ruleButton->hasFocus();
    hideRuleButton();
    ui->pushButton_save->setEnabled(true);
    ui->lineEdit_rule->setEnabled(true);
    ui->lineEdit_rulebefore->setEnabled(true);
    if (confirmedHere) {
        ui->lineEdit_rule->setFocus(); // what comes next is the rule's name
    }
    ui->lineEdit_rulebefore->setText(ruleContent(currentItem));
}
