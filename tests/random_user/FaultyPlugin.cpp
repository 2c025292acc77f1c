// A plug-in whose action fails in the way that the environment variable ZOR_TEST_FAULT names.

#include "support/PublishedCommand.h"

#include <ZORCommand/ZORCmdCommand.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORSystem/ZORSysException.h>

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>

#include <csignal>

class FaultyPluginMetaData : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.zorvane.sdk.Plugin" FILE "faulty.json")
};

/// Says that it deletes itself, but does not.
class FaultyWindow : public QLabel
{
    Q_OBJECT

public:
    FaultyWindow() { setAttribute(Qt::WA_DeleteOnClose); }

protected:
    bool event(QEvent* event) override
    {
        return event->type() == QEvent::DeferredDelete || QLabel::event(event);
    }
};

class FaultyCmd : public ZORCmdCommand
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit FaultyCmd(QObject* parent)
        : ZORCmdCommand(parent, OwnWindows, SelfManaged)
    {
    }
    void Start() override
    {
        FinishLater();
        const QByteArray fault = qgetenv("ZOR_TEST_FAULT");
        if (fault == "warning")
            qWarning("planted warning");
        else if (fault == "exception")
            throw ZORSysException("planted exception");
        else if (fault == "crash")
            std::raise(SIGSEGV);
        else if (fault == "cursor")
            QApplication::setOverrideCursor(Qt::WaitCursor);
        else if (fault == "window")
            new QLabel; // never shown, never deleted
        else if (fault == "stay")
            (new FaultyWindow)->show();
        else if (fault == "reference")
            AddWithReference();
        else if (fault == "hidden")
            HideAllWindows();
    }

private:
    static void AddWithReference()
    {
        auto* container = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment()->GetContainer();
        auto* curve = new ZORGeoPolyline(container, {{0, 0, 0}, {1, 0, 0}}, true);
        curve->Initialize();
        curve->AddReference(nullptr);
    }
    static void HideAllWindows()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            window->hide(); // without closing them, which would end the program
    }
};

namespace {

const PublishedCommand kCommand(&FaultyCmd::staticMetaObject, "Faulty", "nesting-info", "Fail", "Fails",
                                ZORCmdActionPublisher::MenuOnly);

} // namespace

#include "FaultyPlugin.moc"
