// How values and streams stand in a merged file.

#include "merge_bench.h"
#include "tests/support/room.h"

#include <QFile>
#include <QTest>

class TestCopying : public QObject
{
    Q_OBJECT

private slots:
    void aStreamStatesItsLengthOnce();
    void entriesWithoutAValueAreLeftOut();
    void valuesNestedTooDeeplyEndInNothing();

private:
    /// A page whose content uses the graphics state "G", with the entries @p state.
    static TestPdf pageWithState(const QByteArray &state);
    /// The bytes of the merge of page 1 of @p pdf.
    QByteArray merged(const TestPdf &pdf) const;

    MergeBench m_bench;
};

TestPdf TestCopying::pageWithState(const QByteArray &state)
{
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(10, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 11 0 R"
                   "/Resources<</ExtGState<</G<<" +
                       state + ">>>>>>>>");
    pdf.stream(11, "", "/G gs");
    return pdf;
}

QByteArray TestCopying::merged(const TestPdf &pdf) const
{
    const auto output = m_bench.merged(pdf, "1");
    QFile file(m_bench.path("out.pdf"));
    return output && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestCopying::aStreamStatesItsLengthOnce()
{
    const QByteArray content = TestPdf::textContent("page-1-text");
    TestPdf pdf = TestPdf::pages(1);
    pdf.object(11, "<</Length 40 0 R>>\nstream\n" + content + "\nendstream");
    pdf.object(40, QByteArray::number(content.size()));
    const QByteArray bytes = merged(pdf);
    QVERIFY(bytes.contains(content));
    QCOMPARE(bytes.count("/Length"), 1);
}

void TestCopying::entriesWithoutAValueAreLeftOut()
{
    const QByteArray bytes = merged(pageWithState("/LW 2/SMask null/D[null]"));
    QVERIFY(bytes.contains("/LW 2"));
    QVERIFY(bytes.contains("/D [null]"));
    QVERIFY(!bytes.contains("/SMask"));
}

void TestCopying::valuesNestedTooDeeplyEndInNothing()
{
    const auto nested = [](int depth) {
        return QByteArray("[").repeated(depth) + "7" + QByteArray("]").repeated(depth);
    };
    QVERIFY(merged(pageWithState("/D" + nested(150))).contains(nested(150)));
    const QByteArray bytes = merged(pageWithState("/LW 2/D" + nested(240)));
    QVERIFY(bytes.contains("/LW 2"));
    QVERIFY(bytes.contains(QByteArray("[").repeated(190)));
    QVERIFY(!bytes.contains(QByteArray("[").repeated(201)));
}

QUORLIN_TEST(TestCopying)
#include "test_copying.moc"
