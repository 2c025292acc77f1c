#include "ZORNestResultShape.h"

#include "drawing/ZORNestShapeMeasures_p.h"

#include <ZORSystem/ZORSysApiTrace.h>

class ZORNestResultShapeData : public QSharedData
{
public:
    QList<ZORNestResultSegment> segments;
    ZORNestShapeMeasures measures;
    qint16 father = ZORNestResultShape::noFather;
    qint16 hole = 0;
    qint16 status = 0;
};

ZORNestResultShape::ZORNestResultShape()
    : ZORNestResultShape(QList<ZORNestResultSegment>())
{
}

ZORNestResultShape::ZORNestResultShape(const QList<ZORNestResultSegment>& segments)
{
    ZOR_TRACE_CALL(segments);
    d = new ZORNestResultShapeData;
    d->segments = segments;
    d->measures = ZORNestShapeMeasures::Of(segments);
}

ZORNestResultShape::ZORNestResultShape(const ZORNestResultShape& other) = default;
ZORNestResultShape::ZORNestResultShape(ZORNestResultShape&& other) noexcept = default;
ZORNestResultShape& ZORNestResultShape::operator=(const ZORNestResultShape& other) = default;
ZORNestResultShape& ZORNestResultShape::operator=(ZORNestResultShape&& other) noexcept = default;
ZORNestResultShape::~ZORNestResultShape() = default;

QList<ZORNestResultSegment> ZORNestResultShape::GetSegments() const
{
    return d->segments;
}

double ZORNestResultShape::GetArea() const
{
    return d->measures.area;
}

double ZORNestResultShape::GetPerimeter() const
{
    return d->measures.perimeter;
}

ZORMathBoundingBox ZORNestResultShape::GetBoundingBox() const
{
    return d->measures.box;
}

ZORMathPoint ZORNestResultShape::GetCenterOfMass() const
{
    return d->measures.centerOfMass;
}

qint16 ZORNestResultShape::GetRawShapeFather() const
{
    return d->father;
}

void ZORNestResultShape::SetRawShapeFather(qint16 father)
{
    ZOR_TRACE_CALL(father);
    d->father = father;
}

qint16 ZORNestResultShape::GetShapeHole() const
{
    return d->hole;
}

void ZORNestResultShape::SetShapeHole(qint16 hole)
{
    ZOR_TRACE_CALL(hole);
    d->hole = hole;
}

qint16 ZORNestResultShape::GetShapeStatus() const
{
    return d->status;
}

void ZORNestResultShape::SetShapeStatus(qint16 status)
{
    ZOR_TRACE_CALL(status);
    d->status = status;
}

bool operator==(const ZORNestResultShape& a, const ZORNestResultShape& b)
{
    return a.d == b.d
           || (a.d->father == b.d->father && a.d->hole == b.d->hole && a.d->status == b.d->status
               && a.d->segments == b.d->segments);
}

void ZorTraceAppend(QByteArray& out, const ZORNestResultShape& shape)
{
    ZorTraceAppend(out, shape.d->segments);
}
