#include "ZORWFCurveOnSupport.h"

#include "ZORWFCurveComputation_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <cmath>
#include <memory>

ZOR_GEO_REGISTER_TYPE(ZORWFCurveOnSupport)

namespace {

bool IsSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

void AppendLimits(QList<ZORFeatGeometry*>& features, const QList<ZORWFCurveComputation::Input>& limits)
{
    for (const ZORWFCurveComputation::Input& limit : limits) {
        if (limit.Get())
            features.append(limit.Get());
    }
}

} // namespace

class ZORWFCurveOnSupport::Private
{
public:
    ZORWFCurveComputation inputs;
};

ZORWFCurveOnSupport::ZORWFCurveOnSupport(ZORFeatObject* folder)
    : ZORFeatComputedGeometry(folder)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(folder);
}

ZORWFCurveOnSupport::~ZORWFCurveOnSupport() = default;

void ZORWFCurveOnSupport::SetNumber(double& member, double value)
{
    if (IsSame(member, value))
        return;
    member = value;
    ReportChange();
    if (IsDirected())
        Update();
}

void ZORWFCurveOnSupport::SetSupport(ZORFeatGeometry* support)
{
    ZOR_TRACE_CALL(support);
    SetInput(d->inputs.support, support);
}

void ZORWFCurveOnSupport::SetComputationMethod(ComputationMethod method)
{
    ZOR_TRACE_CALL(method);
    if (method < PointToPoint || method > ConstantAngle)
        throw ZORSysException(tr("computation method %1 is unknown").arg(int(method)));
    if (d->inputs.method == method)
        return;
    d->inputs.method = method;
    ReportChange();
    Update();
}

void ZORWFCurveOnSupport::SetStartPoint(ZORFeatGeometry* point)
{
    ZOR_TRACE_CALL(point);
    SetInput(d->inputs.startPoint, point);
}

void ZORWFCurveOnSupport::SetEndPoint(ZORFeatGeometry* point)
{
    ZOR_TRACE_CALL(point);
    SetInput(d->inputs.endPoint, point, !IsDirected());
}

void ZORWFCurveOnSupport::SetStartLength(double length)
{
    ZOR_TRACE_CALL(length);
    SetNumber(d->inputs.startLength, length);
}

void ZORWFCurveOnSupport::SetEndLength(double length)
{
    ZOR_TRACE_CALL(length);
    SetNumber(d->inputs.endLength, length);
}

void ZORWFCurveOnSupport::AddStartLimit(ZORFeatGeometry* limit)
{
    ZOR_TRACE_CALL(limit);
    AddLimit(d->inputs.startLimits, limit);
}

void ZORWFCurveOnSupport::AddEndLimit(ZORFeatGeometry* limit)
{
    ZOR_TRACE_CALL(limit);
    AddLimit(d->inputs.endLimits, limit);
}

void ZORWFCurveOnSupport::AddLimit(QList<ZORGeoReference<ZORFeatGeometry>>& limits, ZORFeatGeometry* limit)
{
    if (!limit)
        return;
    CheckInput(limit);
    limits.append(ZORGeoReference<ZORFeatGeometry>(limit, this));
    ReportChange();
    Follow(limit);
    if (IsDirected())
        Update();
}

void ZORWFCurveOnSupport::ClearLimits()
{
    ZOR_TRACE_CALL();
    const QList<ZORFeatGeometry*> before = GetStartLimits() + GetEndLimits();
    if (d->inputs.startLimits.isEmpty() && d->inputs.endLimits.isEmpty())
        return;
    d->inputs.startLimits.clear();
    d->inputs.endLimits.clear();
    ReportChange();
    for (ZORFeatGeometry* limit : before)
        Unfollow(limit);
    if (IsDirected() && !before.isEmpty())
        Update();
}

void ZORWFCurveOnSupport::SetDirection(ZORFeatObject* direction)
{
    ZOR_TRACE_CALL(direction);
    SetInput(d->inputs.direction, direction, IsDirected());
}

void ZORWFCurveOnSupport::SetAngle(double angle)
{
    ZOR_TRACE_CALL(angle);
    SetNumber(d->inputs.angle, angle);
}

void ZORWFCurveOnSupport::SetDirectionFlipped(bool isFlipped)
{
    ZOR_TRACE_CALL(isFlipped);
    if (d->inputs.isFlipped == isFlipped)
        return;
    d->inputs.isFlipped = isFlipped;
    ReportChange();
    if (IsDirected())
        Update();
}

ZORFeatGeometry* ZORWFCurveOnSupport::GetSupport() const
{
    return d->inputs.support;
}

ZORWFCurveOnSupport::ComputationMethod ZORWFCurveOnSupport::GetComputationMethod() const
{
    return d->inputs.method;
}

