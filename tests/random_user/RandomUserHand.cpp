#include "RandomUserHand.h"

#include "RandomUserAddress.h"
#include "RandomUserFiles.h"
#include "RandomUserWatch.h"
#include "actions/ZORHostActionIndex.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTest>
#include <QWindow>

namespace {

constexpr int kBetweenClicks = 1000; // milliseconds: more than a double click takes
constexpr int kDragSteps = 4;

QPoint GetPoint(const QWidget* widget, const QString& x, const QString& y)
{
    return {std::min(widget->width() - 1, widget->width() * x.toInt() / 1000),
            std::min(widget->height() - 1, widget->height() * y.toInt() / 1000)};
}

Qt::MouseButton ToButton(const QString& text)
{
    return Qt::MouseButton(text.toInt());
}

Qt::KeyboardModifiers ToModifiers(const QString& text)
{
    return Qt::KeyboardModifiers(text.toInt());
}

/// The window that receives keyboard events; null if there is no window.
QWindow* GetFocusWindow()
{
    if (const QWidget* popup = QApplication::activePopupWidget())
        return popup->windowHandle();
    const QWidgetList windows = RandomUserAddress::GetReachableWindows();
    for (const QWidget* window : windows) {
        if (window->windowHandle() == QGuiApplication::focusWindow())
            return QGuiApplication::focusWindow();
    }
    if (windows.isEmpty())
        return nullptr;
    // Window managers choose another window when the active one has gone.
    windows.constLast()->activateWindow();
    return windows.constLast()->windowHandle();
}

} // namespace

RandomUserHand::RandomUserHand(const RandomUserFiles* files, RandomUserWatch* watch)
    : m_files(files)
    , m_watch(watch)
{
}

void RandomUserHand::Perform(const RandomUserAction& action)
{
    const QStringList& arguments = action.arguments;
    if (action.kind == "press")
        Press(arguments.value(0));
    else if (action.kind == "type")
        Type(arguments.value(0));
    else if (QWidget* window = RandomUserAddress::FindWindow(arguments.value(0)))
        PerformOnWindow(action, window);
}

void RandomUserHand::PerformOnWindow(const RandomUserAction& action, QWidget* window)
{
    const QStringList& arguments = action.arguments;
    if (action.kind == "close")
        Close(window);
    else if (action.kind == "resize")
        window->resize(arguments.value(1).toInt(), arguments.value(2).toInt());
    else if (action.kind == "menu")
        Trigger(window, arguments.value(1));
    else if (action.kind == "entry")
        ClickEntry(window, arguments.value(1).toInt());
    else if (action.kind == "file")
        ChooseFile(window, arguments.value(1));
    else if (QWidget* widget = RandomUserAddress::FindWidget(window, arguments.value(1)))
        PerformOnWidget(action, widget);
}

void RandomUserHand::PerformOnWidget(const RandomUserAction& action, QWidget* widget)
{
    const QStringList& arguments = action.arguments;
    if (action.kind == "click") {
        Click(widget, GetPoint(widget, arguments.value(2), arguments.value(3)), arguments.mid(4));
    } else if (action.kind == "cell") {
        ClickCell(widget, arguments);
    } else if (action.kind == "drag") {
        Drag(widget, arguments);
    } else if (action.kind == "wheel") {
        Wheel(widget, arguments);
    } else if (action.kind == "choose") {
        Choose(widget, arguments.value(2).toInt());
    } else if (action.kind == "tab") {
        if (const auto* bar = qobject_cast<const QTabBar*>(widget))
            Click(widget, bar->tabRect(arguments.value(2).toInt()).center(), {"1", "0", "1"});
    } else if (action.kind == "enter") {
        widget->window()->activateWindow();
        widget->setFocus(Qt::MouseFocusReason);
        Press("Ctrl+A");
        Type(arguments.value(2));
    }
}

void RandomUserHand::Post(QWidget* widget, QEvent::Type type, const QPoint& at, Qt::MouseButton button,
                          Qt::KeyboardModifiers modifiers)
{
    if (type == QEvent::MouseButtonPress)
        m_buttons |= button;
    else if (type == QEvent::MouseButtonRelease)
        m_buttons &= ~Qt::MouseButtons(button);
    // Queued, as the events of a display are: the effect may run another event loop and delete the
    // widget.
    const Qt::MouseButtons buttons = m_buttons;
    const int time = ++m_time;
    QMetaObject::invokeMethod(
        this,
        [=, guard = QPointer<QWidget>(widget)] {
            QWindow* target = guard ? guard->window()->windowHandle() : nullptr;
            if (target) {
                qt_handleMouseEvent(target, guard->mapTo(guard->window(), at), guard->mapToGlobal(at),
                                    buttons, button, type, modifiers, time);
            }
        },
        Qt::QueuedConnection);
}

void RandomUserHand::Click(QWidget* widget, const QPoint& at, const QStringList& arguments)
{
    const Qt::MouseButton button = ToButton(arguments.value(0));
    const Qt::KeyboardModifiers modifiers = ToModifiers(arguments.value(1));
    m_time += kBetweenClicks;
    Post(widget, QEvent::MouseMove, at, Qt::NoButton, modifiers);
    for (int i = 0; i < arguments.value(2).toInt(); ++i) {
        Post(widget, QEvent::MouseButtonPress, at, button, modifiers);
        Post(widget, QEvent::MouseButtonRelease, at, button, modifiers);
    }
}

