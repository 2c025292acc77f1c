#include "base/ZORHostErrorReporter.h"

#include "base/ZORHostLogging.h"

#include <QApplication>
#include <QMessageBox>

ZORHostErrorReporter::ZORHostErrorReporter(QObject* parent)
    : QObject(parent)
{
}

ZORHostErrorReporter::~ZORHostErrorReporter()
{
    delete m_box;
}

void ZORHostErrorReporter::Report(const QString& message, QEvent::Type cause)
{
    qCCritical(lcHost).noquote() << tr("Unhandled error: %1").arg(message);
    if (m_box && m_shownMessage == message) {
        m_box->setInformativeText(tr("Repeated %n time(s).", nullptr, ++m_repetitions));
        return;
    }
    if (m_waiting.contains(message))
        return;
    const auto last = m_lastShown.constFind(message);
    if (IsUnattended(cause) && last != m_lastShown.constEnd() && !last->hasExpired(kRepeatMilliseconds))
        return;
    m_waiting.enqueue(message);
    // Not from inside the failed handler: it may be painting.
    if (!m_box)
        QMetaObject::invokeMethod(this, &ZORHostErrorReporter::ShowNext, Qt::QueuedConnection);
}

void ZORHostErrorReporter::ReportOutOfMemory(QEvent::Type cause)
{
    m_reserve.Release();
    Report(tr("There is not enough memory for this operation."), cause);
    if (!m_box && m_waiting.isEmpty()) // it was shown just before
        m_reserve.Hold();
}

void ZORHostErrorReporter::ShowNext()
{
    if (!m_box && m_waiting.isEmpty())
        m_reserve.Hold();
    if (m_box || m_waiting.isEmpty())
        return;
    m_shownMessage = m_waiting.dequeue();
    m_repetitions = 0;
    m_lastShown[m_shownMessage].start();
    QWidget* parent = QApplication::activeModalWidget();
    m_box = new QMessageBox(QMessageBox::Critical, tr("Error"), m_shownMessage, QMessageBox::Ok,
                            parent ? parent : QApplication::activeWindow());
    m_box->setObjectName("_UnhandledErrorBox");
    m_box->setTextFormat(Qt::PlainText); // messages contain names from documents, which are not HTML
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setWindowModality(Qt::ApplicationModal);
    // Queued: the next box may open only after this one is gone.
    connect(m_box, &QObject::destroyed, this, &ZORHostErrorReporter::ShowNext, Qt::QueuedConnection);
    m_box->show();
}

bool ZORHostErrorReporter::IsUnattended(QEvent::Type cause) const
{
    switch (cause) {
    case QEvent::Paint:
    case QEvent::UpdateRequest:
    case QEvent::UpdateLater:
    case QEvent::LayoutRequest:
    case QEvent::Resize:
    case QEvent::Move:
    case QEvent::Show:
    case QEvent::Expose:
    case QEvent::Timer:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::MouseMove:
    case QEvent::HoverMove:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Polish:
    case QEvent::PolishRequest:
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
        return true;
    default:
        return false;
    }
}
