#include "WindowChecks.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOption>
#include <QTabBar>
#include <QToolButton>

namespace {

/// Opens the protected functions that tell what a widget paints.
struct TabBarAccess : QTabBar
{
    using QTabBar::initStyleOption;
};
struct GroupBoxAccess : QGroupBox
{
    using QGroupBox::initStyleOption;
};
struct ComboBoxAccess : QComboBox
{
    using QComboBox::initStyleOption;
};
struct PushButtonAccess : QPushButton
{
    using QPushButton::initStyleOption;
};
struct DockAccess : QDockWidget
{
    using QDockWidget::initStyleOption;
};

QSize GetTextSize(const QWidget* widget, const QString& text)
{
    return widget->fontMetrics().size(Qt::TextShowMnemonic, text);
}

class TextFitCheck
{
public:
    QStringList Run(QWidget* window)
    {
        const QList<QWidget*> widgets = GetVisibleWidgets(window);
        for (QWidget* widget : widgets)
            Check(widget);
        return m_problems;
    }

private:
    void Check(QWidget* widget);
    void CheckLabel(const QLabel* label);
    void CheckPushButton(const QPushButton* button);
    void CheckBox(const QAbstractButton* button, QStyle::SubElement contents);
    void CheckToolButton(const QToolButton* button);
    void CheckGroupBox(const QGroupBox* box);
    void CheckTabBar(const QTabBar* bar);
    void CheckComboBox(const QComboBox* combo);
    void CheckHeader(const QHeaderView* header);
    void CheckMenuBar(const QMenuBar* bar);
    void CheckMenu(QMenu* menu);
    void CheckDock(const QDockWidget* dock);

    /// A problem when \a needed is greater than \a available in a direction.
    void Compare(const QWidget* widget, const QString& text, const QSize& needed, const QSize& available)
    {
        if (needed.width() <= available.width() && needed.height() <= available.height())
            return;
        m_problems.append(QStringLiteral("%1 needs %2 x %3, has %4 x %5")
                              .arg(Describe(widget, text), QString::number(needed.width()),
                                   QString::number(needed.height()), QString::number(available.width()),
                                   QString::number(available.height())));
    }

    QStringList m_problems;
};

void TextFitCheck::Check(QWidget* widget)
{
    if (const auto* label = qobject_cast<QLabel*>(widget))
        CheckLabel(label);
    else if (const auto* pushButton = qobject_cast<QPushButton*>(widget))
        CheckPushButton(pushButton);
    else if (const auto* checkBox = qobject_cast<QCheckBox*>(widget))
        CheckBox(checkBox, QStyle::SE_CheckBoxContents);
    else if (const auto* radioButton = qobject_cast<QRadioButton*>(widget))
        CheckBox(radioButton, QStyle::SE_RadioButtonContents);
    else if (const auto* toolButton = qobject_cast<QToolButton*>(widget))
        CheckToolButton(toolButton);
    else if (const auto* groupBox = qobject_cast<QGroupBox*>(widget))
        CheckGroupBox(groupBox);
    else if (const auto* tabBar = qobject_cast<QTabBar*>(widget))
        CheckTabBar(tabBar);
    else if (const auto* combo = qobject_cast<QComboBox*>(widget))
        CheckComboBox(combo);
    else if (const auto* header = qobject_cast<QHeaderView*>(widget))
        CheckHeader(header);
    else if (const auto* menuBar = qobject_cast<QMenuBar*>(widget))
        CheckMenuBar(menuBar);
    else if (const auto* dock = qobject_cast<QDockWidget*>(widget))
        CheckDock(dock);
    else if (const auto* edit = qobject_cast<QLineEdit*>(widget))
        Compare(edit, edit->placeholderText(), GetTextSize(edit, edit->placeholderText()), edit->size());
    else if (const auto* spinBox = qobject_cast<QAbstractSpinBox*>(widget))
        Compare(spinBox, {}, spinBox->minimumSizeHint(), spinBox->size());
}

void TextFitCheck::CheckLabel(const QLabel* label)
{
    if (label->text().isEmpty())
        return;
    if (label->wordWrap())
        Compare(label, label->text(), {1, label->heightForWidth(label->width())}, label->size());
    else
        Compare(label, label->text(), label->minimumSizeHint(), label->size());
}

void TextFitCheck::CheckPushButton(const QPushButton* button)
{
    QStyleOptionButton option;
    (button->*(&PushButtonAccess::initStyleOption))(&option);
    QSize contents = button->style()->subElementRect(QStyle::SE_PushButtonContents, &option, button).size();
    if (!option.icon.isNull())
        contents.rwidth() -= option.iconSize.width() + 4; // the gap between icon and text
    Compare(button, button->text(), GetTextSize(button, button->text()), contents);
}

void TextFitCheck::CheckBox(const QAbstractButton* button, QStyle::SubElement contents)
{
    QStyleOptionButton option;
    option.initFrom(button);
    option.text = button->text();
    Compare(button, button->text(), GetTextSize(button, button->text()),
            button->style()->subElementRect(contents, &option, button).size());
}

void TextFitCheck::CheckToolButton(const QToolButton* button)
{
    const bool showsText = button->icon().isNull() || button->toolButtonStyle() != Qt::ToolButtonIconOnly;
    if (showsText && !button->text().isEmpty())
        Compare(button, button->text(), button->minimumSizeHint(), button->size());
}

void TextFitCheck::CheckGroupBox(const QGroupBox* box)
{
    QStyleOptionGroupBox option;
    (box->*(&GroupBoxAccess::initStyleOption))(&option);
    const QRect title =
        box->style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, box);
    Compare(box, box->title(), GetTextSize(box, box->title()), title.intersected(box->rect()).size());
}

