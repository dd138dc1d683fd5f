#include "encrypted_pdf.h"
#include "runner_process.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/room.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using quorlin::test::PdfBuilder;

namespace {

std::string threePages()
{
    PdfBuilder builder;
    for (const char *text : {"10-1", "10-1", "10-2"}) {
        builder.addPage("BT /F1 12 Tf 100 700 Td (" + std::string(text) + ") Tj ET");
    }
    return builder.build();
}

} // namespace

/// Encrypted files, the real tools, and a file of passwords.
class TestPasswords : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theRightPasswordIsFoundAmongTheLines_data();
    void theRightPasswordIsFoundAmongTheLines();
    void theOwnersPasswordOpensTheFile_data();
    void theOwnersPasswordOpensTheFile();
    void withoutItsPasswordAFileFails_data();
    void withoutItsPasswordAFileFails();
    void whatMayNotBeCopiedStaysEncrypted();
    void openFilesNeedNoneOfThePasswords();
    void theItemsOfAnEncryptedPageAreListed();
    void nobodyCanSeeThePasswords();

private:
    QString file(const QString &name, const Encryption &encryption);
    RunnerResult run(const QStringList &words);
    RunnerResult split(const QStringList &words);
    void writePasswords(const QByteArray &lines);

    std::unique_ptr<QTemporaryDir> root;
};

void TestPasswords::init()
{
    root = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir(root->path()).mkdir("out"));
    writePasswords("wrong\r\n\nsecret \xc3\xa9\n");
}

void TestPasswords::writePasswords(const QByteArray &lines)
{
    QFile passwords(root->filePath("passwords"));
    QVERIFY(passwords.open(QIODevice::WriteOnly));
    passwords.write(lines);
}

QString TestPasswords::file(const QString &name, const Encryption &encryption)
{
    if (!writeEncrypted(threePages(), root->filePath(name), encryption)) {
        qFatal("the fixture cannot be made");
    }
    return name;
}

RunnerResult TestPasswords::run(const QStringList &words)
{
    return runRunner(words, root->path(), QDir::tempPath());
}

RunnerResult TestPasswords::split(const QStringList &words)
{
    return run(QStringList{"--region", "100,150,400,100", "--output", "out"} + words);
}

void TestPasswords::theRightPasswordIsFoundAmongTheLines_data()
{
    QTest::addColumn<int>("method");
    QTest::newRow("RC4") << int(Encryption::Method::Rc4);
    QTest::newRow("AES, 128 bits") << int(Encryption::Method::Aes128);
    QTest::newRow("AES, 256 bits") << int(Encryption::Method::Aes256);
}

void TestPasswords::theRightPasswordIsFoundAmongTheLines()
{
    QFETCH(int, method);
    const QString name =
        file("f.pdf", {static_cast<Encryption::Method>(method), "secret \xc3\xa9", "owner", true});
    const RunnerResult result = split({"--password-file", "passwords", name});
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(QDir(root->filePath("out/f")).entryList(QDir::Files),
             QStringList({"1 10-1 f 1-2.pdf", "2 10-2 f 3.pdf"}));
    // Its permissions allow copying, so the outputs need no password.
    QCOMPARE(run({"--list-items", "out/f/2 10-2 f 3.pdf"}).exitCode, 0);
}

void TestPasswords::theOwnersPasswordOpensTheFile_data()
{
    theRightPasswordIsFoundAmongTheLines_data();
}

void TestPasswords::theOwnersPasswordOpensTheFile()
{
    QFETCH(int, method);
    const QString name =
        file("f.pdf", {static_cast<Encryption::Method>(method), "user", "secret \xc3\xa9", true});
    const RunnerResult result = split({"--password-file", "passwords", name});
    QCOMPARE(result.errors, QString());
    QCOMPARE(QDir(root->filePath("out/f")).entryList(QDir::Files).size(), 2);
}

void TestPasswords::withoutItsPasswordAFileFails_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("reason");
    QTest::newRow("none given") << QStringList() << "needs a password (give it with";
    QTest::newRow("none that fits") << QStringList{"--password-file", "passwords"}
                                    << "needs a password that is not among those given (add its";
}

