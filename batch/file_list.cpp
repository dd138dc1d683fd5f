#include "batch/file_list.h"

#include "pipeline/password_pipe.h"

#include <QFile>

#include <cstdio>

namespace quorlin::batch {

QStringList namesIn(const QByteArray &list, bool hasNul)
{
    QStringList names;
    for (QByteArray name : list.split(hasNul ? '\0' : '\n')) {
        if (!hasNul && name.endsWith('\r')) {
            name.chop(1);
        }
        if (!name.isEmpty()) {
            names.append(QFile::decodeName(name));
        }
    }
    return names;
}

FileContent readWhole(const QString &path)
{
    QFile file(path);
    const bool isOpen = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                   : file.open(QIODevice::ReadOnly);
    FileContent content;
    if (isOpen) {
        content.bytes = file.readAll();
    }
    if (!isOpen || file.error() != QFileDevice::NoError) {
        content.fault = path + QStringLiteral(": ") + file.errorString();
    }
    return content;
}

FileContent readPasswordFile(const QString &path)
{
    FileContent content = readWhole(path);
    if (!content.fault.isEmpty()) {
        return content;
    }
    FileContent passwords;
    for (QByteArray line : content.bytes.split('\n')) {
        if (line.endsWith('\r')) {
            line.chop(1);
        }
        if (!line.isEmpty()) {
            passwords.bytes += line + '\n';
        }
    }
    if (passwords.bytes.isEmpty()) {
        passwords.fault = path + QStringLiteral(": it contains no passwords");
    } else if (passwords.bytes.size() > mostPasswordBytes) {
        passwords.fault = path + QStringLiteral(": the passwords are longer than ") +
                          QString::number(mostPasswordBytes) + QStringLiteral(" bytes");
    }
    return passwords;
}

} // namespace quorlin::batch
