#include "ZORCompLayup.h"

#include "features/ZORCompAngles_p.h"
#include "features/ZORCompStoredAttributes_p.h"

#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QHash>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

ZOR_GEO_REGISTER_TYPE(ZORCompLayup)

namespace {

// Fibres have no sense: the same direction within (-pi/2, pi/2].
double ReduceAngle(double angle)
{
    const double reduced = std::remainder(angle, std::numbers::pi);
    return reduced < -std::numbers::pi / 2 + zor::comp::kSmallestAngle ? reduced + std::numbers::pi : reduced;
}

bool IsSameDirection(double a, double b)
{
    return std::abs(std::remainder(a - b, std::numbers::pi)) <= zor::comp::kSmallestAngle;
}

// As many angles above 0 as below, pairwise opposite.
bool IsBalancedSet(const std::vector<double>& angles)
{
    std::vector<double> positive;
    std::vector<double> negative;
    for (const double angle : angles) {
        const double reduced = ReduceAngle(angle);
        if (IsSameDirection(reduced, 0) || IsSameDirection(reduced, std::numbers::pi / 2))
            continue;
        (reduced > 0 ? positive : negative).push_back(std::abs(reduced));
    }
    std::sort(positive.begin(), positive.end());
    std::sort(negative.begin(), negative.end());
    return std::equal(positive.begin(), positive.end(), negative.begin(), negative.end(), IsSameDirection);
}

} // namespace

class ZORCompLayup::Private
{
public:
    ZORGeoReference<const ZORGeoSurface> surface;
    ZORGeoReference<ZORCompRosette> rosette;
    QString source;
};

ZORCompLayup::ZORCompLayup(ZORFeatObject* parent)
    : ZORFeatFolder(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
}

ZORCompLayup::~ZORCompLayup() = default;

void ZORCompLayup::SetSurface(const ZORGeoSurface* surface)
{
    ZOR_TRACE_CALL(surface);
    if (surface == d->surface)
        return;
    d->surface = ZORGeoReference<const ZORGeoSurface>(surface, this);
    ReportChange();
    emit InputsChanged();
}

const ZORGeoSurface* ZORCompLayup::GetSurface() const
{
    return d->surface;
}

void ZORCompLayup::SetRosette(ZORCompRosette* rosette)
{
    ZOR_TRACE_CALL(rosette);
    if (rosette == d->rosette)
        return;
    d->rosette = ZORGeoReference<ZORCompRosette>(rosette, this);
    ReportChange();
    emit InputsChanged();
}

ZORCompRosette* ZORCompLayup::GetRosette() const
{
    return d->rosette;
}

void ZORCompLayup::SetSource(const QString& fileName)
{
    ZOR_TRACE_CALL(fileName);
    if (fileName == d->source)
        return;
    d->source = fileName;
    ReportChange();
}

QString ZORCompLayup::GetSource() const
{
    return d->source;
}

QList<ZORCompSequence*> ZORCompLayup::GetSequences() const
{
    QList<ZORCompSequence*> sequences;
    for (ZORFeatObject* child : GetChildren()) {
        if (auto* sequence = qobject_cast<ZORCompSequence*>(child))
            sequences.append(sequence);
    }
    return sequences;
}

QList<ZORCompPly*> ZORCompLayup::GetPlies() const
{
    QList<ZORCompPly*> plies;
    QList<ZORFeatObject*> pending{const_cast<ZORCompLayup*>(this)};
    while (!pending.isEmpty()) {
        ZORFeatObject* const feature = pending.takeLast();
        auto* const ply = qobject_cast<ZORCompPly*>(feature);
        const auto* const sequence = qobject_cast<const ZORCompSequence*>(feature);
        if (ply && ply->IsActive())
            plies.append(ply);
        if (feature != this && !(sequence && sequence->IsActive()))
            continue;
        const QList<ZORFeatObject*> children = feature->GetChildren();
        std::copy(children.rbegin(), children.rend(), std::back_inserter(pending));
    }
    return plies;
}

int ZORCompLayup::GetNumPlies() const
{
    return int(GetPlies().size());
}

double ZORCompLayup::GetThickness() const
{
    double thickness = 0;
    for (const ZORCompPly* ply : GetPlies())
        thickness += ply->GetThickness();
    return thickness;
}

double ZORCompLayup::GetMass() const
{
    double mass = 0;
    for (const ZORCompPly* ply : GetPlies())
        mass += ply->GetMass();
    return mass;
}

bool ZORCompLayup::IsSymmetric() const
{
    const QList<ZORCompPly*> plies = GetPlies();
    return std::equal(plies.begin(), plies.begin() + plies.size() / 2, plies.rbegin(),
                      [](const ZORCompPly* a, const ZORCompPly* b) {
                          return a->GetMaterial() == b->GetMaterial()
                                 && IsSameDirection(a->GetAngle(), b->GetAngle());
                      });
}

bool ZORCompLayup::IsBalanced() const
{
    QHash<const ZORCompMaterial*, std::vector<double>> angles;
    for (const ZORCompPly* ply : GetPlies())
        angles[ply->GetMaterial()].push_back(ply->GetAngle());
    return std::all_of(angles.cbegin(), angles.cend(), IsBalancedSet);
}

struct ZORCompLayupStorage
{
    static void Write(const ZORCompLayup& layup, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("surface", layup.GetSurface());
        writer.WriteLink("rosette", layup.GetRosette());
        writer.WriteString("source", layup.GetSource());
        ZorCompWriteAttributes(layup, writer);
    }
    static ZORCompLayup* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORCompLayup(reader.GetReference<ZORFeatObject>("parent"));
    }
    static void Complete(ZORCompLayup& layup, const ZORGeoObjectReader& reader)
    {
        layup.SetSurface(reader.GetLink<ZORGeoSurface>("surface"));
        layup.SetRosette(reader.GetLink<ZORCompRosette>("rosette"));
        layup.SetSource(reader.GetString("source"));
        ZorCompReadAttributes(layup, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompLayup)
