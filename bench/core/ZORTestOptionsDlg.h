// Form of the SDK's debug options.

#pragma once

#include "core/ZORTestingGlobal.h"

#include <QDialog>

#include <memory>

namespace Ui {
class ZORTestOptionsDlg;
}

/// Shows the debug options that the SDK holds and writes them back on OnOkClicked(). The dialog keeps
/// nothing itself and has no buttons to accept or cancel: those belong to the frame around it.
class ZORTESTING_EXPORT ZORTestOptionsDlg : public QDialog
{
    Q_OBJECT

public:
    /// Builds the form and fills it from the SDK. Stack lengths above 99 frames show as 99.
    explicit ZORTestOptionsDlg(QWidget* parent);
    ~ZORTestOptionsDlg() override;

public slots:
    /// Writes every option to the SDK, then closes.
    void OnOkClicked();
    /// Asks for the dump file; cancelling empties the field. Started by name, not by the "..." button.
    void OnContainerDumpFileClicked();

private:
    const std::unique_ptr<Ui::ZORTestOptionsDlg> m_ui;
};
