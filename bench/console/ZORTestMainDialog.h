// The bench's main window, the console.

#pragma once

#include "core/ZORTestingGlobal.h"

#include <QMainWindow>

#include <memory>

class QAction;
class ZORGeoGeometry;
class ZORTestMainDialogPrivate;

/// Runs every operation of the bench from its menus and shows what the SDK's environment holds: the
/// container's geometries, the visualizations shown from here, recorded stack traces and features.
///
/// Works on the feature environment that is current when it is constructed; one must be. Deletes itself
/// on close and with it its test environment, every command started from it and what it displays.
class ZORTESTING_EXPORT ZORTestMainDialog : public QMainWindow
{
    Q_OBJECT

public:
    explicit ZORTestMainDialog(QWidget* parent = nullptr);
    ~ZORTestMainDialog() override;

public slots:
    /// Runs the class named by the action's property "command".
    void OnMenuTriggered(QAction* action);

    /// Lists the container's geometries of the chosen class again; the current row is lost.
    void RefreshContainer();
    void VisualizeSelectedGeo();
    void InspectSelectedGeo();
    /// Deletes the current geometry when it is a feature or nothing refers to it.
    void DeleteSelectedGeo();

    void RefreshVisualization();
    void EditSelectedVis();
    void RemoveSelectedVis();
    void RemoveAllVis();
    /// Shows what the SDK's debug visualization holds now, or hides it, as the check box says.
    void UpdateDebugVis();
    /// Empties the SDK's debug visualization; what is shown of it stays until the next UpdateDebugVis().
    void RemoveDebugVis();

    void RefreshStackLabels();
    void RefreshStackTraces();
    void RefreshStackTrace();
    void ClearLabelTraces();
    void ClearAllTraces();

    /// Transactions have no effect yet.
    void BeginTransaction();
    void EndTransaction();

private:
    void Connect();
    void Visualize(ZORGeoGeometry* geometry);
    void ShowError(const QString& message);

    const std::unique_ptr<ZORTestMainDialogPrivate> d;
};
