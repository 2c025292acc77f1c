#include "base/ZORHostTheme.h"

#include "HostTest.h"
#include "window/ZORHostNoticeBar.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMap>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace {

using Theme = ZORHostOptions::Theme;

/// A window with widgets inside of each other; counts how often its colors change.
class ThemeWindow : public QWidget
{
public:
    ThemeWindow()
    {
        auto* column = new QVBoxLayout(this);
        auto* group = new QGroupBox("Group", this);
        auto* row = new QVBoxLayout(group);
        row->addWidget(new QPushButton("Button", group));
        row->addWidget(new QComboBox(group));
        column->addWidget(group);
        column->addWidget(new QLabel("Label", this));
        show();
        QCoreApplication::processEvents();
    }

    int numChanges = 0;

protected:
    void changeEvent(QEvent* event) override
    {
        if (event->type() == QEvent::PaletteChange)
            ++numChanges;
        QWidget::changeEvent(event);
    }
};

class ZORHostThemeTest : public HostTest
{
public:
    ~ZORHostThemeTest() override { ZORHostTheme::Apply(Theme::System); }
};

TEST_F(ZORHostThemeTest, OpenWindowsFollowTheThemeAndReturnToTheSystem)
{
    const QPalette before = QApplication::palette();
    ThemeWindow window;
    const auto* button = window.findChild<QPushButton*>();
    const QColor colors[] = {QColor(0x3c, 0x3f, 0x45), QColor(0xef, 0xf0, 0xf2)};
    for (const Theme theme : {Theme::Dark, Theme::Light, Theme::Dark}) {
        window.numChanges = 0;
        ZORHostTheme::Apply(theme);
        QCoreApplication::processEvents();
        const QColor color = colors[theme == Theme::Dark ? 0 : 1];
        EXPECT_EQ(color, QApplication::palette().color(QPalette::Window));
        EXPECT_EQ(color, button->palette().color(QPalette::Window));
        EXPECT_EQ(color, ThemeWindow().palette().color(QPalette::Window));
        EXPECT_LT(0, window.numChanges);
    }
    ZORHostTheme::Apply(Theme::System);
    QCoreApplication::processEvents();
    EXPECT_EQ(before, QApplication::palette());
    EXPECT_EQ(before.color(QPalette::Button), button->palette().color(QPalette::Button));
}

TEST_F(ZORHostThemeTest, ButtonsOfTheNoticeBarFollowTheTheme)
{
    ZORHostNoticeBar bar(nullptr);
    bar.AddMessage("Something is wrong");
    const auto* button = bar.findChild<QPushButton*>("_NoticeCloseBtn");
    for (const Theme theme : {Theme::Dark, Theme::Light, Theme::Dark, Theme::Light}) {
        ZORHostTheme::Apply(theme);
        QCoreApplication::processEvents();
        for (const QPalette::ColorRole role : {QPalette::Button, QPalette::ButtonText, QPalette::Window})
            EXPECT_EQ(QApplication::palette().color(role), button->palette().color(role)) << role;
        const QImage picture = const_cast<QPushButton*>(button)->grab().toImage();
        EXPECT_EQ(theme == Theme::Dark, picture.pixelColor(6, picture.height() / 2).lightness() < 128);
    }
}

TEST_F(ZORHostThemeTest, AllWidgetsShareOnePaletteWhichReturnsWithTheTheme)
{
    QMap<Theme, QSet<qint64>> palettes;
    for (const Theme theme : {Theme::System, Theme::Light, Theme::Dark, Theme::Light, Theme::Dark}) {
        ZORHostTheme::Apply(theme);
        const ThemeWindow window;
        const auto widgets = window.findChildren<QWidget*>();
        EXPECT_LE(4, widgets.size());
        for (const QWidget* widget : widgets)
            palettes[theme].insert(widget->palette().cacheKey());
    }
    for (const Theme theme : {Theme::System, Theme::Light, Theme::Dark})
        EXPECT_EQ(1, palettes[theme].size()) << ZORHostTheme::ToName(theme).toStdString();
}

} // namespace
