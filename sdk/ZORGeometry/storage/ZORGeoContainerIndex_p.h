// The list of a container: look-up by number among geometries that come and go anywhere.

#pragma once

#include <QList>

#include <atomic>
#include <map>
#include <mutex>
#include <vector>

class QObject;
class ZORGeoGeometry;

/// Geometries in the order of their registration. Every one knows its slot; removal leaves a hole.
///
/// Without holes between geometries a look-up is an array access. With holes it descends a Fenwick tree
/// that counts the living; once there were as many look-ups as slots, or more holes than geometries, the
/// list is packed again, so that a walk through the list costs constant time a step.
///
/// Several threads may look up at once while none changes the list. With holes they take turns, which costs some
/// 15 ns a look-up.
class ZORGeoContainerIndex
{
public:
    qsizetype GetCount() const { return m_live; }
    ZORGeoGeometry* At(qsizetype index) const;
    ZORGeoGeometry* Last() const { return m_slots.last(); } // the list is not empty

    void Append(ZORGeoGeometry* geometry);
    void Remove(ZORGeoGeometry* geometry);

    /// Returns the references of a geometry by user; pointers to users are for comparison only.
    static const std::map<const QObject*, int>& UsersOf(const ZORGeoGeometry& geometry);

private:
    ZORGeoGeometry* FindBetweenHoles(qsizetype index) const;
    qsizetype FindSlot(qsizetype index) const;
    void BuildTree() const;
    void Pack() const;

    // Look-ups change what is mutable only while there are holes, and only under the mutex.
    mutable std::mutex m_mutex;
    mutable std::atomic<bool> m_hasHoles = false; // between geometries
    mutable QList<ZORGeoGeometry*> m_slots;       // not owned; null: a hole; the last one is none
    mutable std::vector<int> m_tree; // [i - 1]: living in the slots (i - lowbit(i), i]; empty: not built
    mutable qsizetype m_first = 0;   // holes at the front
    mutable qsizetype m_lookups = 0; // through the tree, since the list was packed
    qsizetype m_live = 0;
};
