// Test dialog "Create WF Raw Curve".

#pragma once

#include "operations/ZORTestCreateWFRawDlg.h"

/// Adds a raw curve around a curve of the container to a feature folder.
class ZORTestCreateWFRawCurveDlg final : public ZORTestCreateWFRawDlg
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create WF Raw Curve"))

public:
    Q_INVOKABLE explicit ZORTestCreateWFRawCurveDlg(ZORTestEnvironment* environment);

    bool Apply() override;
};
