// How values are spelt in a new file, and that its table leads to every object.

#include "tests/support/room.h"
#include "tools/pagebinder/output/pdf_writer.h"

#include <QTest>

#include <limits>

namespace {

/// An output that is never published.
class MemoryOutput : public tools::Output
{
public:
    MemoryOutput() : tools::Output("memory") {}
    void complete() override {}
    void publish() override {}

    std::string content;

private:
    void store(const char *data, std::size_t size) override { content.append(data, size); }
    void clear() override { content.clear(); }
};

/// Marks what it is given, to be told apart in the file.
class MarkingCipher : public tools::ObjectCipher
{
public:
    std::string encrypt(int object, std::string_view bytes) override
    {
        return std::to_string(object) + ':' + std::string(bytes);
    }
};

} // namespace

class TestPdfWriter : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void strings_data();
    void strings();
    void numbers();
    void entriesAreKeysWithValues();
    void blanksPartWhatWouldRunTogether();
    void numbersAreNoPartOfAnEmptyName();
    void referencesToNoObjectAreNull();
    void streamsStandBehindTheirDictionary();
    void theTableLeadsToEveryObject();
    void largeFilesAreWrittenInPieces();
    void stringsAreEncryptedInTheirObjects();

private:
    MemoryOutput m_output;
};

void TestPdfWriter::names_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("spelt");
    QTest::newRow("letters") << QByteArray("Font") << QByteArray("/Font");
    QTest::newRow("nothing") << QByteArray() << QByteArray("/");
    QTest::newRow("blank") << QByteArray("a b") << QByteArray("/a#20b");
    QTest::newRow("number sign") << QByteArray("a#x") << QByteArray("/a#23x");
    QTest::newRow("number sign at the end") << QByteArray("a#") << QByteArray("/a#23");
    QTest::newRow("what reads as an escape") << QByteArray("a#20") << QByteArray("/a#2320");
    QTest::newRow("half an escape") << QByteArray("a#b c") << QByteArray("/a#b#20c");
    QTest::newRow("the escape of no character") << QByteArray("a#00") << QByteArray("/a#00");
    QTest::newRow("delimiters") << QByteArray("()<>[]{}/%")
                                << QByteArray("/#28#29#3C#3E#5B#5D#7B#7D#2F#25");
    QTest::newRow("control character") << QByteArray("\n\x7f") << QByteArray("/#0A#7F");
    QTest::newRow("beyond ASCII") << QByteArray("\xc3\xa4") << QByteArray("/#C3#A4");
    QTest::newRow("the first and last regular") << QByteArray("!~") << QByteArray("/!~");
}

void TestPdfWriter::names()
{
    QFETCH(QByteArray, name);
    tools::PdfWriter writer(m_output);
    writer.appendName(name.toStdString());
    QTEST(QByteArray::fromStdString(writer.text()), "spelt");
}

void TestPdfWriter::strings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("spelt");
    QTest::newRow("plain") << QByteArray("text") << QByteArray("(text)");
    QTest::newRow("nothing") << QByteArray() << QByteArray("()");
    QTest::newRow("parentheses") << QByteArray("a(b") << QByteArray("(a\\(b)");
    QTest::newRow("closing") << QByteArray("a)b") << QByteArray("(a\\)b)");
    QTest::newRow("backslash") << QByteArray("a\\b") << QByteArray("(a\\\\b)");
    QTest::newRow("carriage return") << QByteArray("line\rend") << QByteArray("(line\\015end)");
    QTest::newRow("delete") << QByteArray("abc\x7fxyz") << QByteArray("(abc\\177xyz)");
    QTest::newRow("null") << QByteArray("abcd\0efgh", 9) << QByteArray("(abcd\\000efgh)");
    QTest::newRow("beyond ASCII") << QByteArray("abcd\xe4") << QByteArray("(abcd\xe4)");
    QTest::newRow("a quarter of odd bytes") << QByteArray("abc\xff") << QByteArray("(abc\xff)");
    QTest::newRow("more odd bytes") << QByteArray("ab\xff") << QByteArray("<6162FF>");
    QTest::newRow("binary") << QByteArray("\0\x0f\xf0", 3) << QByteArray("<000FF0>");
}

void TestPdfWriter::strings()
{
    QFETCH(QByteArray, bytes);
    tools::PdfWriter writer(m_output);
    writer.appendString(bytes.toStdString());
    QTEST(QByteArray::fromStdString(writer.text()), "spelt");
}

