// Mouse and keyboard of the random user.

#pragma once

#include "RandomUserAction.h"

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <functional>

class QPoint;
class QWidget;
class QWindow;
class RandomUserFiles;
class RandomUserWatch;

/// Performs actions. Everything is posted, like the events of a real mouse: the effects, nested event loops
/// of modal dialogs included, begin after Perform() has returned. An action whose target is not reachable
/// does nothing.
///
/// Kinds and arguments; <window> and <widget> are addresses, <x> and <y> per mille of the widget:
/// - click <window> <widget> <x> <y> <button> <modifiers> <count>
/// - drag <window> <widget> <x> <y> <x> <y> <button> <modifiers>
/// - wheel <window> <widget> <x> <y> <delta>
/// - cell <window> <view> <row> <column> <button> <modifiers> <count>: a cell of an item view
/// - tab <window> <tab bar> <index>
/// - enter <window> <widget> <text>: gives the widget the focus, selects all and types
/// - type <text>: types where the focus is
/// - press <keys>: a key with modifiers where the focus is, as QKeySequence writes it
/// - menu <window> <path>: triggers an action in the menus of a window, by its texts
/// - entry <window> <index>: clicks an entry of a popup menu
/// - choose <window> <combo box> <index>: chooses with the keyboard
/// - file <window> <name>: enters the path of one of the files into a file dialog and accepts
/// - close <window>, resize <window> <width> <height>
/// - wait <milliseconds>: lets jobs go on; that is up to the caller
class RandomUserHand : public QObject
{
    Q_OBJECT

public:
    /// \param files  not owned
    /// \param watch  learns which windows the user has closed; not owned
    RandomUserHand(const RandomUserFiles* files, RandomUserWatch* watch);

    void Perform(const RandomUserAction& action);

private:
    void PerformOnWindow(const RandomUserAction& action, QWidget* window);
    void PerformOnWidget(const RandomUserAction& action, QWidget* widget);
    void Click(QWidget* widget, const QPoint& at, const QStringList& arguments);
    void ClickCell(QWidget* widget, const QStringList& arguments);
    void Drag(QWidget* widget, const QStringList& arguments);
    void Wheel(QWidget* widget, const QStringList& arguments);
    void Choose(QWidget* widget, int index);
    void ChooseFile(QWidget* window, const QString& name);
    void ClickEntry(QWidget* window, int index);
    void Trigger(QWidget* window, const QString& path);
    void Close(QWidget* window);
    void Later(QWidget* window, const std::function<void()>& call);
    void Press(const QString& keys);
    void Type(const QString& text);
    void PressKey(int key, Qt::KeyboardModifiers modifiers, const QString& text);
    void Post(QWidget* widget, QEvent::Type type, const QPoint& at, Qt::MouseButton button,
              Qt::KeyboardModifiers modifiers);

    const RandomUserFiles* const m_files; // not owned
    RandomUserWatch* const m_watch;       // not owned
    Qt::MouseButtons m_buttons;           // pressed now
    int m_time = 0;                       // milliseconds, of the last mouse event
};
