// Dialog that asks how a curve shall be drawn.

#pragma once

#include "visualization/ZORTestVisOptionsDlg.h"

#include <ZORVisualization/ZORVisOptions.h>

#include <memory>

namespace Ui {
class ZORTestCurveVisOptionsDlg;
}

/// Settings group "Debug/Visualization/Curve": "Style" and "Width" (indexes), "Lines", "PointIdx", "Color".
class ZORTestCurveVisOptionsDlg final : public ZORTestVisOptionsDlg
{
    Q_OBJECT

public:
    explicit ZORTestCurveVisOptionsDlg(ZORTestEnvironment* environment);
    ~ZORTestCurveVisOptionsDlg() override;

    /// Colour, line style and line thickness.
    ZORVisOptions GetOptions() const;
    /// True for lines, false for points.
    bool IsDrawLines() const;
    bool IsShowPointIndexes() const;

public slots:
    /// Keeps the values in the settings and accepts the dialog.
    void OnOKClicked();

private:
    const std::unique_ptr<Ui::ZORTestCurveVisOptionsDlg> m_ui;
};
