// Base of the commands of this library.

#pragma once

#include <ZORCommand/ZORCmdDialogCommand.h>

class ZORFeatEnvironment;
class ZORFeatObject;
class ZORStdContent;

/// A dialog for the environment that is current when the command starts. It ends without a commit when that
/// environment does. Started for an object, it shows the values of the object and changes it instead of creating one.
class ZORStdDialogCommand : public ZORCmdDialogCommand
{
    Q_OBJECT

public:
    /// \throws ZORSysException "there is no current environment", "the object is not in the current document", and as the
    ///         base
    void Start() override;

    QWidget* CreateContent(QWidget* parent) override;
    void Commit() override;

protected:
    /// \param editTitle  of the dialog when it edits an object; empty for that of the action
    explicit ZORStdDialogCommand(QObject* parent, const QString& editTitle = {});

    /// \param edited  to be changed by the content; null: it creates an object
    /// \return owned by \a parent
    virtual ZORStdContent* MakeContent(ZORFeatEnvironment* environment, ZORFeatObject* edited,
                                       QWidget* parent) const = 0;

private:
    ZORFeatObject* GetEditedFeature() const;

    const QString m_editTitle;
    QString m_helpTopic;                         // of an editor
    ZORFeatEnvironment* m_environment = nullptr; // not owned
};
