// Test dialog "Create Topological Surface".

#pragma once

#include "operations/ZORTestCreateTopDlg.h"

/// Adds the body of a surface, divided into faces where it turns.
class ZORTestCreateTopSurfaceDlg final : public ZORTestCreateTopDlg
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Topological Surface"))
    Q_CLASSINFO("createdTypes", "ZORTopBody")
    Q_CLASSINFO("bodyDim", "2")

public:
    Q_INVOKABLE explicit ZORTestCreateTopSurfaceDlg(ZORTestEnvironment* environment);

    bool Apply() override;
};
