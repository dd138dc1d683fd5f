// A settings file of any content: rules are listed and read without a fault, and reading changes
// nothing in the file.

#include "rules/rule_store.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    QDir::setCurrent(folder.path());
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QFile::remove(QStringLiteral("setting.ini"));
    QFile file(QStringLiteral("setting.ini"));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::abort();
    }
    file.close();

    for (const QString &name : quorlin::ruleNames()) {
        quorlin::readRule(name);
        quorlin::isRuleNameTaken(name);
    }
    quorlin::readRule(QString());
    quorlin::currentRuleName();

    if (!file.open(QIODevice::ReadOnly) || file.readAll() != bytes) {
        std::abort();
    }
    file.close();
    return 0;
}
