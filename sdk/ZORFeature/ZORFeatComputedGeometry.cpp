#include "ZORFeatComputedGeometry.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
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

class ZORFeatComputedGeometry::Private
{
public:
    ZORFeatShape shape;
    QString failure;
    bool isRestored = false; // made with its result: nothing to compute when it is registered
};

ZORFeatComputedGeometry::ZORFeatComputedGeometry(ZORFeatObject* parent)
    : ZORFeatGeometry(parent)
    , d(std::make_unique<Private>())
{
}

ZORFeatComputedGeometry::~ZORFeatComputedGeometry() = default;

void ZORFeatComputedGeometry::Initialize()
{
    ZOR_TRACE_CALL();
    if (IsInitialized())
        return;
    const bool isRestored = std::exchange(d->isRestored, false);
    const QPointer<ZORFeatComputedGeometry> self = this; // a receiver of the container's signal may remove it
    ZORFeatGeometry::Initialize();
    if (self && !isRestored)
        Update();
}

ZORTopBody* ZORFeatComputedGeometry::GetBody() const
{
    return d->shape.GetBody();
}

QList<ZORGeoGeometry*> ZORFeatComputedGeometry::GetOwnedGeometry() const
{
    return d->shape.GetGeometry() + ZORFeatGeometry::GetOwnedGeometry();
}

QString ZORFeatComputedGeometry::GetFailure() const
{
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

// No caller asked for this computation, so exceptions must not leave the signal.
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
    if (!IsInitialized())
        return;
    d->failure.clear();
    if (!IsComplete())
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
    const QPointer<ZORFeatComputedGeometry> self = this; // receivers of the container's signals may remove it
    if (shape.GetBody())
        shape.GetBody()->AddReference(this);
    shape.Initialize();
    if (!self)
        return;
    FollowBody(shape.GetBody());
    ZORFeatShape former = std::exchange(d->shape, std::move(shape));
    former.HandOver(d->shape);
    if (self)
        emit BodyChanged();
}

/// Links: nothing of the result is needed to make the feature.
struct ZORFeatComputedGeometryStorage
{
    static void Write(const ZORFeatComputedGeometry& feature, ZORGeoObjectWriter& writer)
    {
        const ZORFeatComputedGeometry::Private& data = *feature.d;
        const QList<ZORGeoGeometry*> geometry = data.shape.GetGeometry();
        writer.WriteLink("body", data.shape.GetBody());
        writer.WriteLinks("geometry", {geometry.begin(), geometry.end()});
        writer.WriteString("failure", data.failure);
    }
    static void Complete(ZORFeatComputedGeometry& feature, const ZORGeoObjectReader& reader)
    {
        ZORFeatComputedGeometry::Private& data = *feature.d;
        data.failure = reader.GetString("failure");
        data.shape =
            ZORFeatShape(reader.GetLink<ZORTopBody>("body"), reader.GetLinks<ZORGeoGeometry>("geometry"));
        if (ZORTopBody* const body = data.shape.GetBody())
            body->AddReference(&feature);
        feature.FollowBody(data.shape.GetBody());
        data.isRestored = true;
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORFeatComputedGeometry)
