#include "analysis/line_parser.h"
#include "tests/support/room.h"

#include <QTest>

class TestLineParser : public QObject
{
    Q_OBJECT

private slots:
    void styleValue_data();
    void styleValue();
    void itemText_data();
    void itemText();
    void wholeItem_data();
    void wholeItem();
    void pageFileLinesDropEmptyLinesOnly();
    void linesWithinAPageFileAreTheSame();
};

void TestLineParser::styleValue_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("value");

    const QString span =
        QStringLiteral("<span style=\"left:72;top:104;width:210;height:12\">Invoice</span>");
    QTest::newRow("left of an item") << "left" << span << 72;
    QTest::newRow("top of an item") << "top" << span << 104;
    QTest::newRow("width of an item") << "width" << span << 210;
    QTest::newRow("a double quote ends the last value") << "height" << span << 12;
    QTest::newRow("the line's end ends a value") << "left"
                                                 << "left:31" << 31;
    QTest::newRow("a unit defeats the conversion") << "left"
                                                   << "left:72px;" << 0;
    QTest::newRow("a fraction defeats the conversion") << "left"
                                                       << "left:5.0;" << 0;
    QTest::newRow("no hexadecimal numbers") << "left"
                                            << "left:0x10;" << 0;
    QTest::newRow("negative values are 0") << "left"
                                           << "left:-5;" << 0;
    QTest::newRow("zero is 0") << "left"
                               << "left:0;" << 0;
    QTest::newRow("no value at all") << "left"
                                     << "left:;" << 0;
    QTest::newRow("key at the line's end") << "left"
                                           << "a left" << 0;
    QTest::newRow("key and separator at the line's end") << "left"
                                                         << "a left:" << 0;
    QTest::newRow("missing key") << "left"
                                 << "top:5;" << 0;
    QTest::newRow("empty line") << "left"
                                << "" << 0;
    QTest::newRow("keys are case-sensitive") << "left"
                                             << "LEFT:5;Left:6;" << 0;
    QTest::newRow("the separator is not looked at") << "left"
                                                    << "left=9;" << 9;
    QTest::newRow("a second separator is part of the value") << "left"
                                                             << "left::9;" << 0;
    QTest::newRow("the key is a bare substring") << "height"
                                                 << "line-height:7;height:12;" << 7;
    QTest::newRow("only the first occurrence counts") << "left"
                                                      << "left:x;left:5;" << 0;
    QTest::newRow("blanks around the number") << "left"
                                              << "left: 7 ;" << 7;
    QTest::newRow("plus sign") << "left"
                               << "left:+5;" << 5;
    QTest::newRow("leading zeros") << "left"
                                   << "left:0012;" << 12;
    QTest::newRow("largest number") << "left"
                                    << "left:2147483647;" << 2147483647;
    QTest::newRow("beyond 32 bits") << "left"
                                    << "left:2147483648;" << 0;
}

void TestLineParser::styleValue()
{
    QFETCH(QString, key);
    QFETCH(QString, line);
    QTEST(int(quorlin::styleValue(key, line)), "value");
}

void TestLineParser::itemText_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("text");

    QTest::newRow("content of the span") << "<span a=\"b\">Invoice</span>"
                                         << "Invoice";
    QTest::newRow("references stay as they are") << "<span>A &amp; B</span>"
                                                 << "A &amp; B";
    QTest::newRow("blanks stay") << "<span>  A  </span>"
                                 << "  A  ";
    QTest::newRow("no closing tag") << "<span>Invoice"
                                    << "";
    QTest::newRow("empty line") << ""
                                << "";
    QTest::newRow("empty content") << "<span></span>"
                                   << "";
    QTest::newRow("without a tag the first character is dropped") << "XY</span>"
                                                                  << "Y";
    QTest::newRow("a single character without a tag is lost") << "X</span>"
                                                              << "";
    QTest::newRow("a line that starts with the closing tag") << "</span>x>y"
                                                             << "";
    QTest::newRow("the first character is no tag end") << ">AB</span>"
                                                       << "AB";
    QTest::newRow("nested tags: behind the innermost") << "<span>a<b>bold</span>"
                                                       << "bold";
    QTest::newRow("closed nested tag: behind it") << "<span>a<b>c</b></span>"
                                                  << "";
    QTest::newRow("only the first closing tag counts") << "<span>one</span><span>two</span>"
                                                       << "one";
    QTest::newRow("closing tags are case-sensitive") << "<span>one</SPAN>"
                                                     << "";
}

void TestLineParser::itemText()
{
    QFETCH(QString, line);
    QTEST(quorlin::itemText(line), "text");
}

void TestLineParser::wholeItem_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QList<int>>("numbers");
    QTest::addColumn<QString>("text");

    QTest::newRow("conforming line") << "left:72;top:104;width:210;height:12\">Invoice</span>"
                                     << QList<int>{72, 104, 210, 12} << "Invoice";
    QTest::newRow("a missing property is 0, the others are read")
        << "top:104;width:210;height:12\">Invoice</span>" << QList<int>{0, 104, 210, 12}
        << "Invoice";
    QTest::newRow("header line") << "<html><head>" << QList<int>{0, 0, 0, 0} << "";
    QTest::newRow("position without text")
        << "<div style=\"left:3;top:4\">" << QList<int>{3, 4, 0, 0} << "";
    QTest::newRow("key words in the text do not disturb what stands before")
        << "left:1;top:2;width:3;height:4\">left:9 top:9</span>" << QList<int>{1, 2, 3, 4}
        << "left:9 top:9";
}

void TestLineParser::wholeItem()
{
    QFETCH(QString, line);
    const Subtext item = quorlin::parseItem(line);
    QTEST((QList<int>{item.left, item.top, item.width, item.height}), "numbers");
    QTEST(item.text, "text");
}

void TestLineParser::pageFileLinesDropEmptyLinesOnly()
{
    QCOMPARE(quorlin::pageFileLines(QStringLiteral("\na\n\n b\n\r\n")),
             QStringList({QStringLiteral("a"), QStringLiteral(" b"), QStringLiteral("\r")}));
    QVERIFY(quorlin::pageFileLines(QString()).isEmpty());
}

void TestLineParser::linesWithinAPageFileAreTheSame()
{
    for (const QString &html :
         {QString(), QStringLiteral("\n"), QStringLiteral("a"), QStringLiteral("a\nb"),
          QStringLiteral("\na\n\n b\n\r\n"), QStringLiteral("<span>\u00e9\u4e00</span>\n\nx")}) {
        const QStringList lines = quorlin::pageFileLinesWithin(html);
        QCOMPARE(lines, quorlin::pageFileLines(html));
        for (const QString &line : lines) {
            QVERIFY(line.constData() >= html.constData());
            QVERIFY(line.constData() + line.size() <= html.constData() + html.size());
        }
    }
}

QUORLIN_TEST(TestLineParser)
#include "test_line_parser.moc"
