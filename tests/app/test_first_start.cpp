#include "mainwindow/process.h"
#include "tests/support/modal_answer.h"
#include "tests/support/room.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QTemporaryDir>
#include <QTest>

/// What somebody finds who starts the program for the first time from the source folder.
class TestFirstStart : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(folder.isValid());
        QVERIFY(QFile::copy(QStringLiteral(QUORLIN_FIRST_SETTINGS),
                            folder.filePath(QStringLiteral("setting.ini"))));
        QDir::setCurrent(folder.path());
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    }
    void cleanup() { QFile::remove(folder.filePath(QStringLiteral("setting.ini"))); }

    void theAddDialogOpensInTheSamples()
    {
        quorlin::test::ModalAnswer modals;
        Process window;
        QStringList samples;
        modals.inspectFileDialog([&samples](QFileDialog *dialog) {
            samples = dialog->directory().entryList({QStringLiteral("*.pdf")});
        });
        modals.cancelNext();
        window.setopenfile();
        QCOMPARE(samples,
                 QStringList({QStringLiteral("invoices.pdf"), QStringLiteral("statements.pdf")}));
    }

    void theSampleRulesAreThere()
    {
        const Process window;
        const auto *rules = window.findChild<QComboBox *>(QStringLiteral("comboBox_rule"));
        QVERIFY(rules->findText(QStringLiteral("Customer number")) >= 0);
        QVERIFY(rules->findText(QStringLiteral("Invoice number")) >= 0);
    }

private:
    QTemporaryDir folder;
};

QUORLIN_TEST(TestFirstStart)
#include "test_first_start.moc"
