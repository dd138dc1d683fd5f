#include "tests/faults/statements.h"
#include "tests/support/programs.h"

#include <QFile>
#include <QList>
#include <QProcess>
#include <QTemporaryDir>

namespace quorlin::test {

namespace {

constexpr int firstPageObject = 4;

/// Objects one after another, each remembered with its place for the table at the end.
class Writer
{
public:
    void add(const QByteArray &body)
    {
        places.append(file.size());
        file += QByteArray::number(places.size()) + " 0 obj\n" + body + "\nendobj\n";
    }

    QByteArray finish()
    {
        const qsizetype table = file.size();
        const QByteArray size = QByteArray::number(places.size() + 1);
        file += "xref\n0 " + size + "\n0000000000 65535 f \n";
        for (const qsizetype place : places) {
            file += QByteArray::number(place).rightJustified(10, '0') + " 00000 n \n";
        }
        file += "trailer\n<</Size " + size + "/Root 1 0 R>>\nstartxref\n" +
                QByteArray::number(table) + "\n%%EOF\n";
        return file;
    }

private:
    QByteArray file = "%PDF-1.4\n";
    QList<qsizetype> places;
};

QByteArray pageContent(const QString &text, qsizetype page, qsizetype pages)
{
    QByteArray escaped = text.toLatin1();
    for (const char special : {'\\', '(', ')'}) {
        escaped.replace(special, QByteArray("\\") + special);
    }
    QByteArray content = "BT /F 20 Tf 72 742 Td (" + escaped + ") Tj ET ";
    if (text.isEmpty()) {
        content.clear();
    }
    return content + "BT /F 20 Tf 72 400 Td (Page " + QByteArray::number(page) + " of " +
           QByteArray::number(pages) + ") Tj ET";
}

} // namespace

QByteArray statementPdf(const QStringList &texts)
{
    Writer writer;
    writer.add("<</Type/Catalog/Pages 2 0 R>>");
    QByteArray kids;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        kids += QByteArray::number(firstPageObject + 2 * i) + " 0 R ";
    }
    writer.add("<</Type/Pages/Count " + QByteArray::number(texts.size()) + "/Kids[" + kids +
               "]/MediaBox[0 0 595 842]/Resources<</Font<</F 3 0 R>>>>>>");
    writer.add("<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QByteArray content = pageContent(texts.at(i), i + 1, texts.size());
        writer.add("<</Type/Page/Parent 2 0 R/Contents " +
                   QByteArray::number(firstPageObject + 2 * i + 1) + " 0 R>>");
        writer.add("<</Length " + QByteArray::number(content.size()) + ">>\nstream\n" + content +
                   "\nendstream");
    }
    return writer.finish();
}

int pagesOf(const QString &pdf)
{
    const QTemporaryDir folder;
    const QString answer = folder.filePath(QStringLiteral("answer.txt"));
    QProcess::execute(startedPrograms() + QStringLiteral("/pagebinder"),
                      {pdf, QStringLiteral("-getinfo"), QStringLiteral("-outfile"), answer});
    QFile file(answer);
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const QByteArray line = file.readLine().trimmed();
    return line.mid(line.indexOf(' ') + 1).toInt();
}

} // namespace quorlin::test
