#include "ZORGeoCurveOnSurOper.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>

#include <QPointer>

class ZORGeoCurveOnSurOper::Private
{
public:
    QPointer<ZORGeoCurveOnSurface> curve; // not owned
};

ZORGeoCurveOnSurOper::ZORGeoCurveOnSurOper()
    : d(std::make_unique<Private>())
{
}

ZORGeoCurveOnSurOper::~ZORGeoCurveOnSurOper() = default;

ZORGeoCurveOnSurface* ZORGeoCurveOnSurOper::GetCurve() const
{
    return d->curve;
}

void ZORGeoCurveOnSurOper::SetCurve(ZORGeoCurveOnSurface* curve)
{
    d->curve = curve;
}
