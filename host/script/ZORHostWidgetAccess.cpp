#include "script/ZORHostWidgetAccess.h"

#include "script/ZORHostScriptError.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextEdit>

namespace {

QString NameOf(const QWidget* widget)
{
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

ZORHostScriptError Error(const QWidget* widget, const QString& message)
{
    return ZORHostScriptError(QStringLiteral("widget '%1' %2").arg(NameOf(widget), message));
}

void RequireUsable(const QWidget* widget)
{
    if (!widget->isVisible())
        throw Error(widget, "is not visible");
    if (!widget->isEnabled())
        throw Error(widget, "is disabled");
}

QString OnOff(bool on)
{
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

bool ParseOnOff(const QWidget* widget, const QString& value)
{
    if (value != QLatin1String("on") && value != QLatin1String("off"))
        throw Error(widget, QStringLiteral("takes on or off, not '%1'").arg(value));
    return value == QLatin1String("on");
}

void SetCombo(QComboBox* combo, const QString& value)
{
    const int index = combo->findText(value, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (index >= 0) {
        combo->setCurrentIndex(index);
        return;
    }
    if (combo->isEditable()) {
        combo->setEditText(value);
        return;
    }
    QStringList choices;
    for (int i = 0; i < combo->count(); ++i)
        choices.append(combo->itemText(i));
    throw Error(combo,
                QStringLiteral("has no choice '%1', but: %2").arg(value, choices.join(QLatin1String(", "))));
}

void SetTab(QTabWidget* tabs, const QString& value)
{
    for (int i = 0; i < tabs->count(); ++i) {
        if (tabs->tabText(i) == value) {
            tabs->setCurrentIndex(i);
            return;
        }
    }
    throw Error(tabs, QStringLiteral("has no tab '%1'").arg(value));
}

template<class SpinBox>
void SetNumber(SpinBox* spin, const QString& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber)
        throw Error(spin, QStringLiteral("takes a number, not '%1'").arg(value));
    if (number < spin->minimum() || number > spin->maximum()) {
        throw Error(spin,
                    QStringLiteral("takes %1 to %2, not '%3'")
                        .arg(QString::number(spin->minimum()), QString::number(spin->maximum()), value));
    }
    spin->setValue(static_cast<decltype(spin->value())>(number));
}

void SetChecked(QAbstractButton* button, bool on)
{
    // A click, for the signals a user gives; a radio button cannot be clicked off.
    if (button->isChecked() != on)
        button->click();
    if (button->isChecked() != on)
        throw Error(button, QStringLiteral("cannot be switched %1").arg(OnOff(on)));
}

const QAbstractItemModel* ModelOf(const QWidget* widget)
{
    if (const auto* view = qobject_cast<const QAbstractItemView*>(widget)) {
        if (view->model())
            return view->model();
    }
    throw Error(widget, "has no rows");
}

int FindRow(const QWidget* widget, const QString& row)
{
    const QAbstractItemModel* model = ModelOf(widget);
    const int count = model->rowCount();
    bool isNumber = false;
    int number = row.toInt(&isNumber);
    if (isNumber) {
        if (number < 0)
            number += count;
        if (number >= 0 && number < count)
            return number;
        throw Error(widget, QStringLiteral("has no row %1 in its %2 rows").arg(row, QString::number(count)));
    }
    for (int i = 0; i < count; ++i) {
        if (model->index(i, 0).data().toString() == row)
            return i;
    }
    throw Error(widget, QStringLiteral("has no row '%1'").arg(row));
}

int FindColumn(const QWidget* widget, const QString& column)
{
    const QAbstractItemModel* model = ModelOf(widget);
    bool isNumber = false;
    const int number = column.toInt(&isNumber);
    for (int i = 0; i < model->columnCount(); ++i) {
        if (isNumber ? i == number : model->headerData(i, Qt::Horizontal).toString() == column)
            return i;
    }
    throw Error(widget, QStringLiteral("has no column '%1'").arg(column));
}

} // namespace

QString ZORHostWidgetAccess::GetValue(const QWidget* widget)
{
    if (const auto* combo = qobject_cast<const QComboBox*>(widget))
        return combo->currentText();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->isCheckable() ? OnOff(button->isChecked()) : button->text();
    if (const auto* spin = qobject_cast<const QSpinBox*>(widget))
        return QString::number(spin->value());
    if (const auto* spin = qobject_cast<const QDoubleSpinBox*>(widget))
        return QString::number(spin->value(), 'g', 15);
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return edit->text();
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text();
    if (const auto* tabs = qobject_cast<const QTabWidget*>(widget))
        return tabs->tabText(tabs->currentIndex());
    if (const auto* edit = qobject_cast<const QPlainTextEdit*>(widget))
        return edit->toPlainText();
    if (const auto* edit = qobject_cast<const QTextEdit*>(widget))
        return edit->toPlainText();
    if (const auto* bar = qobject_cast<const QProgressBar*>(widget))
        return QString::number(bar->value());
    if (const auto* bar = qobject_cast<const QStatusBar*>(widget))
        return bar->currentMessage();
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return box->isCheckable() ? OnOff(box->isChecked()) : box->title();
    throw Error(widget, "has no value");
}

void ZORHostWidgetAccess::SetValue(QWidget* widget, const QString& value)
{
    RequireUsable(widget);
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        SetCombo(combo, value);
    else if (auto* spin = qobject_cast<QSpinBox*>(widget))
        SetNumber(spin, value);
    else if (auto* doubleSpin = qobject_cast<QDoubleSpinBox*>(widget))
        SetNumber(doubleSpin, value);
    else if (auto* lineEdit = qobject_cast<QLineEdit*>(widget))
        lineEdit->setText(value);
    else if (auto* plainEdit = qobject_cast<QPlainTextEdit*>(widget))
        plainEdit->setPlainText(value);
    else if (auto* textEdit = qobject_cast<QTextEdit*>(widget))
        textEdit->setPlainText(value);
    else if (auto* tabs = qobject_cast<QTabWidget*>(widget))
        SetTab(tabs, value);
    else if (auto* box = qobject_cast<QGroupBox*>(widget); box && box->isCheckable())
        box->setChecked(ParseOnOff(widget, value));
    else if (auto* button = qobject_cast<QAbstractButton*>(widget); button && button->isCheckable())
        SetChecked(button, ParseOnOff(widget, value));
    else
        throw Error(widget, "cannot be set");
}

int ZORHostWidgetAccess::GetNumRows(const QWidget* widget)
{
    return ModelOf(widget)->rowCount();
}

QString ZORHostWidgetAccess::GetCell(const QWidget* widget, const QString& row, const QString& column)
{
    return ModelOf(widget)->index(FindRow(widget, row), FindColumn(widget, column)).data().toString();
}

void ZORHostWidgetAccess::SetCell(QWidget* widget, const QString& row, const QString& column,
                                  const QString& value)
{
    RequireUsable(widget);
    const QModelIndex index = ModelOf(widget)->index(FindRow(widget, row), FindColumn(widget, column));
    auto* view = qobject_cast<QAbstractItemView*>(widget);
    if (!index.flags().testFlag(Qt::ItemIsEditable)
        || view->editTriggers() == QAbstractItemView::NoEditTriggers)
        throw Error(widget, QStringLiteral("has no cell to edit in column '%1'").arg(column));

    QVariant typed = value;
    const QMetaType type = index.data(Qt::EditRole).metaType();
    const bool fits = type.id() == QMetaType::Bool
                          ? value == QLatin1String("true") || value == QLatin1String("false")
                          : !type.isValid() || typed.convert(type);
    if (!fits)
        throw Error(widget, QStringLiteral("takes no '%1' in column '%2'").arg(value, column));
    if (type.id() == QMetaType::Bool)
        typed = value == QLatin1String("true");
    view->model()->setData(index, typed, Qt::EditRole);
}

void ZORHostWidgetAccess::SelectRows(QWidget* widget, const QStringList& rows)
{
    const QAbstractItemModel* model = ModelOf(widget);
    const auto* view = qobject_cast<QAbstractItemView*>(widget);
    if (!widget->isEnabled())
        throw Error(widget, "is disabled");
    QItemSelectionModel::SelectionFlags flags = QItemSelectionModel::ClearAndSelect;
    for (const QString& row : rows) {
        const QModelIndex index = model->index(FindRow(widget, row), 0);
        if (flags.testFlag(QItemSelectionModel::Clear))
            view->selectionModel()->setCurrentIndex(index, flags | QItemSelectionModel::Rows);
        else
            view->selectionModel()->select(index, flags | QItemSelectionModel::Rows);
        flags = QItemSelectionModel::Select;
    }
}
