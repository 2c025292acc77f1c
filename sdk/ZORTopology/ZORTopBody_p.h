// Private data of ZORTopBody, which its vertices, edges and faces read.

#pragma once

#include "ZORTopStructure_p.h"

#include <ZORGeometry/ZORGeoReference.h>

#include <algorithm>

class ZORTopBodyPrivate
{
public:
    std::vector<ZORGeoReference<const ZORGeoGeometry>> parts;
    ZORTopStructure structure;

    /// Whether no part has been destroyed.
    bool IsComplete() const
    {
        return std::all_of(parts.begin(), parts.end(), [](const auto& part) { return part.Get(); });
    }
    /// \return null for no part, -1, and for one that has been destroyed
    const ZORGeoGeometry* GetPart(int part) const { return part < 0 ? nullptr : parts[size_t(part)].Get(); }
};
