// Fixture of the tests that walk windows.

#pragma once

#include "base/ZORHostCommandLine.h"
#include "support/BenchTest.h"

class QWidget;

/// Runs every test in the light and in the dark palette of the host.
class WindowTest : public BenchTest, public testing::WithParamInterface<ZORHostOptions::Theme>
{
protected:
    WindowTest();

    /// Shows \a window and expects that its texts fit and stand out, that the keyboard reaches it all, and that
    /// Return in its fields presses OK, with every page in front. Keeps pictures of it where the environment variable ZOR_WINDOW_PICTURES
    /// names a folder.
    void Walk(QWidget* window, const QString& name);

private:
    void Check(QWidget* window, const QString& name);
};
