// Dialog for the stack traces of one geometry.

#pragma once

#include <QDialog>
#include <QPointer>

#include <memory>

class ZORGeoGeometry;
namespace Ui {
class ZORTestGeoInspectionDlg;
}

/// Form for the traces recorded when a geometry was constructed and referenced. Nothing fills the two
/// areas so far. Closing only hides the dialog.
class ZORTestGeoInspectionDlg : public QDialog
{
    Q_OBJECT

public:
    explicit ZORTestGeoInspectionDlg(QWidget* parent);
    ~ZORTestGeoInspectionDlg() override;

    /// Inspects \a geometry from now on, in place of an earlier one.
    /// \param geometry  not owned, may be destroyed at any time
    void SetGeometry(ZORGeoGeometry* geometry);
    /// Null when none was set or it is gone.
    ZORGeoGeometry* GetGeometry() const;

public slots:
    /// Has no effect yet.
    void OnRemRefChange();
    /// Shows the current reference trace.
    void OnRefTraceChange();

private:
    const std::unique_ptr<Ui::ZORTestGeoInspectionDlg> m_ui;
    QPointer<ZORGeoGeometry> m_geometry;
};
