#include "ZORWFCurveOnSupport.h"

#include "ZORWFCurveComputation_p.h"

#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <QLoggingCategory>
#include <QPointer>
#include <QSet>

#include <cmath>
#include <utility>

ZOR_GEO_REGISTER_TYPE(ZORWFCurveOnSupport)

namespace {

Q_LOGGING_CATEGORY(ZorWireframeLog, "zor.wireframe")

// The curve of a feature and its body; destroys what is left of them.
class OwnedResult
{
public:
    OwnedResult() = default;
    ~OwnedResult() { Destroy(); }
    Q_DISABLE_COPY_MOVE(OwnedResult)

    // Receivers of the container's signals find none of it in the feature any more.
    void Destroy()
    {
        ZORTopBody* const oldBody = body;
        body.clear();
        delete oldBody;
        ZORGeoCurveOnSurface* const oldCurve = curve;
        curve.clear();
        delete oldCurve;
    }
    void swap(OwnedResult& other)
    {
        curve.swap(other.curve);
        body.swap(other.body);
    }

    QPointer<ZORGeoCurveOnSurface> curve; // owned, by the container once it is registered
    QPointer<ZORTopBody> body;            // the same
};

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

class ZORWFCurveOnSupportPrivate
{
public:
    ZORWFCurveComputation inputs;
    OwnedResult result;
    QString failure;
};

ZORWFCurveOnSupport::ZORWFCurveOnSupport(ZORFeatObject* folder)
    : ZORFeatGeometry(folder)
    , d_ptr(std::make_unique<ZORWFCurveOnSupportPrivate>())
{
    ZOR_TRACE_CALL(folder);
}

ZORWFCurveOnSupport::~ZORWFCurveOnSupport() = default;

void ZORWFCurveOnSupport::Initialize()
{
    ZOR_TRACE_CALL();
    if (IsInitialized())
        return;
    const QPointer<ZORWFCurveOnSupport> self = this; // a receiver of the container's signal may remove it
    ZORFeatGeometry::Initialize();
    if (self)
        Update();
}

ZORTopBody* ZORWFCurveOnSupport::GetBody() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->result.body;
}

QString ZORWFCurveOnSupport::GetFailure() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->failure;
}

template<class Feature>
void ZORWFCurveOnSupport::SetInput(ZORGeoReference<Feature>& input, Feature* feature, bool isUsed)
{
    if (input.Get() == feature)
        return;
    CheckInput(feature);
    Feature* const before = input.Get();
    input = ZORGeoReference<Feature>(feature, this);
    Unfollow(before);
    Follow(feature);
    if (isUsed)
        Update();
}

void ZORWFCurveOnSupport::SetNumber(double& member, double value)
{
    if (IsSame(member, value))
        return;
    member = value;
    if (IsDirected())
        Update();
}

void ZORWFCurveOnSupport::SetSupport(ZORFeatGeometry* support)
{
    ZOR_TRACE_CALL(support);
    SetInput(d_ptr->inputs.support, support, true);
}

void ZORWFCurveOnSupport::SetComputationMethod(ComputationMethod method)
{
    ZOR_TRACE_CALL(method);
    Q_D(ZORWFCurveOnSupport);
    if (method < PointToPoint || method > ConstantAngle)
        throw ZORSysException(tr("computation method %1 is unknown").arg(int(method)));
    if (d->inputs.method == method)
        return;
    d->inputs.method = method;
    Update();
}

void ZORWFCurveOnSupport::SetStartPoint(ZORFeatGeometry* point)
{
    ZOR_TRACE_CALL(point);
    SetInput(d_ptr->inputs.startPoint, point, true);
}

void ZORWFCurveOnSupport::SetEndPoint(ZORFeatGeometry* point)
{
    ZOR_TRACE_CALL(point);
    SetInput(d_ptr->inputs.endPoint, point, !IsDirected());
}

void ZORWFCurveOnSupport::SetStartLength(double length)
{
    ZOR_TRACE_CALL(length);
    SetNumber(d_ptr->inputs.startLength, length);
}

void ZORWFCurveOnSupport::SetEndLength(double length)
{
    ZOR_TRACE_CALL(length);
    SetNumber(d_ptr->inputs.endLength, length);
}

void ZORWFCurveOnSupport::AddStartLimit(ZORFeatGeometry* limit)
{
    ZOR_TRACE_CALL(limit);
    AddLimit(d_ptr->inputs.startLimits, limit);
}

void ZORWFCurveOnSupport::AddEndLimit(ZORFeatGeometry* limit)
{
    ZOR_TRACE_CALL(limit);
    AddLimit(d_ptr->inputs.endLimits, limit);
}

void ZORWFCurveOnSupport::AddLimit(QList<ZORGeoReference<ZORFeatGeometry>>& limits, ZORFeatGeometry* limit)
{
    if (!limit)
        return;
    CheckInput(limit);
    limits.append(ZORGeoReference<ZORFeatGeometry>(limit, this));
    Follow(limit);
    if (IsDirected())
        Update();
}

void ZORWFCurveOnSupport::ClearLimits()
{
    ZOR_TRACE_CALL();
    Q_D(ZORWFCurveOnSupport);
    const QList<ZORFeatGeometry*> before = GetStartLimits() + GetEndLimits();
    d->inputs.startLimits.clear();
    d->inputs.endLimits.clear();
    for (ZORFeatGeometry* limit : before)
        Unfollow(limit);
    if (IsDirected() && !before.isEmpty())
        Update();
}

