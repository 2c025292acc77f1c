// Icons by name.

#pragma once

#include <QIcon>
#include <QString>

/// The icon of that name from the host's resources or from the resource folder ":/zorsdk/icons", to which plug-ins
/// add their own; a general one for an unknown name, none for an empty name. All are drawn in colours that show on
/// light and dark grounds. Icons stay whole when the plug-in that has added them is unloaded.
QIcon ZORHostIcon(const QString& name);
