#include "ZORCompPly.h"

#include "features/ZORCompShape_p.h"
#include "features/ZORCompStoredAttributes_p.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <cmath>

ZOR_GEO_REGISTER_TYPE(ZORCompPly)

namespace {

constexpr double kUnknown = ZORCompMaterialProperties::Unknown;
constexpr double kFlat = 1e-6; // of the extent of a boundary

// Half of the sum of the cross products of neighbouring points: its length is the area of a planar polygon.
ZORMathVector GetAreaVector(const ZORGeoCurve& boundary)
{
    ZORMathVector sum;
    const ZORMathPoint origin = boundary.GetPoint(0);
    for (int i = 2; i < boundary.GetNumPoints(); ++i)
        sum += 0.5 * Cross(boundary.GetPoint(i - 1) - origin, boundary.GetPoint(i) - origin);
    return sum;
}

// NaN for a boundary off the plane through a point.
double GetPlanarArea(const ZORGeoCurve& boundary, const ZORMathPoint& origin, const ZORMathVector& normal)
{
    if (boundary.GetNumPoints() == 0)
        return 0;
    const double tolerance = kFlat * boundary.GetBoundingBox().GetDiagonal();
    for (int i = 0; i < boundary.GetNumPoints(); ++i) {
        if (!(std::abs(Dot(boundary.GetPoint(i) - origin, normal)) <= tolerance))
            return kUnknown;
    }
    return GetAreaVector(boundary).GetLength();
}

} // namespace

class ZORCompPly::Private
{
public:
    explicit Private(ZORCompPly* ply)
        : shape(ply)
    {
    }

    ZORGeoReference<ZORCompMaterial> material;
    ZORGeoReference<ZORCompRosette> rosette;
    QList<ZORGeoReference<const ZORGeoCurve>> boundaries; // null for those that are gone
    double angle = 0;
    bool isActive = true;
    ZORCompShape shape;
};

ZORCompPly::ZORCompPly(ZORCompSequence* sequence)
    : ZORFeatGeometry(sequence)
    , d(std::make_unique<Private>(this))
{
    ZOR_TRACE_CALL(sequence);
}

ZORCompPly::~ZORCompPly() = default;

void ZORCompPly::Initialize()
{
    ZOR_TRACE_CALL();
    if (d->shape.Register())
        ZORFeatGeometry::Initialize();
}

ZORTopBody* ZORCompPly::GetBody() const
{
    return d->shape.GetBody();
}

QList<ZORGeoGeometry*> ZORCompPly::GetOwnedGeometry() const
{
    QList<ZORGeoGeometry*> owned = ZORFeatGeometry::GetOwnedGeometry();
    if (d->shape.GetOwnedCurve()) // of a boundary that had to be closed
        owned.prepend(d->shape.GetOwnedCurve());
    return owned;
}

void ZORCompPly::SetMaterial(ZORCompMaterial* material)
{
    ZOR_TRACE_CALL(material);
    if (material == d->material)
        return;
    d->material = ZORGeoReference<ZORCompMaterial>(material, this);
    ReportChange();
    emit PlyChanged();
}

ZORCompMaterial* ZORCompPly::GetMaterial() const
{
    return d->material;
}

void ZORCompPly::SetAngle(double angle)
{
    ZOR_TRACE_CALL(angle);
    if (!std::isfinite(angle))
        throw ZORSysException(tr("the angle of the ply is not finite"));
    if (angle == d->angle)
        return;
    d->angle = angle;
    ReportChange();
    emit PlyChanged();
}

double ZORCompPly::GetAngle() const
{
    return d->angle;
}

void ZORCompPly::SetRosette(ZORCompRosette* rosette)
{
    ZOR_TRACE_CALL(rosette);
    if (rosette == d->rosette)
        return;
    d->rosette = ZORGeoReference<ZORCompRosette>(rosette, this);
    ReportChange();
    emit PlyChanged();
}

ZORCompRosette* ZORCompPly::GetRosette() const
{
    return d->rosette;
}

ZORCompRosette* ZORCompPly::GetEffectiveRosette() const
{
    if (GetRosette())
        return GetRosette();
    const ZORCompSequence* sequence = GetSequence();
    return sequence ? sequence->GetEffectiveRosette() : nullptr;
}

void ZORCompPly::SetBoundaries(const QList<const ZORGeoCurve*>& boundaries)
{
    ZOR_TRACE_CALL(boundaries);
    QList<const ZORGeoCurve*> curves = boundaries;
    curves.removeAll(nullptr);
    if (curves == GetBoundaries() && curves.size() == d->boundaries.size())
        return;
    for (const ZORGeoCurve* curve : GetBoundaries())
        disconnect(curve, nullptr, this, nullptr);
    QList<ZORGeoReference<const ZORGeoCurve>> references;
    for (const ZORGeoCurve* curve : curves)
        references.append(ZORGeoReference<const ZORGeoCurve>(curve, this));
    d->boundaries = references;
    ReportChange();
    const QPointer<ZORCompPly> self = this; // receivers of signals may remove it
    if (d->shape.Replace(curves.isEmpty() ? nullptr : curves.first(), ZORCompShape::Ownership::Left)) {
        FollowBoundaries();
        emit BodyChanged();
    }
    if (self)
        emit PlyChanged();
}

