#include "ZORCompSequence.h"

#include "features/ZORCompStoredAttributes_p.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

ZOR_GEO_REGISTER_TYPE(ZORCompSequence)

class ZORCompSequence::Private
{
public:
    ZORGeoReference<ZORCompRosette> rosette;
    bool isActive = true;
};

ZORCompSequence::ZORCompSequence(ZORFeatObject* parent)
    : ZORFeatFolder(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
    if (parent && !qobject_cast<ZORCompLayup*>(parent) && !qobject_cast<ZORCompSequence*>(parent))
        throw ZORSysException(tr("a sequence needs a layup or a sequence as its parent"));
}

ZORCompSequence::~ZORCompSequence() = default;

void ZORCompSequence::SetRosette(ZORCompRosette* rosette)
{
    ZOR_TRACE_CALL(rosette);
    if (rosette == d->rosette)
        return;
    d->rosette = ZORGeoReference<ZORCompRosette>(rosette, this);
    ReportChange();
    emit RosetteChanged();
}

ZORCompRosette* ZORCompSequence::GetRosette() const
{
    return d->rosette;
}

ZORCompRosette* ZORCompSequence::GetEffectiveRosette() const
{
    const ZORFeatObject* feature = this;
    while (const auto* sequence = qobject_cast<const ZORCompSequence*>(feature)) {
        if (sequence->GetRosette())
            return sequence->GetRosette();
        feature = sequence->GetParentFeature();
    }
    const auto* layup = qobject_cast<const ZORCompLayup*>(feature);
    return layup ? layup->GetRosette() : nullptr;
}

void ZORCompSequence::SetActive(bool isActive)
{
    ZOR_TRACE_CALL(isActive);
    if (isActive == d->isActive)
        return;
    d->isActive = isActive;
    ReportChange();
    emit ActiveChanged(isActive);
}

bool ZORCompSequence::IsActive() const
{
    return d->isActive;
}

ZORCompLayup* ZORCompSequence::GetLayup() const
{
    ZORFeatObject* feature = GetParentFeature();
    while (feature && !qobject_cast<ZORCompLayup*>(feature))
        feature = feature->GetParentFeature();
    return static_cast<ZORCompLayup*>(feature);
}

QList<ZORCompPly*> ZORCompSequence::GetPlies() const
{
    QList<ZORCompPly*> plies;
    for (ZORFeatObject* child : GetChildren()) {
        if (auto* ply = qobject_cast<ZORCompPly*>(child))
            plies.append(ply);
    }
    return plies;
}

struct ZORCompSequenceStorage
{
    static void Write(const ZORCompSequence& sequence, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("rosette", sequence.GetRosette());
        writer.WriteBool("isActive", sequence.IsActive());
        ZorCompWriteAttributes(sequence, writer);
    }
    static ZORCompSequence* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORCompSequence(reader.GetReference<ZORFeatObject>("parent"));
    }
    static void Complete(ZORCompSequence& sequence, const ZORGeoObjectReader& reader)
    {
        sequence.SetRosette(reader.GetLink<ZORCompRosette>("rosette"));
        sequence.SetActive(reader.GetBool("isActive"));
        ZorCompReadAttributes(sequence, reader);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompSequence)
