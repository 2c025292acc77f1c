// Test dialog "Course Smoothing".

#pragma once

#include "core/ZORTestDialog.h"

class ZORCmnUnitSpinBox;
class ZORTestGeometrySelector;

/// Gives a course a minimum radius. The course changes in place.
class ZORTestTPCourseSmoothingDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Smooth Course"))

public:
    Q_INVOKABLE explicit ZORTestTPCourseSmoothingDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_courseSel = nullptr;
    ZORCmnUnitSpinBox* m_radiusSpin = nullptr;
};
