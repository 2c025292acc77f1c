// Dialog that asks how a point shall be drawn.

#pragma once

#include "visualization/ZORTestVisOptionsDlg.h"

#include <ZORVisualization/ZORVisOptions.h>

#include <memory>

namespace Ui {
class ZORTestPointVisOptionsDlg;
}

/// Settings group "Debug/Visualization/Point": "Color", "Symbol" (index).
class ZORTestPointVisOptionsDlg final : public ZORTestVisOptionsDlg
{
    Q_OBJECT

public:
    explicit ZORTestPointVisOptionsDlg(ZORTestEnvironment* environment);
    ~ZORTestPointVisOptionsDlg() override;

    /// Colour and point symbol.
    ZORVisOptions GetOptions() const;

public slots:
    /// Keeps the values in the settings and accepts the dialog.
    void OnOKClicked();

private:
    const std::unique_ptr<Ui::ZORTestPointVisOptionsDlg> m_ui;
};
