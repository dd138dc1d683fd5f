#pragma once

#include <QObject>

#include <memory>

/// One program holds the tests of a room: "analysis_tests grouping" runs test_grouping.cpp, further
/// words go to Qt's own test driver ("analysis_tests grouping aNewTextStartsAGroup -v2"). Without a
/// name every test runs in a process of its own, so that none sees another's environment; "--list"
/// prints the names.
namespace quorlin::test {

using MakeTest = std::unique_ptr<QObject> (*)();
using RunRole = int (*)(int argc, char **argv);

/// Adds a test class under the name of its source @p file without "test_" and ".cpp".
bool addTest(const char *file, MakeTest make);

/// Adds a part that the program plays when @p option is its first word, instead of testing: some
/// tests start themselves again as another process. @p run makes its own application object.
bool addRole(const char *option, RunRole run);

} // namespace quorlin::test

/// Stands at the end of a test's source file.
#define QUORLIN_TEST(Class) QUORLIN_NAMED_TEST(__FILE__, Class)

/// The same for one of several tests in a file, under a name of its own.
#define QUORLIN_NAMED_TEST(name, Class)                                                            \
    [[maybe_unused]] static const bool Class##Added = quorlin::test::addTest(                      \
        name, []() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); });

/// Lets the program play another part than testing; see addRole().
#define QUORLIN_ROLE(option, function)                                                             \
    [[maybe_unused]] static const bool function##Added = quorlin::test::addRole(option, function);
