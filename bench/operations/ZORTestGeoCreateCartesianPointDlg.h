// Test dialog "Create Cartesian Point".

#pragma once

#include "core/ZORTestDialog.h"

class ZORCmnUnitSpinBox;

/// Adds a free point to the container.
class ZORTestGeoCreateCartesianPointDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Cartesian Point"))
    Q_CLASSINFO("createdTypes", "ZORGeoPoint")

public:
    Q_INVOKABLE explicit ZORTestGeoCreateCartesianPointDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORCmnUnitSpinBox* m_xSpin = nullptr;
    ZORCmnUnitSpinBox* m_ySpin = nullptr;
    ZORCmnUnitSpinBox* m_zSpin = nullptr;
};
