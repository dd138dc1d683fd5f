#include "pipeline/input_identity.h"
#include "tests/support/room.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

#include <limits>

using quorlin::FileIdentity;
using quorlin::identifyFile;
using quorlin::inputIdentityText;

class TestInputIdentity : public QObject
{
    Q_OBJECT

private slots:
    void texts_data();
    void texts();
    void aFileLeftAloneKeepsItsIdentity();
    void everyChangeIsSeen_data();
    void everyChangeIsSeen();
    void aLinkHasItsTargetsIdentity();
    void whatIsNoFileHasNone();

private:
    QString write(const QString &name, const QByteArray &bytes) const;

    QTemporaryDir folder;
};

QString TestInputIdentity::write(const QString &name, const QByteArray &bytes) const
{
    const QString path = folder.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write the file");
    }
    return path;
}

void TestInputIdentity::texts_data()
{
    QTest::addColumn<FileIdentity>("identity");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("all zero") << FileIdentity{} << QByteArray("0:0:0:0.000000000");
    QTest::newRow("nine digits of nanoseconds")
        << FileIdentity{2049, 17, 1048576, 1700000000, 42}
        << QByteArray("2049:17:1048576:1700000000.000000042");
    QTest::newRow("largest numbers")
        << FileIdentity{std::numeric_limits<quint64>::max(), std::numeric_limits<quint64>::max(),
                        std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::max(),
                        999999999}
        << QByteArray("18446744073709551615:18446744073709551615:9223372036854775807:"
                      "9223372036854775807.999999999");
}

void TestInputIdentity::texts()
{
    QFETCH(FileIdentity, identity);
    QTEST(inputIdentityText(identity), "text");
}

void TestInputIdentity::aFileLeftAloneKeepsItsIdentity()
{
    const QString path = write(QStringLiteral("a.pdf"), "pages");
    const auto first = identifyFile(path);
    QVERIFY(first);
    QCOMPARE(first->size, qint64{5});
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("pages"));
    QCOMPARE(identifyFile(path), first);
    struct stat status = {};
    QCOMPARE(stat(QFile::encodeName(path).constData(), &status), 0);
    QCOMPARE(first->inode, quint64{status.st_ino});
    QCOMPARE(first->device, quint64{status.st_dev});
}

void TestInputIdentity::everyChangeIsSeen_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("replaced by a file of the same bytes") << 0;
    QTest::newRow("rewritten in place with the same size") << 1;
    QTest::newRow("rewritten, its old time of modification restored") << 2;
    QTest::newRow("cut") << 3;
}

void TestInputIdentity::everyChangeIsSeen()
{
    QFETCH(int, kind);
    const QString path = write(QStringLiteral("b.pdf"), "pages");
    const auto before = identifyFile(path);
    QFile file(path);
    const QDateTime modified = file.fileTime(QFileDevice::FileModificationTime);
    const auto change = [&] {
        switch (kind) {
        case 0:
            return QFile::rename(path, path + QStringLiteral(".old")) &&
                   QFile::copy(path + QStringLiteral(".old"), path) &&
                   QFile::remove(path + QStringLiteral(".old"));
        case 1:
        case 2:
            if (!file.open(QIODevice::ReadWrite) || file.write("PAGES") != 5 || !file.flush()) {
                return false;
            }
            return kind == 1 || file.setFileTime(modified, QFileDevice::FileModificationTime);
        default:
            return file.resize(3);
        }
    };
    // The system's clock advances in steps of some milliseconds; the change comes again until a
    // step lies between.
    QTRY_VERIFY(change() && (file.close(), identifyFile(path) != before));
}

void TestInputIdentity::aLinkHasItsTargetsIdentity()
{
    const QString path = write(QStringLiteral("c.pdf"), "pages");
    const QString link = folder.filePath(QStringLiteral("link.pdf"));
    QVERIFY(QFile::link(path, link));
    QCOMPARE(identifyFile(link), identifyFile(path));
}

void TestInputIdentity::whatIsNoFileHasNone()
{
    QVERIFY(!identifyFile(folder.filePath(QStringLiteral("missing.pdf"))));
    QVERIFY(!identifyFile(QString()));
    QVERIFY(!identifyFile(folder.path()));
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(!identifyFile(pipe));
}

QUORLIN_TEST(TestInputIdentity)
#include "test_input_identity.moc"
