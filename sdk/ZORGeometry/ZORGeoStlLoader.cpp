#include "ZORGeoStlLoader.h"

#include "ZORGeoStlContent_p.h"
#include "ZORGeoStlParser_p.h"
#include "ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>
#include <QFileDevice>

#include <memory>

namespace {

QString Translate(const char* text)
{
    return QCoreApplication::translate("ZORGeoStlLoader", text);
}

QString GetDeviceName(const QIODevice* device)
{
    const auto* file = qobject_cast<const QFileDevice*>(device);
    return file ? file->fileName() : Translate("STL content");
}

} // namespace

ZORGeoStlLoader::ZORGeoStlLoader(QIODevice* device)
    : m_device(device)
{
    ZOR_TRACE_CALL(device);
}

QList<const ZORGeoSurface*> ZORGeoStlLoader::Load(ZORGeoContainer* container, ZORSysValue::Unit unit)
{
    ZOR_TRACE_CALL(container, unit);
    m_report = {};
    if (!container)
        throw ZORSysException(Translate("container is null"));
    if (!ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).contains(unit))
        throw ZORSysException(Translate("unit is no unit of length"));

    std::vector<ZORGeoStlSolid> solids;
    {
        ZORGeoStlContent content(m_device);
        ZORGeoStlParser parser(ZORSysValue::GetUnitFactor(unit), m_report,
                               [&content](qsizetype bytes) { content.Release(bytes); });
        solids = parser.Parse(content.GetBytes());
    }
    std::vector<std::unique_ptr<ZORGeoSurface>> surfaces;
    for (ZORGeoStlSolid& solid : solids) {
        surfaces.push_back(std::make_unique<ZORGeoSurface>(container, solid.vertices, solid.triangles));
        surfaces.back()->setObjectName(solid.name);
        solid = {};
    }
    if (m_report.HasLosses())
        qCWarning(ZorGeometryLog).noquote() << GetDeviceName(m_device) + ": " + m_report.ToString();

    QList<const ZORGeoSurface*> added;
    for (std::unique_ptr<ZORGeoSurface>& surface : surfaces) {
        if (!surface->objectName().isEmpty())
            surface->setObjectName(container->GetUniqueName(surface->objectName()));
        surface->Initialize();
        added.append(surface.release());
    }
    return added;
}
