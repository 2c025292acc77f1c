// Command that creates projections.

#pragma once

#include "ZORStdDialogCommand.h"

/// Asks for a point or a curve and a surface, and creates a ZORWFProjection. Geometry that is no feature gets a raw
/// feature to be an input.
class ZORWFProjectionCmd final : public ZORStdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORWFProjectionCmd(QObject* parent);

protected:
    ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                               QWidget* parent) const override;
};
