#include "ZORCmdProgress.h"

#include <QProgressDialog>
#include <QPushButton>

ZORCmdProgress::ZORCmdProgress(QWidget* parent, const QString& text, Cancellation cancellation)
    : m_parent(parent)
    , m_text(text)
    , m_cancellation(cancellation)
    , m_progress([this](double part) { return Report(part); })
{
    m_timer.start();
}

ZORCmdProgress::~ZORCmdProgress()
{
    delete m_dialog;
}

bool ZORCmdProgress::Report(double part)
{
    constexpr qint64 kPatience = 500; // milliseconds
    if (!m_dialog && m_timer.elapsed() < kPatience)
        return true;
    if (!m_dialog)
        ShowDialog();
    m_dialog->setValue(int(part * m_dialog->maximum())); // runs the event loop
    QCoreApplication::processEvents();
    return !m_dialog || m_cancellation == CannotCancel || !m_dialog->wasCanceled();
}

void ZORCmdProgress::ShowDialog()
{
    constexpr int kSteps = 1000;
    m_dialog = new QProgressDialog(m_text, QString(), 0, kSteps, m_parent);
    m_dialog->setObjectName("_CommandProgressDialog");
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumDuration(0);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    if (m_cancellation == CanCancel) {
        auto* const button = new QPushButton(tr("&Cancel"));
        button->setObjectName("_CommandProgressCancelBtn");
        m_dialog->setCancelButton(button);
    }
    m_dialog->show();
}
