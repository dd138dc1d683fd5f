// page_turn PDF PAGES PAGE TURNS: turns between two neighbouring pages of a document in the rule
// editor and prints, for every turn, the milliseconds of its parts as the user waits for them: the
// export with the picture shown, and the frames drawn over it. Used by page_turn.py.
#include "common/folders.h"
#include "common/settings_text.h"
#include "rules/rules.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace {

/// Runs the event loop until a frame lies over @p picture and everything is painted.
bool waitForFrames(const QLabel *picture)
{
    QElapsedTimer patience;
    patience.start();
    while (picture->findChildren<QPushButton *>(Qt::FindDirectChildrenOnly).size() < 2) {
        if (patience.elapsed() > 30000) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    QCoreApplication::processEvents();
    return true;
}

int turnPages(Rules &editor, int page, int turns)
{
    auto *pageBox = editor.findChild<QSpinBox *>(QStringLiteral("spinBox_pagenumber"));
    const auto *picture = editor.findChild<QLabel *>(QStringLiteral("imageLabel"));
    editor.setIniImage();
    editor.show();
    if (!waitForFrames(picture)) {
        std::fputs("page_turn: no frames on the first page\n", stderr);
        return 1;
    }
    for (int turn = 0; turn < turns; ++turn) {
        QElapsedTimer clock;
        clock.start();
        pageBox->setValue(turn % 2 == 0 ? page : page + 1);
        const qint64 shown = clock.nsecsElapsed();
        if (!waitForFrames(picture)) {
            std::fputs("page_turn: no frames\n", stderr);
            return 1;
        }
        const qint64 whole = clock.nsecsElapsed();
        std::printf("%.2f %.2f\n", double(shown) / 1e6, double(whole) / 1e6);
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 5) {
        std::fputs("usage: page_turn PDF PAGES PAGE TURNS\n", stderr);
        return 2;
    }
    QApplication application(argc, argv);
    const QString document = QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath();
    const QTemporaryDir scratch;
    qputenv("TMPDIR", scratch.path().toLocal8Bit());
    QDir::setCurrent(scratch.path());
    {
        QSettings settings(quorlin::settingsFileName(), QSettings::IniFormat);
        settings.setValue(QStringLiteral("file/file"), document);
        settings.setValue(QStringLiteral("file/page"), QString::fromLocal8Bit(argv[2]));
    }
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Rules editor;
    return turnPages(editor, std::atoi(argv[3]), std::atoi(argv[4]));
}
