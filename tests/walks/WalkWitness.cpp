#include "WalkWitness.h"

#include "WidgetDescription.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QTimer>
#include <QWidget>

namespace {

// Bytes of X events, as the protocol fixes them.
constexpr int kTypeMask = 0x7f;
constexpr int kKeyPress = 2;
constexpr int kGenericEvent = 35;
constexpr int kInputButtonRelease = 5;
constexpr int kGenericTypeOffset = 8;

const QByteArray kHurry = "hurry ";

/// Lets the timers of an object name expire now.
void Hurry(const QString& name)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        const auto timers = window->findChildren<QTimer*>(name);
        for (QTimer* timer : timers)
            QMetaObject::invokeMethod(timer, "timeout", Qt::QueuedConnection);
    }
}

/// Whether a key was pressed or a button was released: a window that Return closes may not see the release of the key.
bool IsInput(const uchar* event)
{
    const int type = event[0] & kTypeMask;
    return type == kKeyPress || (type == kGenericEvent && event[kGenericTypeOffset] == kInputButtonRelease);
}

} // namespace

WalkWitness::WalkWitness(const QString& name)
{
    connect(&m_server, &QLocalServer::newConnection, this, &WalkWitness::OnConnected);
    if (!m_server.listen(name))
        qFatal("the witness cannot listen: %s", qPrintable(m_server.errorString()));
    qApp->installNativeEventFilter(this);
}

WalkWitness::~WalkWitness() = default;

bool WalkWitness::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/)
{
    if (eventType == "xcb_generic_event_t" && IsInput(static_cast<const uchar*>(message)))
        ++m_received;
    return false;
}

void WalkWitness::OnConnected()
{
    QLocalSocket* socket = m_server.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        while (socket->canReadLine()) {
            const QByteArray line = socket->readLine().trimmed();
            if (line.startsWith(kHurry))
                Hurry(QString::fromUtf8(line.mid(kHurry.size())));
            socket->write(QJsonDocument(Describe()).toJson(QJsonDocument::Compact) + '\n');
        }
    });
}

QJsonObject WalkWitness::Describe() const
{
    QJsonArray windows;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget* window : widgets) {
        if (window->isVisible())
            windows.append(DescribeWindow(window));
    }
    return {{"received", m_received},
            {"focus", GetWidgetId(QApplication::focusWidget())},
            {"popup", GetWidgetId(QApplication::activePopupWidget())},
            {"modal", GetWidgetId(QApplication::activeModalWidget())},
            {"windows", windows}};
}

QObject* WalkWitnessPlugin::create(const QString& name, const QString& specification)
{
    // Programs that this one starts have no witness.
    qunsetenv("QT_QPA_GENERIC_PLUGINS");
    return name == QLatin1String("walkwitness") ? new WalkWitness(specification) : nullptr;
}
