#include "script/ZORHostDocumentQuery.h"

#include "script/ZORHostScriptError.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <algorithm>

namespace {

ZORFeatEnvironment* Environment()
{
    ZORFeatEnvironment* environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!environment)
        throw ZORHostScriptError("there is no document");
    return environment;
}

const ZORGeoGeometry* FindGeometry(const QString& name)
{
    const ZORFeatContainer* container = Environment()->GetContainer();
    for (int i = 0; i < container->GetNumGeometry(); ++i) {
        const ZORGeoGeometry* geometry = container->GetGeometryByIndex(i);
        if (geometry && geometry->objectName() == name)
            return geometry;
    }
    throw ZORHostScriptError(QStringLiteral("no geometry '%1'").arg(name));
}

const ZORGeoSurface* FindSurface(const QString& name)
{
    const auto* surface = qobject_cast<const ZORGeoSurface*>(FindGeometry(name));
    if (!surface)
        throw ZORHostScriptError(QStringLiteral("geometry '%1' is no surface").arg(name));
    return surface;
}

const ZORGeoCurve* FindCurve(const QString& name)
{
    const auto* curve = qobject_cast<const ZORGeoCurve*>(FindGeometry(name));
    if (!curve)
        throw ZORHostScriptError(QStringLiteral("geometry '%1' is no curve").arg(name));
    return curve;
}

} // namespace

int ZORHostDocumentQuery::CountGeometries()
{
    return Environment()->GetContainer()->GetNumGeometry();
}

int ZORHostDocumentQuery::CountVirtualObjects()
{
    return Environment()->GetNumVirtualObjects();
}

int ZORHostDocumentQuery::CountReferences(const QString& geometry)
{
    return FindGeometry(geometry)->GetReferenceCount();
}

int ZORHostDocumentQuery::CountTriangles(const QString& surface)
{
    return FindSurface(surface)->GetNumTriangles();
}

int ZORHostDocumentQuery::CountPoints(const QString& curve)
{
    return FindCurve(curve)->GetNumPoints();
}

double ZORHostDocumentQuery::MeasureLength(const QString& curve)
{
    return FindCurve(curve)->GetLength();
}

double ZORHostDocumentQuery::MeasureDeviation(const QString& curve, const QString& surface)
{
    const ZORGeoSurface* support = FindSurface(surface);
    const ZORMathSetOfPoints points = FindCurve(curve)->GetPoints();
    double largest = 0;
    for (qsizetype i = 0; i < points.size(); ++i) {
        const ZORMathPoint next = points[std::min(i + 1, points.size() - 1)];
        for (const ZORMathPoint& point : {points[i], points[i] + 0.5 * (next - points[i])})
            largest = std::max(largest, point.DistanceTo(support->Project(point).point));
    }
    return largest;
}
