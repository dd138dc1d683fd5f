#include "common/debug_line.h"
#include "common/folders.h"
#include "common/settings_text.h"
#include "common/tool_commands.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class TestCommon : public QObject
{
    Q_OBJECT

private slots:
    void commandLines_data();
    void commandLines();
    void debugLinesEndEveryPieceWithABlank();
    void theApplicationFolderCanBeChosen();
    void theTemporaryFolderIsAskedAfresh();
    void aMissingTemporaryFolderIsTmp();
    void handWrittenListsReadAsOneText_data();
    void handWrittenListsReadAsOneText();
    void absentKeysGiveTheDefault();
};

void TestCommon::commandLines_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("expected");

    const QString app = QStringLiteral("/the app");
    QTest::newRow("page count")
        << quorlin::pageCountCommand(app, QStringLiteral("/in/a b.pdf"),
                                     QStringLiteral("/the app/fileinfo.txt"))
        << "\"/the app/pagebinder\" \"/in/a b.pdf\" -getinfo -outfile \"/the app/fileinfo.txt\"";
    QTest::newRow("export of a split")
        << quorlin::splitExportCommand(app, QStringLiteral("/in/a.pdf"),
                                       QStringLiteral("/t/split.xml"))
        << "\"/the app/pagexport\" -htmlformat \"/in/a.pdf\" \"/t/split.xml\"";
    QTest::newRow("export of one page")
        << quorlin::pageExportCommand(app, QStringLiteral("/in/a.pdf"), 12,
                                      QStringLiteral("/t/text.xml"))
        << "\"/the app/pagexport\" -htmlformat -f 12 -l 12 \"/in/a.pdf\" \"/t/text.xml\"";
    QTest::newRow("page 0 leaves the bounds out")
        << quorlin::pageExportCommand(app, QStringLiteral("/in/a.pdf"), 0,
                                      QStringLiteral("/t/text.xml"))
        << "\"/the app/pagexport\" -htmlformat \"/in/a.pdf\" \"/t/text.xml\"";
    QTest::newRow("merge")
        << quorlin::mergeCommand(app, QStringLiteral("/in/a.pdf"), QStringLiteral("1-2 4-5"),
                                 QStringLiteral("/out/1 A a.pdf"))
        << "\"/the app/pagebinder\" \"/in/a.pdf\" -merge 1-2 4-5 -outfile \"/out/1 A a.pdf\"";
    QTest::newRow("place-holders in names stand for themselves")
        << quorlin::mergeCommand(app, QStringLiteral("/in/%1%2.pdf"), QStringLiteral("7"),
                                 QStringLiteral("/out/%3.pdf"))
        << "\"/the app/pagebinder\" \"/in/%1%2.pdf\" -merge 7 -outfile \"/out/%3.pdf\"";
}

void TestCommon::commandLines()
{
    QFETCH(QString, command);
    QTEST(command, "expected");
}

void TestCommon::debugLinesEndEveryPieceWithABlank()
{
    QTest::ignoreMessage(QtDebugMsg, "Information file is: \"/a \\ \"b\"/c\" ");
    quorlin::debugLine(
        {QStringLiteral("Information file is:"), quorlin::quoted(QStringLiteral("/a \\ \"b\"/c"))});
}

void TestCommon::theApplicationFolderCanBeChosen()
{
    QCOMPARE(quorlin::applicationFolder(), QCoreApplication::applicationDirPath());
    quorlin::setApplicationFolder(QStringLiteral("/elsewhere"));
    QCOMPARE(quorlin::applicationFolder(), QStringLiteral("/elsewhere"));
    quorlin::setApplicationFolder(QString());
    QCOMPARE(quorlin::applicationFolder(), QCoreApplication::applicationDirPath());
}

void TestCommon::theTemporaryFolderIsAskedAfresh()
{
    const QByteArray before = qgetenv("TMPDIR");
    const QTemporaryDir first;
    const QTemporaryDir second;
    qputenv("TMPDIR", first.path().toLocal8Bit());
    QCOMPARE(quorlin::temporaryFolder(), QDir(first.path()).canonicalPath());
    qputenv("TMPDIR", second.path().toLocal8Bit());
    QCOMPARE(quorlin::temporaryFolder(), QDir(second.path()).canonicalPath());
    qputenv("TMPDIR", before);
}

void TestCommon::aMissingTemporaryFolderIsTmp()
{
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/no/such/folder");
    QCOMPARE(quorlin::temporaryFolder(), QStringLiteral("/tmp"));
    qputenv("TMPDIR", before);
}

void TestCommon::handWrittenListsReadAsOneText_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << QByteArray("Invoice") << "Invoice";
    QTest::newRow("bare commas") << QByteArray("Miller, Smith, Sons") << "Miller, Smith, Sons";
    QTest::newRow("quoted commas") << QByteArray("\"Miller,Smith\"") << "Miller,Smith";
    QTest::newRow("empty") << QByteArray() << "";
    QTest::newRow("UTF-8") << QByteArray("Gr\xc3\xbc\xc3\x9f") << QString::fromUtf8("Grüß");
    QTest::newRow("escaped Latin-1") << QByteArray("caf\\xe9") << QString::fromUtf8("café");
}

void TestCommon::handWrittenListsReadAsOneText()
{
    QFETCH(QByteArray, stored);
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("setting.ini")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[rule]\ntext=" + stored + "\n");
    file.close();
    const QSettings settings(file.fileName(), QSettings::IniFormat);
    QTEST(quorlin::settingsText(settings, QStringLiteral("rule/text"), QStringLiteral("fallback")),
          "text");
}

void TestCommon::absentKeysGiveTheDefault()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("setting.ini"));
    const QSettings settings(path, QSettings::IniFormat);
    QCOMPARE(quorlin::settingsText(settings, QStringLiteral("a/b"), QStringLiteral(".")),
             QStringLiteral("."));
    QCOMPARE(quorlin::settingsText(settings, QStringLiteral("a/b")), QString());
    QVERIFY(!QFile::exists(path));
}

QUORLIN_TEST(TestCommon)
#include "test_common.moc"
