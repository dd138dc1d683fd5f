// An output is as encrypted as its input where the input forbids copying.

#include "../../batch/encrypted_pdf.h"
#include "locked_pdf.h"
#include "merge_bench.h"
#include "tests/support/room.h"

#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int withoutCopying = -20;

Lock forbidding(int revision)
{
    return {.revision = revision, .user = "", .owner = "owner", .permissions = withoutCopying};
}

} // namespace

class TestEncryption : public QObject
{
    Q_OBJECT

private slots:
    void anEncryptionThatForbidsCopyingIsKept_data();
    void anEncryptionThatForbidsCopyingIsKept();
    void anEncryptionThatAllowsCopyingIsRemoved();
    void longKeysAreKeptWhole();
    void theKeysAreThoseInUseAndStandThereOnce();
    void filtersThatDifferCannotBeKept_data();
    void filtersThatDifferCannotBeKept();
    void metadataIsReadableWhereItWas();
    void aStandInPageIsEncryptedWhereMetadataIsReadable();
    void aLongStreamIsEncryptedToItsEnd();
    void aStreamWithItsOwnCryptFilterLosesIt_data();
    void aStreamWithItsOwnCryptFilterLosesIt();

private:
    QString save(const std::string &bytes) const;
    /// The bytes of the merge of page 1 of @p input; none when it fails.
    QByteArray merged(const QString &input) const;
    QString output() const { return m_folder.filePath("out.pdf"); }

    QTemporaryDir m_folder;
};

