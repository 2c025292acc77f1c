// Drives the running host with a real mouse and keyboard, and looks at the screen.

#pragma once

#include "base/ZORHostCommandLine.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

#include <functional>

class QAction;
class QWidget;
class ZORHostMainWindow;

/// Runs the whole program on the display of the test and walks through it from a separate thread, as a person would:
/// events come from the X server, and what is checked are pixels of the screen. The program's event loop keeps
/// running meanwhile, modal dialogs included.
///
/// The functions below belong to the walking thread.
class ScreenWalk : public testing::Test
{
protected:
    ScreenWalk();

    /// Starts the program with the bench and the standard commands, runs \a walk once its window is active, and
    /// ends the program unless the walk has closed it.
    void Run(ZORHostOptions::Theme theme, const std::function<void()>& walk);

    /// What \a query returns in the thread of the program, where widgets may be touched.
    template<class Query>
    static auto Ask(Query query)
    {
        decltype(query()) answer{};
        InProgram([&] { answer = query(); });
        return answer;
    }
    /// Polls \a condition in the thread of the program until it holds, at most 20 seconds.
    /// \return whether it holds
    static bool WaitFor(const std::function<bool()>& condition);

    ZORHostMainWindow* GetWindow() const { return m_window; }
    /// The visible window of a class whose name is \a className; null where there is none.
    static QWidget* FindWindow(const char* className);
    /// Waits until such a window is active.
    static bool WaitForWindow(const char* className);
    /// Waits until no such window is visible.
    static bool WaitForNoWindow(const char* className);
    /// Where a widget lies on the screen.
    static QRect GetPlace(const QWidget* widget);

    /// Calls xdotool; a failure where it fails.
    static void Type(const QStringList& arguments);
    static void Press(const QString& key) { Type({"key", key}); }
    static void MoveTo(const QPoint& at);
    static void Click(const QPoint& at, int button = 1);
    /// Presses a button and moves the pointer in steps; the button stays down.
    static void Pull(const QPoint& from, const QPoint& to, int button = 1);
    /// Pulls and lets go.
    static void Drag(const QPoint& from, const QPoint& to, int button = 1);
    /// Opens menus one in the other by their texts, without mnemonics, and clicks the last entry.
    void ClickMenu(const QStringList& texts) const;

    /// What the screen shows there now.
    static QImage Look(const QRect& place);
    /// Waits until the screen shows there what \a condition wants, and returns it; a failure where it never does.
    static QImage WaitForPicture(const QRect& place, const std::function<bool(const QImage&)>& condition,
                                 const char* what);
    /// Keeps a picture where the environment variable ZOR_WINDOW_PICTURES names a folder.
    static void Keep(const QImage& picture, const QString& name);

private:
    static void InProgram(const std::function<void()>& call);
    void ClickEntry(QWidget* menu, const QString& text) const;

    QTemporaryDir m_folder;
    ZORHostMainWindow* m_window = nullptr; // owned by the running program
};

/// Number of pixels of \a picture within \a area whose color is \a color.
int CountColor(const QImage& picture, const QColor& color, const QRect& area);
/// The smallest rectangle around the pixels in which two pictures of the same size differ; null where none do.
QRect GetDifference(const QImage& a, const QImage& b);
/// Number of pixels in which two pictures of the same size differ.
int CountDifferences(const QImage& a, const QImage& b);
