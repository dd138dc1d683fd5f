#include "app/translation.h"
#include "mainwindow/process.h"
#include "tests/support/modal_answer.h"
#include "tests/support/room.h"

#include <QDir>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

class TestTranslation : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(folder.isValid());
        QDir::setCurrent(folder.path());
    }

    void withoutACatalogueEveryTextStaysAsItIs()
    {
        QVERIFY(!quorlin::installTranslation(folder.path(), QLocale(QStringLiteral("de_DE"))));
        Process window;
        QCOMPARE(splitCaption(window), QStringLiteral("Split"));
    }

    void aCatalogueBesideTheProgramTranslatesTheWindow()
    {
        QVERIFY(QFile::copy(QStringLiteral(QUORLIN_GERMAN_CATALOGUE),
                            folder.filePath(QStringLiteral("quorlin-cleaver_de.qm"))));
        QVERIFY(quorlin::installTranslation(folder.path(), QLocale(QStringLiteral("de_DE"))));
        Process window;
        QCOMPARE(splitCaption(window), QStringLiteral("Teilen"));
        QCOMPARE(Process::tr("Please choose files to split."),
                 QStringLiteral("Bitte Dateien wählen."));
    }

    void onlyTheBoxOfAnEmptyListIsTranslated()
    {
        // The catalogue of the test before is still installed, and knows both boxes.
        const quorlin::test::ModalAnswer modals;
        Process window;
        window.show();
        window.convertbegin();
        auto *table = window.findChild<QTableWidget *>(QStringLiteral("inputfiletableWidget"));
        table->insertRow(0);
        window.convertbegin();
        QCOMPARE(modals.boxes().size(), 2);
        QCOMPARE(modals.boxes().at(0).title, QStringLiteral("Keine Eingabe"));
        QCOMPARE(modals.boxes().at(0).text, QStringLiteral("Bitte Dateien wählen."));
        QCOMPARE(modals.boxes().at(1).title, QStringLiteral("Invalid order"));
        QCOMPARE(modals.boxes().at(1).text, QStringLiteral("Please specify an output folder."));
    }

    void aCatalogueOfAnotherLanguageIsLeftAlone()
    {
        QVERIFY(!quorlin::installTranslation(folder.path(), QLocale(QStringLiteral("fr_FR"))));
    }

private:
    static QString splitCaption(const Process &window)
    {
        return window.findChild<QPushButton *>(QStringLiteral("runButton"))->text();
    }

    QTemporaryDir folder;
};

QUORLIN_TEST(TestTranslation)
#include "test_translation.moc"
