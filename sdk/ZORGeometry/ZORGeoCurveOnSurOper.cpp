#include "ZORGeoCurveOnSurOper.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>

ZORGeoCurveOnSurOper::ZORGeoCurveOnSurOper() = default;

ZORGeoCurveOnSurOper::~ZORGeoCurveOnSurOper() = default;

ZORGeoCurveOnSurface* ZORGeoCurveOnSurOper::GetCurve() const
{
    return m_curve;
}

void ZORGeoCurveOnSurOper::SetCurve(ZORGeoCurveOnSurface* curve)
{
    m_curve = curve;
}
