#include "ZORCompRosette.h"

#include "features/ZORCompAngles_p.h"
#include "features/ZORCompShape_p.h"
#include "features/ZORCompStoredAttributes_p.h"

#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoRange.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathFunctions.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <cmath>

ZOR_GEO_REGISTER_TYPE(ZORCompRosette)

namespace {

struct Axes
{
    ZORMathPoint origin;
    ZORMathVector x{1, 0, 0};
    ZORMathVector z{0, 0, 1};
};

// The direction of a vector within the plane of a normal of length 1; zero when it is parallel to the normal.
ZORMathVector ProjectDirection(const ZORMathVector& vector, const ZORMathVector& normal)
{
    const ZORMathVector direction = vector.GetNormalized();
    const ZORMathVector inPlane = direction - Dot(direction, normal) * normal;
    return inPlane.GetLength() > zor::comp::kSmallestAngle ? inPlane.GetNormalized() : ZORMathVector();
}

Axes Orthonormalize(const Axes& given)
{
    if (!ZORGeoRange::Contains(given.origin))
        throw ZORSysException(ZORCompRosette::tr("the origin of the rosette is not finite or too far away"));
    const ZORMathVector z = given.z.GetNormalized();
    if (IsZero(z))
        throw ZORSysException(ZORCompRosette::tr("the normal of the rosette has no direction"));
    if (IsZero(given.x.GetNormalized()))
        throw ZORSysException(ZORCompRosette::tr("the X axis of the rosette has no direction"));
    const ZORMathVector x = ProjectDirection(given.x, z);
    if (IsZero(x))
        throw ZORSysException(ZORCompRosette::tr("the X axis of the rosette is parallel to its normal"));
    return {given.origin, x, z};
}

Axes PutOnSurface(const Axes& axes, const ZORGeoSurface& surface)
{
    const ZORGeoLocationOnSurface place = surface.Project(axes.origin);
    if (place.IsNull())
        throw ZORSysException(ZORCompRosette::tr("the surface of the rosette is empty"));
    ZORMathPoint a, b, c;
    surface.GetVertices(place.triangle, a, b, c);
    ZORMathVector z = Cross((b - a).GetNormalized(), (c - a).GetNormalized()).GetNormalized();
    if (IsZero(z)) // a triangle without area
        z = axes.z;
    const ZORMathVector x = ProjectDirection(axes.x, z);
    if (IsZero(x))
        throw ZORSysException(
            ZORCompRosette::tr("the X axis of the rosette is perpendicular to the surface"));
    return {place.point, x, z};
}

Axes Resolve(const Axes& given, const ZORGeoSurface* surface)
{
    const Axes axes = Orthonormalize(given);
    return surface ? PutOnSurface(axes, *surface) : axes;
}

} // namespace

class ZORCompRosette::Private
{
public:
    explicit Private(ZORCompRosette* rosette)
        : shape(rosette)
    {
    }

    Axes given;
    Axes axes;
    ZORGeoReference<const ZORGeoSurface> surface;
    ZORCompShape shape;
};

ZORCompRosette::ZORCompRosette(ZORFeatObject* parent)
    : ZORCompRosette(parent, {}, {1, 0, 0}, {0, 0, 1})
{
}

ZORCompRosette::ZORCompRosette(ZORFeatObject* parent, const ZORMathPoint& origin, const ZORMathVector& xAxis,
                               const ZORMathVector& normal)
    : ZORFeatGeometry(parent)
    , d(std::make_unique<Private>(this))
{
    ZOR_TRACE_CALL(parent, origin, xAxis, normal);
    d->given = {origin, xAxis, normal};
    d->axes = Resolve(d->given, nullptr);
    ReplaceBody();
}

ZORCompRosette::~ZORCompRosette() = default;

