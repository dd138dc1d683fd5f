#include "test_pdf.h"

#include <QDir>
#include <QFile>

TestPdf &TestPdf::object(int number, const QByteArray &source)
{
    m_objects[number] = source;
    return *this;
}

TestPdf &TestPdf::stream(int number, const QByteArray &entries, const QByteArray &data)
{
    return object(number, "<<" + entries + "/Length " + QByteArray::number(data.size()) +
                              ">>\nstream\n" + data + "\nendstream");
}

TestPdf &TestPdf::trailer(const QByteArray &entries)
{
    m_trailer = entries;
    return *this;
}

QByteArray TestPdf::bytes() const
{
    QByteArray file = "%PDF-1.7\n";
    QMap<int, qsizetype> offsets;
    for (auto it = m_objects.begin(); it != m_objects.end(); ++it) {
        offsets[it.key()] = file.size();
        file += QByteArray::number(it.key()) + " 0 obj\n" + it.value() + "\nendobj\n";
    }
    const qsizetype start = file.size();
    const int size = m_objects.isEmpty() ? 1 : m_objects.lastKey() + 1;
    file += "xref\n0 " + QByteArray::number(size) + "\n0000000000 65535 f \n";
    for (int number = 1; number < size; ++number) {
        file += QByteArray::number(offsets.value(number, 0)).rightJustified(10, '0') +
                (offsets.contains(number) ? " 00000 n \n" : " 00000 f \n");
    }
    return file + "trailer\n<</Size " + QByteArray::number(size) + "/Root 1 0 R" + m_trailer +
           ">>\nstartxref\n" + QByteArray::number(start) + "\n%%EOF\n";
}

QString TestPdf::save(const QString &folder, const QString &name) const
{
    const QString path = QDir(folder).filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("a test file cannot be written");
    }
    file.write(bytes());
    return path;
}

QByteArray TestPdf::textContent(const QByteArray &text)
{
    return "BT /F 12 Tf 72 720 Td (" + text + ") Tj ET";
}

TestPdf TestPdf::pages(int count, const QByteArray &catalog, const QByteArray &page)
{
    TestPdf pdf;
    QByteArray kids;
    for (int number = 1; number <= count; ++number) {
        const QByteArray content = QByteArray::number(10 * number + 1);
        kids += QByteArray::number(10 * number) + " 0 R ";
        pdf.object(10 * number, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents " +
                                    content + " 0 R/Resources<</Font<</F 3 0 R>>>>" + page + ">>");
        pdf.stream(10 * number + 1, "",
                   textContent("page-" + QByteArray::number(number) + "-text"));
    }
    pdf.object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
    pdf.object(2, "<</Type/Pages/Count " + QByteArray::number(count) + "/Kids[" + kids + "]>>");
    pdf.object(3, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    return pdf;
}
