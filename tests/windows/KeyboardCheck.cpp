#include "WindowChecks.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSet>
#include <QSignalBlocker>
#include <QTest>
#include <QToolBar>

namespace {

/// Whether the widget stands for itself: not a part of another one, such as the field of a spin box.
bool IsOwnControl(const QWidget* widget)
{
    return widget->focusPolicy() != Qt::NoFocus && !widget->focusProxy() && widget->isEnabled()
           && !widget->objectName().startsWith(QLatin1String("qt_"));
}

/// Tab goes to the checked button of a group only; the arrow keys reach the others.
bool IsReachedByArrows(const QWidget* widget)
{
    const auto* radio = qobject_cast<const QRadioButton*>(widget);
    return radio && radio->autoExclusive() && !radio->isChecked();
}

/// A widget without a function of its own: a mere container, or a text that takes the focus only to be marked
/// with the mouse.
bool IsPassive(const QWidget* widget)
{
    return widget->metaObject() == &QWidget::staticMetaObject
           || (qobject_cast<const QLabel*>(widget) && widget->focusPolicy() == Qt::ClickFocus);
}

QString FindName(QWidget* widget, const QWidget* window)
{
    if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(widget)) {
        const QString name = interface->text(QAccessible::Name);
        if (!name.trimmed().isEmpty())
            return name;
    }
    const auto labels = window->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        if (label->buddy() == widget)
            return label->text();
    }
    return {};
}

/// The widgets that get the focus when Tab is pressed again and again, until one comes twice.
QSet<QWidget*> PressTab(QWidget* window)
{
    window->activateWindow();
    QSet<QWidget*> reached;
    if (!QTest::qWaitForWindowActive(window))
        return reached;
    QWidget* focus = window->focusWidget();
    if (!focus)
        QTest::keyClick(window, Qt::Key_Tab);
    while ((focus = window->focusWidget()) && !reached.contains(focus)) {
        reached.insert(focus);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return reached;
}

/// The button that accepts the window; null where there is none or it cannot be pressed.
QPushButton* FindAcceptButton(QWidget* window)
{
    const auto boxes = window->findChildren<QDialogButtonBox*>();
    for (const QDialogButtonBox* box : boxes) {
        const auto buttons = box->buttons();
        for (QAbstractButton* button : buttons) {
            if (button->isVisible() && button->isEnabled()
                && box->buttonRole(button) == QDialogButtonBox::AcceptRole)
                return qobject_cast<QPushButton*>(button);
        }
    }
    return nullptr;
}

/// Whether the user enters a single value in it, so that Return ends the input.
bool IsField(const QWidget* widget)
{
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget)
           || qobject_cast<const QComboBox*>(widget) || qobject_cast<const QCheckBox*>(widget)
           || qobject_cast<const QRadioButton*>(widget);
}

} // namespace

QStringList FindSwallowedReturns(QWidget* window)
{
    QPushButton* const accept = FindAcceptButton(window);
    if (!accept)
        return {};
    QStringList problems;
    const QSignalBlocker shield(accept);
    accept->setCheckable(true); // its state shows what its blocked signals would
    const QList<QWidget*> widgets = GetVisibleWidgets(window);
    for (QWidget* widget : widgets) {
        if (!IsOwnControl(widget) || !IsField(widget))
            continue;
        accept->setChecked(false);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        if (!accept->isChecked())
            problems.append(Describe(widget) + QStringLiteral(" swallows Return"));
    }
    accept->setCheckable(false);
    return problems;
}

QStringList FindUnreachableWidgets(QWidget* window)
{
    const QSet<QWidget*> reached = PressTab(window);
    QStringList problems;
    const QList<QWidget*> widgets = GetVisibleWidgets(window);
    for (QWidget* widget : widgets) {
        if (!IsOwnControl(widget) || IsPassive(widget))
            continue;
        if (!reached.contains(widget) && !IsReachedByArrows(widget))
            problems.append(Describe(widget) + QStringLiteral(" is not reached by Tab"));
        if (FindName(widget, window).trimmed().isEmpty())
            problems.append(Describe(widget) + QStringLiteral(" has no accessible name"));
    }
    return problems;
}