void ZORWFCurveOnSupport::SetDirection(ZORFeatObject* direction)
{
    ZOR_TRACE_CALL(direction);
    SetInput(d_ptr->inputs.direction, direction, IsDirected());
}

void ZORWFCurveOnSupport::SetAngle(double angle)
{
    ZOR_TRACE_CALL(angle);
    SetNumber(d_ptr->inputs.angle, angle);
}

void ZORWFCurveOnSupport::SetDirectionFlipped(bool isFlipped)
{
    ZOR_TRACE_CALL(isFlipped);
    Q_D(ZORWFCurveOnSupport);
    if (d->inputs.isFlipped == isFlipped)
        return;
    d->inputs.isFlipped = isFlipped;
    if (IsDirected())
        Update();
}

ZORFeatGeometry* ZORWFCurveOnSupport::GetSupport() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.support;
}

ZORWFCurveOnSupport::ComputationMethod ZORWFCurveOnSupport::GetComputationMethod() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.method;
}

ZORFeatGeometry* ZORWFCurveOnSupport::GetStartPoint() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.startPoint;
}

ZORFeatGeometry* ZORWFCurveOnSupport::GetEndPoint() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.endPoint;
}

double ZORWFCurveOnSupport::GetStartLength() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.startLength;
}

double ZORWFCurveOnSupport::GetEndLength() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.endLength;
}

QList<ZORFeatGeometry*> ZORWFCurveOnSupport::GetStartLimits() const
{
    Q_D(const ZORWFCurveOnSupport);
    QList<ZORFeatGeometry*> limits;
    AppendLimits(limits, d->inputs.startLimits);
    return limits;
}

QList<ZORFeatGeometry*> ZORWFCurveOnSupport::GetEndLimits() const
{
    Q_D(const ZORWFCurveOnSupport);
    QList<ZORFeatGeometry*> limits;
    AppendLimits(limits, d->inputs.endLimits);
    return limits;
}

ZORFeatObject* ZORWFCurveOnSupport::GetDirection() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.direction;
}

double ZORWFCurveOnSupport::GetAngle() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.angle;
}

bool ZORWFCurveOnSupport::IsDirectionFlipped() const
{
    Q_D(const ZORWFCurveOnSupport);
    return d->inputs.isFlipped;
}

// Whether the method computes both ways from the start point, rather than between two points.
bool ZORWFCurveOnSupport::IsDirected() const
{
    Q_D(const ZORWFCurveOnSupport);
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

// Refuses this feature and those computed from it, at any distance.
void ZORWFCurveOnSupport::CheckInput(ZORFeatObject* feature) const
{
    QSet<const ZORFeatObject*> seen;
    QList<ZORFeatObject*> pending{feature};
    while (!pending.isEmpty()) {
        const auto* curve = qobject_cast<const ZORWFCurveOnSupport*>(pending.takeLast());
        if (!curve || seen.contains(curve))
            continue;
        if (curve == this)
            throw ZORSysException(tr("a curve on support cannot depend on itself"));
        seen.insert(curve);
        pending += curve->GetInputs();
    }
}

void ZORWFCurveOnSupport::Follow(ZORFeatObject* feature)
{
    if (const auto* shaped = qobject_cast<const ZORFeatGeometry*>(feature))
        connect(shaped, &ZORFeatGeometry::BodyChanged, this, &ZORWFCurveOnSupport::OnInputChanged,
                Qt::UniqueConnection);
}

void ZORWFCurveOnSupport::Unfollow(ZORFeatObject* feature)
{
    if (feature && !GetInputs().contains(feature))
        disconnect(feature, nullptr, this, nullptr);
}

// Nobody who could be told asked for this computation: exceptions must not leave a signal.
void ZORWFCurveOnSupport::OnInputChanged()
{
    try {
        Update();
    } catch (const ZORSysException& exception) {
        qCWarning(ZorWireframeLog).noquote()
            << tr("'%1' keeps its last curve: %2").arg(GetLabel(), exception.GetMessage());
    }
}

void ZORWFCurveOnSupport::Update()
{
    Q_D(ZORWFCurveOnSupport);
    d->failure.clear();
    if (!IsInitialized() || !d->inputs.IsComplete())
        return;
    const QPointer<ZORWFCurveOnSupport> self = this;
    try {
        Replace(d->inputs.Run());
    } catch (const ZORSysException& exception) {
        if (self)
            d->failure = exception.GetMessage();
        throw;
    }
}

void ZORWFCurveOnSupport::Replace(const QList<ZORGeoLocationOnSurface>& locations)
{
    Q_D(ZORWFCurveOnSupport);
    const QPointer<ZORWFCurveOnSupport> self = this; // receivers of the container's signals may remove it
    OwnedResult result;
    result.curve = new ZORGeoCurveOnSurface(locations, false);
    result.body = new ZORTopBody(GetContainer(), result.curve);
    result.body->AddReference(this);
    result.curve->Initialize();
    if (self && result.body)
        result.body->Initialize();
    if (!self)
        return;
    result.swap(d->result);

    // The new ones take over the names of the old.
    const QString curveName = result.curve ? result.curve->objectName() : QString();
    const QString bodyName = result.body ? result.body->objectName() : QString();
    result.Destroy();
    if (self && d->result.curve && !curveName.isEmpty())
        d->result.curve->setObjectName(curveName);
    if (self && d->result.body && !bodyName.isEmpty())
        d->result.body->setObjectName(bodyName);
    if (self)
        emit BodyChanged();
}