void TestPdfWriter::numbers()
{
    tools::PdfWriter writer(m_output);
    writer.appendNumber(-9'000'000'000).appendReal(0.5F).appendReal(-1234567.0F).appendReal(1e-7F);
    writer.appendReal(std::numeric_limits<float>::infinity()).appendReference(12);
    // Exponents are unknown to the format, and so is infinity.
    QCOMPARE(writer.text(), std::string("-9000000000 0.5 -1234567 0.0000001 0 12 0 R"));
}

void TestPdfWriter::entriesAreKeysWithValues()
{
    tools::PdfWriter writer(m_output);
    writer.beginDictionary().key("Type").appendName("Page");
    writer.key("Parent").appendReference(2);
    writer.key("Rotate").appendNumber(90);
    writer.key("UserUnit").appendReal(1.5F);
    writer.key("Title").appendString("text");
    writer.key("Marked").appendBoolean(true);
    writer.key("Suspects").appendBoolean(false);
    writer.key("Resources").beginDictionary().endDictionary();
    writer.key("Annots").appendReferences({4, 5});
    writer.endDictionary();
    QCOMPARE(writer.text(),
             std::string("<</Type/Page/Parent 2 0 R/Rotate 90/UserUnit 1.5/Title(text)/Marked true"
                         "/Suspects false/Resources<<>>/Annots[4 0 R 5 0 R ]>>"));
}

void TestPdfWriter::blanksPartWhatWouldRunTogether()
{
    tools::PdfWriter writer(m_output);
    writer.beginArray().appendNumber(0).appendNull().appendReference(7).appendBoolean(true);
    writer.appendName("Fit").appendName("XYZ").appendNumber(1).appendString("a").appendNumber(2);
    writer.beginDictionary().endDictionary().appendNumber(3).beginArray().appendReal(4).endArray();
    writer.appendNumber(5).appendBlank().appendNumber(6).endArray();
    QCOMPARE(writer.text(), std::string("[0 null 7 0 R true/Fit/XYZ 1(a)2<<>>3[4]5 6]"));
}

/// Without the blank, the number would become the name.
void TestPdfWriter::numbersAreNoPartOfAnEmptyName()
{
    tools::PdfWriter writer(m_output);
    writer.key("").appendNumber(5);
    QCOMPARE(writer.text(), std::string("/ 5"));
}

void TestPdfWriter::referencesToNoObjectAreNull()
{
    tools::PdfWriter writer(m_output);
    writer.appendReferences({3, 0, 4}).appendReferences({});
    QCOMPARE(writer.text(), std::string("[3 0 R null 4 0 R ][]"));
}

void TestPdfWriter::streamsStandBehindTheirDictionary()
{
    tools::PdfWriter writer(m_output);
    writer.beginDictionaryObject(writer.allocate(), "Metadata").key("Length").appendNumber(4);
    writer.beginStream().appendBytes("<x/>").endStream();
    writer.beginDictionaryObject(writer.allocate());
    writer.endDictionaryObject();
    QCOMPARE(writer.text(),
             std::string("1 0 obj\n<</Type/Metadata/Length 4>>\nstream\n<x/>\nendstream\nendobj\n"
                         "2 0 obj\n<<>>\nendobj\n"));
}

void TestPdfWriter::theTableLeadsToEveryObject()
{
    tools::PdfWriter writer(m_output);
    writer.begin(14);
    const int first = writer.allocate();
    const int unwritten = writer.allocate();
    const int last = writer.allocate();
    QCOMPARE(writer.objectCount(), std::size_t(4));
    writer.beginObject(last);
    writer.appendString("last");
    writer.endObject();
    writer.beginObject(first);
    writer.appendString("first");
    writer.endObject();
    writer.beginTrailer().key("Root").appendReference(first);
    writer.finish();
    const std::string &file = m_output.content;
    QVERIFY(file.rfind("%PDF-1.4\n%", 0) == 0);
    const std::size_t table = file.find("xref\n0 4\n");
    QVERIFY(table != std::string::npos);
    const auto entry = [&](int number) {
        return QByteArray::fromStdString(file.substr(table + 9 + std::size_t(number) * 20, 20));
    };
    const auto place = [&](const char *object) {
        return QByteArray::number(qulonglong(file.find(object))).rightJustified(10, '0') +
               " 00000 n \n";
    };
    QCOMPARE(entry(0), QByteArray("0000000000 65535 f \n"));
    QCOMPARE(entry(first), place("1 0 obj\n(first)"));
    QCOMPARE(entry(unwritten), QByteArray("0000000000 00001 f \n"));
    QCOMPARE(entry(last), place("3 0 obj\n(last)"));
    QCOMPARE(QByteArray::fromStdString(file.substr(table + 89)),
             "trailer\n<</Size 4/Root 1 0 R>>\nstartxref\n" +
                 QByteArray::number(qulonglong(table)) + "\n%%EOF\n");
}

void TestPdfWriter::largeFilesAreWrittenInPieces()
{
    m_output.restart();
    tools::PdfWriter writer(m_output);
    writer.begin(17);
    const std::string large(std::size_t{3} << 20U, 'x');
    for (int i = 0; i < 3; ++i) {
        writer.beginObject(writer.allocate());
        writer.appendBytes(large);
        writer.endObject();
    }
    QVERIFY(m_output.content.size() > large.size());
    QVERIFY(writer.text().size() < 2 * large.size());
    writer.beginTrailer();
    writer.finish();
    const std::size_t table = m_output.content.rfind("xref\n0 4\n");
    const std::size_t third = m_output.content.find("3 0 obj\n");
    QCOMPARE(std::stoul(m_output.content.substr(table + 9 + 60, 10)), third);
}

void TestPdfWriter::stringsAreEncryptedInTheirObjects()
{
    tools::PdfWriter writer(m_output);
    MarkingCipher cipher;
    writer.setCipher(&cipher);
    QVERIFY(writer.isEncrypting());
    const int number = writer.allocate();
    const int plain = writer.allocate();
    writer.beginObject(number);
    writer.appendString("secret");
    writer.endObject();
    writer.beginObject(plain, true);
    writer.appendString("key");
    writer.endObject();
    writer.appendString("identifier");
    QCOMPARE(writer.text(), std::string("1 0 obj\n(1:secret)\nendobj\n2 0 obj\n(key)\nendobj\n"
                                        "(identifier)"));
}

QUORLIN_TEST(TestPdfWriter)
#include "test_pdf_writer.moc"
