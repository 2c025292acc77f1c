// Window "Results" of a nesting run.

#pragma once

#include <ZORNesting/ZORNestResult.h>

#include <QDialog>
#include <QPointer>

#include <memory>

class ZORTestEnvironment;
class ZORTestReportView;
class ZORVisVirtualObject;
namespace Ui {
class ZORTestNestNestingResultDlg;
}

/// Shows the report of a run, and one of its sheets in the 3D view.
///
/// A window of its own that deletes itself when it is closed: it outlives the dialog of the run, the console and
/// its environment. The drawing of the sheet leaves the view with it.
class ZORTestNestNestingResultDlg final : public QDialog
{
    Q_OBJECT

public:
    /// Draws in the visual environment to which \a environment is bound; in none when that is null.
    /// \param parent  not used
    ZORTestNestNestingResultDlg(QWidget* parent, ZORTestEnvironment* environment);
    ~ZORTestNestNestingResultDlg() override;

    /// Replaces what is shown, and draws the first sheet.
    /// \param report      HTML within Qt's subset, UTF-8
    /// \param sheetFiles  result files; one that cannot be read is a sheet without a drawing
    void SetData(const QByteArray& report, const QList<QByteArray>& sheetFiles);

public slots:
    /// Draws the chosen sheet in place of the one before; nothing when there is none.
    void OnSheetSelected();

private:
    const std::unique_ptr<Ui::ZORTestNestNestingResultDlg> m_ui;
    ZORTestReportView* m_report = nullptr;  // child of the text edit
    QList<ZORNestResult> m_results;         // in the order of the sheets
    QPointer<ZORVisVirtualObject> m_object; // owned, unless its environment has died
};
