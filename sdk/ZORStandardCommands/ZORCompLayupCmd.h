// Command that creates layups.

#pragma once

#include "ZORStdDialogCommand.h"

/// Asks for a surface, a rosette and a stack of plies, and creates a ZORCompLayup with one sequence of them.
class ZORCompLayupCmd final : public ZORStdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORCompLayupCmd(QObject* parent);

protected:
    ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                               QWidget* parent) const override;
};
