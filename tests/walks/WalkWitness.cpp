#include "WalkWitness.h"

#include "WidgetDescription.h"

#include <QApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLocalSocket>
#include <QWidget>

namespace {

// Bytes of X events, as the protocol fixes them.
constexpr int kTypeMask = 0x7f;
constexpr int kKeyRelease = 3;
constexpr int kGenericEvent = 35;
constexpr int kInputButtonRelease = 5;
constexpr int kGenericTypeOffset = 8;

bool IsRelease(const uchar* event)
{
    const int type = event[0] & kTypeMask;
    return type == kKeyRelease || (type == kGenericEvent && event[kGenericTypeOffset] == kInputButtonRelease);
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
    if (eventType == "xcb_generic_event_t" && IsRelease(static_cast<const uchar*>(message)))
        ++m_released;
    return false;
}

void WalkWitness::OnConnected()
{
    QLocalSocket* socket = m_server.nextPendingConnection();
    connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
        while (socket->canReadLine()) {
            socket->readLine();
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
    return {{"released", m_released},
            {"focus", GetWidgetId(QApplication::focusWidget())},
            {"popup", GetWidgetId(QApplication::activePopupWidget())},
            {"modal", GetWidgetId(QApplication::activeModalWidget())},
            {"windows", windows}};
}

QObject* WalkWitnessPlugin::create(const QString& name, const QString& specification)
{
    return name == QLatin1String("walkwitness") ? new WalkWitness(specification) : nullptr;
}
