#include "ZORCompDocumentBuilder_p.h"

#include <ZORComposites/ZORCompContour.h>
#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORSystem/ZORSysException.h>

#include <utility>

ZORCompDocumentBuilder::ZORCompDocumentBuilder(ZORCompRoot* root, bool replaces)
    : m_root(root)
    , m_replaces(replaces)
{
}

ZORCompDocumentBuilder::~ZORCompDocumentBuilder()
{
    while (!m_made.isEmpty())
        delete m_made.takeLast();
}

void ZORCompDocumentBuilder::Build(const ZORCompDocument& document, const QString& source,
                                   ZORCompReadReport& report)
{
    m_document = &document;
    m_source = source;
    m_report = &report;
    m_materials.clear();
    m_layups.clear();
    m_rosettes.clear();
    m_curves.clear();

    BuildMaterials();
    BuildLayups();
    BuildRosettes();
    BuildContours();
    for (int i = 0; i < document.layups.size(); ++i) {
        const Document::Layup& data = document.layups.at(i);
        ZORCompLayup* const layup = Require(m_layups.at(i));
        if (data.rosette >= 0)
            layup->SetRosette(Require(m_rosettes.at(data.rosette)));
        BuildComponents(layup, data.sequences);
    }
}

void ZORCompDocumentBuilder::Commit()
{
    m_made.clear();
    for (const ChangedMaterial& changed : std::as_const(m_changed)) {
        if (changed.material)
            changed.material->SetAttributes(changed.data.attributes);
        if (changed.material)
            changed.material->SetProperties(changed.data.properties);
    }
    for (const QPointer<ZORCompLayup>& layup : std::as_const(m_replaced)) {
        if (layup)
            layup->Remove();
    }
}

template<class Geometry>
Geometry* ZORCompDocumentBuilder::Require(const QPointer<Geometry>& geometry) const
{
    if (!geometry)
        throw ZORSysException(
            ZORCompDocumentBuilder::tr("'%1' was removed while it was being read").arg(m_source));
    return geometry;
}

template<class Feature>
Feature* ZORCompDocumentBuilder::Register(std::unique_ptr<Feature> feature, const QString& name)
{
    feature->SetLabel(name);
    const QPointer<Feature> registered = feature.get(); // a receiver of the container's signal may remove it
    feature->Initialize();
    feature.release();
    m_made.append(registered.data());
    return Require(registered);
}

ZORFeatObject* ZORCompDocumentBuilder::ParentOf(int layup) const
{
    if (layup >= 0)
        return Require(m_layups.at(layup));
    return Require(m_root);
}

void ZORCompDocumentBuilder::BuildMaterials()
{
    if (m_document->materials.isEmpty())
        return;
    if (!ZORCompMaterialLibrary::Find(Require(m_root)))
        m_made.append(ZORCompMaterialLibrary::Of(m_root));
    for (const Document::Material& data : m_document->materials)
        m_materials.append(BuildMaterial(data));
}

ZORCompMaterial* ZORCompDocumentBuilder::BuildMaterial(const Document::Material& data)
{
    const QPointer<ZORCompMaterialLibrary> library = ZORCompMaterialLibrary::Find(Require(m_root));
    ZORCompMaterial* const present =
        data.name.isEmpty() ? nullptr : Require(library)->FindMaterial(data.name);
    const bool isSame =
        present && present->GetProperties() == data.properties && present->GetAttributes() == data.attributes;
    if (isSame && !m_materials.contains(present))
        return present;
    if (present && m_replaces && !m_materials.contains(present)) {
        m_changed.append({present, data});
        return present;
    }
    auto material = std::make_unique<ZORCompMaterial>(Require(library));
    material->SetProperties(data.properties);
    material->SetAttributes(data.attributes);
    const QString name = present ? library->GetUniqueMaterialName(data.name) : data.name;
    if (present)
        m_report->Warn(tr("another material is named '%1', this one becomes '%2'").arg(data.name, name));
    ++m_report->numMaterials;
    return Register(std::move(material), name);
}

void ZORCompDocumentBuilder::BuildLayups()
{
    if (m_replaces) {
        for (ZORFeatObject* feature : Require(m_root)->GetAllChildren()) {
            auto* const layup = qobject_cast<ZORCompLayup*>(feature);
            if (layup && layup->GetSource() == m_source && !m_made.contains(layup))
                m_replaced.append(layup);
        }
    }
    for (const Document::Layup& data : m_document->layups) {
        auto layup = std::make_unique<ZORCompLayup>(Require(m_root));
        layup->SetSource(m_source);
        layup->SetAttributes(data.attributes);
        ++m_report->numLayups;
        m_layups.append(Register(std::move(layup), data.name));
    }
}

void ZORCompDocumentBuilder::BuildRosettes()
{
    for (const Document::Rosette& data : m_document->rosettes) {
        auto rosette =
            std::make_unique<ZORCompRosette>(ParentOf(data.layup), data.origin, data.xAxis, data.normal);
        rosette->SetAttributes(data.attributes);
        ++m_report->numRosettes;
        m_rosettes.append(Register(std::move(rosette), data.name));
    }
}

void ZORCompDocumentBuilder::BuildContours()
{
    for (const Document::Contour& data : m_document->contours) {
        ++m_report->numContours;
        if (data.isFeature) {
            auto contour = std::make_unique<ZORCompContour>(ParentOf(data.layup), data.points);
            contour->SetAttributes(data.attributes);
            m_curves.append(Register(std::move(contour), data.name)->GetCurve());
            continue;
        }
        ZORGeoContainer* const container = Require(m_root)->GetContainer();
        auto polyline = std::make_unique<ZORGeoPolyline>(container, data.points, true);
        if (!data.name.isEmpty())
            polyline->setObjectName(container->GetUniqueName(data.name));
        const QPointer<ZORGeoPolyline> registered = polyline.get();
        polyline->Initialize();
        polyline.release();
        m_made.append(registered.data());
        m_curves.append(Require(registered));
    }
}

void ZORCompDocumentBuilder::BuildComponents(ZORFeatObject* parent,
                                             const QList<Document::Component>& components)
{
    const QPointer<ZORFeatObject> guardedParent = parent;
    for (const Document::Component& data : components) {
        if (data.kind == Document::Component::Ply) {
            BuildPly(qobject_cast<ZORCompSequence*>(Require(guardedParent)), data);
            continue;
        }
        auto sequence = std::make_unique<ZORCompSequence>(Require(guardedParent));
        sequence->SetActive(data.isActive);
        sequence->SetAttributes(data.attributes);
        if (data.rosette >= 0)
            sequence->SetRosette(Require(m_rosettes.at(data.rosette)));
        ++m_report->numSequences;
        BuildComponents(Register(std::move(sequence), data.name), data.components);
    }
}

void ZORCompDocumentBuilder::BuildPly(ZORCompSequence* parent, const Document::Component& data)
{
    auto ply = std::make_unique<ZORCompPly>(parent);
    ply->SetActive(data.isActive);
    ply->SetAttributes(data.attributes);
    ply->SetAngle(data.angle);
    if (data.material >= 0)
        ply->SetMaterial(Require(m_materials.at(data.material)));
    if (data.rosette >= 0)
        ply->SetRosette(Require(m_rosettes.at(data.rosette)));
    QList<const ZORGeoCurve*> boundaries;
    for (const int boundary : data.boundaries)
        boundaries.append(Require(m_curves.at(boundary)));
    ply->SetBoundaries(boundaries);
    ++m_report->numPlies;
    Register(std::move(ply), data.name);
}
