#include "visualization/ZORTestPointVisualizer.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "visualization/ZORTestPointVisOptionsDlg.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QPointer>

ZOR_TEST_REGISTER(ZORTestPointVisualizer)

ZORTestPointVisualizer::ZORTestPointVisualizer() = default;

ZORVisVirtualObject* ZORTestPointVisualizer::Visualize(ZORTestEnvironment* environment,
                                                       ZORGeoGeometry* geometry)
{
    const QPointer<ZORGeoPoint> point = qobject_cast<ZORGeoPoint*>(geometry);
    if (!point)
        throw ZORSysException(tr("geometry is not a point"));
    ZORTestPointVisOptionsDlg dialog(environment);
    if (dialog.exec() != QDialog::Accepted || !point) // it may have been deleted meanwhile
        return nullptr;

    const auto makeRep = [point, options = dialog.GetOptions()] {
        ZORMathSetOfPoints points;
        points.append(point->GetMathPoint());
        return new ZORVisRepGraphics({new ZORVisPointPrimitive(points)}, options);
    };
    // No owner, unlike curves and surfaces: this is established.
    auto* object = new ZORVisVirtualObject(environment->GetEnvironment(), nullptr);
    object->SetRep(makeRep());
    object->FollowGeometry(point, makeRep);
    return object;
}
