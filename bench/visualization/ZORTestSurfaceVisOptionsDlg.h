// Dialog that asks how a surface shall be drawn.

#pragma once

#include "visualization/ZORTestVisOptionsDlg.h"

#include <ZORVisualization/ZORVisOptions.h>

#include <memory>

namespace Ui {
class ZORTestSurfaceVisOptionsDlg;
}

/// Settings group "Debug/Visualization/Surface": "Color", "Wireframe".
class ZORTestSurfaceVisOptionsDlg final : public ZORTestVisOptionsDlg
{
    Q_OBJECT

public:
    explicit ZORTestSurfaceVisOptionsDlg(ZORTestEnvironment* environment);
    ~ZORTestSurfaceVisOptionsDlg() override;

    /// The colour.
    ZORVisOptions GetOptions() const;
    bool IsWireframe() const;

public slots:
    /// Keeps the values in the settings and accepts the dialog.
    void OnOKClicked();

private:
    const std::unique_ptr<Ui::ZORTestSurfaceVisOptionsDlg> m_ui;
};
