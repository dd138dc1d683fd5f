#pragma once

#include "tests/support/pdf_builder.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>
#include <QTemporaryDir>

#include <utility>

namespace quorlin::test {

/// One item line of a page file, taken apart.
struct ItemLine
{
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    QString text;
};

/// Runs pagexport into a folder of its own and reads what it wrote.
class ExportRun
{
public:
    ExportRun() = default;
    virtual ~ExportRun() = default;
    ExportRun(const ExportRun &) = delete;
    ExportRun &operator=(const ExportRun &) = delete;

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString indexPath() const { return path("page.xml"); }

    /// Writes @p pdf into the folder.
    QString save(const PdfBuilder &pdf, const QString &name = "in.pdf") const
    {
        return pdf.save(path(name).toStdString()) ? path(name) : QString();
    }
    /// Exports @p input; @p options stand before the files.
    int run(const QString &input, const QStringList &options = {})
    {
        return call(QStringList{"-htmlformat"} + options + QStringList{"--", input, indexPath()});
    }
    int run(const PdfBuilder &pdf, const QStringList &options = {})
    {
        return run(save(pdf), options);
    }
    /// Calls the tool with just these arguments; gives its status, -1 when it did not end well.
    virtual int call(const QStringList &arguments)
    {
        QProcess process;
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(QStringLiteral(QUORLIN_BIN_DIR "/pagexport"), arguments);
        const bool ended = process.waitForFinished(300000);
        setWritten(process.readAllStandardOutput(), process.readAllStandardError());
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QByteArray errors() const { return m_errors; }
    QByteArray output() const { return m_output; }
    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static QString pageName(int number)
    {
        return QStringLiteral("page_pg_%1.htm").arg(number, 4, 10, QLatin1Char('0'));
    }
    /// What the export left, without the input files.
    QStringList written() const
    {
        return QDir(m_folder.path()).entryList({"page*"}, QDir::Files | QDir::Hidden, QDir::Name);
    }
    QList<ItemLine> items(int page = 1) const { return itemsOf(content(pageName(page))); }
    QStringList texts(int page = 1) const
    {
        QStringList result;
        for (const ItemLine &item : items(page)) {
            result.append(item.text);
        }
        return result;
    }

    static QList<ItemLine> itemsOf(const QByteArray &html)
    {
        static const QRegularExpression line(
            QStringLiteral("^<span style=\"left:(\\d+);top:(\\d+);width:(\\d+);height:(\\d+)\">"
                           "([^<>\"]*)</span>$"));
        QList<ItemLine> result;
        for (const QString &text : QString::fromUtf8(html).split(QLatin1Char('\n'))) {
            const QRegularExpressionMatch match = line.match(text);
            if (match.hasMatch()) {
                result.append({match.captured(1).toInt(), match.captured(2).toInt(),
                               match.captured(3).toInt(), match.captured(4).toInt(),
                               match.captured(5)});
            }
        }
        return result;
    }

protected:
    void setWritten(const QByteArray &output, const QByteArray &errors)
    {
        m_output = output;
        m_errors = errors;
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_errors;
    QByteArray m_output;
};

} // namespace quorlin::test
