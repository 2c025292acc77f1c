#include "document/ZORHostProgressPanel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

ZORHostProgressPanel::ZORHostProgressPanel(QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(this))
    , m_bar(new QProgressBar(this))
    , m_cancelBtn(new QPushButton(tr("&Cancel"), this))
    , m_patience(new QTimer(this))
{
    constexpr int kPatience = 200; // milliseconds; what is over before that would only flicker
    constexpr int kBarWidth = 160; // logical pixels
    setObjectName("_ProgressPanel");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_label->setObjectName("_ProgressLbl");
    m_label->setTextFormat(Qt::PlainText);
    row->addWidget(m_label);
    m_bar->setObjectName("_ProgressBar");
    m_bar->setRange(0, 100);
    m_bar->setFixedWidth(kBarWidth);
    row->addWidget(m_bar);
    m_cancelBtn->setObjectName("_ProgressCancelBtn");
    m_cancelBtn->setToolTip(tr("Gives up what is going on; the document stays as it is"));
    connect(m_cancelBtn, &QPushButton::clicked, this, &ZORHostProgressPanel::OnCancelClicked);
    row->addWidget(m_cancelBtn);
    m_patience->setSingleShot(true);
    m_patience->setInterval(kPatience);
    connect(m_patience, &QTimer::timeout, this, &QWidget::show);
    hide();
}

void ZORHostProgressPanel::Begin(const QString& text)
{
    constexpr int kTextWidth = 320; // logical pixels
    m_label->setText(m_label->fontMetrics().elidedText(text, Qt::ElideMiddle, kTextWidth));
    m_label->setToolTip(text.toHtmlEscaped());
    m_bar->setAccessibleName(text);
    m_bar->setValue(0);
    m_cancelBtn->setEnabled(true);
    if (isHidden())
        m_patience->start();
}

void ZORHostProgressPanel::SetProgress(double progress)
{
    m_bar->setValue(int(progress * m_bar->maximum()));
}

void ZORHostProgressPanel::End()
{
    m_patience->stop();
    hide();
}

void ZORHostProgressPanel::OnCancelClicked()
{
    m_cancelBtn->setEnabled(false); // until the next work: it may take a moment to give up
    m_label->setText(tr("Canceling..."));
    emit CancelRequested();
}
