#include "window/ZORHostNoticeBar.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

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
    m_lossesBtn = new QPushButton(tr("&Details..."), this);
    m_lossesBtn->setObjectName("_NoticeLossesBtn");
    m_lossesBtn->setToolTip(tr("Shows what was left out of the files"));
    m_lossesBtn->hide();
    connect(m_lossesBtn, &QPushButton::clicked, this, &ZORHostNoticeBar::ShowLosses);
    row->addWidget(m_lossesBtn);
    auto* closeBtn = new QPushButton(tr("Close"), this);
    closeBtn->setObjectName("_NoticeCloseBtn");
    row->addWidget(closeBtn);
    connect(m_detailsBtn, &QPushButton::clicked, this, &ZORHostNoticeBar::DetailsRequested);
    connect(closeBtn, &QPushButton::clicked, this, &ZORHostNoticeBar::Dismiss);
    hide();
}

QStringList ZORHostNoticeBar::GetMessages() const
{
    QStringList messages = m_messages;
    if (m_losses.size() == 1)
        messages.append(tr("'%1' was not read completely.").arg(QFileInfo(m_losses[0].file).fileName()));
    else if (!m_losses.isEmpty())
        messages.append(tr("%n files were not read completely.", nullptr, int(m_losses.size())));
    return messages;
}

void ZORHostNoticeBar::Update()
{
    m_label->setText(GetMessages().join(u'\n'));
    m_lossesBtn->setVisible(!m_losses.isEmpty());
    setVisible(!m_messages.isEmpty() || !m_losses.isEmpty());
}

void ZORHostNoticeBar::AddMessage(const QString& message)
{
    m_messages.append(message);
    Update();
}

void ZORHostNoticeBar::AddLosses(const QString& file, const QStringList& losses)
{
    constexpr qsizetype kMostFiles = 100;
    m_losses.append({file, losses});
    if (m_losses.size() > kMostFiles)
        m_losses.removeFirst();
    Update();
}

void ZORHostNoticeBar::ShowLosses()
{
    auto* dialog = new QDialog(window());
    dialog->setObjectName("_LossesDialog");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(tr("Left Out of Files"));
    auto* column = new QVBoxLayout(dialog);
    auto* text = new QPlainTextEdit(dialog);
    text->setObjectName("_LossesEdit");
    text->setAccessibleName(tr("What was left out of files"));
    text->setReadOnly(true);
    for (const Loss& loss : std::as_const(m_losses)) {
        text->appendPlainText(loss.file);
        for (const QString& line : loss.losses)
            text->appendPlainText(u' ' + line);
    }
    column->addWidget(text);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    column->addWidget(buttons);
    dialog->resize(560, 280);
    dialog->show();
}

void ZORHostNoticeBar::SetDetails(const QString& buttonText)
{
    m_detailsBtn->setText(buttonText);
    m_detailsBtn->show();
}

void ZORHostNoticeBar::Dismiss()
{
    m_messages.clear();
    m_losses.clear();
    m_detailsBtn->hide();
    Update();
}