ZORFeatGeometry* ZORWFCurveOnSupport::GetStartPoint() const
{
    return d->inputs.startPoint;
}

ZORFeatGeometry* ZORWFCurveOnSupport::GetEndPoint() const
{
    return d->inputs.endPoint;
}

double ZORWFCurveOnSupport::GetStartLength() const
{
    return d->inputs.startLength;
}

double ZORWFCurveOnSupport::GetEndLength() const
{
    return d->inputs.endLength;
}

QList<ZORFeatGeometry*> ZORWFCurveOnSupport::GetStartLimits() const
{
    QList<ZORFeatGeometry*> limits;
    AppendLimits(limits, d->inputs.startLimits);
    return limits;
}

QList<ZORFeatGeometry*> ZORWFCurveOnSupport::GetEndLimits() const
{
    QList<ZORFeatGeometry*> limits;
    AppendLimits(limits, d->inputs.endLimits);
    return limits;
}

ZORFeatObject* ZORWFCurveOnSupport::GetDirection() const
{
    return d->inputs.direction;
}

double ZORWFCurveOnSupport::GetAngle() const
{
    return d->inputs.angle;
}

bool ZORWFCurveOnSupport::IsDirectionFlipped() const
{
    return d->inputs.isFlipped;
}

// Whether the method computes both ways from the start point, rather than between two points.
bool ZORWFCurveOnSupport::IsDirected() const
{
    return d->inputs.method != PointToPoint;
}

QList<ZORFeatObject*> ZORWFCurveOnSupport::GetInputs() const
{
    QList<ZORFeatObject*> features{GetSupport(), GetStartPoint(), GetEndPoint(), GetDirection()};
    const QList<ZORFeatGeometry*> limits = GetStartLimits() + GetEndLimits();
    features.append(QList<ZORFeatObject*>(limits.begin(), limits.end()));
    features.removeAll(nullptr);
    return features;
}

bool ZORWFCurveOnSupport::IsComplete() const
{
    return d->inputs.IsComplete();
}

ZORFeatShape ZORWFCurveOnSupport::Compute() const
{
    auto curve = std::make_unique<ZORGeoCurveOnSurface>(d->inputs.Run(), false);
    auto* const body = new ZORTopBody(GetContainer(), curve.get());
    return {body, {curve.release()}};
}

// All features are links; nothing of them is needed to make the curve.
struct ZORWFCurveOnSupportStorage
{
    static void Write(const ZORWFCurveOnSupport& feature, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("support", feature.GetSupport());
        writer.WriteLink("startPoint", feature.GetStartPoint());
        writer.WriteLink("endPoint", feature.GetEndPoint());
        writer.WriteLink("direction", feature.GetDirection());
        writer.WriteLinks("startLimits", AsGeometries(feature.GetStartLimits()));
        writer.WriteLinks("endLimits", AsGeometries(feature.GetEndLimits()));
        writer.WriteInt("method", feature.GetComputationMethod());
        writer.WriteDouble("startLength", feature.GetStartLength());
        writer.WriteDouble("endLength", feature.GetEndLength());
        writer.WriteDouble("angle", feature.GetAngle());
        writer.WriteBool("isFlipped", feature.IsDirectionFlipped());
    }

    static ZORWFCurveOnSupport* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORWFCurveOnSupport(reader.GetReference<ZORFeatObject>("parent"));
    }

    static void Complete(ZORWFCurveOnSupport& feature, const ZORGeoObjectReader& reader)
    {
        feature.SetComputationMethod(ZORWFCurveOnSupport::ComputationMethod(reader.GetInt("method")));
        feature.SetStartLength(reader.GetDouble("startLength"));
        feature.SetEndLength(reader.GetDouble("endLength"));
        feature.SetAngle(reader.GetDouble("angle"));
        feature.SetDirectionFlipped(reader.GetBool("isFlipped"));
        feature.SetSupport(reader.GetLink<ZORFeatGeometry>("support"));
        feature.SetStartPoint(reader.GetLink<ZORFeatGeometry>("startPoint"));
        feature.SetEndPoint(reader.GetLink<ZORFeatGeometry>("endPoint"));
        feature.SetDirection(reader.GetLink<ZORFeatObject>("direction"));
        for (ZORFeatGeometry* limit : reader.GetLinks<ZORFeatGeometry>("startLimits"))
            feature.AddStartLimit(limit);
        for (ZORFeatGeometry* limit : reader.GetLinks<ZORFeatGeometry>("endLimits"))
            feature.AddEndLimit(limit);
    }

private:
    static QList<const ZORGeoGeometry*> AsGeometries(const QList<ZORFeatGeometry*>& features)
    {
        return {features.begin(), features.end()};
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORWFCurveOnSupport)
