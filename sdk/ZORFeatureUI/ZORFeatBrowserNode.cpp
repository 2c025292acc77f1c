#include "ZORFeatBrowserModel_p.h"
#include "ZORFeatBrowserNode_p.h"

#include <ZORCommonUI/ZORCmnPlainText.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <algorithm>

ZORFeatBrowserKind ZORFeatBrowserNode::KindOf(const ZORGeoGeometry* geometry)
{
    using Kind = ZORFeatBrowserKind;
    if (qobject_cast<const ZORFeatObject*>(geometry)) {
        if (qobject_cast<const ZORFeatRoot*>(geometry))
            return Kind::Root;
        if (qobject_cast<const ZORFeatFolder*>(geometry))
            return Kind::Folder;
        return qobject_cast<const ZORFeatGeometry*>(geometry) ? Kind::Shape : Kind::Feature;
    }
    if (qobject_cast<const ZORGeoPoint*>(geometry))
        return Kind::Point;
    if (qobject_cast<const ZORGeoCurve*>(geometry))
        return Kind::Curve;
    if (qobject_cast<const ZORGeoSurface*>(geometry))
        return Kind::Surface;
    return qobject_cast<const ZORTopBody*>(geometry) ? Kind::Body : Kind::Other;
}

std::vector<ZORFeatBrowserNode*> ZORFeatBrowserNode::TakeDead(std::vector<ZORFeatBrowserNode*>& nodes)
{
    const auto firstDead = std::stable_partition(
        nodes.begin(), nodes.end(), [](const ZORFeatBrowserNode* node) { return !node->isDead; });
    std::vector<ZORFeatBrowserNode*> dead(firstDead, nodes.end());
    nodes.erase(firstDead, nodes.end());
    return dead;
}

int ZORFeatBrowserNode::CountDeadRuns() const
{
    int runs = 0;
    for (std::size_t i = 0; i < children.size(); ++i)
        runs += children[i]->isDead && (i == 0 || !children[i - 1]->isDead);
    return runs;
}

void ZORFeatBrowserNode::Renumber(int firstRow)
{
    for (auto child = std::size_t(firstRow); child < children.size(); ++child)
        children[child]->row = int(child);
}

QString ZORFeatBrowserNode::GetText() const
{
    if (!isGroup) {
        const auto* feature = qobject_cast<const ZORFeatObject*>(geometry);
        return feature ? feature->GetLabel() : geometry->objectName();
    }
    const auto count = children.size();
    switch (kind) {
    case ZORFeatBrowserKind::Point:
        return ZORFeatBrowserModel::tr("Points (%1)").arg(count);
    case ZORFeatBrowserKind::Curve:
        return ZORFeatBrowserModel::tr("Curves (%1)").arg(count);
    case ZORFeatBrowserKind::Surface:
        return ZORFeatBrowserModel::tr("Surfaces (%1)").arg(count);
    case ZORFeatBrowserKind::Body:
        return ZORFeatBrowserModel::tr("Bodies (%1)").arg(count);
    default:
        return ZORFeatBrowserModel::tr("Other geometry (%1)").arg(count);
    }
}

QString ZORFeatBrowserNode::GetToolTip(const QString& name) const
{
    if (!geometry)
        return {};
    return ZORCmnPlainText::ToToolTip(ZORFeatBrowserModel::tr("%1\nClass: %2\nReferences: %3")
                                          .arg(name, QLatin1String(geometry->metaObject()->className()),
                                               QString::number(geometry->GetReferenceCount())));
}
