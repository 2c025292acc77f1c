#include "support/DialogAnswerer.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <gtest/gtest.h>

#include <utility>

namespace {

DialogAnswerer::Shown Describe(QDialog* dialog)
{
    DialogAnswerer::Shown shown;
    shown.className = dialog->metaObject()->className();
    shown.title = dialog->windowTitle();
    shown.parent = dialog->parentWidget();
    if (const auto* input = qobject_cast<QInputDialog*>(dialog)) {
        shown.label = input->labelText();
        shown.items = input->comboBoxItems();
        if (const auto* combo = input->findChild<QComboBox*>()) {
            shown.currentIndex = combo->currentIndex();
            shown.isEditable = combo->isEditable();
        }
    } else if (const auto* file = qobject_cast<QFileDialog*>(dialog)) {
        shown.directory = file->directory().absolutePath();
        if (const auto* edit = file->findChild<QLineEdit*>(QLatin1String("fileNameEdit")))
            shown.fileName = edit->text();
        shown.filters = file->nameFilters();
        shown.selectedFilter = file->selectedNameFilter();
        shown.isSaving = file->acceptMode() == QFileDialog::AcceptSave;
    } else if (const auto* color = qobject_cast<QColorDialog*>(dialog)) {
        shown.color = color->currentColor();
        shown.colorOptions = int(color->options());
    }
    return shown;
}

void Reject(QDialog* dialog)
{
    dialog->reject();
}

} // namespace

DialogAnswerer::DialogAnswerer()
{
    qApp->installEventFilter(this);
}

DialogAnswerer::~DialogAnswerer()
{
    for (const Reply& reply : std::as_const(m_replies))
        ADD_FAILURE() << "expected " << reply.className.toStdString() << " never opened";
}

void DialogAnswerer::AnswerItem(const QString& text)
{
    Answer("QInputDialog", [text](QDialog* dialog) {
        auto* combo = dialog->findChild<QComboBox*>();
        const int index = combo ? combo->findText(text) : -1;
        if (index < 0) {
            ADD_FAILURE() << "no entry " << text.toStdString() << " in "
                          << dialog->windowTitle().toStdString();
            dialog->reject();
            return;
        }
        combo->setCurrentIndex(index);
        dialog->accept();
    });
}

void DialogAnswerer::AnswerText(const QString& text)
{
    Answer("QInputDialog", [text](QDialog* dialog) {
        qobject_cast<QInputDialog*>(dialog)->setTextValue(text);
        dialog->accept();
    });
}

void DialogAnswerer::CancelInput()
{
    Cancel("QInputDialog");
}

void DialogAnswerer::AnswerFile(const QString& path, const std::function<void()>& afterwards)
{
    Answer("QFileDialog", [path, afterwards](QDialog* dialog) {
        auto* file = qobject_cast<QFileDialog*>(dialog);
        file->setOption(QFileDialog::DontConfirmOverwrite);
        file->setDirectory(QFileInfo(path).absolutePath());
        const QList<QAbstractItemView*> views = file->findChildren<QAbstractItemView*>();
        for (QAbstractItemView* view : views)
            view->clearSelection(); // would win over the name
        file->findChild<QLineEdit*>(QLatin1String("fileNameEdit"))->setText(QFileInfo(path).fileName());
        dialog->accept();
        if (afterwards)
            afterwards();
    });
}

void DialogAnswerer::CancelFile()
{
    Cancel("QFileDialog");
}

void DialogAnswerer::AnswerColor(const QColor& color)
{
    Answer("QColorDialog", [color](QDialog* dialog) {
        qobject_cast<QColorDialog*>(dialog)->setCurrentColor(color);
        dialog->accept();
    });
}

void DialogAnswerer::CancelColor()
{
    Cancel("QColorDialog");
}

void DialogAnswerer::Accept(const QByteArray& className)
{
    Answer(className, [](QDialog* dialog) {
        const auto* buttonBox = dialog->findChild<QDialogButtonBox*>();
        if (auto* button = buttonBox ? buttonBox->button(QDialogButtonBox::Ok) : nullptr)
            button->click();
        else
            dialog->accept();
    });
}

void DialogAnswerer::Cancel(const QByteArray& className)
{
    Answer(className, &Reject);
}

void DialogAnswerer::Answer(const QByteArray& className, const std::function<void(QDialog*)>& drive)
{
    m_replies.append({className, drive});
}

QList<DialogAnswerer::Shown> DialogAnswerer::Take()
{
    return std::exchange(m_shown, {});
}

bool DialogAnswerer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        auto* dialog = qobject_cast<QDialog*>(watched);
        if (dialog && dialog->isModal() && !qobject_cast<QMessageBox*>(dialog)) {
            // Later: the dialog starts its modal event loop only after this event.
            QTimer::singleShot(0, dialog, [this, dialog] { ReplyTo(dialog); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void DialogAnswerer::ReplyTo(QDialog* dialog)
{
    const Shown shown = Describe(dialog);
    m_shown.append(shown);
    if (m_replies.isEmpty()) {
        ADD_FAILURE() << "unexpected dialog: " << shown.className.constData() << " "
                      << shown.title.toStdString();
        dialog->reject();
        return;
    }
    const Reply reply = m_replies.takeFirst();
    if (reply.className != shown.className) {
        ADD_FAILURE() << "dialog " << shown.className.constData() << " " << shown.title.toStdString()
                      << " opened where " << reply.className.constData() << " was expected";
        dialog->reject();
        return;
    }
    reply.drive(dialog);
    if (dialog->isVisible()) {
        ADD_FAILURE() << "the answer left the dialog open: " << shown.title.toStdString();
        dialog->reject();
    }
}
