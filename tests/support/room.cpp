#include "tests/support/room.h"

#include <QFileInfo>
#include <QProcess>
#include <QTest>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
#else
#include <QCoreApplication>
#endif

#include <cstdio>
#include <map>
#include <vector>

namespace quorlin::test {

namespace {

// Test files register before main() runs, in no certain order.
std::map<QString, MakeTest> &tests()
{
    static std::map<QString, MakeTest> all;
    return all;
}

std::map<QByteArray, RunRole> &roles()
{
    static std::map<QByteArray, RunRole> all;
    return all;
}

void list(std::FILE *stream)
{
    for (const auto &[name, make] : tests()) {
        std::fprintf(stream, "%s\n", qPrintable(name));
    }
}

/// Runs every test in a process of its own. @returns how many of them failed
int runAll(const QStringList &words)
{
    int failed = 0;
    for (const auto &[name, make] : tests()) {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.setInputChannelMode(QProcess::ForwardedInputChannel);
        process.start(QCoreApplication::applicationFilePath(), QStringList{name} + words);
        process.waitForFinished(-1);
        const bool passed = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        failed += passed ? 0 : 1;
    }
    return failed;
}

int runOne(const QString &name, int argc, char **argv)
{
    const auto found = tests().find(name);
    if (found == tests().end()) {
        std::fprintf(stderr, "no test \"%s\"; there are:\n", qPrintable(name));
        list(stderr);
        return 2;
    }
    // Qt's driver takes the words behind the name.
    std::vector<char *> words{argv[0]};
    words.insert(words.end(), argv + 2, argv + argc);
    return QTest::qExec(found->second().get(), int(words.size()), words.data());
}

} // namespace

bool addTest(const char *file, MakeTest make)
{
    QString name = QFileInfo(QString::fromUtf8(file)).completeBaseName();
    if (name.startsWith(QLatin1String("test_"))) {
        name.remove(0, 5);
    }
    if (!tests().emplace(name, make).second) {
        qFatal("two tests are called %s", qPrintable(name));
    }
    return true;
}

bool addRole(const char *option, RunRole run)
{
    return roles().emplace(option, run).second;
}

} // namespace quorlin::test

int main(int argc, char **argv)
{
    using namespace quorlin::test;
    if (argc > 1) {
        const auto role = roles().find(QByteArray(argv[1]));
        if (role != roles().end()) {
            return role->second(argc, argv);
        }
    }
#ifdef QT_WIDGETS_LIB
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi);
    const QApplication application(argc, argv);
#else
    const QCoreApplication application(argc, argv);
#endif
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.value(0) == QLatin1String("--list")) {
        list(stdout);
        return 0;
    }
    if (words.isEmpty() || words.constFirst().startsWith(QLatin1Char('-'))) {
        return runAll(words);
    }
    return runOne(words.constFirst(), argc, argv);
}