void TextFitCheck::CheckTabBar(const QTabBar* bar)
{
    for (int tab = 0; tab < bar->count(); ++tab) {
        QStyleOptionTab option;
        (bar->*(&TabBarAccess::initStyleOption))(&option, tab);
        if (option.text != bar->tabText(tab))
            m_problems.append(Describe(bar, bar->tabText(tab)) + QStringLiteral(" is elided"));
        if (!bar->rect().contains(bar->tabRect(tab)))
            m_problems.append(Describe(bar, bar->tabText(tab)) + QStringLiteral(" is scrolled out of sight"));
    }
}

void TextFitCheck::CheckComboBox(const QComboBox* combo)
{
    QStyleOptionComboBox option;
    (combo->*(&ComboBoxAccess::initStyleOption))(&option);
    const QSize field =
        combo->style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
            .size();
    for (int i = 0; i < combo->count(); ++i)
        Compare(combo, combo->itemText(i), GetTextSize(combo, combo->itemText(i)), field);
}

void TextFitCheck::CheckHeader(const QHeaderView* header)
{
    for (int section = 0; section < header->count(); ++section) {
        if (header->isSectionHidden(section))
            continue;
        const QString text =
            header->model()->headerData(section, header->orientation(), Qt::DisplayRole).toString();
        const int needed = header->sectionSizeHint(section);
        if (header->orientation() == Qt::Horizontal && needed > header->sectionSize(section))
            Compare(header, text, {needed, 1}, {header->sectionSize(section), header->height()});
    }
}

void TextFitCheck::CheckMenuBar(const QMenuBar* bar)
{
    const auto actions = bar->actions();
    for (const QAction* action : actions) {
        if (!action->isVisible())
            continue;
        const QRect place = bar->actionGeometry(const_cast<QAction*>(action));
        if (!bar->rect().contains(place))
            m_problems.append(Describe(bar, action->text()) + QStringLiteral(" is out of sight"));
        Compare(bar, action->text(), GetTextSize(bar, action->text()), place.size());
        if (action->menu())
            CheckMenu(action->menu());
    }
}

void TextFitCheck::CheckMenu(QMenu* menu)
{
    emit menu->aboutToShow(); // fills menus that are made when they are needed
    menu->ensurePolished();
    menu->resize(menu->sizeHint()); // lays the entries out
    const auto actions = menu->actions();
    for (QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible())
            continue;
        Compare(menu, action->text(), GetTextSize(menu, action->text()), menu->actionGeometry(action).size());
        if (action->menu())
            CheckMenu(action->menu());
    }
}

void TextFitCheck::CheckDock(const QDockWidget* dock)
{
    if (dock->titleBarWidget())
        return;
    QStyleOptionDockWidget option;
    (dock->*(&DockAccess::initStyleOption))(&option);
    const QRect title = dock->style()->subElementRect(QStyle::SE_DockWidgetTitleBarText, &option, dock);
    Compare(dock, dock->windowTitle(), GetTextSize(dock, dock->windowTitle()), title.size());
}

} // namespace

QStringList FindCutTexts(QWidget* window)
{
    return TextFitCheck().Run(window);
}
