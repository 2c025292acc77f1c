// One run of the host: everything that lives as long as the program.

#pragma once

#include "base/ZORHostCommandLine.h"

#include <memory>

class ZORFeatEnvironment;
class ZORHostDialogHandler;
class ZORHostLog;
class ZORHostMainWindow;
class ZORHostPluginManager;
class ZORHostSettings;

/// Puts the host together and takes it apart in the right order.
///
/// Start: log, settings, SDK, document, window, plug-ins, files, script. The SDK is initialised before the
/// first plug-in is loaded. End: every window goes before the document they work on.
class ZORHostProgram
{
public:
    explicit ZORHostProgram(const ZORHostOptions& options);
    ~ZORHostProgram();
    Q_DISABLE_COPY_MOVE(ZORHostProgram)

    /// Runs the event loop, or the script and then ends.
    /// \return exit code: 0, or that of the script
    int Run();

private:
    int RunScript();
    void LoadPlugins();

    const ZORHostOptions m_options;
    std::unique_ptr<ZORHostLog> m_log;
    std::unique_ptr<ZORHostSettings> m_settings;
    std::unique_ptr<ZORFeatEnvironment> m_environment;
    std::unique_ptr<ZORHostPluginManager> m_plugins;
    std::unique_ptr<ZORHostMainWindow> m_window;
    std::unique_ptr<ZORHostDialogHandler> m_dialogs;
};
