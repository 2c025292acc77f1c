// Command that creates draping strategies.

#pragma once

#include "ZORStdDialogCommand.h"

/// Asks for the parameters of a ZORCompStrategy and creates it; where a surface is chosen, it is draped by the strategy:
/// a ZORCompDrapingLayer.
class ZORCompStrategyCmd final : public ZORStdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORCompStrategyCmd(QObject* parent);

protected:
    ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                               QWidget* parent) const override;
};
