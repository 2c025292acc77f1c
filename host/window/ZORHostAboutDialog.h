// The about box.

#pragma once

#include <QDialog>

class ZORHostPluginManager;

/// Shows the versions of host, SDK, Qt and plug-ins, what draws the 3D view, and the acknowledgements of the
/// works of others that the program contains.
class ZORHostAboutDialog : public QDialog
{
    Q_OBJECT

public:
    ZORHostAboutDialog(const ZORHostPluginManager& plugins, QWidget* parent);
};
