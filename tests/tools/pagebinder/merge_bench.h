#pragma once

#include "pdf_inspector.h"
#include "test_pdf.h"
#include "tool_run.h"

#include <QTemporaryDir>

#include <memory>

/// Merges pages of small files in a folder of its own and looks into the outputs.
class MergeBench
{
public:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// The merge of @p ranges of @p pdf; null when the tool fails or says anything.
    std::unique_ptr<PdfInspector> merged(const TestPdf &pdf, const QString &ranges) const
    {
        const QString output = path(QStringLiteral("out.pdf"));
        const ToolRun run = merge(pdf.save(m_folder.path()), ranges, output);
        if (run.status != 0 || !run.errors.isEmpty()) {
            qWarning("status %d: %s", run.status, run.errors.constData());
            return nullptr;
        }
        return std::make_unique<PdfInspector>(output);
    }

    /// The lines of -getinfo about @p pdf; none when the tool fails.
    QList<QByteArray> information(const TestPdf &pdf) const
    {
        const QString input = pdf.save(m_folder.path());
        const ToolRun run = runBinder({input, "-getinfo", "-outfile", path("info.txt")});
        QFile file(path("info.txt"));
        if (run.status != 0 || !file.open(QIODevice::ReadOnly)) {
            qWarning("status %d: %s", run.status, run.errors.constData());
            return {};
        }
        return file.readAll().split('\n');
    }

private:
    QTemporaryDir m_folder;
};
