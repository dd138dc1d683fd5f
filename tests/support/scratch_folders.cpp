#include "tests/support/scratch_folders.h"

#include "common/folders.h"
#include "rules/rule_store.h"
#include "tests/support/text_files.h"

#include <QDir>
#include <QDirIterator>

namespace quorlin::test {

ScratchFolders::ScratchFolders()
    : earlierTemporary(qgetenv("TMPDIR")), earlierCurrent(QDir::currentPath())
{
    for (const QString &folder : {application(), temporary(), inputs(), outputs()}) {
        QDir().mkpath(folder);
    }
    qputenv("TMPDIR", temporary().toLocal8Bit());
    setApplicationFolder(application());
    QDir::setCurrent(application());
}

ScratchFolders::~ScratchFolders()
{
    QDir::setCurrent(earlierCurrent);
    setApplicationFolder({});
    if (earlierTemporary.isNull()) {
        qunsetenv("TMPDIR");
    } else {
        qputenv("TMPDIR", earlierTemporary);
    }
}

QString ScratchFolders::path(const QString &name) const
{
    return QDir(root.path()).canonicalPath() + QLatin1Char('/') + name;
}

QString ScratchFolders::addInput(const QString &name, const QByteArray &content) const
{
    QString file = inputs() + QLatin1Char('/') + name;
    writeFile(file, content);
    return file;
}

QString ScratchFolders::settingsFile() const
{
    return application() + QStringLiteral("/setting.ini");
}

void ScratchFolders::saveRule(const QString &name, int left, int top) const
{
    Subtext item;
    item.left = left;
    item.top = top;
    item.width = 90;
    item.height = 12;
    item.text = QStringLiteral("sample");
    quorlin::saveRule(name, item);
}

QStringList ScratchFolders::outputFiles() const
{
    QStringList files;
    const QDir folder(outputs());
    QDirIterator iterator(outputs(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (iterator.hasNext()) {
        files.append(folder.relativeFilePath(iterator.next()));
    }
    files.sort();
    return files;
}

} // namespace quorlin::test
