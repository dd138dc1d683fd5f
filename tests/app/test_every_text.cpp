#include "catalogue.h"

#include "mainwindow/floatform.h"
#include "mainwindow/process.h"
#include "mainwindow/secdialog.h"
#include "options/opdialog.h"
#include "rules/rules.h"
#include "tests/support/modal_answer.h"
#include "tests/support/room.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QSettings>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

namespace {

/// Translates every text there is, by putting it between marks, and remembers it with its class.
class EveryText : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        asked.insert(QString::fromUtf8(context) + ": " + QString::fromUtf8(source));
        return QStringLiteral("<<") + QString::fromUtf8(source) + QStringLiteral(">>");
    }

    mutable QSet<QString> asked;
};

bool isTranslated(const QString &text)
{
    return text.startsWith(QLatin1String("<<")) && text.endsWith(QLatin1String(">>"));
}

/// Addresses, numbers and names that users gave are the same in every language.
bool isWords(const QString &text)
{
    return !text.isEmpty() && !text.contains(QLatin1String("href=")) &&
           !text.startsWith(QLatin1Char('/'));
}

QStringList textsOf(const QWidget &widget)
{
    QStringList texts = {widget.accessibleName(), widget.toolTip(), widget.windowTitle()};
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        texts << label->text();
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        texts << button->text();
    } else if (const auto *group = qobject_cast<const QGroupBox *>(&widget)) {
        texts << group->title();
    } else if (const auto *combo = qobject_cast<const QComboBox *>(&widget)) {
        for (int i = 0; i < combo->count(); ++i) {
            texts << combo->itemText(i);
        }
    } else if (const auto *list = qobject_cast<const QListWidget *>(&widget)) {
        for (int i = 0; i < list->count(); ++i) {
            texts << list->item(i)->text();
        }
    } else if (const auto *table = qobject_cast<const QTableWidget *>(&widget)) {
        for (int i = 0; i < table->columnCount(); ++i) {
            texts << table->horizontalHeaderItem(i)->text();
        }
    }
    for (const QAction *action : widget.actions()) {
        texts << action->text();
    }
    return texts;
}

/// Texts of @p window that no catalogue could translate.
QStringList untranslated(const QWidget &window)
{
    QStringList found;
    QList<const QWidget *> widgets = {&window};
    for (const QWidget *child : window.findChildren<QWidget *>()) {
        if (!child->objectName().startsWith(QLatin1String("qt_"))) {
            widgets << child;
        }
    }
    for (const QWidget *widget : widgets) {
        for (const QString &text : textsOf(*widget)) {
            if (isWords(text) && !isTranslated(text)) {
                found << widget->objectName() + ": " + text;
            }
        }
    }
    return found;
}

} // namespace

class TestEveryText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyTextOfTheWindowsGoesThroughTheCatalogue();
    void everyTextOfTheBoxesGoesThroughTheCatalogue();
    void theTitlesOfTheFileDialogsGoThroughTheCatalogue();
    void aTranslatedOptionsDialogReadsAndWritesTheSameSettings();
    void theCollectorFindsEveryText();

private:
    QTemporaryDir folder;
    EveryText everyText;
};

void TestEveryText::initTestCase()
{
    QVERIFY(folder.isValid());
    QDir::setCurrent(folder.path());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QVERIFY(QCoreApplication::installTranslator(&everyText));
}

void TestEveryText::everyTextOfTheWindowsGoesThroughTheCatalogue()
{
    const Process window;
    QCOMPARE(untranslated(window), QStringList());
    Rules editor;
    editor.textmessagebox(); // names the button that makes the rule
    QCOMPARE(untranslated(editor), QStringList());
    QCOMPARE(untranslated(OpDialog()), QStringList());
    QCOMPARE(untranslated(AboutDialog()), QStringList());
    QCOMPARE(untranslated(SecDialog()), QStringList());
    QCOMPARE(untranslated(floatform()), QStringList());
    QVERIFY(everyText.asked.size() > 80);
}

void TestEveryText::everyTextOfTheBoxesGoesThroughTheCatalogue()
{
    quorlin::test::ModalAnswer modals;
    Process window;
    window.convertbegin();
    Rules editor;
    auto *name = editor.findChild<QLineEdit *>(QStringLiteral("lineEdit_rule"));
    editor.setsave();
    name->setText(QStringLiteral("Customer"));
    editor.setsave();
    editor.setsave();
    QCOMPARE(modals.boxes().size(), 3);
    for (const quorlin::test::ShownBox &box : modals.boxes()) {
        QVERIFY2(isTranslated(box.title), qPrintable(box.title));
        QVERIFY2(isTranslated(box.text), qPrintable(box.text));
        QVERIFY2(isTranslated(box.buttons.value(0)), qPrintable(box.buttons.value(0)));
    }
}

void TestEveryText::theTitlesOfTheFileDialogsGoThroughTheCatalogue()
{
    quorlin::test::ModalAnswer modals;
    Process window;
    QStringList titles;
    const auto look = [&titles](QFileDialog *dialog) { titles << dialog->windowTitle(); };
    modals.inspectFileDialog(look);
    modals.cancelNext();
    window.setopenfile();
    modals.inspectFileDialog(look);
    modals.cancelNext();
    window.setoutputfile();
    QCOMPARE(titles, QStringList({"<<Add File>>", "<<Save>>"}));
}

void TestEveryText::aTranslatedOptionsDialogReadsAndWritesTheSameSettings()
{
    {
        QSettings settings(QStringLiteral("setting.ini"), QSettings::IniFormat);
        settings.setValue(QStringLiteral("Fonts/Fonts"), QStringLiteral("No"));
    }
    OpDialog dialog;
    const auto *pages = dialog.findChild<QListWidget *>(QStringLiteral("listWidge_option"));
    QCOMPARE(pages->item(1)->checkState(), Qt::Unchecked);
    QCOMPARE(pages->item(2)->checkState(), Qt::Checked);
    dialog.setop();
    const QSettings settings(QStringLiteral("setting.ini"), QSettings::IniFormat);
    QCOMPARE(settings.value(QStringLiteral("Fonts/Fonts")).toString(), QStringLiteral("No"));
    QCOMPARE(settings.value(QStringLiteral("Secur/Secur")).toString(), QStringLiteral("Ok"));
}

void TestEveryText::theCollectorFindsEveryText()
{
    const QStringList collected = collectedTexts(folder.filePath(QStringLiteral("all.ts")));
    QVERIFY(collected.size() > 80);
    QStringList missed;
    for (const QString &text : everyText.asked) {
        // The others are Qt's own: buttons of boxes, file dialogs.
        if (!text.startsWith(QLatin1Char('Q'))) {
            if (!collected.contains(text)) {
                missed << text;
            }
        }
    }
    QCOMPARE(missed, QStringList());
}

QUORLIN_TEST(TestEveryText)
#include "test_every_text.moc"