void ZORCompRosette::Initialize()
{
    ZOR_TRACE_CALL();
    if (d->shape.Register())
        ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORCompRosette::GetBody() const
{
    return d->shape.GetBody();
}

QList<ZORGeoGeometry*> ZORCompRosette::GetOwnedGeometry() const
{
    QList<ZORGeoGeometry*> owned = ZORFeatGeometry::GetOwnedGeometry();
    if (d->shape.GetOwnedCurve())
        owned.prepend(d->shape.GetOwnedCurve());
    return owned;
}

void ZORCompRosette::SetAxes(const ZORMathPoint& origin, const ZORMathVector& xAxis,
                             const ZORMathVector& normal)
{
    ZOR_TRACE_CALL(origin, xAxis, normal);
    Place(origin, xAxis, normal, d->surface);
}

void ZORCompRosette::SetAxes(const ZORMathPoint& origin, const ZORMathVector& xAxis,
                             const ZORMathVector& normal, const ZORGeoSurface* surface)
{
    ZOR_TRACE_CALL(origin, xAxis, normal, surface);
    Place(origin, xAxis, normal, surface);
}

void ZORCompRosette::SetSurface(const ZORGeoSurface* surface)
{
    ZOR_TRACE_CALL(surface);
    Place(d->given.origin, d->given.x, d->given.z, surface);
}

void ZORCompRosette::Place(const ZORMathPoint& origin, const ZORMathVector& xAxis,
                           const ZORMathVector& normal, const ZORGeoSurface* surface)
{
    const Axes given{origin, xAxis, normal};
    d->axes = Resolve(given, surface);
    d->given = given;
    if (surface != d->surface)
        d->surface = ZORGeoReference<const ZORGeoSurface>(surface, this);
    ReportChange();
    ReplaceBody();
}

const ZORGeoSurface* ZORCompRosette::GetSurface() const
{
    return d->surface;
}

ZORMathPoint ZORCompRosette::GetOrigin() const
{
    return d->axes.origin;
}

ZORMathVector ZORCompRosette::GetXAxis() const
{
    return d->axes.x;
}

ZORMathVector ZORCompRosette::GetYAxis() const
{
    return Cross(d->axes.z, d->axes.x);
}

ZORMathVector ZORCompRosette::GetNormal() const
{
    return d->axes.z;
}

ZORMathPoint ZORCompRosette::GetGivenOrigin() const
{
    return d->given.origin;
}

ZORMathVector ZORCompRosette::GetGivenXAxis() const
{
    return d->given.x;
}

ZORMathVector ZORCompRosette::GetGivenNormal() const
{
    return d->given.z;
}

ZORMathVector ZORCompRosette::GetDirection(const ZORMathVector& normal, double angle) const
{
    const ZORMathVector z = normal.GetNormalized();
    const ZORMathVector x = IsZero(z) ? z : ProjectDirection(d->axes.x, z);
    if (IsZero(x) || !std::isfinite(angle))
        return {};
    return (std::cos(angle) * x + std::sin(angle) * Cross(z, x)).GetNormalized();
}

void ZORCompRosette::ReplaceBody()
{
    auto line =
        std::make_unique<ZORGeoLine>(GetContainer(), d->axes.origin, d->axes.origin + AxisLength * d->axes.x);
    if (d->shape.Replace(line.release(), ZORCompShape::Ownership::Taken))
        emit BodyChanged();
}

struct ZORCompRosetteStorage
{
    // The axes in effect follow from the others only while the surface is there.
    static void Write(const ZORCompRosette& rosette, ZORGeoObjectWriter& writer)
    {
        const ZORCompRosette::Private& data = *rosette.d;
        writer.WriteReference("line", data.shape.GetOwnedCurve());
        writer.WriteReference("body", data.shape.GetBody());
        writer.WriteLink("surface", data.surface);
        WriteAxes("given", data.given, writer);
        WriteAxes("axes", data.axes, writer);
        ZorCompWriteAttributes(rosette, writer);
    }
    static ZORCompRosette* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        const Axes given = ReadAxes("given", reader);
        auto rosette = std::make_unique<ZORCompRosette>(reader.GetReference<ZORFeatObject>("parent"),
                                                        given.origin, given.x, given.z);
        ZORCompRosette::Private& data = *rosette->d;
        data.axes = ReadAxes("axes", reader);
        Orthonormalize(data.axes);
        const double error = std::abs(data.axes.x.GetLength() - 1) + std::abs(data.axes.z.GetLength() - 1)
                             + std::abs(Dot(data.axes.x, data.axes.z));
        if (!(error <= zor::comp::kSmallestAngle))
            reader.Fail(ZORCompRosette::tr("its axes are not perpendicular and of length 1"));
        data.shape.Replace(nullptr, ZORCompShape::Ownership::Left);
        data.shape.Adopt(reader.GetReference<ZORGeoLine>("line"), reader.GetReference<ZORTopBody>("body"));
        return rosette.release();
    }
    static void Complete(ZORCompRosette& rosette, const ZORGeoObjectReader& reader)
    {
        rosette.d->surface =
            ZORGeoReference<const ZORGeoSurface>(reader.GetLink<ZORGeoSurface>("surface"), &rosette);
        ZorCompReadAttributes(rosette, reader);
    }

private:
    static void WriteAxes(const char* key, const Axes& axes, ZORGeoObjectWriter& writer)
    {
        writer.WritePoints(key, {axes.origin, ZORMathPoint(axes.x.GetX(), axes.x.GetY(), axes.x.GetZ()),
                                 ZORMathPoint(axes.z.GetX(), axes.z.GetY(), axes.z.GetZ())});
    }
    static Axes ReadAxes(const char* key, const ZORGeoObjectReader& reader)
    {
        const QList<ZORMathPoint> points = reader.GetPoints(key);
        if (points.size() != 3)
            reader.Fail(ZORCompRosette::tr("its axes are incomplete"));
        return {points[0], PositionVector(points[1]), PositionVector(points[2])};
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompRosette)
