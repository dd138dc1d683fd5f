// The tools are built so that they start fast under the sanitizers. What the sanitizers find must
// stay the same.

#include "tests/support/room.h"

#include <QProcess>
#include <QTest>

namespace {

struct Ending
{
    int status = -1;
    QByteArray errors;
};

/// How the probe ends after @p deed; @p leakOptions are those of the search for leaks.
Ending probe(const QString &deed, const QString &leakOptions = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("ASAN_OPTIONS", "detect_leaks=1:abort_on_error=0");
    environment.insert("LSAN_OPTIONS", leakOptions);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(SANITIZED_PROBE), {deed});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), process.readAllStandardError()};
}

// The search then takes for lost what only a global points to.
const QString withoutGlobals = QStringLiteral("use_globals=0:use_stacks=0:use_registers=0");

} // namespace

class TestSanitizedRun : public QObject
{
    Q_OBJECT

private slots:
    void lostMemoryIsReported();
    void keptMemoryIsSearched();
    void noSearchFollowsWhenAllIsFreed();
    void undefinedBehaviourIsReportedWithItsPlace();
};

void TestSanitizedRun::lostMemoryIsReported()
{
    const Ending ending = probe("lose");
    QVERIFY(ending.status > 0);
    QVERIFY2(ending.errors.contains("LeakSanitizer"), ending.errors);
    QVERIFY2(ending.errors.contains("sanitized_probe.cpp:"), ending.errors);
}

void TestSanitizedRun::keptMemoryIsSearched()
{
    const Ending ending = probe("keep");
    QCOMPARE(ending.status, 0);
    QCOMPARE(ending.errors, QByteArray());
    const Ending searched = probe("keep", withoutGlobals);
    QVERIFY2(searched.status > 0, QByteArray::number(searched.status) + searched.errors);
    QVERIFY2(searched.errors.contains("LeakSanitizer"), searched.errors);
}

void TestSanitizedRun::noSearchFollowsWhenAllIsFreed()
{
    const Ending ending = probe("free", withoutGlobals);
    QCOMPARE(ending.status, 0);
    QCOMPARE(ending.errors, QByteArray());
}

void TestSanitizedRun::undefinedBehaviourIsReportedWithItsPlace()
{
    const Ending ending = probe("overflow");
    QVERIFY(ending.status > 0);
    QVERIFY2(ending.errors.contains("AddressSanitizer: ILL"), ending.errors);
    QVERIFY2(ending.errors.contains("sanitized_probe.cpp:"), ending.errors);
}

QUORLIN_TEST(TestSanitizedRun)
#include "test_sanitized_run.moc"
