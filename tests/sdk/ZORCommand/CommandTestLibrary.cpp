// Library that the tests load and unload: a command that goes on running, and the publisher of its action.

#include "support/PublishedCommand.h"

#include <ZORCommand/ZORCmdCommand.h>

class LibraryCommand : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit LibraryCommand(QObject* parent)
        : ZORCmdCommand(parent, Silent, NoUndo)
    {
    }
    void Start() override { setObjectName(QStringLiteral("running")); }
};

namespace {

const PublishedCommand kCommand(&LibraryCommand::staticMetaObject, "Library", "library-icon",
                                "Library Command", "Goes on running", ZORCmdActionPublisher::MenuAndToolBar,
                                {{QStringLiteral("flavour"), QStringLiteral("vanilla")}});

} // namespace

#include "CommandTestLibrary.moc"
