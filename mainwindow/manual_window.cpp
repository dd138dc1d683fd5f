#include "mainwindow/manual_window.h"

#include "widgets/screen_fit.h"

#include <QCoreApplication>
#include <QIcon>
#include <QShortcut>
#include <QUrl>

namespace {

constexpr QSize openingSize(760, 640);

} // namespace

/// The pages lie in a library, whose resources are there only when asked for; Qt wants the asking
/// outside every namespace.
static void loadPages()
{
    Q_INIT_RESOURCE(manual);
}

ManualWindow::ManualWindow()
{
    loadPages();
    setObjectName(QStringLiteral("ManualWindow"));
    setWindowTitle(QCoreApplication::translate("ManualWindow", "Manual"));
    setWindowIcon(QIcon(QStringLiteral(":/iconoption/icons/content32.png")));
    setOpenExternalLinks(true);
    document()->setDocumentMargin(16);
    resize(openingSize);
    auto *escape = new QShortcut(QKeySequence::Cancel, this);
    connect(escape, &QShortcut::activated, this, &QWidget::close);
    auto *back = new QShortcut(QKeySequence::Back, this);
    connect(back, &QShortcut::activated, this, &QTextBrowser::backward);
}

void ManualWindow::showEvent(QShowEvent *event)
{
    setSource(QUrl(QStringLiteral("qrc:/manual/manual.md")));
    quorlin::fitOnScreen(*this);
    QTextBrowser::showEvent(event);
}
