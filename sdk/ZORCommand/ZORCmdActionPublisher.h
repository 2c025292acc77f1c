// Publishes the action of a command for as long as it lives.

#pragma once

#include <ZORCommand/ZORCommandGlobal.h>

#include <QString>
#include <QVariantMap>

struct QMetaObject;

/// Usually a static object beside the command class: loading its library publishes the action, and
/// unloading it withdraws the action together with the command class. May be built before the
/// application object.
///
/// Thread safety: main thread only.
class ZORCOMMAND_EXPORT ZORCmdActionPublisher
{
public:
    /// Where an application shows an action.
    enum Placement : int {
        Hidden = 0,         ///< only reachable by its id
        MenuAndToolBar = 1, ///< in the menu and the tool bar of its category
        MenuOnly = 2,
    };

    /// \param category   menu of the action
    /// \param command    class of the command, registered with the controller when the action is triggered
    /// \param icon       name that the application resolves to an icon
    /// \param text       text of the action
    /// \param toolTip    longer explanation
    /// \param position   smaller ones come first in the category; equal ones by their text
    /// \param placement  code of a Placement
    /// \param options    "method" (string): the id of the action is then "<class name>.<method>" instead of
    ///                   the class name; "edits" (string list): names of the classes whose objects the
    ///                   command edits, see ZORCmdController::Edit(); all options are handed to the command as
    ///                   dynamic properties
    ZORCmdActionPublisher(const QString& category, const QMetaObject* command, const QString& icon,
                          const QString& text, const QString& toolTip, int position, int placement,
                          const QVariantMap& options);
    ~ZORCmdActionPublisher();
    Q_DISABLE_COPY_MOVE(ZORCmdActionPublisher)
};