void RandomUserHand::ClickCell(QWidget* widget, const QStringList& arguments)
{
    auto* view = qobject_cast<QAbstractItemView*>(widget);
    if (!view || !view->model())
        return;
    const QModelIndex index = view->model()->index(arguments.value(2).toInt(), arguments.value(3).toInt());
    view->scrollTo(index);
    const QPoint at = view->visualRect(index).center();
    if (index.isValid() && view->viewport()->rect().contains(at))
        Click(view->viewport(), at, arguments.mid(4));
}

void RandomUserHand::Drag(QWidget* widget, const QStringList& arguments)
{
    const QPoint from = GetPoint(widget, arguments.value(2), arguments.value(3));
    const QPoint to = GetPoint(widget, arguments.value(4), arguments.value(5));
    const Qt::MouseButton button = ToButton(arguments.value(6));
    const Qt::KeyboardModifiers modifiers = ToModifiers(arguments.value(7));
    m_time += kBetweenClicks;
    Post(widget, QEvent::MouseButtonPress, from, button, modifiers);
    for (int step = 1; step <= kDragSteps; ++step)
        Post(widget, QEvent::MouseMove, from + (to - from) * step / kDragSteps, Qt::NoButton, modifiers);
    Post(widget, QEvent::MouseButtonRelease, to, button, modifiers);
}

void RandomUserHand::Wheel(QWidget* widget, const QStringList& arguments)
{
    const QPoint at = GetPoint(widget, arguments.value(2), arguments.value(3));
    QCoreApplication::postEvent(widget, new QWheelEvent(at, widget->mapToGlobal(at), QPoint(),
                                                        QPoint(0, arguments.value(4).toInt()), m_buttons,
                                                        Qt::NoModifier, Qt::NoScrollPhase, false));
}

void RandomUserHand::Choose(QWidget* widget, int index)
{
    if (!qobject_cast<QComboBox*>(widget))
        return;
    widget->window()->activateWindow();
    widget->setFocus(Qt::MouseFocusReason);
    Press("Home");
    for (int i = 0; i < index; ++i)
        Press("Down");
}

void RandomUserHand::ChooseFile(QWidget* window, const QString& name)
{
    auto* dialog = qobject_cast<QFileDialog*>(window);
    auto* edit = dialog ? dialog->findChild<QLineEdit*>("fileNameEdit") : nullptr;
    if (!edit)
        return;
    const QList<QAbstractItemView*> views = dialog->findChildren<QAbstractItemView*>();
    for (QAbstractItemView* view : views)
        view->clearSelection(); // would win over the name
    edit->setText(m_files->GetPath(name));
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
}

void RandomUserHand::ClickEntry(QWidget* window, int index)
{
    auto* menu = qobject_cast<QMenu*>(window);
    QAction* action = menu ? menu->actions().value(index) : nullptr;
    if (action && menu->actionGeometry(action).isValid())
        Click(menu, menu->actionGeometry(action).center(), {"1", "0", "1"});
}

void RandomUserHand::Trigger(QWidget* window, const QString& path)
{
    const QList<ZORHostActionEntry> entries = ZORHostCollectActions(window);
    for (const ZORHostActionEntry& entry : entries) {
        if (entry.IsTriggerable() && path == entry.path + " > " + entry.text) {
            Later(window, [action = entry.action] {
                if (action)
                    action->trigger();
            });
            return;
        }
    }
}

void RandomUserHand::Close(QWidget* window)
{
    Later(window, [this, closing = QPointer<QWidget>(window)] {
        const bool isToDie = closing->testAttribute(Qt::WA_DeleteOnClose); // closing resets it
        if (closing->close() && closing)
            m_watch->ExpectGone(closing, isToDie);
    });
}

void RandomUserHand::Later(QWidget* window, const std::function<void()>& call)
{
    // Queued, as the call may run an event loop. Meanwhile a modal dialog may have opened, which blocks the
    // window.
    QMetaObject::invokeMethod(
        window,
        [window, call] {
            if (RandomUserAddress::GetReachableWindows().contains(window))
                call();
        },
        Qt::QueuedConnection);
}

void RandomUserHand::Press(const QString& keys)
{
    const QKeySequence sequence = QKeySequence::fromString(keys, QKeySequence::PortableText);
    if (sequence.isEmpty())
        return;
    const QKeyCombination combination = sequence[0];
    const bool isPlain =
        combination.keyboardModifiers() == Qt::NoModifier && combination.key() < Qt::Key_Escape;
    PressKey(combination.key(), combination.keyboardModifiers(),
             isPlain ? QString(QChar(combination.key())) : QString());
}

void RandomUserHand::Type(const QString& text)
{
    for (const QChar character : text)
        PressKey(character.toUpper().unicode(), Qt::NoModifier, character);
}

void RandomUserHand::PressKey(int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QMetaObject::invokeMethod(
            this,
            [=] {
                if (QWindow* window = GetFocusWindow())
                    qt_handleKeyEvent(window, type, key, modifiers, text);
            },
            Qt::QueuedConnection);
    }
}
