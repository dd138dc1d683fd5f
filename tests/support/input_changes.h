#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace quorlin::test {

/// The state of a file as the tools are told it in QUORLIN_INPUT_IDENTITY.
inline QString identityText(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        qFatal("a test file is missing");
    }
    return QStringLiteral("%1:%2:%3:%4.%5")
        .arg(quint64(status.st_dev))
        .arg(quint64(status.st_ino))
        .arg(qint64(status.st_size))
        .arg(qint64(status.st_ctim.tv_sec))
        .arg(qint64(status.st_ctim.tv_nsec), 9, 10, QLatin1Char('0'));
}

/// The ways in which an input changes under a tool's hands.
enum class Change {
    replaced,  ///< another file is put in its place, as scanners and sync clients do
    rewritten, ///< written again in place, by as many bytes
    appended,
    truncated,
    removed
};

/// Changes the file @p path, so that its bytes from the middle on are others.
inline void changeFile(const QString &path, Change change)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("a test file is missing");
    }
    QByteArray bytes = file.readAll();
    file.close();
    const auto middle = bytes.size() / 2;
    bytes.replace(middle, bytes.size() - middle, QByteArray(bytes.size() - middle, ' '));
    const auto write = [&bytes](QFile &target, QIODevice::OpenMode mode) {
        if (!target.open(mode) || target.write(bytes) != bytes.size()) {
            qFatal("a test file cannot be written");
        }
        target.close();
    };
    if (change == Change::replaced) {
        QFile other(path + ".new");
        write(other, QIODevice::WriteOnly);
        ::rename(QFile::encodeName(other.fileName()).constData(),
                 QFile::encodeName(path).constData());
    } else if (change == Change::rewritten) {
        write(file, QIODevice::ReadWrite);
    } else if (change == Change::appended) {
        write(file, QIODevice::Append);
    } else if (change == Change::truncated) {
        file.resize(middle);
    } else {
        file.remove();
    }
}

} // namespace quorlin::test

Q_DECLARE_METATYPE(quorlin::test::Change)
