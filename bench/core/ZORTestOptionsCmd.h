// Host command "SDK Test Options".

#pragma once

#include <ZORCommand/ZORCmdDialogCommand.h>

/// Shows the SDK's debug options in the host's frame for dialog commands.
class ZORTestOptionsCmd final : public ZORCmdDialogCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit ZORTestOptionsCmd(QObject* parent);

    QWidget* CreateContent(QWidget* parent) override;
    void Commit() override;
};
