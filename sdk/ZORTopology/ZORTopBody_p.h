// Private data of ZORTopBody, which its vertices, edges and faces read.

#pragma once

#include "ZORTopStructure_p.h"

#include <ZORGeometry/ZORGeoReference.h>

#include <algorithm>
#include <numbers>

class ZORTopBodyPrivate
{
public:
    std::vector<ZORGeoReference<const ZORGeoGeometry>> parts;
    ZORTopStructure structure;
    double tolerance = std::numbers::pi; // edge tolerance; of use when the body has a single part

    /// Divides the single part again, or follows what has changed of several. All parts must be there.
    void Update();
    /// Adds the points along an edge, which is the whole of its curve, and moves its vertices to the ends.
    void AddPointsOfEdge(int edge, ZORTopIndexLists& pointsOfEdge);
    /// Whether no part has been destroyed.
    bool IsComplete() const
    {
        return std::all_of(parts.begin(), parts.end(), [](const auto& part) { return part.Get(); });
    }
    /// \return null for no part, -1, and for one that has been destroyed
    const ZORGeoGeometry* GetPart(int part) const { return part < 0 ? nullptr : parts[size_t(part)].Get(); }
};
