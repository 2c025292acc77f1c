#include "view/ZORHostObjectKind.h"

#include <ZORFeature/ZORFeatObject.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QCoreApplication>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostObjectKind)
};

} // namespace

ZORHostObjectKind ZORHostObjectKindOf(const ZORGeoGeometry* object)
{
    const bool isFeature = qobject_cast<const ZORFeatObject*>(object);
    const ZORGeoGeometry* const shape = isFeature ? ZORFeatShapeOf(object) : object;
    if (qobject_cast<const ZORGeoPoint*>(shape))
        return ZORHostObjectKind::Point;
    if (qobject_cast<const ZORGeoCurve*>(shape))
        return ZORHostObjectKind::Curve;
    if (qobject_cast<const ZORGeoSurface*>(shape))
        return ZORHostObjectKind::Surface;
    if (isFeature)
        return ZORHostObjectKind::Feature;
    return qobject_cast<const ZORTopBody*>(shape) ? ZORHostObjectKind::Body : ZORHostObjectKind::Other;
}

QString ZORHostObjectKindName(ZORHostObjectKind kind)
{
    switch (kind) {
    case ZORHostObjectKind::Point:
        return Texts::tr("Points");
    case ZORHostObjectKind::Curve:
        return Texts::tr("Curves");
    case ZORHostObjectKind::Surface:
        return Texts::tr("Surfaces");
    case ZORHostObjectKind::Body:
        return Texts::tr("Bodies");
    case ZORHostObjectKind::Feature:
        return Texts::tr("Features");
    case ZORHostObjectKind::Other:
        break;
    }
    return Texts::tr("Other objects");
}
