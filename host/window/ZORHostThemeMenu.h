// The menu that chooses the colors of the windows.

#pragma once

#include "base/ZORHostCommandLine.h"

#include <QObject>
#include <QString>

class QActionGroup;
class QMenu;

/// The menu "Theme". What the user chooses in it is kept by the settings; what SetTheme() chooses lasts for this run.
/// Object names: "_ThemeMenu", "_Theme_system", "_Theme_light" and "_Theme_dark".
class ZORHostThemeMenu : public QObject
{
    Q_OBJECT

public:
    /// \param menu  gets the menu at its end and owns this object
    explicit ZORHostThemeMenu(QMenu* menu);

    void SetTheme(ZORHostOptions::Theme theme);

    /// From and to the settings of the host, "Theme".
    void RestoreSettings();
    void SaveSettings() const;

private:
    QActionGroup* m_actions;
    QString m_kept; // name of the theme that the user chose last; empty before RestoreSettings()
};
