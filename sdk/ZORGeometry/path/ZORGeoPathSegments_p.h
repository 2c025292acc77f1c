// The segments of a path over a mesh by triangle.

#pragma once

#include "walk/ZORGeoMeshJoin_p.h"

#include <bitset>
#include <unordered_map>
#include <vector>

/// The segments of a path, to be found by triangle: those in it and those along its sides.
class ZORGeoPathSegments
{
public:
    /// \param mesh,path  not owned, outlive this object
    /// \param first      first segment to take
    ZORGeoPathSegments(const ZORGeoMesh& mesh, const ZORGeoMeshPath& path, size_t first);

    const std::vector<size_t>* Find(int triangle) const;
    const ZORGeoMeshPath& GetPath() const { return m_path; }

private:
    static constexpr int kBitCount = 1 << 15;
    static size_t BitOf(int triangle) { return (quint32(triangle) * 0x9E3779B1u) >> 17; }
    void Insert(int triangle, size_t segment);

    const ZORGeoMeshPath& m_path;
    std::unordered_map<int, std::vector<size_t>> m_segments;
    // Walks ask for every triangle that they cross, nearly all of them without segments.
    std::bitset<kBitCount> m_mayHold;
};
