// Test dialog "Create Point".

#pragma once

#include "core/ZORTestDialog.h"

class QLineEdit;
class ZORTestGeometrySelector;

/// Adds a raw point to a feature folder. A dialog in spite of its name.
class ZORTestCreatePointCmd final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Point"))

public:
    Q_INVOKABLE explicit ZORTestCreatePointCmd(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    QLineEdit* m_xEdit = nullptr;
    QLineEdit* m_yEdit = nullptr;
    QLineEdit* m_zEdit = nullptr;
    ZORTestGeometrySelector* m_folderSel = nullptr;
};
