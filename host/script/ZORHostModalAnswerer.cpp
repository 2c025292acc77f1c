#include "script/ZORHostModalAnswerer.h"

#include "actions/ZORHostActionIndex.h"
#include "script/ZORHostScriptError.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColorDialog>
#include <QEvent>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace {

QString Describe(const QDialog* dialog)
{
    QString text = QStringLiteral("'%1' (%2)")
                       .arg(dialog->windowTitle(), QString::fromLatin1(dialog->metaObject()->className()));
    if (const auto* box = qobject_cast<const QMessageBox*>(dialog))
        text += QStringLiteral(": %1").arg(box->text());
    return text;
}

template<class Dialog>
Dialog* Expect(QDialog* dialog, const QString& kind)
{
    auto* wanted = qobject_cast<Dialog*>(dialog);
    if (!wanted)
        throw ZORHostScriptError(
            QStringLiteral("the answer '%1' does not fit the dialog %2").arg(kind, Describe(dialog)));
    return wanted;
}

void ChooseFilter(QFileDialog* dialog, const QString& filter)
{
    if (!dialog->nameFilters().contains(filter)) {
        throw ZORHostScriptError(QStringLiteral("the file dialog has no filter '%1', but: %2")
                                     .arg(filter, dialog->nameFilters().join(QLatin1String(", "))));
    }
    dialog->selectNameFilter(filter);
}

void AnswerFile(QFileDialog* dialog, const QString& path, const QStringList& filter)
{
    if (!filter.isEmpty())
        ChooseFilter(dialog, filter.constFirst());
    auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
    if (!edit)
        throw ZORHostScriptError("a file dialog of the platform cannot be answered");
    const QList<QAbstractItemView*> views = dialog->findChildren<QAbstractItemView*>();
    for (QAbstractItemView* view : views)
        view->clearSelection(); // a file that is proposed would win over the name
    edit->setText(path);
    const QPointer<QFileDialog> guard(dialog);
    static_cast<QDialog*>(dialog)->accept(); // protected in the class itself
    if (guard && guard->isVisible())
        throw ZORHostScriptError(QStringLiteral("the file dialog does not take '%1'").arg(path));
}

void AnswerItem(QInputDialog* dialog, const QStringList& choice)
{
    if (!choice.isEmpty()) {
        if (!dialog->comboBoxItems().contains(choice.constFirst())) {
            throw ZORHostScriptError(QStringLiteral("the query '%1' has no choice '%2', but: %3")
                                         .arg(dialog->windowTitle(), choice.constFirst(),
                                              dialog->comboBoxItems().join(QLatin1String(", "))));
        }
        dialog->setTextValue(choice.constFirst());
    }
    dialog->accept();
}

void AnswerColor(QColorDialog* dialog, const QString& name)
{
    const QColor color(name);
    if (!color.isValid())
        throw ZORHostScriptError(QStringLiteral("'%1' is no colour").arg(name));
    dialog->setCurrentColor(color);
    dialog->accept();
}

void AnswerBox(QMessageBox* box, const QString& buttonText, const QStringList& expectedText)
{
    if (!expectedText.isEmpty() && box->text() != expectedText.constFirst()) {
        throw ZORHostScriptError(
            QStringLiteral("the box says '%1', not '%2'").arg(box->text(), expectedText.constFirst()));
    }
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* button : buttons) {
        if (ZORHostPlainText(button->text()) == buttonText) {
            button->click();
            return;
        }
    }
    throw ZORHostScriptError(QStringLiteral("the box '%1' has no button '%2'").arg(box->text(), buttonText));
}

} // namespace

ZORHostModalAnswerer::ZORHostModalAnswerer(std::function<void(const ZORHostScriptStep&, QDialog*)> playBlock)
    : m_playBlock(std::move(playBlock))
{
    qApp->installEventFilter(this);
}

ZORHostModalAnswerer::~ZORHostModalAnswerer() = default;

bool ZORHostModalAnswerer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        auto* dialog = qobject_cast<QDialog*>(watched);
        // Later: the dialog starts its event loop only after this event.
        if (dialog && dialog->isModal())
            QTimer::singleShot(0, dialog, [this, dialog] { Answer(dialog); });
    }
    return QObject::eventFilter(watched, event);
}

void ZORHostModalAnswerer::Answer(QDialog* dialog)
{
    const QString description = Describe(dialog);
    if (m_queue.isEmpty()) {
        emit Failed(QStringLiteral("unexpected dialog %1").arg(description));
        dialog->reject();
        return;
    }
    const QPointer<QDialog> guard(dialog);
    const ZORHostScriptStep step = m_queue.dequeue();
    try {
        Apply(step, dialog);
        emit Answered(description);
    } catch (const ZORHostScriptError& error) {
        emit Failed(
            QStringLiteral("answer of line %1: %2").arg(QString::number(step.line), error.GetMessage()));
        if (guard)
            guard->reject();
    }
}

void ZORHostModalAnswerer::Apply(const ZORHostScriptStep& step, QDialog* dialog)
{
    const QString& kind = step.arguments.constFirst();
    const QStringList values = step.arguments.mid(1);
    if (kind == QLatin1String("file")) {
        AnswerFile(Expect<QFileDialog>(dialog, kind), values.constFirst(), values.mid(1));
    } else if (kind == QLatin1String("item")) {
        AnswerItem(Expect<QInputDialog>(dialog, kind), values);
    } else if (kind == QLatin1String("text")) {
        auto* input = Expect<QInputDialog>(dialog, kind);
        input->setTextValue(values.constFirst());
        input->accept();
    } else if (kind == QLatin1String("color")) {
        AnswerColor(Expect<QColorDialog>(dialog, kind), values.constFirst());
    } else if (kind == QLatin1String("box")) {
        AnswerBox(Expect<QMessageBox>(dialog, kind), values.constFirst(), values.mid(1));
    } else if (kind == QLatin1String("cancel")) {
        dialog->reject();
    } else {
        const QString& title = values.constFirst();
        if (dialog->windowTitle() != title && dialog->objectName() != title
            && title != QLatin1String(dialog->metaObject()->className()))
            throw ZORHostScriptError(
                QStringLiteral("expected the dialog '%1', not %2").arg(title, Describe(dialog)));
        m_playBlock(step, dialog);
    }
}