// The body follows the outer boundary already, so that PlyChanged() comes after BodyChanged().
void ZORCompPly::FollowBoundaries()
{
    for (const ZORGeoCurve* curve : GetBoundaries())
        connect(curve, &ZORGeoGeometry::ShapeChanged, this, &ZORCompPly::PlyChanged, Qt::UniqueConnection);
}

QList<const ZORGeoCurve*> ZORCompPly::GetBoundaries() const
{
    QList<const ZORGeoCurve*> boundaries;
    for (const ZORGeoReference<const ZORGeoCurve>& boundary : std::as_const(d->boundaries)) {
        if (boundary.Get())
            boundaries.append(boundary.Get());
    }
    return boundaries;
}

void ZORCompPly::SetActive(bool isActive)
{
    ZOR_TRACE_CALL(isActive);
    if (isActive == d->isActive)
        return;
    d->isActive = isActive;
    ReportChange();
    emit PlyChanged();
}

bool ZORCompPly::IsActive() const
{
    return d->isActive;
}

ZORCompSequence* ZORCompPly::GetSequence() const
{
    return qobject_cast<ZORCompSequence*>(GetParentFeature());
}

ZORCompLayup* ZORCompPly::GetLayup() const
{
    const ZORCompSequence* sequence = GetSequence();
    return sequence ? sequence->GetLayup() : nullptr;
}

const ZORGeoSurface* ZORCompPly::GetSurface() const
{
    const ZORCompLayup* layup = GetLayup();
    return layup ? layup->GetSurface() : nullptr;
}

double ZORCompPly::GetThickness() const
{
    return GetMaterial() ? GetMaterial()->GetProperties().thickness : kUnknown;
}

double ZORCompPly::GetArea() const
{
    if (d->boundaries.isEmpty())
        return GetSurface() ? GetSurface()->GetArea() : kUnknown;
    const QList<const ZORGeoCurve*> boundaries = GetBoundaries();
    if (boundaries.size() != d->boundaries.size() || boundaries.first()->GetNumPoints() == 0)
        return kUnknown;
    const ZORMathPoint origin = boundaries.first()->GetPoint(0);
    const ZORMathVector normal = GetAreaVector(*boundaries.first()).GetNormalized();
    double area = GetPlanarArea(*boundaries.first(), origin, normal);
    for (const ZORGeoCurve* hole : boundaries.mid(1))
        area -= GetPlanarArea(*hole, origin, normal);
    return area;
}

double ZORCompPly::GetMass() const
{
    if (!GetMaterial())
        return kUnknown;
    constexpr double kKilogramsPerTonne = 1000;
    return GetArea() * GetThickness() * GetMaterial()->GetProperties().density * kKilogramsPerTonne;
}

struct ZORCompPlyStorage
{
    static void Write(const ZORCompPly& ply, ZORGeoObjectWriter& writer)
    {
        const ZORCompPly::Private& data = *ply.d;
        writer.WriteReference("body", data.shape.GetBody());
        writer.WriteLink("material", data.material);
        writer.WriteLink("rosette", data.rosette);
        QList<const ZORGeoGeometry*> boundaries; // null for those that are gone
        for (const ZORGeoReference<const ZORGeoCurve>& boundary : data.boundaries)
            boundaries.append(boundary.Get());
        writer.WriteLinks("boundaries", boundaries);
        writer.WriteDouble("angle", data.angle);
        writer.WriteBool("isActive", data.isActive);
        ZorCompWriteAttributes(ply, writer);
    }
    static ZORCompPly* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        auto ply = std::make_unique<ZORCompPly>(reader.GetReference<ZORCompSequence>("parent"));
        ply->SetAngle(reader.GetDouble("angle"));
        ply->SetActive(reader.GetBool("isActive"));
        ply->d->shape.Adopt(nullptr, reader.GetReference<ZORTopBody>("body"));
        return ply.release();
    }
    static void Complete(ZORCompPly& ply, const ZORGeoObjectReader& reader)
    {
        ZORCompPly::Private& data = *ply.d;
        ply.SetMaterial(reader.GetLink<ZORCompMaterial>("material"));
        ply.SetRosette(reader.GetLink<ZORCompRosette>("rosette"));
        for (const ZORGeoCurve* boundary : reader.GetLinks<ZORGeoCurve>("boundaries"))
            data.boundaries.append(ZORGeoReference<const ZORGeoCurve>(boundary, &ply));
        ply.FollowBoundaries();
        ZorCompReadAttributes(ply, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompPly)
