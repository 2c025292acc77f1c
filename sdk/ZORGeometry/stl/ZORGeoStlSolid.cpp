#include "ZORGeoStlReport_p.h"
#include "ZORGeoStlSolid_p.h"

#include <bit>
#include <utility>

quint32 ZORGeoVertexWelder::Hash(const Key& key)
{
    quint64 hash = (quint64(key[0]) << 32 | key[1]) * 0x9e3779b97f4a7c15u;
    hash = (hash ^ (hash >> 32) ^ key[2]) * 0xd6e8feb86659fd93u;
    return quint32(hash >> 32);
}

void ZORGeoVertexWelder::Reserve(size_t vertices)
{
    m_keys.reserve(vertices);
    Grow(std::bit_ceil(vertices * 5 / 3 + 64));
}

void ZORGeoVertexWelder::Grow(size_t capacity)
{
    if (capacity <= m_slots.size())
        return;
    m_slots.assign(capacity, 0);
    m_mask = quint32(capacity - 1);
    for (size_t i = 0; i < m_keys.size(); ++i) {
        quint32 slot = Hash(m_keys[i]) & m_mask;
        while (m_slots[slot] != 0)
            slot = (slot + 1) & m_mask;
        m_slots[slot] = quint32(i) + 1;
    }
}

int ZORGeoVertexWelder::Weld(const Key& key, quint32 hash)
{
    quint32 slot = hash & m_mask;
    while (m_slots[slot] != 0) {
        if (m_keys[m_slots[slot] - 1] == key)
            return int(m_slots[slot] - 1);
        slot = (slot + 1) & m_mask;
    }
    m_keys.push_back(key);
    m_slots[slot] = quint32(m_keys.size());
    if (m_keys.size() * 5 > m_slots.size() * 3)
        Grow(m_slots.size() * 2);
    return int(m_keys.size() - 1);
}

void ZORGeoStlSolidBuilder::Reserve(qint64 facets)
{
    m_triangles.reserve(facets);
    m_welder.Reserve(size_t(facets) / 2);
}

// First all hashes, so that the slots are on their way to the cache when the second pass asks for them.
void ZORGeoStlSolidBuilder::Flush()
{
    std::array<std::array<quint32, 3>, 64> hashes;
    size_t finite = 0;
    for (size_t i = 0; i < m_blockSize; ++i) {
        std::array<quint32, 9>& facet = m_block[i];
        bool isFinite = true;
        for (quint32& bits : facet) {
            isFinite = isFinite && (bits & zor::geo::kExponentBits) != zor::geo::kExponentBits;
            bits = bits == 0x80000000 ? 0 : bits;
        }
        if (!isFinite) {
            ++m_report->d->nonFinite;
            continue;
        }
        for (size_t corner = 0; corner < 3; ++corner) {
            const size_t x = 3 * corner;
            hashes[finite][corner] = ZORGeoVertexWelder::Hash({facet[x], facet[x + 1], facet[x + 2]});
            m_welder.Prefetch(hashes[finite][corner]);
        }
        m_block[finite++] = facet;
    }
    for (size_t i = 0; i < finite; ++i) {
        const std::array<quint32, 9>& facet = m_block[i];
        const int a = m_welder.Weld({facet[0], facet[1], facet[2]}, hashes[i][0]);
        const int b = m_welder.Weld({facet[3], facet[4], facet[5]}, hashes[i][1]);
        const int c = m_welder.Weld({facet[6], facet[7], facet[8]}, hashes[i][2]);
        if (a == b || b == c || c == a)
            ++m_report->d->degenerate;
        else
            m_triangles.append({a, b, c});
    }
    m_report->d->facets += qint64(m_blockSize);
    m_blockSize = 0;
}

ZORGeoStlSolid ZORGeoStlSolidBuilder::Take(double factor)
{
    Flush();
    m_welder.FreeTable();
    const auto coordinate = [factor](quint32 bits) { return double(std::bit_cast<float>(bits)) * factor; };
    ZORGeoStlSolid solid;
    solid.triangles = std::exchange(m_triangles, {});
    solid.vertices.reserve(qsizetype(m_welder.GetKeys().size()));
    for (const ZORGeoVertexWelder::Key& key : m_welder.GetKeys())
        solid.vertices.append({coordinate(key[0]), coordinate(key[1]), coordinate(key[2])});
    m_welder = {};
    return solid;
}
