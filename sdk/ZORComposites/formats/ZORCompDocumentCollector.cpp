#include "ZORCompDocumentCollector_p.h"

#include <ZORComposites/ZORCompContour.h>
#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysException.h>

namespace {

// Empty for the default one.
QString OwnLabelOf(const ZORFeatObject& feature)
{
    const QString label = feature.GetLabel();
    return label == feature.objectName() ? QString() : label;
}

ZORMathSetOfPoints PointsOf(const ZORGeoCurve& curve)
{
    ZORMathSetOfPoints points;
    points.reserve(curve.GetNumPoints());
    for (int i = 0; i < curve.GetNumPoints(); ++i)
        points.append(curve.GetPoint(i));
    return points;
}

} // namespace

ZORCompDocumentCollector::ZORCompDocumentCollector(const ZORCompRoot& root)
{
    QList<const ZORCompLayup*> layups;
    for (ZORFeatObject* feature : root.GetAllChildren()) {
        if (const auto* library = qobject_cast<const ZORCompMaterialLibrary*>(feature)) {
            for (const ZORCompMaterial* material : library->GetMaterials())
                NumberOf(material);
        } else if (const auto* layup = qobject_cast<const ZORCompLayup*>(feature)) {
            layups.append(layup);
        }
    }
    // What the layups hold is known before anything refers to it.
    CollectChildren(root, -1);
    for (int i = 0; i < layups.size(); ++i)
        CollectChildren(*layups.at(i), i);
    for (int i = 0; i < layups.size(); ++i)
        CollectLayup(*layups.at(i), i);
}

void ZORCompDocumentCollector::CollectChildren(const ZORFeatObject& parent, int layup)
{
    for (ZORFeatObject* child : parent.GetChildren()) {
        const auto* const contour = qobject_cast<const ZORCompContour*>(child);
        if (const auto* rosette = qobject_cast<const ZORCompRosette*>(child)) {
            NumberOf(rosette, layup);
        } else if (contour && contour->GetCurve()) {
            m_curves.insert(contour->GetCurve(), int(m_document.contours.size()));
            m_document.contours.append({layup, true, OwnLabelOf(*contour), PointsOf(*contour->GetCurve()),
                                        contour->GetAttributes()});
        } else if (!qobject_cast<ZORCompMaterialLibrary*>(child) && !qobject_cast<ZORCompLayup*>(child)
                   && !qobject_cast<ZORCompSequence*>(child)) {
            Omit(*child);
        }
    }
}

void ZORCompDocumentCollector::CollectLayup(const ZORCompLayup& layup, int number)
{
    if (layup.GetSurface())
        m_omitted.append(
            tr("the support '%1' of '%2'").arg(layup.GetSurface()->objectName(), layup.GetLabel()));
    Document::Layup data;
    data.name = OwnLabelOf(layup);
    data.rosette = NumberOf(layup.GetRosette(), -1);
    data.attributes = layup.GetAttributes();
    data.sequences = CollectComponents(layup, 1);
    m_document.layups.append(data);
    Q_ASSERT(m_document.layups.size() == number + 1);
}

QList<ZORCompDocument::Component> ZORCompDocumentCollector::CollectComponents(const ZORFeatObject& parent,
                                                                              int depth)
{
    QList<Document::Component> components;
    for (ZORFeatObject* child : parent.GetChildren()) {
        if (const auto* ply = qobject_cast<const ZORCompPly*>(child)) {
            components.append(CollectPly(*ply));
            continue;
        }
        const auto* const sequence = qobject_cast<const ZORCompSequence*>(child);
        if (!sequence) {
            if (depth > 1)
                Omit(*child);
            continue;
        }
        if (depth > Document::MaximumDepth)
            throw ZORSysException(Document::DescribeTooDeep());
        Document::Component data;
        data.name = OwnLabelOf(*sequence);
        data.isActive = sequence->IsActive();
        data.rosette = NumberOf(sequence->GetRosette(), -1);
        data.attributes = sequence->GetAttributes();
        data.components = CollectComponents(*sequence, depth + 1);
        components.append(data);
    }
    return components;
}

ZORCompDocument::Component ZORCompDocumentCollector::CollectPly(const ZORCompPly& ply)
{
    Document::Component data;
    data.kind = Document::Component::Ply;
    data.name = OwnLabelOf(ply);
    data.isActive = ply.IsActive();
    data.rosette = NumberOf(ply.GetRosette(), -1);
    data.material = NumberOf(ply.GetMaterial());
    data.angle = ply.GetAngle();
    for (const ZORGeoCurve* boundary : ply.GetBoundaries())
        data.boundaries.append(NumberOf(boundary));
    data.attributes = ply.GetAttributes();
    return data;
}

void ZORCompDocumentCollector::Omit(const ZORFeatObject& feature)
{
    m_omitted.append(tr("the feature '%1' (%2)")
                         .arg(feature.GetLabel(), QLatin1String(feature.metaObject()->className())));
}

int ZORCompDocumentCollector::NumberOf(const ZORCompMaterial* material)
{
    if (!material)
        return -1;
    const auto known = m_materials.constFind(material);
    if (known != m_materials.cend())
        return *known;
    m_document.materials.append(
        {OwnLabelOf(*material), material->GetProperties(), material->GetAttributes()});
    return *m_materials.insert(material, int(m_document.materials.size()) - 1);
}

int ZORCompDocumentCollector::NumberOf(const ZORCompRosette* rosette, int layup)
{
    if (!rosette)
        return -1;
    const auto known = m_rosettes.constFind(rosette);
    if (known != m_rosettes.cend())
        return *known;
    Document::Rosette data{layup,
                           OwnLabelOf(*rosette),
                           rosette->GetGivenOrigin(),
                           rosette->GetGivenXAxis(),
                           rosette->GetGivenNormal(),
                           rosette->GetAttributes()};
    if (rosette->GetSurface()) { // the axes must be right without it
        data.origin = rosette->GetOrigin();
        data.xAxis = rosette->GetXAxis();
        data.normal = rosette->GetNormal();
        m_omitted.append(
            tr("the surface '%1' of '%2'").arg(rosette->GetSurface()->objectName(), rosette->GetLabel()));
    }
    m_document.rosettes.append(data);
    return *m_rosettes.insert(rosette, int(m_document.rosettes.size()) - 1);
}

int ZORCompDocumentCollector::NumberOf(const ZORGeoCurve* curve)
{
    const auto known = m_curves.constFind(curve);
    if (known != m_curves.cend())
        return *known;
    m_document.contours.append({-1, false, curve->objectName(), PointsOf(*curve), {}});
    return *m_curves.insert(curve, int(m_document.contours.size()) - 1);
}
