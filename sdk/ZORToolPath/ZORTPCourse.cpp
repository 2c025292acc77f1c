#include "ZORTPCourse.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceSmoother.h>
#include <ZORGeometry/ZORGeoObjectReader.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoObjectWriter.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>
#include <memory>
#include <utility>

ZOR_GEO_REGISTER_TYPE(ZORTPCourse)

namespace {

bool IsWidth(double width)
{
    return width > 0 && !std::isinf(width);
}

} // namespace

ZORTPCourse::ZORTPCourse(ZORFeatObject* folder, const ZORGeoCurveOnSurface* centerLine, double width)
    : ZORFeatGeometry(folder)
    , m_width(width)
{
    ZOR_TRACE_CALL(folder, centerLine, width);
    if (!centerLine)
        throw ZORSysException(tr("centre line is null"));
    Make(centerLine->GetLocations());
}

ZORTPCourse::ZORTPCourse(ZORFeatObject* folder, const QList<ZORGeoLocationOnSurface>& locations, double width)
    : ZORFeatGeometry(folder)
    , m_width(width)
{
    ZOR_TRACE_CALL(folder, locations, width);
    Make(locations);
}

ZORTPCourse::ZORTPCourse(ZORFeatObject* folder, double width)
    : ZORFeatGeometry(folder)
    , m_width(width)
{
}

ZORTPCourse::~ZORTPCourse()
{
    // Its reference of the body goes with the body.
    delete m_body;
    delete m_centerLine;
}

void ZORTPCourse::Make(const QList<ZORGeoLocationOnSurface>& locations)
{
    if (!IsWidth(m_width))
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
    m_centerLine = centerLine;
    m_body = body;
    if (body)
        body->AddReference(this);
    FollowBody(body);
}

void ZORTPCourse::Initialize()
{
    ZOR_TRACE_CALL();
    const bool isRestored = std::exchange(m_isRestored, false);
    if (m_centerLine && !isRestored)
        m_centerLine->Initialize();
    if (m_body && !isRestored)
        m_body->Initialize();
    ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORTPCourse::GetBody() const
{
    return m_body;
}

const ZORGeoCurveOnSurface* ZORTPCourse::GetCenterLine() const
{
    return m_centerLine;
}

const ZORGeoSurface* ZORTPCourse::GetSurface() const
{
    return m_centerLine ? m_centerLine->GetSurface() : nullptr;
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
    if (!m_centerLine)
        throw ZORSysException(tr("the course has no centre line"));
    if (!m_centerLine->GetSurface())
        throw ZORSysException(tr("the surface of the course does not exist any more"));
    const QList<ZORGeoLocationOnSurface> locations = m_centerLine->GetLocations();
    const auto smooth = smoother.Smooth(locations, report);
    // A list that was left as it is shares its data.
    if (smooth && smooth->constData() != locations.constData())
        m_centerLine->SetLocations(*smooth);
    return smooth.has_value();
}

struct ZORTPCourseStorage
{
    static void Write(const ZORTPCourse& course, ZORGeoObjectWriter& writer)
    {
        // They may come behind the course, and keep their places in the container.
        writer.WriteLink("centerLine", course.m_centerLine);
        writer.WriteLink("body", course.m_body);
        writer.WriteDouble("width", course.m_width);
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
        course.m_isRestored = true;
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORTPCourse)
