// Solids of an STL file: corners are welded as they come.

#pragma once

#include <ZORGeometry/ZORGeoStlReport.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QList>
#include <QString>

#include <algorithm>
#include <array>
#include <vector>

namespace zor::geo {

constexpr quint32 kExponentBits = 0x7f800000; // of a float; all set where it is not finite

} // namespace zor::geo

/// Gives equal points one index, in the order of their first appearance: open addressing on the 96 bits of
/// the three floats.
class ZORGeoVertexWelder
{
public:
    using Key = std::array<quint32, 3>; // bits of x, y, z; never those of -0

    static quint32 Hash(const Key& key);

    void Reserve(size_t vertices);
    void Prefetch(quint32 hash) const { __builtin_prefetch(&m_slots[hash & m_mask]); }
    int Weld(const Key& key, quint32 hash);

    const std::vector<Key>& GetKeys() const { return m_keys; }
    void FreeTable() { m_slots = {}; }

private:
    void Grow(size_t capacity);

    std::vector<Key> m_keys;
    std::vector<quint32> m_slots = std::vector<quint32>(64); // index + 1 into the keys; 0: free
    quint32 m_mask = 63;
};

/// One solid of a file.
struct ZORGeoStlSolid
{
    QString name;
    QList<ZORMathPoint> vertices; // millimetres
    QList<ZORGeoSurface::Corners> triangles;
};

/// Collects the facets of one solid.
class ZORGeoStlSolidBuilder
{
public:
    /// \param report  counts every facet that comes; not owned
    explicit ZORGeoStlSolidBuilder(ZORGeoStlReport& report)
        : m_report(&report)
    {
    }

    void Reserve(qint64 facets);

    /// \param corners  nine floats as their bits: x, y, z of the three corners
    void AddFacet(const quint32* corners)
    {
        std::copy(corners, corners + 9, m_block[m_blockSize].begin());
        if (++m_blockSize == m_block.size())
            Flush();
    }

    /// The solid, without name; the builder then stands for the next one.
    /// \param factor  millimetres a unit of the file
    ZORGeoStlSolid Take(double factor);

private:
    void Flush();

    ZORGeoStlReport* m_report; // not owned
    QList<ZORGeoSurface::Corners> m_triangles;
    ZORGeoVertexWelder m_welder;
    std::array<std::array<quint32, 9>, 64> m_block; // facets that wait for their welding
    size_t m_blockSize = 0;
};
