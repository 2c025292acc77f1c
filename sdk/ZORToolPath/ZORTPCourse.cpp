#include "ZORTPCourse.h"

#include <ZORFeature/ZORFeatSketch.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceSmoother.h>
#include <ZORGeometry/ZORGeoObjectReader.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoObjectWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>

#include <cmath>
#include <memory>
#include <utility>

ZOR_GEO_REGISTER_TYPE(ZORTPCourse)

namespace {

const ZORFeatSketcherRegistration kCourseSketcher({&ZORTPCourse::staticMetaObject, ZORFeatKind::Course,
                                                   nullptr});

bool IsWidth(double width)
{
    return width > 0 && !std::isinf(width);
}

} // namespace

class ZORTPCourse::Private
{
public:
    double width;
    QPointer<ZORGeoCurveOnSurface> centerLine = nullptr; // owned, by the container once it is registered
    QPointer<ZORTopBody> body = nullptr;                 // the same
    bool isRestored = false;                             // centre line and body register themselves
};

ZORTPCourse::ZORTPCourse(ZORFeatObject* folder, const ZORGeoCurveOnSurface* centerLine, double width)
    : ZORFeatGeometry(folder)
    , d(new Private{width})
{
    ZOR_TRACE_CALL(folder, centerLine, width);
    if (!centerLine)
        throw ZORSysException(tr("centre line is null"));
    Make(centerLine->GetLocations());
}

ZORTPCourse::ZORTPCourse(ZORFeatObject* folder, const QList<ZORGeoLocationOnSurface>& locations, double width)
    : ZORFeatGeometry(folder)
    , d(new Private{width})
{
    ZOR_TRACE_CALL(folder, locations, width);
    Make(locations);
}

ZORTPCourse::ZORTPCourse(ZORFeatObject* folder, double width)
    : ZORFeatGeometry(folder)
    , d(new Private{width})
{
}

ZORTPCourse::~ZORTPCourse()
{
    // Its reference of the body goes with the body.
    delete d->body;
    delete d->centerLine;
}

double ZORTPCourse::GetWidth() const
{
    return d->width;
}

void ZORTPCourse::SetWidth(double width)
{
    ZOR_TRACE_CALL(width);
    if (!IsWidth(width))
        throw ZORSysException(tr("width is not a positive number"));
    if (width == d->width)
        return;
    d->width = width;
    ReportChange();
}

void ZORTPCourse::SetCenterLine(const QList<ZORGeoLocationOnSurface>& locations)
{
    ZOR_TRACE_CALL(locations);
    CheckCenterLine();
    if (locations.size() < 2)
        throw ZORSysException(tr("a course needs two places"));
    d->centerLine->SetLocations(ZORGeoCurveOnSurfaceSmoother::Connect(locations));
}

void ZORTPCourse::CheckCenterLine() const
{
    if (!d->centerLine)
        throw ZORSysException(tr("the course has no centre line"));
    if (!d->centerLine->GetSurface())
        throw ZORSysException(tr("the surface of the course does not exist any more"));
}

void ZORTPCourse::Make(const QList<ZORGeoLocationOnSurface>& locations)
{
    if (!IsWidth(d->width))
        throw ZORSysException(tr("width is not a positive number"));
    if (locations.size() < 2)
        throw ZORSysException(tr("a course needs two places"));
    const QList<ZORGeoLocationOnSurface> connected = ZORGeoCurveOnSurfaceSmoother::Connect(locations);
    if (GetContainer() && connected.constFirst().surface->GetContainer() != GetContainer())
        throw ZORSysException(tr("surface is in another container"));
    auto line = std::make_unique<ZORGeoCurveOnSurface>(connected, false);
    auto body = std::make_unique<ZORTopBody>(line->GetContainer(), line.get());
    Adopt(line.release(), body.release());
}

void ZORTPCourse::Adopt(ZORGeoCurveOnSurface* centerLine, ZORTopBody* body)
{
    d->centerLine = centerLine;
    d->body = body;
    if (body)
        body->AddReference(this);
    FollowBody(body);
}

void ZORTPCourse::Initialize()
{
    ZOR_TRACE_CALL();
    const bool isRestored = std::exchange(d->isRestored, false);
    if (d->centerLine && !isRestored)
        d->centerLine->Initialize();
    if (d->body && !isRestored)
        d->body->Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORTPCourse::GetBody() const
{
    return d->body;
}

QList<ZORGeoGeometry*> ZORTPCourse::GetOwnedGeometry() const
{
    QList<ZORGeoGeometry*> owned = ZORFeatGeometry::GetOwnedGeometry();
    if (d->centerLine)
        owned.prepend(d->centerLine);
    return owned;
}

const ZORGeoCurveOnSurface* ZORTPCourse::GetCenterLine() const
{
    return d->centerLine;
}

const ZORGeoSurface* ZORTPCourse::GetSurface() const
{
    return d->centerLine ? d->centerLine->GetSurface() : nullptr;
}

void ZORTPCourse::Smooth(double radius)
{
    ZOR_TRACE_CALL(radius);
    SmoothCenterLine(radius, {});
}

bool ZORTPCourse::Smooth(double radius, const std::function<bool(double)>& report)
{
    ZOR_TRACE_CALL(radius);
    return SmoothCenterLine(radius, report);
}

bool ZORTPCourse::SmoothCenterLine(double radius, const std::function<bool(double)>& report)
{
    const ZORGeoCurveOnSurfaceSmoother smoother(radius);
    CheckCenterLine();
    const QList<ZORGeoLocationOnSurface> locations = d->centerLine->GetLocations();
    const auto smooth = smoother.Smooth(locations, report);
    // A list that was left as it is shares its data.
    if (smooth && smooth->constData() != locations.constData())
        d->centerLine->SetLocations(*smooth);
    return smooth.has_value();
}

struct ZORTPCourseStorage
{
    static void Write(const ZORTPCourse& course, ZORGeoObjectWriter& writer)
    {
        // They may come behind the course, and keep their places in the container.
        writer.WriteLink("centerLine", course.d->centerLine);
        writer.WriteLink("body", course.d->body);
        writer.WriteDouble("width", course.d->width);
    }
    static ZORTPCourse* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        const double width = reader.GetDouble("width");
        if (!IsWidth(width))
            reader.Fail(ZORTPCourse::tr("width is not a positive number"));
        return new ZORTPCourse(reader.GetReference<ZORFeatObject>("parent"), width);
    }
    static void Complete(ZORTPCourse& course, const ZORGeoObjectReader& reader)
    {
        auto* const centerLine = reader.GetLink<ZORGeoCurveOnSurface>("centerLine");
        auto* const body = reader.GetLink<ZORTopBody>("body");
        if (body && body->GetGeometry() != centerLine)
            reader.Fail(ZORTPCourse::tr("the body is not that of the centre line"));
        course.Adopt(centerLine, body);
        course.d->isRestored = true;
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORTPCourse)
