// Command that edits the material library.

#pragma once

#include "ZORStdDialogCommand.h"

/// Edits the materials of the composites root in a table: add, remove, and change names and properties.
class ZORCompMaterialLibraryCmd final : public ZORStdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORCompMaterialLibraryCmd(QObject* parent);

protected:
    ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                               QWidget* parent) const override;
};
