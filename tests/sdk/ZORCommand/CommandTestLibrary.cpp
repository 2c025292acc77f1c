// Library that the tests load and unload: a command that goes on running, and the publisher of its action.

#include <ZORCommand/ZORCmdActionPublisher.h>
#include <ZORCommand/ZORCmdCommand.h>
#include <ZORCommand/ZORCmdController.h>

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

[[maybe_unused]] const bool registered = [] {
    ZORCmdController::GetController()->RegisterCommand(&LibraryCommand::staticMetaObject);
    return true;
}();

const ZORCmdActionPublisher publisher(QStringLiteral("Library"), &LibraryCommand::staticMetaObject,
                                      QStringLiteral("library-icon"), QStringLiteral("Library Command"),
                                      QStringLiteral("Goes on running"), 0, 1,
                                      {{QStringLiteral("flavour"), QStringLiteral("vanilla")}});

} // namespace

#include "CommandTestLibrary.moc"
