#include "app/message_log.h"
#include "tests/support/room.h"

#include <QTest>

class TestMessageFormat : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
};

void TestMessageFormat::formats_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("line");
    QTest::newRow("debug") << int(QtDebugMsg) << "abc"
                           << "Debug: abc";
    QTest::newRow("information") << int(QtInfoMsg) << "abc"
                                 << "Debug: abc";
    QTest::newRow("warning") << int(QtWarningMsg) << "abc"
                             << "Warning: abc";
    QTest::newRow("critical") << int(QtCriticalMsg) << "abc"
                              << "Critical: abc";
    QTest::newRow("fatal") << int(QtFatalMsg) << "abc"
                           << "Fatal: abc";
    QTest::newRow("place-holders stay") << int(QtWarningMsg) << "100%1 %2"
                                        << "Warning: 100%1 %2";
    QTest::newRow("empty") << int(QtWarningMsg) << ""
                           << "Warning: ";
}

void TestMessageFormat::formats()
{
    QFETCH(int, type);
    QFETCH(QString, message);
    QTEST(quorlin::formattedMessage(QtMsgType(type), message), "line");
}

QUORLIN_TEST(TestMessageFormat)
#include "test_message_format.moc"
