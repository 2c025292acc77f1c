#include "WindowChecks.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTextEdit>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr double kRequiredContrast = 4.5;

/// The colour that covers most of an area of the painted window; coarse steps, so that gradients count as one.
QColor GetBackground(const QImage& image)
{
    QHash<QRgb, QPair<int, QRgb>> counts; // coarse colour -> number, first exact colour
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            auto& entry = counts[line[x] & 0xfff8f8f8];
            entry.first += 1;
            entry.second = line[x];
        }
    }
    const auto most = std::max_element(counts.cbegin(), counts.cend(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second < b.second;
    });
    return most == counts.cend() ? QColor() : QColor::fromRgb(most->second);
}

QColor Blend(const QColor& above, const QColor& below)
{
    const double alpha = above.alphaF();
    return QColor::fromRgbF(float(above.redF() * alpha + below.redF() * (1 - alpha)),
                            float(above.greenF() * alpha + below.greenF() * (1 - alpha)),
                            float(above.blueF() * alpha + below.blueF() * (1 - alpha)));
}

class ContrastCheck
{
public:
    explicit ContrastCheck(QWidget* window)
        : m_window(window)
        , m_image(window->grab().toImage().convertToFormat(QImage::Format_RGB32))
    {
    }

    QStringList Run()
    {
        const QList<QWidget*> widgets = GetVisibleWidgets(m_window);
        for (const QWidget* widget : widgets) {
            if (widget->isEnabled())
                Check(widget);
        }
        const QPalette toolTip = QToolTip::palette();
        Compare(QStringLiteral("tool tips"), toolTip.color(QPalette::ToolTipText),
                toolTip.color(QPalette::ToolTipBase));
        return m_problems;
    }

private:
    void Check(const QWidget* widget);

    void CheckPainted(const QWidget* widget, QPalette::ColorRole role, const QString& text)
    {
        const QColor background = GetPainted(widget, widget->rect());
        if (background.isValid())
            Compare(Describe(widget, text), widget->palette().color(role), background);
    }
    /// The background of texts in item views and editors, and of what is selected in them.
    void CheckEditor(const QWidget* widget)
    {
        const QPalette palette = widget->palette();
        Compare(Describe(widget), palette.color(QPalette::Text), palette.color(QPalette::Base));
        Compare(Describe(widget) + QStringLiteral(", selected"), palette.color(QPalette::HighlightedText),
                palette.color(QPalette::Highlight));
    }
    void CheckPlaceholder(const QWidget* widget, const QString& text)
    {
        if (!text.isEmpty()) {
            Compare(Describe(widget, text), widget->palette().color(QPalette::PlaceholderText),
                    widget->palette().color(QPalette::Base));
        }
    }

    QColor GetPainted(const QWidget* widget, const QRect& rect) const
    {
        const double ratio = m_image.devicePixelRatio();
        const QRect place(widget->mapTo(m_window, rect.topLeft()) * ratio, rect.size() * ratio);
        return GetBackground(m_image.copy(place.intersected(m_image.rect())));
    }
    void Compare(const QString& what, const QColor& text, const QColor& background)
    {
        const double contrast = GetContrast(Blend(text, background), background);
        if (contrast >= kRequiredContrast)
            return;
        m_problems.append(
            QStringLiteral("%1: %2 on %3 is %4 : 1")
                .arg(what, text.name(QColor::HexArgb), background.name(), QString::number(contrast, 'f', 2)));
    }

    QWidget* m_window;
    QImage m_image;
    QStringList m_problems;
};

void ContrastCheck::Check(const QWidget* widget)
{
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        if (!label->text().isEmpty())
            CheckPainted(label, label->foregroundRole(), label->text());
    } else if (const auto* pushButton = qobject_cast<const QPushButton*>(widget)) {
        if (!pushButton->text().isEmpty())
            CheckPainted(pushButton, QPalette::ButtonText, pushButton->text());
    } else if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) {
        if (!button->text().isEmpty() && button->icon().isNull())
            CheckPainted(button, button->foregroundRole(), button->text());
    } else if (const auto* groupBox = qobject_cast<const QGroupBox*>(widget)) {
        CheckPainted(groupBox, QPalette::WindowText, groupBox->title());
    } else if (const auto* tabBar = qobject_cast<const QTabBar*>(widget)) {
        for (int tab = 0; tab < tabBar->count(); ++tab) {
            Compare(Describe(tabBar, tabBar->tabText(tab)), tabBar->palette().color(QPalette::WindowText),
                    GetPainted(tabBar, tabBar->tabRect(tab)));
        }
    } else if (const auto* header = qobject_cast<const QHeaderView*>(widget)) {
        CheckPainted(header, QPalette::ButtonText, {});
    } else if (const auto* menuBar = qobject_cast<const QMenuBar*>(widget)) {
        CheckPainted(menuBar, QPalette::WindowText, {});
        Compare(Describe(menuBar) + QStringLiteral(", highlighted"),
                menuBar->palette().color(QPalette::HighlightedText),
                menuBar->palette().color(QPalette::Highlight));
    } else if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
        CheckPainted(combo, QPalette::ButtonText, combo->currentText());
    } else if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) {
        CheckEditor(edit);
        CheckPlaceholder(edit, edit->placeholderText());
    } else if (const auto* text = qobject_cast<const QTextEdit*>(widget)) {
        CheckEditor(text);
        CheckPlaceholder(text, text->placeholderText());
    } else if (const auto* plain = qobject_cast<const QPlainTextEdit*>(widget)) {
        CheckEditor(plain);
        CheckPlaceholder(plain, plain->placeholderText());
    } else if (qobject_cast<const QAbstractItemView*>(widget)) {
        CheckEditor(widget);
    }
}

} // namespace

QStringList FindFaintTexts(QWidget* window)
{
    return ContrastCheck(window).Run();
}
