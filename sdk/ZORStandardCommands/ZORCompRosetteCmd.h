// Command that creates rosettes.

#pragma once

#include "ZORStdDialogCommand.h"

/// Asks for an origin, an X direction and a normal or a surface, and creates a ZORCompRosette.
class ZORCompRosetteCmd final : public ZORStdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORCompRosetteCmd(QObject* parent);

protected:
    ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                               QWidget* parent) const override;
};
