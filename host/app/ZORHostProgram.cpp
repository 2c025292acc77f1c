#include "app/ZORHostProgram.h"

#include "actions/ZORHostIcons.h"
#include "app/ZORHostTermination.h"
#include "base/ZORHostLogging.h"
#include "base/ZORHostSettings.h"
#include "docks/ZORHostLog.h"
#include "document/ZORHostDocumentCommands.h"
#include "document/ZORHostRescue.h"
#include "plugins/ZORHostPluginManager.h"
#include "script/ZORHostScript.h"
#include "script/ZORHostScriptRunner.h"
#include "window/ZORHostDialogHandler.h"
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
#include <chrono>
#include <limits>
#include <utility>

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
    constexpr qint64 kMost = std::numeric_limits<qint64>::max() >> 20;
    if (megabytes > 0)
        ZORWorkHelpers::SetMemoryLimit(std::min(megabytes, kMost) << 20);
}

} // namespace

ZORHostProgram::ZORHostProgram(const ZORHostOptions& options)
    : m_options(options)
    , m_log(std::make_unique<ZORHostLog>())
    , m_settings(std::make_unique<ZORHostSettings>(
          options.settingsFile,
          options.cleanSettings ? ZORHostSettings::Start::Defaults : ZORHostSettings::Start::LastSession))
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
    ShowNotices();
    m_window->show();
    LoadPlugins();
    m_window->ShowPluginProblems();
    m_termination = std::make_unique<ZORHostTermination>([this](int signal) {
        constexpr int kSignalCode = 128; // as shells count
        m_window->RescueDocument();
        QCoreApplication::exit(kSignalCode + signal);
    });
}

ZORHostProgram::~ZORHostProgram()
{
    m_termination.reset(); // a signal that comes now ends the program at once
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

void ZORHostProgram::ShowNotices()
{
    QStringList notices;
    if (CanAskUser(m_options)) // the window offers these documents later
        notices = ZORHostRescue::TakeNotices();
    if (!m_settings->GetWarning().isEmpty()) {
        notices.append(m_settings->GetWarning());
        m_window->GetNoticeBar()->AddMessage(m_settings->GetWarning());
    }
    for (const QString& notice : std::as_const(notices))
        qCWarning(lcHost).noquote() << notice;
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
    OpenFiles(m_options.filesToOpen, [this] {
        if (CanAskUser(m_options))
            m_window->OfferRecovery();
    });
    return QApplication::exec();
}

// One by one from the event loop, so that the window stands when a file gives an error and lives between them.
void ZORHostProgram::OpenFiles(const QStringList& files, const std::function<void()>& done)
{
    // A window that the system has not shown yet cannot be painted; one that is minimized may never be shown.
    constexpr int kPulse = 10, kPatience = 2000; // milliseconds
    const auto start = std::chrono::steady_clock::now();
    auto* const timer = new QTimer(m_window.get());
    QObject::connect(timer, &QTimer::timeout, m_window.get(),
                     [=, this, left = files, isFirst = true]() mutable {
                         const bool isLate =
                             std::chrono::steady_clock::now() - start > std::chrono::milliseconds(kPatience);
                         if (!m_window->testAttribute(Qt::WA_Mapped) && !isLate)
                             return;
                         timer->stop(); // an error box has its own event loop
                         if (!left.isEmpty() && std::exchange(isFirst, false))
                             m_window->OpenFile(left.takeFirst());
                         else if (!left.isEmpty())
                             m_window->GetDocumentCommands()->Import(left.takeFirst());
                         if (!left.isEmpty()) {
                             timer->start(0);
                             return;
                         }
                         timer->deleteLater();
                         done();
                     });
    timer->start(kPulse);
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
    OpenFiles(m_options.filesToOpen, [&] { runner.Start(*script); });
    // A script that closes the window before its end has not done what it should.
    const int result = QApplication::exec();
    return runner.IsFinished() ? result : 1;
}