void TestPasswords::withoutItsPasswordAFileFails()
{
    QFETCH(QStringList, words);
    QFETCH(QString, reason);
    const QString name = file("f.pdf", {Encryption::Method::Aes256, "other", "owner", true});
    const RunnerResult result = split(words + QStringList{name});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains("f.pdf: " + reason), qPrintable(result.errors));
    QCOMPARE(result.errors.count('\n'), 1);
    QVERIFY(QDir(root->filePath("out")).isEmpty());
}

void TestPasswords::whatMayNotBeCopiedStaysEncrypted()
{
    for (const auto method :
         {Encryption::Method::Rc4, Encryption::Method::Aes128, Encryption::Method::Aes256}) {
        const QString name = file("f.pdf", {method, "secret \xc3\xa9", "owner", false});
        const RunnerResult result = split({"--password-file", "passwords", name});
        QCOMPARE(result.errors, QString());
        const QString output = "out/f/2 10-2 f 3.pdf";
        const RunnerResult closed = run({"--list-items", output});
        QCOMPARE(closed.exitCode, 1);
        QVERIFY2(closed.errors.contains("needs a password"), qPrintable(closed.errors));
        const RunnerResult opened = run({"--list-items", output, "--password-file", "passwords"});
        QVERIFY2(opened.output.contains("  10-2\n"), qPrintable(opened.errors));
    }
}

void TestPasswords::openFilesNeedNoneOfThePasswords()
{
    QFile plain(root->filePath("plain.pdf"));
    QVERIFY(plain.open(QIODevice::WriteOnly));
    plain.write(QByteArray::fromStdString(threePages()));
    plain.close();
    const QString empty = file("empty.pdf", {Encryption::Method::Aes128, "", "owner", true});
    const RunnerResult result = split({"--password-file", "passwords", "plain.pdf", empty});
    QCOMPARE(result.errors, QString());
    QVERIFY(result.output.endsWith("2 of 2 files split.\n"));
}

void TestPasswords::theItemsOfAnEncryptedPageAreListed()
{
    const QString name =
        file("f.pdf", {Encryption::Method::Aes256, "secret \xc3\xa9", "owner", true});
    const RunnerResult result =
        run({"--list-items", name, "--password-file", "passwords", "--page", "3"});
    QVERIFY2(result.output.contains("  10-2\n"), qPrintable(result.errors));
}

void TestPasswords::nobodyCanSeeThePasswords()
{
    // A tool that only shows what anybody sees of it, and that the passwords wait for it.
    QVERIFY(QDir(root->path()).mkdir("tools"));
    const QByteArray script = "#!/bin/sh\n"
                              "{ printf '%s\\n' \"$0\" \"$@\"; env; } >> \"" +
                              QFile::encodeName(root->filePath("seen")) +
                              "\"\n"
                              "for last; do :; done\n"
                              "cat \"/dev/fd/$last\" > \"" +
                              QFile::encodeName(root->filePath("given")) + "\"\nexit 1\n";
    for (const char *tool : {"pagexport", "pagebinder"}) {
        QFile program(root->filePath("tools/") + QLatin1String(tool));
        QVERIFY(program.open(QIODevice::WriteOnly));
        program.write(script);
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QString name = file("f.pdf", {Encryption::Method::Aes256, "a", "b", true});
    const RunnerResult result =
        split({"--verbose", "--password-file", "passwords", "--tools", "tools", name});
    QFile given(root->filePath("given"));
    QVERIFY2(given.open(QIODevice::ReadOnly), qPrintable(result.errors));
    QCOMPARE(given.readAll(), "wrong\nsecret \xc3\xa9\n");
    QFile seen(root->filePath("seen"));
    QVERIFY(seen.open(QIODevice::ReadOnly));
    const QByteArray text = seen.readAll();
    QVERIFY(text.contains("-passwords"));
    QVERIFY(!text.contains("wrong") && !text.contains("secret"));
    QVERIFY(!result.errors.contains("secret"));
}

QUORLIN_TEST(TestPasswords)
#include "test_passwords.moc"
