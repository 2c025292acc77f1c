#include "base/ZORHostTheme.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QToolTip>

namespace {

void SetTextColors(QPalette& palette, const QColor& text, const QColor& disabled)
{
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::ToolTipText, text);
}

QPalette LightPalette()
{
    QPalette palette(QColor(0xef, 0xf0, 0xf2), QColor(0xef, 0xf0, 0xf2));
    SetTextColors(palette, {0x1d, 0x20, 0x24}, {0x8c, 0x90, 0x96});
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf6, 0xf8));
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xff));
    palette.setColor(QPalette::Highlight, QColor(0x1f, 0x62, 0xb4));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x1a, 0x56, 0xa0));
    palette.setColor(QPalette::PlaceholderText, QColor(0x6a, 0x6f, 0x76));
    return palette;
}

QPalette DarkPalette()
{
    QPalette palette(QColor(0x44, 0x48, 0x4f), QColor(0x3c, 0x3f, 0x45));
    SetTextColors(palette, {0xe8, 0xea, 0xed}, {0x7d, 0x83, 0x8b});
    palette.setColor(QPalette::Base, QColor(0x22, 0x24, 0x27));
    palette.setColor(QPalette::AlternateBase, QColor(0x29, 0x2c, 0x30));
    palette.setColor(QPalette::ToolTipBase, QColor(0x22, 0x24, 0x27));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xc0));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::BrightText, QColor(0xff, 0x8a, 0x80));
    palette.setColor(QPalette::Link, QColor(0x7c, 0xb3, 0xf5));
    palette.setColor(QPalette::PlaceholderText, QColor(0x9a, 0xa0, 0xa8));
    return palette;
}

/// Fusion with a separate palette.
///
/// A palette that is set at the application instead is copied by Qt into each widget, and Qt draws and keeps
/// the parts of widgets once for each copy: every new window would be drawn again, and Qt 6.4 never forgets the
/// names of what it has kept. All widgets share the palette of the style.
class ThemeStyle : public QProxyStyle
{
public:
    /// \param palette  without colors that count as set on purpose
    explicit ThemeStyle(const QPalette& palette)
        : QProxyStyle(QStyleFactory::create("Fusion"))
        , m_palette(palette)
    {
    }
    using QProxyStyle::polish;
    void polish(QPalette& palette) override { palette = m_palette; }
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const override
    {
        if (which == SP_ToolBarHorizontalExtensionButton || which == SP_ToolBarVerticalExtensionButton)
            return MakeExtensionIcon(which == SP_ToolBarHorizontalExtensionButton);
        if (which == SP_MessageBoxWarning)
            return MakeWarningIcon();
        return QProxyStyle::standardIcon(which, option, widget);
    }

private:
    /// The double arrow behind what a tool bar has no room for, which Qt draws in black on every ground.
    QIcon MakeExtensionIcon(bool isHorizontal) const
    {
        constexpr int kSize = 16, kRatio = 3; // pixels, and those of the densest screens for each
        QPixmap pixmap(kSize * kRatio, kSize * kRatio);
        pixmap.setDevicePixelRatio(kRatio);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(
            QPen(m_palette.color(QPalette::ButtonText), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        if (!isHorizontal)
            painter.setTransform(QTransform(0, 1, 1, 0, 0, 0)); // points down instead of right
        for (const double x : {4.0, 8.5})
            painter.drawPolyline(QPolygonF({{x, 4}, {x + 4, 8}, {x, 12}}));
        return QIcon(pixmap);
    }

    /// A triangle that stands out on light and dark grounds alike; Qt draws one in light yellow.
    static QIcon MakeWarningIcon()
    {
        QIcon icon;
        for (const int size : {16, 24, 32, 48, 64, 128}) {
            QPixmap pixmap(size, size);
            pixmap.fill(Qt::transparent);
            QPainter painter(&pixmap);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.scale(size / 16.0, size / 16.0);
            const QColor amber(0xc5, 0x76, 0x29);
            painter.setPen(QPen(amber, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
            painter.setBrush(amber);
            painter.drawPolygon(QPolygonF({{8, 2}, {14.5, 14}, {1.5, 14}}));
            painter.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(QPointF(8, 6), QPointF(8, 9.5));
            painter.drawPoint(QPointF(8, 13));
            icon.addPixmap(pixmap);
        }
        return icon;
    }

    const QPalette m_palette;
};

/// The same colors as defaults, which widgets need not copy to keep them.
QPalette ToDefaults(QPalette palette)
{
    palette.setResolveMask({});
    return palette;
}

} // namespace

void ZORHostTheme::Apply(ZORHostOptions::Theme theme)
{
    static const QString systemStyle = QApplication::style()->name();
    if (theme == ZORHostOptions::Theme::System) {
        if (QApplication::style()->name() != systemStyle)
            QApplication::setStyle(QStyleFactory::create(systemStyle));
        QApplication::setPalette(QPalette());
        QToolTip::setPalette(QPalette());
        return;
    }
    // Made once: what Qt has drawn with a palette serves again when the theme returns.
    static const QPalette light = LightPalette();
    static const QPalette dark = DarkPalette();
    static const QPalette lightDefaults = ToDefaults(light);
    static const QPalette darkDefaults = ToDefaults(dark);
    const bool isDark = theme == ZORHostOptions::Theme::Dark;
    QApplication::setStyle(new ThemeStyle(isDark ? darkDefaults : lightDefaults)); // owned by the application
    QApplication::setPalette(QPalette());
    QToolTip::setPalette(isDark ? dark : light);
}

bool ZORHostTheme::IsDark(const QPalette& palette)
{
    return palette.color(QPalette::WindowText).lightnessF() > palette.color(QPalette::Window).lightnessF();
}

QString ZORHostTheme::ToName(ZORHostOptions::Theme theme)
{
    switch (theme) {
    case ZORHostOptions::Theme::Light:
        return "light";
    case ZORHostOptions::Theme::Dark:
        return "dark";
    case ZORHostOptions::Theme::System:
        break;
    }
    return "system";
}

ZORHostOptions::Theme ZORHostTheme::FromName(const QString& name)
{
    if (name == QLatin1String("light"))
        return ZORHostOptions::Theme::Light;
    return name == QLatin1String("dark") ? ZORHostOptions::Theme::Dark : ZORHostOptions::Theme::System;
}