QString TestEncryption::save(const std::string &bytes) const
{
    QFile file(m_folder.filePath("in.pdf"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        return {};
    }
    file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    return file.fileName();
}

QByteArray TestEncryption::merged(const QString &input) const
{
    const ToolRun run = merge(input, "1", output());
    if (run.status != 0) {
        qWarning("status %d: %s", run.status, run.errors.constData());
        return {};
    }
    QFile file(output());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestEncryption::anEncryptionThatForbidsCopyingIsKept_data()
{
    QTest::addColumn<int>("revision");
    QTest::newRow("short key") << 2;
    QTest::newRow("long key") << 3;
    QTest::newRow("crypt filters") << 4;
}

void TestEncryption::anEncryptionThatForbidsCopyingIsKept()
{
    QFETCH(int, revision);
    const QByteArray bytes = merged(save(lockedFile(forbidding(revision))));
    QVERIFY(!bytes.isEmpty());
    QVERIFY(!bytes.contains("Secret"));
    QVERIFY(!bytes.contains("Hidden"));
    PdfInspector inspector(output());
    QVERIFY(inspector.isEncrypted());
    QCOMPARE(inspector.text(1), QByteArray("Secret"));
    QCOMPARE(inspector.value("Info/Title"), QByteArray("(Hidden title)"));
    QVERIFY(inspector.everything().contains("<x>Hidden metadata</x>"));
}

void TestEncryption::anEncryptionThatAllowsCopyingIsRemoved()
{
    Lock lock = forbidding(4);
    lock.permissions = -4;
    const QByteArray bytes = merged(save(lockedFile(lock)));
    QVERIFY(bytes.contains("(Secret)"));
    QVERIFY(bytes.contains("(Hidden title)"));
    QVERIFY(!bytes.contains("/Encrypt"));
}

void TestEncryption::longKeysAreKeptWhole()
{
    const QString input = m_folder.filePath("long.pdf");
    QVERIFY(writeEncrypted(TestPdf::pages(1).bytes().toStdString(), input,
                           {Encryption::Method::Aes256, "", "owner", false}));
    const QByteArray bytes = merged(input);
    QVERIFY(!bytes.isEmpty());
    PdfInspector inspector(output());
    QVERIFY(inspector.isEncrypted());
    QCOMPARE(inspector.text(1), QByteArray("page-1-text"));
    PdfInspector original(input);
    for (const char *key : {"O", "U", "OE", "UE", "Perms"}) {
        const QByteArray path = QByteArray("Encrypt/") + key;
        QCOMPARE(inspector.value(path), original.value(path));
    }
}

void TestEncryption::theKeysAreThoseInUseAndStandThereOnce()
{
    const QByteArray bytes = merged(save(lockedFile(forbidding(3))));
    const qsizetype place = bytes.indexOf("/Filter/Standard");
    QVERIFY(place > 0);
    const QByteArray dictionary = bytes.mid(place, bytes.indexOf("endobj", place) - place);
    QCOMPARE(dictionary.count("/O"), 1);
    QCOMPARE(dictionary.count("/U"), 1);
}

void TestEncryption::filtersThatDifferCannotBeKept_data()
{
    QTest::addColumn<QByteArray>("streams");
    QTest::addColumn<QByteArray>("strings");
    QTest::newRow("plain strings") << QByteArray("StdCF") << QByteArray("Identity");
    QTest::newRow("plain streams") << QByteArray("Identity") << QByteArray("StdCF");
    QTest::newRow("nothing encrypted") << QByteArray("Identity") << QByteArray("Identity");
}

void TestEncryption::filtersThatDifferCannotBeKept()
{
    Lock lock = forbidding(4);
    QFETCH(QByteArray, streams);
    QFETCH(QByteArray, strings);
    lock.streams = streams;
    lock.strings = strings;
    QFile::remove(output());
    const ToolRun run = merge(save(lockedFile(lock)), "1", output());
    QCOMPARE(run.status, 1);
    QVERIFY2(run.errors.contains("forbids copying, and its encryption cannot be kept"),
             run.errors.constData());
    QVERIFY(!QFile::exists(output()));
}

void TestEncryption::metadataIsReadableWhereItWas()
{
    Lock lock = forbidding(4);
    lock.encryptsMetadata = false;
    const QByteArray bytes = merged(save(lockedFile(lock)));
    QVERIFY(bytes.contains("<x>Hidden metadata</x>"));
    QVERIFY(!bytes.contains("Secret"));
    QCOMPARE(PdfInspector(output()).text(1), QByteArray("Secret"));
}

void TestEncryption::aStandInPageIsEncryptedWhereMetadataIsReadable()
{
    Lock lock = forbidding(4);
    lock.encryptsMetadata = false;
    lock.hasMissingPage = true;
    QCOMPARE(merge(save(lockedFile(lock)), "1-2", output()).status, 3);
    PdfInspector inspector(output());
    QCOMPARE(inspector.text(1), QByteArray("Secret"));
    QCOMPARE(inspector.text(2),
             QByteArray("Page 2 of in.pdf could not be read. This page stands in its place."));
}

void TestEncryption::aLongStreamIsEncryptedToItsEnd()
{
    const QByteArray comment = QByteArray("% readable\n").repeated(120000); // more than 1 MiB
    const QByteArray bytes = merged(save(lockedFile(forbidding(4), comment)));
    QVERIFY(bytes.size() > comment.size());
    QVERIFY(!bytes.contains("% readable"));
    QCOMPARE(PdfInspector(output()).text(1), QByteArray("Secret"));
}

void TestEncryption::aStreamWithItsOwnCryptFilterLosesIt_data()
{
    QTest::addColumn<QByteArray>("entries");
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("alone") << QByteArray("/Filter/Crypt") << TestPdf::textContent("page-1-text");
    QTest::newRow("before another") << QByteArray("/Filter[/Crypt/ASCIIHexDecode]")
                                    << TestPdf::textContent("page-1-text").toHex() + ">";
}

void TestEncryption::aStreamWithItsOwnCryptFilterLosesIt()
{
    QFETCH(QByteArray, entries);
    QFETCH(QByteArray, data);
    TestPdf pdf = TestPdf::pages(1);
    pdf.stream(11, entries, data);
    const QByteArray bytes = merged(pdf.save(m_folder.path()));
    QVERIFY(!bytes.contains("/Crypt"));
    QVERIFY(!bytes.contains("/Filter"));
    QVERIFY(bytes.contains("(page-1-text) Tj"));
}

QUORLIN_TEST(TestEncryption)
#include "test_encryption.moc"
