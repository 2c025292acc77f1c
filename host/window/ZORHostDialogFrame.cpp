#include "window/ZORHostDialogFrame.h"

#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysProgress.h>

#include <QAbstractSpinBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kTitleButtonsWidth = 140; // of the icon, the buttons and the margins of a window's title bar

bool IsField(const QWidget& widget, const QWidget& window)
{
    return (widget.focusPolicy() & Qt::TabFocus) && widget.isEnabled() && widget.isVisibleTo(&window)
           && !widget.focusProxy() && !qobject_cast<const QPushButton*>(&widget)
           && !qobject_cast<const QToolButton*>(&widget);
}

// In the order of the Tab key; null for none.
QWidget* FindFirstField(const QWidget& content, const QWidget& window)
{
    for (QWidget* widget = content.nextInFocusChain(); widget != &content;
         widget = widget->nextInFocusChain()) {
        if (content.isAncestorOf(widget) && IsField(*widget, window))
            return widget;
    }
    return nullptr;
}

void SelectAll(QWidget* field)
{
    if (auto* line = qobject_cast<QLineEdit*>(field))
        line->selectAll();
    else if (auto* spin = qobject_cast<QAbstractSpinBox*>(field))
        spin->selectAll();
}

bool HasDefaultButton(const QWidget& content)
{
    const auto buttons = content.findChildren<QPushButton*>();
    return std::any_of(buttons.begin(), buttons.end(),
                       [](const QPushButton* button) { return button->isDefault(); });
}

} // namespace

ZORHostDialogFrame::ZORHostDialogFrame(ZORCmdDialogCommand* command, QWidget* parent)
    : QDialog(parent)
    , m_command(command)
    , m_problemIcon(new QLabel(this))
    , m_problemLbl(new QLabel(this))
{
    setObjectName("_DialogFrame");
    setWindowTitle(command->GetTitle());
    setAttribute(Qt::WA_DeleteOnClose);
    auto* column = new QVBoxLayout(this);
    EmbedContent(command->BuildContent(this));
    column->addLayout(MakeProblemLine());
    // After the content: the Tab key reaches the buttons last.
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    m_buttons->setObjectName("_ButtonBox");
    // Letters of their own, which contents leave free; those of the desktop differ.
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("&OK"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("&Cancel"));
    column->addWidget(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &ZORHostDialogFrame::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &ZORHostDialogFrame::reject);
    connect(command, &ZORCmdDialogCommand::ProblemChanged, this, &ZORHostDialogFrame::ShowProblem);
    ShowProblem(command->GetProblem());
    FocusFirstField();
    // A short form must not cut its title off.
    setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) + kTitleButtonsWidth);
    // The command may be withdrawn with its library.
    connect(command, &QObject::destroyed, this, &ZORHostDialogFrame::reject);
}

// The button in focus would be OK otherwise, which a typed blank presses.
void ZORHostDialogFrame::FocusFirstField()
{
    if (!m_content)
        return;
    if (!HasDefaultButton(*m_content))
        m_buttons->button(QDialogButtonBox::Ok)->setDefault(true);
    QWidget* field = m_content->focusWidget();
    if (!field)
        field = m_content->focusProxy();
    if (!field)
        field = IsField(*m_content, *this) ? m_content.data() : FindFirstField(*m_content, *this);
    if (!field)
        return;
    field->setFocus();
    SelectAll(field);
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
    bool isCanceled = false;
    {
        const QScopedValueRollback guard(m_committing, true);
        try {
            m_command->Accept();
        } catch (const ZORSysCanceledException&) {
            isCanceled = true;
        } catch (const ZORSysException& exception) {
            error = exception.GetMessage();
        }
    }
    if (error.isEmpty() && !isCanceled) {
        m_command.clear();
        QDialog::accept();
        return;
    }
    if (m_content)
        m_content->show(); // it may have closed itself before the failure
    if (!isCanceled)
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
