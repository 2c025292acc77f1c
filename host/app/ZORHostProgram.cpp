#include "app/ZORHostProgram.h"

#include "base/ZORHostLogging.h"
#include "base/ZORHostSettings.h"
#include "docks/ZORHostLog.h"
#include "plugins/ZORHostPluginManager.h"
#include "script/ZORHostScript.h"
#include "script/ZORHostScriptRunner.h"
#include "window/ZORHostDialogHandler.h"
#include "window/ZORHostIcons.h"
#include "window/ZORHostMainWindow.h"
#include "window/ZORHostNoticeBar.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysInit.h>
#include <ZORWorker/ZORWorkHelpers.h>

#include <QApplication>
#include <QPointer>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace {

void CloseAllWindows()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const QList<QPointer<QWidget>> guarded(windows.cbegin(), windows.cend());
    for (const QPointer<QWidget>& window : guarded) {
        if (window && !window->parentWidget() && window->isVisible()) {
            window->close();
            delete window.data();
        }
    }
}

/// Whether somebody is there to answer. Scripts answer only what they expect, and nobody sees the windows of
/// a platform without a screen.
bool CanAskUser(const ZORHostOptions& options)
{
    const QString platform = QGuiApplication::platformName();
    return options.scriptFile.isEmpty() && platform != QLatin1String("offscreen")
           && platform != QLatin1String("minimal");
}

// Without the setting, jobs have the limit of the SDK.
void ApplyJobSettings()
{
    const qint64 megabytes = ZORHostSettings::Read(QStringLiteral("JobMemoryLimit")).toLongLong();
    constexpr qint64 most = std::numeric_limits<qint64>::max() >> 20;
    if (megabytes > 0)
        ZORWorkHelpers::SetMemoryLimit(std::min(megabytes, most) << 20);
}

} // namespace

ZORHostProgram::ZORHostProgram(const ZORHostOptions& options)
    : m_options(options)
    , m_log(std::make_unique<ZORHostLog>())
    , m_settings(std::make_unique<ZORHostSettings>(options.settingsFile, options.cleanSettings))
{
    ZORSysInitialize();
    ApplyJobSettings();
    m_environment = std::make_unique<ZORFeatEnvironment>();
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(m_environment.get());

    ZORCmdController* controller = ZORCmdController::GetController();
    controller->SetIconResolver(&ZORHostIcon);
    m_plugins = std::make_unique<ZORHostPluginManager>();
    m_window = std::make_unique<ZORHostMainWindow>(m_plugins.get(), m_log->GetQueue());
    m_plugins->SetMainWindow(m_window.get());
    m_dialogs = std::make_unique<ZORHostDialogHandler>(m_window.get());
    controller->SetDialogHandler(m_dialogs.get());

    m_window->RestoreSettings();
    m_window->SetAsksToSave(CanAskUser(options));
    if (options.themeGiven)
        m_window->SetTheme(options.theme);
    if (!m_settings->GetWarning().isEmpty()) {
        qCWarning(lcHost).noquote() << m_settings->GetWarning();
        m_window->GetNoticeBar()->AddMessage(m_settings->GetWarning());
    }
    m_window->show();
    LoadPlugins();
    m_window->ShowPluginProblems();
}

ZORHostProgram::~ZORHostProgram()
{
    ZORCmdController* controller = ZORCmdController::GetController();
    controller->SetDialogHandler(nullptr);
    m_dialogs.reset();
    m_plugins->SetMainWindow(nullptr);
    m_window->SaveSettings();
    m_window.reset();
    CloseAllWindows();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    controller->SetIconResolver({});
}

void ZORHostProgram::LoadPlugins()
{
    for (const QString& plugin : m_options.plugins)
        m_plugins->Load(plugin);
    if (m_options.defaultPlugins)
        m_plugins->LoadFromSearchPath();
}

int ZORHostProgram::Run()
{
    if (!m_options.scriptFile.isEmpty())
        return RunScript();
    // From the event loop, so that the window stands when a file gives an error.
    QTimer::singleShot(0, m_window.get(), [this] {
        for (const QString& file : m_options.filesToOpen)
            m_window->OpenFile(file);
    });
    return QApplication::exec();
}

int ZORHostProgram::RunScript()
{
    QTextStream err(stderr);
    std::unique_ptr<ZORHostScript> script;
    try {
        script = std::make_unique<ZORHostScript>(ZORHostScript::Load(m_options.scriptFile));
    } catch (const ZORSysException& exception) {
        err << exception.GetMessage() << Qt::endl;
        return 2;
    }
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    ZORHostScriptRunner runner(m_window->GetView());
    for (auto variable = m_options.variables.cbegin(); variable != m_options.variables.cend(); ++variable)
        runner.SetVariable(variable.key(), variable.value());
    QObject::connect(&runner, &ZORHostScriptRunner::Finished, m_window.get(),
                     [](bool success) { QCoreApplication::exit(success ? 0 : 1); });
    QTimer::singleShot(0, m_window.get(), [&] {
        for (const QString& file : m_options.filesToOpen)
            m_window->OpenFile(file);
        runner.Start(*script);
    });
    // A script that closes the window before its end has not done what it should.
    const int result = QApplication::exec();
    return runner.IsFinished() ? result : 1;
}
