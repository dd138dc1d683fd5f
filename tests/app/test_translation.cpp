#include "app/translation.h"
#include "mainwindow/process.h"

#include <QDir>
#include <QPushButton>
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

QTEST_MAIN(TestTranslation)
#include "test_translation.moc"
