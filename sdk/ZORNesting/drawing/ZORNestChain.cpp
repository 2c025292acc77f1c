#include "ZORNestChain_p.h"

#include <algorithm>

ZORNestPlaneBox ZORNestCurve::GetBox() const
{
    ZORNestPlaneBox box;
    for (const ZORNestPiece& piece : pieces)
        box.Add(piece.GetBox());
    return box;
}

void ZORNestCurve::Reverse()
{
    std::reverse(pieces.begin(), pieces.end());
    for (ZORNestPiece& piece : pieces)
        piece.Reverse();
}

ZORNestPlaneBox ZORNestChain::GetBox() const
{
    ZORNestPlaneBox box;
    for (const ZORNestCurve& curve : curves)
        box.Add(curve.GetBox());
    return box;
}

double ZORNestChain::GetArea() const
{
    // About a point of the chain: far from the origin the products would lose the area.
    const ZORNestPlanePoint origin = curves.constFirst().GetStart();
    double area = 0;
    for (const ZORNestCurve& curve : curves) {
        for (const ZORNestPiece& piece : curve.pieces)
            area += piece.GetTwiceArea(origin);
    }
    return area / 2;
}

bool ZORNestChain::Contains(ZORNestPlanePoint point) const
{
    int crossings = 0;
    for (const ZORNestCurve& curve : curves) {
        for (const ZORNestPiece& piece : curve.pieces)
            crossings += piece.CountCrossings(point);
    }
    return crossings % 2 == 1;
}

void ZORNestChain::Reverse()
{
    std::reverse(curves.begin(), curves.end());
    for (ZORNestCurve& curve : curves)
        curve.Reverse();
}
