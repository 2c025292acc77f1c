#include "window/ZORHostNoticeBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

ZORHostNoticeBar::ZORHostNoticeBar(QWidget* parent)
    : QFrame(parent)
{
    setObjectName("_NoticeBar");
    // Dark on yellow in every theme.
    setStyleSheet("#_NoticeBar { background: #ffe9a8; border: 1px solid #c9a227; }"
                  "#_NoticeLbl { color: #3a2d00; }");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    m_label = new QLabel(this);
    m_label->setObjectName("_NoticeLbl");
    m_label->setTextFormat(Qt::PlainText);
    m_label->setWordWrap(true);
    m_label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    row->addWidget(m_label, 1);
    m_detailsBtn = new QPushButton(this);
    m_detailsBtn->setObjectName("_NoticeDetailsBtn");
    m_detailsBtn->hide();
    row->addWidget(m_detailsBtn);
    auto* closeBtn = new QPushButton(tr("Close"), this);
    closeBtn->setObjectName("_NoticeCloseBtn");
    row->addWidget(closeBtn);
    connect(m_detailsBtn, &QPushButton::clicked, this, &ZORHostNoticeBar::DetailsRequested);
    connect(closeBtn, &QPushButton::clicked, this, &ZORHostNoticeBar::Dismiss);
    hide();
}

void ZORHostNoticeBar::AddMessage(const QString& message)
{
    m_messages.append(message);
    m_label->setText(m_messages.join(u'\n'));
    show();
}

void ZORHostNoticeBar::SetDetails(const QString& buttonText)
{
    m_detailsBtn->setText(buttonText);
    m_detailsBtn->show();
}

void ZORHostNoticeBar::Dismiss()
{
    m_messages.clear();
    m_label->clear();
    m_detailsBtn->hide();
    hide();
}
