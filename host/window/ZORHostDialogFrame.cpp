#include "window/ZORHostDialogFrame.h"

#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORSystem/ZORSysException.h>

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QScopedValueRollback>
#include <QVBoxLayout>

ZORHostDialogFrame::ZORHostDialogFrame(ZORCmdDialogCommand* command, QWidget* parent)
    : QDialog(parent)
    , m_command(command)
{
    setObjectName("_DialogFrame");
    setWindowTitle(command->GetTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    auto* column = new QVBoxLayout(this);
    EmbedContent(command->BuildContent(this));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName("_ButtonBox");
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &ZORHostDialogFrame::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ZORHostDialogFrame::reject);
    // The command may be withdrawn with its library.
    connect(command, &QObject::destroyed, this, &ZORHostDialogFrame::reject);
}

void ZORHostDialogFrame::EmbedContent(QWidget* content)
{
    if (!content)
        return;
    m_content = content;
    if (windowTitle().isEmpty())
        setWindowTitle(content->windowTitle());
    const QSize size = content->size();
    content->setWindowFlags(Qt::Widget); // it may be a dialog, which would be a window of its own
    layout()->addWidget(content);
    content->show();
    resize(sizeHint().expandedTo(size));
    // Escape inside a content that is a dialog closes only that: the frame would be left empty.
    if (auto* dialog = qobject_cast<QDialog*>(content)) {
        connect(dialog, &QDialog::finished, this, [this] {
            if (!m_committing)
                reject();
        });
    }
}

void ZORHostDialogFrame::accept()
{
    if (!m_command) {
        QDialog::accept();
        return;
    }
    QString error;
    {
        const QScopedValueRollback guard(m_committing, true);
        try {
            m_command->Accept();
        } catch (const ZORSysException& exception) {
            error = exception.GetMessage();
        }
    }
    if (error.isEmpty()) {
        m_command.clear();
        QDialog::accept();
        return;
    }
    if (m_content)
        m_content->show(); // it may have closed itself before the failure
    QMessageBox::critical(this, tr("Error"), error);
}

void ZORHostDialogFrame::reject()
{
    const QPointer<ZORCmdDialogCommand> command = m_command;
    m_command.clear();
    if (command)
        command->Reject();
    QDialog::reject();
}
