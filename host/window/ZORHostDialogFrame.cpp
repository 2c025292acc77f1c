#include "window/ZORHostDialogFrame.h"

#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORSystem/ZORSysException.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QVBoxLayout>

ZORHostDialogFrame::ZORHostDialogFrame(ZORCmdDialogCommand* command, QWidget* parent)
    : QDialog(parent)
    , m_command(command)
    , m_problemIcon(new QLabel(this))
    , m_problemLbl(new QLabel(this))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setObjectName("_DialogFrame");
    setWindowTitle(command->GetTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    auto* column = new QVBoxLayout(this);
    EmbedContent(command->BuildContent(this));
    column->addLayout(MakeProblemLine());
    m_buttons->setObjectName("_ButtonBox");
    column->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &ZORHostDialogFrame::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &ZORHostDialogFrame::reject);
    connect(command, &ZORCmdDialogCommand::ProblemChanged, this, &ZORHostDialogFrame::ShowProblem);
    ShowProblem(command->GetProblem());
    // The command may be withdrawn with its library.
    connect(command, &QObject::destroyed, this, &ZORHostDialogFrame::reject);
}

void ZORHostDialogFrame::ShowProblem(const QString& problem)
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
    m_problemLbl->setText(problem);
    // Once shown the line keeps its place: the buttons must not jump while somebody types.
    if (!problem.isEmpty())
        m_problemLbl->show();
    m_problemIcon->setVisible(!problem.isEmpty());
}

QLayout* ZORHostDialogFrame::MakeProblemLine()
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_problemIcon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(size));
    m_problemIcon->hide();
    m_problemLbl->setObjectName("_ProblemLbl");
    m_problemLbl->setTextFormat(Qt::PlainText);
    m_problemLbl->setWordWrap(true);
    m_problemLbl->hide();
    auto* line = new QHBoxLayout;
    line->addWidget(m_problemIcon, 0, Qt::AlignTop);
    line->addWidget(m_problemLbl, 1);
    return line;
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
    auto* dialog = qobject_cast<QDialog*>(content);
    if (!dialog)
        return;
    dialog->installEventFilter(this);
    // Escape inside a content that is a dialog closes only that: the frame would be left empty.
    connect(dialog, &QDialog::finished, this, [this] {
        if (!m_committing)
            reject();
    });
}

bool ZORHostDialogFrame::eventFilter(QObject* watched, QEvent* event)
{
    // A content that is a dialog searches only itself for a default button, and swallows Return without one.
    if (watched == m_content && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            keyPressEvent(key);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
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
    ZORCmnPlainText::ShowBox(QMessageBox::Critical, this, tr("Error"), error);
}

void ZORHostDialogFrame::reject()
{
    const QPointer<ZORCmdDialogCommand> command = m_command;
    m_command.clear();
    if (command)
        command->Reject();
    QDialog::reject();
}
