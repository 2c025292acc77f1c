// Icons by name.

#pragma once

#include <QIcon>
#include <QString>

/// The icon of that name from the host's resources; a general one for an unknown name, none for an empty
/// name. All are drawn in colours that show on light and dark grounds.
QIcon ZORHostIcon(const QString& name);
