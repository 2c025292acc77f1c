#include "ZORFeatComputedGeometry.h"

#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <QLoggingCategory>
#include <QPointer>

#include <utility>

ZOR_GEO_REGISTER_TYPE(ZORFeatComputedGeometry)

namespace {

Q_LOGGING_CATEGORY(ZorFeatureLog, "zor.feature")

} // namespace

class ZORFeatComputedGeometryPrivate
{
public:
    ZORFeatShape shape;
    QString failure;
};

ZORFeatComputedGeometry::ZORFeatComputedGeometry(ZORFeatObject* parent)
    : ZORFeatGeometry(parent)
    , d_ptr(std::make_unique<ZORFeatComputedGeometryPrivate>())
{
}

ZORFeatComputedGeometry::~ZORFeatComputedGeometry() = default;

void ZORFeatComputedGeometry::Initialize()
{
    ZOR_TRACE_CALL();
    if (IsInitialized())
        return;
    const QPointer<ZORFeatComputedGeometry> self = this; // a receiver of the container's signal may remove it
    ZORFeatGeometry::Initialize();
    if (self)
        Update();
}

ZORTopBody* ZORFeatComputedGeometry::GetBody() const
{
    Q_D(const ZORFeatComputedGeometry);
    return d->shape.GetBody();
}

QString ZORFeatComputedGeometry::GetFailure() const
{
    Q_D(const ZORFeatComputedGeometry);
    return d->failure;
}

void ZORFeatComputedGeometry::CheckInput(const ZORFeatObject* feature) const
{
    if (feature && feature->DependsOn(this))
        throw ZORSysException(tr("a feature cannot depend on itself"));
}

void ZORFeatComputedGeometry::Follow(ZORFeatObject* feature)
{
    if (const auto* shaped = qobject_cast<const ZORFeatGeometry*>(feature))
        connect(shaped, &ZORFeatGeometry::BodyChanged, this, &ZORFeatComputedGeometry::OnInputChanged,
                Qt::UniqueConnection);
}

void ZORFeatComputedGeometry::Unfollow(ZORFeatObject* feature)
{
    if (feature && !GetInputs().contains(feature))
        disconnect(feature, nullptr, this, nullptr);
}

// Nobody who could be told asked for this computation: exceptions must not leave a signal.
void ZORFeatComputedGeometry::OnInputChanged()
{
    const QPointer<ZORFeatComputedGeometry> self = this;
    try {
        Update();
    } catch (const ZORSysException& exception) {
        if (self)
            qCWarning(ZorFeatureLog).noquote()
                << tr("'%1' keeps its last shape: %2").arg(GetLabel(), exception.GetMessage());
    }
}

void ZORFeatComputedGeometry::Update()
{
    Q_D(ZORFeatComputedGeometry);
    d->failure.clear();
    if (!IsInitialized() || !IsComplete())
        return;
    const QPointer<ZORFeatComputedGeometry> self = this;
    try {
        ZORFeatShape shape = Compute();
        if (self)
            Replace(std::move(shape));
    } catch (const ZORSysException& exception) {
        if (self)
            d->failure = exception.GetMessage();
        throw;
    }
}

void ZORFeatComputedGeometry::Replace(ZORFeatShape&& shape)
{
    Q_D(ZORFeatComputedGeometry);
    const QPointer<ZORFeatComputedGeometry> self = this; // receivers of the container's signals may remove it
    if (shape.GetBody())
        shape.GetBody()->AddReference(this);
    shape.Initialize();
    if (!self)
        return;
    ZORFeatShape former = std::exchange(d->shape, std::move(shape));
    former.HandOver(d->shape);
    if (self)
        emit BodyChanged();
}
