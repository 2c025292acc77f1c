#include "visualization/ZORTestCurveVisualizer.h"

#include "core/ZORTestEnvironment.h"
#include "core/ZORTestRegistration.h"
#include "visualization/ZORTestCurveVisOptionsDlg.h"

#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoRangeOfCurve.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QPointer>

ZOR_TEST_REGISTER(ZORTestCurveVisualizer)

namespace {

const ZORVisPrimitive* CreatePointMarks(const ZORGeoCurve* curve)
{
    ZORMathSetOfPoints points;
    const int count = curve->GetNumPoints();
    points.reserve(count);
    for (int i = 0; i < count; ++i)
        points.append(curve->GetPoint(i));
    return new ZORVisPointPrimitive(points);
}

// " 0", " 1", ... beside the points.
void AppendPointIndexes(QList<const ZORVisPrimitive*>& primitives, const ZORGeoCurve* curve)
{
    const int count = curve->GetNumPoints();
    for (int i = 0; i < count; ++i) {
        primitives.append(new ZORVisTextPrimitive(QString::fromLatin1(" %1").arg(i), curve->GetPoint(i),
                                                  ZORVisTextPrimitive::AnchorLocation(0),
                                                  ZORVisTextPrimitive::Scalability(1)));
    }
}

} // namespace

ZORTestCurveVisualizer::ZORTestCurveVisualizer() = default;

ZORVisVirtualObject* ZORTestCurveVisualizer::Visualize(ZORTestEnvironment* environment,
                                                       ZORGeoGeometry* geometry)
{
    const QPointer<ZORGeoCurve> curve = qobject_cast<ZORGeoCurve*>(geometry);
    if (!curve)
        throw ZORSysException(tr("geometry is not a curve"));
    ZORTestCurveVisOptionsDlg dialog(environment);
    if (dialog.exec() != QDialog::Accepted || !curve) // it may have been deleted meanwhile
        return nullptr;

    const auto makeRep = [curve, isDrawLines = dialog.IsDrawLines(),
                          isShowPointIndexes = dialog.IsShowPointIndexes(), options = dialog.GetOptions()] {
        QList<const ZORVisPrimitive*> primitives;
        if (isDrawLines)
            primitives.append(new ZORVisPolylinePrimitive(curve, ZORGeoRangeOfCurve()));
        else
            primitives.append(CreatePointMarks(curve));
        if (isShowPointIndexes)
            AppendPointIndexes(primitives, curve);
        return new ZORVisRepGraphics(primitives, options);
    };
    auto* object = new ZORVisVirtualObject(environment->GetEnvironment(), curve);
    object->SetRep(makeRep());
    object->FollowGeometry(curve, makeRep);
    return object;
}
