#include "support/WindowInspector.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QGroupBox>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTextEdit>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace {

constexpr double leastContrast = 4.5;

double Luminance(const QColor& color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

class Inspector
{
public:
    explicit Inspector(QWidget* window)
        : m_window(window)
        , m_picture(window->grab().toImage())
    {
    }

    QStringList Run()
    {
        Inspect(m_window);
        const QWidgetList widgets = m_window->findChildren<QWidget*>();
        for (QWidget* widget : widgets) {
            if (widget->isVisibleTo(m_window) && widget->window() == m_window && !widget->size().isEmpty())
                Inspect(widget);
        }
        return m_faults;
    }

private:
    void Inspect(QWidget* widget)
    {
        CheckName(widget);
        if (auto* label = qobject_cast<QLabel*>(widget))
            InspectLabel(label);
        else if (auto* button = qobject_cast<QAbstractButton*>(widget))
            InspectButton(button);
        else if (auto* combo = qobject_cast<QComboBox*>(widget))
            InspectCombo(combo);
        else if (auto* tabs = qobject_cast<QTabBar*>(widget))
            InspectTabs(tabs);
        else if (auto* header = qobject_cast<QHeaderView*>(widget))
            InspectHeader(header);
        else if (auto* box = qobject_cast<QGroupBox*>(widget))
            CheckRoom(box, box->title(), TextWidth(box, box->title()), box->width());
        else if (auto* edit = qobject_cast<QLineEdit*>(widget))
            InspectEdit(edit);
        else if (auto* bar = qobject_cast<QMenuBar*>(widget))
            InspectMenuBar(bar);
        else if (auto* dock = qobject_cast<QDockWidget*>(widget))
            CheckRoom(dock, dock->windowTitle(), TextWidth(dock, dock->windowTitle()), dock->width() - 40);
    }

    /// What takes the keyboard has a name that assistive tools can say: a text, a label as buddy, or an accessible
    /// name.
    void CheckName(QWidget* widget)
    {
        const bool takesInput = qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget)
                                || qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QTextEdit*>(widget)
                                || qobject_cast<QPlainTextEdit*>(widget)
                                || qobject_cast<QAbstractItemView*>(widget)
                                || qobject_cast<QAbstractButton*>(widget);
        const bool isInnerPart = qobject_cast<QAbstractSpinBox*>(widget->parentWidget())
                                 || qobject_cast<QComboBox*>(widget->parentWidget())
                                 || qobject_cast<QHeaderView*>(widget);
        if (!takesInput || isInnerPart || widget->focusPolicy() == Qt::NoFocus)
            return;
        QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
        const QString name = accessible ? accessible->text(QAccessible::Name) : QString();
        if (name.isEmpty() || name == QLatin1String("..."))
            Report(widget, name, QStringLiteral("is no name for assistive tools"));
    }

    void InspectLabel(QLabel* label)
    {
        if (label->text().isEmpty() || !label->pixmap(Qt::ReturnByValue).isNull())
            return;
        if (label->wordWrap()) {
            const int wanted = label->heightForWidth(label->width());
            if (wanted > label->height())
                Report(label, label->text(),
                       QStringLiteral("needs a height of %1, has %2").arg(wanted).arg(label->height()));
        } else {
            CheckRoom(label, label->text(), label->sizeHint().width(), label->width());
            if (label->sizeHint().height() > label->height() + 1)
                Report(label, label->text(), QStringLiteral("is cut off in its height"));
        }
        CheckContrast(label, label->rect(), label->text());
    }

    void InspectButton(QAbstractButton* button)
    {
        if (button->text().isEmpty())
            return;
        const auto* tool = qobject_cast<const QToolButton*>(button);
        if (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly)
            return;
        const bool hasMark = qobject_cast<QCheckBox*>(button) || qobject_cast<QRadioButton*>(button);
        const int wanted =
            hasMark || tool ? button->sizeHint().width() : TextWidth(button, button->text()) + 4;
        CheckRoom(button, button->text(), wanted, button->width());
        CheckContrast(button, button->rect(), button->text());
    }

    void InspectCombo(QComboBox* combo)
    {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        const int room =
            combo->style()
                ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo)
                .width();
        CheckRoom(combo, combo->currentText(), TextWidth(combo, combo->currentText()), room);
        if (!combo->currentText().isEmpty())
            CheckContrast(combo, combo->rect(), combo->currentText());
    }

    void InspectTabs(QTabBar* tabs)
    {
        for (int i = 0; i < tabs->count(); ++i) {
            CheckRoom(tabs, tabs->tabText(i), TextWidth(tabs, tabs->tabText(i)), tabs->tabRect(i).width());
            CheckContrast(tabs, tabs->tabRect(i), tabs->tabText(i));
        }
        if (tabs->count() > 0 && tabs->tabRect(tabs->count() - 1).right() > tabs->width())
            Report(tabs, tabs->tabText(tabs->count() - 1), QStringLiteral("lies outside the bar"));
    }

    void InspectHeader(QHeaderView* header)
    {
        for (int i = 0; i < header->count(); ++i) {
            if (header->isSectionHidden(i) || header->orientation() == Qt::Vertical)
                continue;
            const QString text = header->model()->headerData(i, header->orientation()).toString();
            CheckRoom(header, text, TextWidth(header, text), header->sectionSize(i));
        }
    }

    void InspectEdit(QLineEdit* edit)
    {
        if (edit->text().isEmpty())
            CheckRoom(edit, edit->placeholderText(), TextWidth(edit, edit->placeholderText()),
                      edit->width() - 4);
    }

    void InspectMenuBar(QMenuBar* bar)
    {
        const QList<QAction*> actions = bar->actions();
        for (QAction* action : actions) {
            const QRect room = bar->actionGeometry(action);
            CheckRoom(bar, action->text(), TextWidth(bar, action->text()), room.width());
            if (room.right() > bar->width())
                Report(bar, action->text(), QStringLiteral("lies outside the bar"));
            CheckContrast(bar, room, action->text());
        }
    }

    static int TextWidth(const QWidget* widget, const QString& text)
    {
        return widget->fontMetrics().size(Qt::TextShowMnemonic, text).width();
    }

    void CheckRoom(const QWidget* widget, const QString& text, int wanted, int room)
    {
        if (!text.isEmpty() && wanted > room)
            Report(widget, text, QStringLiteral("needs a width of %1, has %2").arg(wanted).arg(room));
    }

    /// The colour that is there most is the ground; the one that contrasts most with it is taken for the text.
    void CheckContrast(const QWidget* widget, const QRect& rect, const QString& text)
    {
        if (!widget->isEnabled())
            return;
        const double ratio = m_picture.devicePixelRatio();
        const QPoint corner = widget->mapTo(m_window, rect.topLeft());
        const QRect pixels(corner * ratio, rect.size() * ratio);
        const QRect visible = pixels.intersected(m_picture.rect());
        QHash<QRgb, int> counts;
        for (int y = visible.top(); y <= visible.bottom(); ++y) {
            for (int x = visible.left(); x <= visible.right(); ++x)
                ++counts[m_picture.pixel(x, y)];
        }
        if (counts.isEmpty())
            return;
        const auto ground = std::max_element(counts.cbegin(), counts.cend());
        double best = 1;
        for (auto color = counts.cbegin(); color != counts.cend(); ++color)
            best = std::max(best, GetContrast(QColor(color.key()), QColor(ground.key())));
        if (best < leastContrast)
            Report(widget, text, QStringLiteral("has a contrast of %1 : 1 only").arg(best, 0, 'f', 1));
    }

    void Report(const QWidget* widget, const QString& text, const QString& fault)
    {
        m_faults.append(QStringLiteral("'%1': the text '%2' of %3 (%4) %5")
                            .arg(m_window->windowTitle(), text,
                                 QString::fromLatin1(widget->metaObject()->className()), widget->objectName(),
                                 fault));
    }

    QWidget* m_window;
    QImage m_picture;
    QStringList m_faults;
};

} // namespace

double GetContrast(const QColor& a, const QColor& b)
{
    const double first = Luminance(a);
    const double second = Luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QStringList InspectWindow(QWidget* window)
{
    return Inspector(window).Run();
}
