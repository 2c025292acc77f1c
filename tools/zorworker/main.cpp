// Runs jobs of nesting and translation for a program of the SDK, which starts it.

#include "ZorToolMain.h"

#include <ZORWorker/ZORWorkHelpers.h>

#include <QGuiApplication>

#include <memory>

namespace {

constexpr int kFailureExitCode = 1;
constexpr const char* kTemporaryFolder = "TMPDIR";

QtMessageHandler s_previousHandler = nullptr;

// The remark on a folder that is missing on purpose would stand in the log of the caller.
void DropRemarkOnPaths(QtMsgType severity, const QMessageLogContext& context, const QString& text)
{
    if (!text.startsWith(QLatin1String("QStandardPaths:")))
        s_previousHandler(severity, context, text);
}

// Reports hold pictures with texts, which need fonts. Where the session has no folder for its sockets, Qt makes
// one in the folder for temporary files, and nobody would remove it; so that folder is hidden meanwhile.
std::unique_ptr<QGuiApplication> MakeApplication(int& argc, char** argv)
{
    const bool isSet = qEnvironmentVariableIsSet(kTemporaryFolder);
    const QByteArray folder = qgetenv(kTemporaryFolder);
    qputenv(kTemporaryFolder, "/dev/null");
    s_previousHandler = qInstallMessageHandler(DropRemarkOnPaths);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    qInstallMessageHandler(s_previousHandler);
    isSet ? qputenv(kTemporaryFolder, folder) : qunsetenv(kTemporaryFolder);
    return application;
}

} // namespace

int main(int argc, char** argv)
{
    const auto run = [&] {
        const std::unique_ptr<QGuiApplication> application = MakeApplication(argc, argv);
        return ZORWorkHelpers::Serve(argc, argv);
    };
    return ZorRunTool(run, kFailureExitCode);
}
