// What main() of the test programs has in common.

#pragma once

#include <QApplication>

#include <gtest/gtest.h>

#include <optional>

/// Prepares a test program before its application object is made.
/// \return the exit code of a program that was only asked for the names of its tests, which needs neither a display nor
///         the time that an application takes to start
inline std::optional<int> PrepareTests(int& argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (GTEST_FLAG_GET(list_tests))
        return RUN_ALL_TESTS();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    return std::nullopt;
}
