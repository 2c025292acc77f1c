// A plug-in that does what plug-ins do: publishes a command that opens a window without parent.

#include "support/PublishedCommand.h"

#include <ZORCommand/ZORCmdCommand.h>

#include <QLabel>

class GoodPluginMetaData : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "good.json")
};

class GoodPluginWindow : public QLabel
{
    Q_OBJECT

public:
    GoodPluginWindow()
        : QLabel("window of the plug-in")
    {
        setObjectName("_GoodPluginWindow");
        setWindowTitle("Plug-in Window");
        setAttribute(Qt::WA_DeleteOnClose);
    }
};

class GoodPluginCmd : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit GoodPluginCmd(QObject* parent)
        : ZORCmdCommand(parent, OwnWindows, SelfManaged)
    {
    }
    void Start() override
    {
        (new GoodPluginWindow)->show();
        FinishLater();
    }
};

namespace {

const PublishedCommand kCommand(&GoodPluginCmd::staticMetaObject, "Good", "nesting-info", "Good Action",
                                "Opens the window of the plug-in", ZORCmdActionPublisher::MenuAndToolBar);

} // namespace

#include "GoodPlugin.moc"
