#include "batch/settings_location.h"

#include "tests/support/room.h"

#include <QStringList>
#include <QTest>

using quorlin::batch::settingsLocation;
using quorlin::batch::SettingsPlaces;

/// Where the runner takes its rules from.
class TestSettingsLocation : public QObject
{
    Q_OBJECT

private slots:
    void theFirstPlaceThatHasAFileIsTaken_data();
    void theFirstPlaceThatHasAFileIsTaken();
};

void TestSettingsLocation::theFirstPlaceThatHasAFileIsTaken_data()
{
    QTest::addColumn<QString>("named");
    QTest::addColumn<QStringList>("present");
    QTest::addColumn<QString>("taken");
    const QString own = QStringLiteral("/program/setting.ini");
    const QString system = QStringLiteral("/etc/quorlin/setting.ini");
    const QString named = QStringLiteral("/mine/rules.ini");
    QTest::newRow("a file beside the program") << QString() << QStringList{own} << own;
    QTest::newRow("both: the program's own") << QString() << QStringList{own, system} << own;
    QTest::newRow("the machine's alone") << QString() << QStringList{system} << system;
    QTest::newRow("none: the program's own is named") << QString() << QStringList() << own;
    QTest::newRow("a named file comes first") << named << QStringList{own, system, named} << named;
    QTest::newRow("a named file that is missing is no reason to take another")
        << named << QStringList{own, system} << named;
}

void TestSettingsLocation::theFirstPlaceThatHasAFileIsTaken()
{
    QFETCH(QString, named);
    QFETCH(QStringList, present);
    const SettingsPlaces places{named, QStringLiteral("/program"), QStringLiteral("/etc/quorlin")};
    QTEST(settingsLocation(places, [&](const QString &path) { return present.contains(path); }),
          "taken");
}

QUORLIN_TEST(TestSettingsLocation)
#include "test_settings_location.moc"
