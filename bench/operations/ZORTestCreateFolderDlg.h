// Test dialog "Create Folder".

#pragma once

#include "core/ZORTestDialog.h"

class QLineEdit;
class ZORTestGeometrySelector;

/// Adds a folder to a feature folder, with a label if one is given.
class ZORTestCreateFolderDlg final : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("label", QT_TR_NOOP("Create Folder"))

public:
    Q_INVOKABLE explicit ZORTestCreateFolderDlg(ZORTestEnvironment* environment);

    bool Apply() override;

private:
    ZORTestGeometrySelector* m_parentSel = nullptr;
    QLineEdit* m_labelEdit = nullptr;
};
