// State of the console.

#pragma once

#include "console/ZORTestContainerBrowser.h"
#include "console/ZORTestDebugVisualization.h"
#include "console/ZORTestStackBrowser.h"
#include "console/ZORTestVisualizationList.h"
#include "core/ZORTestEnvironment.h"
#include "ui_ZORTestMainDialog.h"

#include <QPointer>

#include <optional>

class ZORTestGeoInspectionDlg;

/// The environment and the form come first: the panels use them, and go before them.
class ZORTestMainDialogPrivate
{
public:
    ZORTestEnvironment environment;
    Ui::ZORTestMainDialog ui;
    std::optional<ZORTestContainerBrowser> containerBrowser;
    std::optional<ZORTestVisualizationList> visualizationList;
    std::optional<ZORTestDebugVisualization> debugVisualization;
    std::optional<ZORTestStackBrowser> stackBrowser;
    QPointer<ZORTestGeoInspectionDlg> inspectionDialog; // child of the console
    QList<QMetaObject::Connection> environmentConnections;
};
