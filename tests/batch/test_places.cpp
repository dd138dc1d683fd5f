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

/// Text whose first letter stands at @p x, @p y points from the page's lower left corner.
std::string textAt(double x, double y, const std::string &text)
{
    return "BT /F3 10 Tf " + std::to_string(x) + " " + std::to_string(y) + " Td (" + text +
           ") Tj ET\n";
}

/// Text that ends at @p right; every letter is six points wide.
std::string textUpTo(double right, double y, const std::string &text)
{
    return textAt(right - 6.0 * static_cast<double>(text.size()), y, text);
}

} // namespace

/// Texts that stand at no fixed position, in real documents and by the real tools.
class TestPlaces : public QObject
{
    Q_OBJECT

private slots:
    void init() { root = std::make_unique<QTemporaryDir>(); }

    void rightAlignedNumbersAreFoundInTheirRegion();
    void aFieldThatMovesIsFoundBehindItsLabel();
    void aFieldThatShakesIsFoundWithinTheTolerance();
    void outputsWithLongNamesAreRecognised();

private:
    RunnerResult split(const PdfBuilder &builder, const QStringList &words);
    QStringList outputs() const { return QDir(root->filePath("out/f")).entryList(QDir::Files); }

    std::unique_ptr<QTemporaryDir> root;
};

RunnerResult TestPlaces::split(const PdfBuilder &builder, const QStringList &words)
{
    if (!builder.save(root->filePath("f.pdf").toStdString())) {
        qFatal("the fixture cannot be written");
    }
    return runRunner(QStringList{"--output", "out", "--create", "f.pdf"} + words, root->path(),
                     QDir::tempPath());
}

void TestPlaces::rightAlignedNumbersAreFoundInTheirRegion()
{
    PdfBuilder builder;
    for (const char *number : {"7", "7", "1042", "99"}) {
        builder.addPage(textAt(72, 760, "Invoice") + textUpTo(540, 760, number) +
                        textUpTo(540, 700, "1234.50"));
    }
    // The numbers end at 540 points, so their left edges lie between 516 and 534.
    const RunnerResult result = split(builder, {"--region", "765,100,50,30", "--name", "{text}"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(outputs(), QStringList({"1042.pdf", "7.pdf", "99.pdf"}));
}

void TestPlaces::aFieldThatMovesIsFoundBehindItsLabel()
{
    PdfBuilder builder;
    double y = 760;
    for (const char *account : {"10-1", "10-1", "10-2", "10-3"}) {
        y -= 37;
        builder.addPage(textAt(72, 790, "Statement of your Account no. in May") +
                        textAt(72, y, "Account no.") + textUpTo(300, y, account) +
                        textAt(72, y - 12, "Balance: 5.00"));
    }
    const RunnerResult result = split(builder, {"--after", "Account no.", "--name", "{text}"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(outputs(), QStringList({"10-1.pdf", "10-2.pdf", "10-3.pdf"}));
}

void TestPlaces::aFieldThatShakesIsFoundWithinTheTolerance()
{
    PdfBuilder builder;
    double shift = 0;
    for (const char *account : {"10-1", "10-1", "10-2"}) {
        builder.addPage(textAt(72 + shift, 760 - shift, account) + textAt(72, 740, "Ada"));
        shift += 1;
    }
    // At exactly one position only the first page has text, and the others join it.
    QCOMPARE(split(builder, {"--position", "108,110", "--name", "{text}"}).exitCode, 0);
    QCOMPARE(outputs(), QStringList{"10-1.pdf"});
    const RunnerResult result =
        split(builder, {"--position", "108,110", "--tolerance", "5", "--name", "{text}"});
    QCOMPARE(result.errors, QString());
    QCOMPARE(outputs(), QStringList({"10-1.pdf", "10-2.pdf"}));
}

void TestPlaces::outputsWithLongNamesAreRecognised()
{
    PdfBuilder builder;
    builder.addPage(textAt(20, 760, std::string(300, 'n')));
    const QStringList words = {"--region", "0,90,100,60", "--existing"};
    QCOMPARE(split(builder, words + QStringList{"fail"}).errors, QString());
    QCOMPARE(outputs().size(), 1);
    QFile output(root->filePath("out/f/") + outputs().constFirst());
    QVERIFY(output.open(QIODevice::WriteOnly));
    output.write("mine");
    output.close();
    QVERIFY(split(builder, words + QStringList{"fail"}).errors.contains("already exist"));
    QVERIFY(split(builder, words + QStringList{"skip"}).output.contains("1 skipped"));
    QCOMPARE(outputs().size(), 1);
    QVERIFY(output.open(QIODevice::ReadOnly));
    QCOMPARE(output.readAll(), "mine");
}

QUORLIN_TEST(TestPlaces)
#include "test_places.moc"
