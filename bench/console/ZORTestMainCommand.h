// Host command "SDK Test".

#pragma once

#include <ZORCommand/ZORCmdCommand.h>

/// Opens a console and ends at once; the console lives on by itself.
class ZORTestMainCommand final : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORTestMainCommand(QObject* parent);

    void Start() override;
};
