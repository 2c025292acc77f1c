// Entries of combo boxes that stand for objects.

#pragma once

#include <QComboBox>
#include <QPointer>
#include <QVariant>

/// Fills combo boxes with objects. Beside the object itself an entry holds a guarded pointer to it: the dialogs are not
/// modal, so an object may be deleted while its entry is in the list.
namespace ZORTestObjectEntries {

constexpr int kGuardRole = Qt::UserRole + 1;

/// Appends an entry.
/// \param object  not owned
template<class Object>
void Append(QComboBox* combo, const QString& text, Object* object)
{
    combo->addItem(text, QVariant::fromValue(object));
    combo->setItemData(combo->count() - 1, QVariant::fromValue(QPointer<QObject>(object)), kGuardRole);
}

/// Returns the object of the current entry; null when there is none or the object is gone.
template<class Object>
Object* GetCurrent(const QComboBox* combo)
{
    const QVariant guard = combo->currentData(kGuardRole);
    if (guard.isValid() && guard.value<QPointer<QObject>>().isNull())
        return nullptr;
    return combo->currentData().value<Object*>();
}

} // namespace ZORTestObjectEntries
