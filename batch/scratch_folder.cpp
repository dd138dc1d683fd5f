#include "batch/scratch_folder.h"

#include "common/folders.h"
#include "rules/rule_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace quorlin::batch {

ScratchFolder::ScratchFolder()
    : folder(quorlin::temporaryFolder() + QStringLiteral("/quorlin-batch-XXXXXX"))
{
    if (!folder.isValid()) {
        faultText = QStringLiteral("no scratch folder could be made in ") +
                    quorlin::temporaryFolder() + QStringLiteral(": ") + folder.errorString();
    } else if (folder.path().contains(u'"')) {
        faultText =
            QStringLiteral("the temporary folder's path holds a double quote: ") + folder.path();
    } else if (!QDir().mkdir(applicationFolder()) || !QDir().mkdir(temporaryFolder())) {
        faultText = QStringLiteral("the scratch folder could not be filled: ") + folder.path();
    }
}

QString ScratchFolder::applicationFolder() const
{
    return folder.filePath(QStringLiteral("application"));
}

QString ScratchFolder::temporaryFolder() const
{
    return folder.filePath(QStringLiteral("pages"));
}

QString ScratchFolder::linkTools(const QString &toolFolder)
{
    for (const QString &name : {QStringLiteral("pagexport"), QStringLiteral("pagebinder")}) {
        const QFileInfo tool(toolFolder + u'/' + name);
        if (!tool.isFile() || !tool.isExecutable()) {
            return QStringLiteral("the tool is missing or cannot be run: ") + tool.filePath();
        }
        if (!QFile::link(tool.absoluteFilePath(), applicationFolder() + u'/' + name)) {
            return QStringLiteral("the scratch folder could not be filled: ") + folder.path();
        }
    }
    return {};
}

void ScratchFolder::enter() const
{
    qputenv("TMPDIR", QFile::encodeName(temporaryFolder()));
    setApplicationFolder(applicationFolder());
    QDir::setCurrent(applicationFolder());
}

void ScratchFolder::writeRule(QPoint position)
{
    Subtext item;
    item.left = position.x();
    item.top = position.y();
    saveRule(ruleName(), item);
}

} // namespace quorlin::batch
