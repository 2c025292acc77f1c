// Base of the commands of this library.

#pragma once

#include <ZORCommand/ZORCmdDialogCommand.h>

class ZORFeatEnvironment;
class ZORStdContent;

/// A dialog for the environment that is current when the command starts. It ends without a commit when that
/// environment does.
class ZORStdDialogCommand : public ZORCmdDialogCommand
{
    Q_OBJECT

public:
    /// \throws ZORSysException "there is no current environment" and as the base
    void Start() override;

    QWidget* CreateContent(QWidget* parent) override;
    void Commit() override;

protected:
    explicit ZORStdDialogCommand(QObject* parent);

    /// \return owned by \a parent
    virtual ZORStdContent* MakeContent(ZORFeatEnvironment* environment, QWidget* parent) const = 0;

private:
    ZORFeatEnvironment* m_environment = nullptr; // not owned
};
