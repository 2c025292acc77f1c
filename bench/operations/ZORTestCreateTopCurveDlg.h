// Test dialog "Create Topological Curve".

#pragma once

#include "operations/ZORTestCreateTopDlg.h"

/// Adds the body of a curve, divided into edges where it turns.
class ZORTestCreateTopCurveDlg final : public ZORTestCreateTopDlg
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Topological Curve"))
    Q_CLASSINFO("createdTypes", "ZORTopBody")
    Q_CLASSINFO("bodyDim", "1")

public:
    Q_INVOKABLE explicit ZORTestCreateTopCurveDlg(ZORTestEnvironment* environment);

    bool Apply() override;
};
