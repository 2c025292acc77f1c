#include "window/ZORHostThemeMenu.h"

#include "base/ZORHostSettings.h"
#include "base/ZORHostTheme.h"

#include <QActionGroup>
#include <QMenu>

#include <tuple>

ZORHostThemeMenu::ZORHostThemeMenu(QMenu* menu)
    : QObject(menu)
    , m_actions(new QActionGroup(this))
{
    QMenu* themes = menu->addMenu(tr("T&heme"));
    themes->setObjectName("_ThemeMenu");
    const std::tuple<ZORHostOptions::Theme, QString, QString> choices[] = {
        {ZORHostOptions::Theme::System, tr("&System"), tr("Takes the colors of the desktop")},
        {ZORHostOptions::Theme::Light, tr("&Light"), tr("Dark texts on light grounds")},
        {ZORHostOptions::Theme::Dark, tr("&Dark"), tr("Light texts on dark grounds")}};
    for (const auto& [theme, text, tip] : choices) {
        QAction* action = m_actions->addAction(text);
        action->setObjectName(QStringLiteral("_Theme_%1").arg(ZORHostTheme::ToName(theme)));
        action->setCheckable(true);
        action->setChecked(theme == ZORHostOptions::Theme::System);
        action->setToolTip(tip);
        action->setStatusTip(tip);
        connect(action, &QAction::triggered, this, [this, chosen = theme] {
            SetTheme(chosen);
            m_kept = ZORHostTheme::ToName(chosen);
        });
        themes->addAction(action);
    }
}

void ZORHostThemeMenu::SetTheme(ZORHostOptions::Theme theme)
{
    ZORHostTheme::Apply(theme);
    const QString name = QStringLiteral("_Theme_%1").arg(ZORHostTheme::ToName(theme));
    const QList<QAction*> actions = m_actions->actions();
    for (QAction* action : actions)
        action->setChecked(action->objectName() == name);
}

void ZORHostThemeMenu::RestoreSettings()
{
    const ZORHostOptions::Theme theme = ZORHostTheme::FromName(ZORHostSettings::Read("Theme").toString());
    SetTheme(theme);
    m_kept = ZORHostTheme::ToName(theme);
}

void ZORHostThemeMenu::SaveSettings() const
{
    if (!m_kept.isEmpty())
        ZORHostSettings::Write("Theme", m_kept);
}
