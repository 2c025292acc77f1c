// Real inputs for tests, kept outside the project.

#pragma once

#include <QString>

/// Path of \a relativePath in the folder of test data: environment variable ZOR_TEST_DATA, else the
/// folder found when the tests were configured. Empty when it does not exist.
QString FindTestData(const QString& relativePath);

/// Skips the running test with a clear message where the test data is absent.
// NOLINTBEGIN(bugprone-macro-parentheses): parentheses cannot enclose the name that is declared
#define ZOR_REQUIRE_TEST_DATA(variable, relativePath)                                                        \
    const QString variable = FindTestData(QString::fromLatin1(relativePath));                                \
    if (variable.isEmpty())                                                                                  \
    GTEST_SKIP() << "no test data '" << (relativePath) << "': set ZOR_TEST_DATA to its folder"
// NOLINTEND(bugprone-macro-parentheses)
