#include "ZORGeoContainerIndex_p.h"
#include "ZORGeoGeometry_p.h"

#include <ZORGeometry/ZORGeoGeometry.h>

#include <bit>

namespace {

constexpr size_t LowBit(size_t i)
{
    return i & (~i + 1);
}

} // namespace

ZORGeoGeometry* ZORGeoContainerIndex::At(qsizetype index) const
{
    if (index < 0 || index >= m_live)
        return nullptr;
    if (!m_hasHoles.load(std::memory_order_acquire))
        return m_slots.at(m_first + index);
    const std::lock_guard lock(m_mutex);
    return FindBetweenHoles(index);
}

const std::map<const QObject*, int>& ZORGeoContainerIndex::UsersOf(const ZORGeoGeometry& geometry)
{
    return geometry.d->users;
}

ZORGeoGeometry* ZORGeoContainerIndex::FindBetweenHoles(qsizetype index) const
{
    // Another thread may have packed the list meanwhile.
    if (!m_hasHoles.load(std::memory_order_relaxed))
        return m_slots.at(m_first + index);
    if (++m_lookups > m_slots.size()) {
        Pack();
        return m_slots.at(index);
    }
    if (m_tree.empty())
        BuildTree();
    return m_slots.at(FindSlot(index));
}

void ZORGeoContainerIndex::Append(ZORGeoGeometry* geometry)
{
    geometry->d->slot = m_slots.size();
    m_slots.append(geometry);
    ++m_live;
    if (m_tree.empty())
        return;
    const size_t i = m_tree.size() + 1;
    int living = 1;
    for (size_t step = 1; step < LowBit(i); step *= 2)
        living += m_tree[i - step - 1];
    m_tree.push_back(living);
}

void ZORGeoContainerIndex::Remove(ZORGeoGeometry* geometry)
{
    const qsizetype slot = geometry->d->slot;
    geometry->d->slot = -1;
    m_slots[slot] = nullptr;
    --m_live;
    if (!m_tree.empty()) {
        for (size_t i = size_t(slot) + 1; i <= m_tree.size(); i += LowBit(i))
            --m_tree[i - 1];
    }
    while (!m_slots.isEmpty() && !m_slots.last())
        m_slots.removeLast();
    if (!m_tree.empty())
        m_tree.resize(size_t(m_slots.size()));
    m_first = std::min(m_first, m_slots.size());
    while (m_first < m_slots.size() && !m_slots[m_first])
        ++m_first;
    m_hasHoles.store(m_first + m_live != m_slots.size(), std::memory_order_relaxed);
    if (m_slots.size() > 2 * m_live + 64)
        Pack();
}

// Descends from the largest power of two: the slot before which exactly `index` geometries live.
qsizetype ZORGeoContainerIndex::FindSlot(qsizetype index) const
{
    size_t position = 0;
    int remaining = int(index);
    for (size_t step = std::bit_floor(m_tree.size()); step > 0; step /= 2) {
        const size_t next = position + step;
        if (next <= m_tree.size() && m_tree[next - 1] <= remaining) {
            remaining -= m_tree[next - 1];
            position = next;
        }
    }
    return qsizetype(position);
}

void ZORGeoContainerIndex::BuildTree() const
{
    m_tree.assign(size_t(m_slots.size()), 0);
    for (size_t i = 1; i <= m_tree.size(); ++i) {
        m_tree[i - 1] += m_slots[qsizetype(i - 1)] ? 1 : 0;
        if (const size_t parent = i + LowBit(i); parent <= m_tree.size())
            m_tree[parent - 1] += m_tree[i - 1];
    }
}

void ZORGeoContainerIndex::Pack() const
{
    m_slots.removeAll(nullptr);
    for (qsizetype slot = m_first = 0; slot < m_slots.size(); ++slot)
        m_slots[slot]->d->slot = slot;
    m_tree.clear();
    m_lookups = 0;
    m_hasHoles.store(false, std::memory_order_release);
}
