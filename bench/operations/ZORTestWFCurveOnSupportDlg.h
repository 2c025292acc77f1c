// Test dialog "Curve on Support".

#pragma once

#include "core/ZORTestDialog.h"

#include <QList>

#include <memory>
#include <optional>

class ZORFeatGeometry;
class ZORTestGeometrySelector;
namespace Ui {
class ZORTestWFCurveOnSupportDlg;
}

/// Adds a curve on support to a feature folder.
///
/// Settings group "Debug/WFCurveOnSupport": "Type" (index), "UseStartLen", "UseEndLen", "Flip", "StartLen" and
/// "EndLen" (millimetres, written where they are used), all by every OK; "Angle" (radians) by an OK that finds
/// the support and the points valid.
class ZORTestWFCurveOnSupportDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Curve on Support"))

public:
    Q_INVOKABLE explicit ZORTestWFCurveOnSupportDlg(ZORTestEnvironment* environment);
    ~ZORTestWFCurveOnSupportDlg() override;

    bool Apply() override;

private slots:
    void OnTypeChanged(int type);

private:
    void ReadSettings();
    void WriteSettings() const;
    void WriteAngle() const;
    /// The selection of a list of limits; none after \a message was shown.
    std::optional<QList<ZORFeatGeometry*>> RequireLimits(const ZORTestGeometrySelector* selector,
                                                         const QString& message);

    const std::unique_ptr<Ui::ZORTestWFCurveOnSupportDlg> m_ui;
};
