// One run of the host: everything that lives as long as the program.

#pragma once

#include "base/ZORHostCommandLine.h"

#include <QStringList>

#include <functional>
#include <memory>

class ZORFeatEnvironment;
class ZORHostDialogHandler;
class ZORHostLog;
class ZORHostMainWindow;
class ZORHostPluginManager;
class ZORHostSettings;
class ZORHostTermination;

/// Puts the host together and takes it apart in the right order.
///
/// Start: log, settings, SDK, document, window, plug-ins, files, script. The SDK is initialised before the
/// first plug-in is loaded. End: every window goes before the document they work on.
///
/// Signals that ask the program to end (ZORHostTermination) end it like that, without a question: unsaved changes that it
/// would ask about are written into a new file first, which the next start names.
class ZORHostProgram
{
public:
    explicit ZORHostProgram(const ZORHostOptions& options);
    ~ZORHostProgram();
    Q_DISABLE_COPY_MOVE(ZORHostProgram)

    /// Runs the event loop, or the script and then ends.
    /// \return exit code: 0, or that of the script; 128 and the number of the signal that has ended the program without a
    ///         script
    int Run();

private:
    int RunScript();
    void OpenFiles(const QStringList& files, const std::function<void()>& done);
    void ShowNotices();
    void LoadPlugins();

    const ZORHostOptions m_options;
    std::unique_ptr<ZORHostLog> m_log;
    std::unique_ptr<ZORHostSettings> m_settings;
    std::unique_ptr<ZORFeatEnvironment> m_environment;
    std::unique_ptr<ZORHostPluginManager> m_plugins;
    std::unique_ptr<ZORHostMainWindow> m_window;
    std::unique_ptr<ZORHostDialogHandler> m_dialogs;
    std::unique_ptr<ZORHostTermination> m_termination;
};
