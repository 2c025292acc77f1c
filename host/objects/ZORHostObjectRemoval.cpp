#include "objects/ZORHostObjectRemoval.h"

#include "objects/ZORHostObjectSet.h"
#include "view/ZORHostDisplayName.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORGeometry/ZORGeoHolders.h>

#include <QPointer>
#include <QSet>

#include <algorithm>

namespace {

constexpr int kMostNamedHolders = 12;

QString Shorten(const QString& name)
{
    constexpr int kLongestName = 80;
    const QString line = name.left(2 * kLongestName).simplified();
    return line.size() > kLongestName ? line.left(kLongestName) + u'…' : line;
}

} // namespace

ZORHostObjectRemoval::ZORHostObjectRemoval(const ZORGeoContainer& container,
                                           const QList<ZORGeoGeometry*>& objects)
    : m_name(objects.isEmpty() ? QString() : Shorten(ZORHostDisplayName(objects.first())))
    , m_numObjects(int(objects.size()))
{
    const QList<ZORGeoGeometry*> all = ZORHostObjectsWithParts(objects);
    m_numParts = int(all.size()) - m_numObjects;
    const QSet<const ZORGeoGeometry*> leaving(all.begin(), all.end());
    const auto* const features = qobject_cast<const ZORFeatContainer*>(&container);
    const ZORGeoHolders holders(container);
    QSet<const ZORGeoGeometry*> known;
    for (const ZORGeoGeometry* object : all) {
        m_numOthers += holders.GetNumOtherReferences(*object);
        for (ZORGeoGeometry* holder : holders.GetHolders(*object)) {
            ZORGeoGeometry* const owner = features ? features->GetOwner(holder) : nullptr;
            ZORGeoGeometry* const named = owner ? owner : holder;
            if (leaving.contains(holder) || known.contains(named))
                continue;
            known.insert(named);
            m_holders.append(named);
        }
    }
}

QString ZORHostObjectRemoval::GetQuestion() const
{
    const QString what = m_numObjects == 1 ? QStringLiteral("'%1'").arg(m_name)
                                           : tr("the %1 selected objects").arg(m_numObjects);
    if (m_numParts == 0)
        return tr("Delete %1?").arg(what);
    return m_numParts == 1
               ? tr("Delete %1 and the object that belongs to it?").arg(what)
               : tr("Delete %1 and the %2 objects that belong to it?").arg(what, QString::number(m_numParts));
}

QString ZORHostObjectRemoval::GetRefusal() const
{
    if (IsPossible())
        return {};
    const QString what = m_numObjects == 1
                             ? tr("'%1' cannot be deleted").arg(m_name)
                             : tr("The %1 selected objects cannot be deleted").arg(m_numObjects);
    if (m_holders.isEmpty())
        return tr("%1 while a command or a window uses them. Close it first.").arg(what);
    QStringList names;
    for (const ZORGeoGeometry* holder :
         m_holders.first(std::min<qsizetype>(m_holders.size(), kMostNamedHolders)))
        names.append(QStringLiteral("    ") + Shorten(ZORHostDisplayName(holder)));
    if (const int more = int(m_holders.size()) - kMostNamedHolders; more > 0)
        names.append(QStringLiteral("    ") + tr("and %1 more").arg(more));
    return tr("%1 because these objects use what would be deleted:").arg(what) + QStringLiteral("\n\n")
           + names.join(u'\n');
}

int ZORHostObjectRemoval::Remove(const QList<ZORGeoGeometry*>& objects)
{
    // Removing one may take others with it.
    QList<QPointer<ZORGeoGeometry>> left(objects.begin(), objects.end());
    for (const QPointer<ZORGeoGeometry>& object : std::as_const(left)) {
        if (auto* const feature = qobject_cast<ZORFeatObject*>(object.data()))
            feature->Remove();
    }
    for (bool hasChanged = true; hasChanged;) { // users go before what they use
        hasChanged = false;
        for (auto object = left.rbegin(); object != left.rend(); ++object) {
            if (!*object)
                continue;
            (*object)->RemoveNoReferences();
            hasChanged = hasChanged || !*object;
        }
        left.removeAll(QPointer<ZORGeoGeometry>());
    }
    return int(objects.size() - left.size());
}
