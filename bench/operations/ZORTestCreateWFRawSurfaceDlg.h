// Test dialog "Create WF Raw Surface".

#pragma once

#include "operations/ZORTestCreateWFRawDlg.h"

/// Adds a raw surface around a surface of the container to a feature folder.
class ZORTestCreateWFRawSurfaceDlg final : public ZORTestCreateWFRawDlg
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create WF Raw Surface"))

public:
    Q_INVOKABLE explicit ZORTestCreateWFRawSurfaceDlg(ZORTestEnvironment* environment);

    bool Apply() override;
};
