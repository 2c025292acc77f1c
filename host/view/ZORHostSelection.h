// What the user has selected, and what the pointer rests on.

#pragma once

#include "view/ZORHostObjectKind.h"

#include <ZORGeometry/ZORGeoContainer.h>

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>

#include <map>

class ZORGeoGeometry;

/// The one selection of the main window, which the tree, the view, commands on objects and pickers share.
///
/// Objects are those that are registered with the container; everything else is ignored. An object that is about to
/// be removed leaves the selection and ceases to be hovered at that moment; Changed() follows when control returns to
/// the event loop, once for all that have left.
/// Pointers belong to the container; no reference is counted.
///
/// Thread safety: main thread only.
class ZORHostSelection : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE(<ZORGeometry / ZORGeoGeometry.h>)

public:
    explicit ZORHostSelection(QObject* parent = nullptr);
    ~ZORHostSelection() override;

    /// Follows another container; nothing is selected or hovered afterwards.
    /// \param container  not owned; may be null and may be destroyed first
    void SetContainer(ZORGeoContainer* container);

    /// Null for none, and when it has been destroyed.
    ZORGeoContainer* GetContainer() const { return m_container; }
    /// Returns the selected objects in the order in which they were selected. O(selected objects).
    QList<ZORGeoGeometry*> GetObjects() const;
    /// Returns the object that was selected last; null for none.
    ZORGeoGeometry* GetLast() const;
    bool IsEmpty() const { return m_order.empty(); }
    int GetCount() const { return int(m_order.size()); }
    bool Contains(const ZORGeoGeometry* object) const { return m_numbers.contains(object); }

    /// Replaces the selection. Changed() is emitted unless the same objects were selected before.
    void Set(const QList<ZORGeoGeometry*>& objects);
    void Add(const QList<ZORGeoGeometry*>& objects);
    void Remove(const QList<ZORGeoGeometry*>& objects);
    /// Selects each object that is not selected, and takes each other one out.
    void Toggle(const QList<ZORGeoGeometry*>& objects);
    void Clear();

    /// Returns the object that the pointer rests on, in the view or in the tree; null for none.
    ZORGeoGeometry* GetHovered() const { return m_hovered; }
    /// \param object  null for none
    void SetHovered(ZORGeoGeometry* object);

    /// Returns the kinds of objects that the view offers for picking; all by default. The tree is not restricted, and
    /// what is selected already stays.
    ZORHostObjectKinds GetFilter() const { return m_filter; }
    void SetFilter(ZORHostObjectKinds kinds);
    /// Checks whether the filter lets the user pick \a object in the view; false for null.
    bool Accepts(const ZORGeoGeometry* object) const;

signals:
    void Changed();
    /// \param object  as GetHovered()
    void HoveredChanged(ZORGeoGeometry* object);
    void FilterChanged(ZORHostObjectKinds kinds);

private:
    bool IsSelectable(const ZORGeoGeometry* object) const;
    bool Insert(ZORGeoGeometry* object);
    bool TakeOut(const ZORGeoGeometry* object);
    void Forget(const ZORGeoGeometry* object);
    void Empty();

    QPointer<ZORGeoContainer> m_container; // not owned
    // The number of an object is its position in the order of selection.
    QHash<const ZORGeoGeometry*, quint64> m_numbers;
    std::map<quint64, ZORGeoGeometry*> m_order;
    quint64 m_nextNumber = 0;
    // Announced removals, which nest: these objects must not be selected again.
    QList<const ZORGeoGeometry*> m_leaving;
    ZORGeoGeometry* m_hovered = nullptr;
    ZORHostObjectKinds m_filter = kZORHostAllObjectKinds;
    bool m_isChangePosted = false;
};
