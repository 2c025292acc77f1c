#include "ZORGeoStlLoader.h"

#include "stl/ZORGeoStlContent_p.h"
#include "stl/ZORGeoStlParser_p.h"
#include "storage/ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QFileDevice>
#include <QPointer>
#include <QtEndian>

#include <algorithm>
#include <memory>

namespace {

QString GetDeviceName(const QIODevice* device)
{
    const auto* file = qobject_cast<const QFileDevice*>(device);
    return file ? file->fileName() : ZORGeoStlLoader::tr("STL content");
}

/// Returns the number of bytes that are read: binary content may be longer than its header announces.
qint64 GetUsedSize(QIODevice* device)
{
    constexpr qint64 kHeaderSize = ZORGeoStlParser::kHeaderSize;
    const qint64 size = device->size() - device->pos();
    const QByteArray header = device->peek(kHeaderSize);
    if (header.size() < kHeaderSize || !header.contains('\0'))
        return size;
    const qint64 announced = qFromLittleEndian<quint32>(header.constData() + 80);
    const bool isStream = announced == 0 && (size - kHeaderSize) % ZORGeoStlParser::kFacetSize == 0;
    return isStream ? size : std::min(size, kHeaderSize + ZORGeoStlParser::kFacetSize * announced);
}

/// Returns the number of bytes that loading takes at its peak, as measured with connected triangles in both forms; 0 if
/// the device cannot say.
qint64 EstimateMemory(QIODevice* device)
{
    constexpr double kBytesPerByte = 1.5;
    if (!device || !device->isReadable() || device->isSequential())
        return 0;
    return qint64(kBytesPerByte * double(GetUsedSize(device)));
}

using Surfaces = std::vector<std::unique_ptr<ZORGeoSurface>>;

Surfaces ReadSurfaces(QIODevice* device, ZORGeoContainer* container, double factor, ZORGeoStlReport& report)
{
    std::vector<ZORGeoStlSolid> solids;
    {
        ZORGeoStlContent content(device);
        solids = ZORGeoStlParser(factor, report, content).Parse();
    }
    Surfaces surfaces;
    for (ZORGeoStlSolid& solid : solids) {
        surfaces.push_back(std::make_unique<ZORGeoSurface>(container, solid.vertices, solid.triangles));
        surfaces.back()->setObjectName(solid.name);
        solid = {};
    }
    return surfaces;
}

/// Adds all surfaces to the container, or none where an exception ends it.
QList<const ZORGeoSurface*> Add(Surfaces& surfaces, ZORGeoContainer* container)
{
    QList<const ZORGeoSurface*> added;
    added.reserve(qsizetype(surfaces.size()));
    std::vector<QPointer<ZORGeoSurface>> joined; // receivers of the container's signals may remove them
    joined.reserve(surfaces.size());
    try {
        for (std::unique_ptr<ZORGeoSurface>& surface : surfaces) {
            if (!surface->objectName().isEmpty())
                surface->setObjectName(container->GetUniqueName(surface->objectName()));
            joined.emplace_back(surface.get());
            surface->Initialize();
            added.append(surface.release());
        }
    } catch (...) {
        joined.resize(size_t(added.size())); // the others still have their owner
        for (const QPointer<ZORGeoSurface>& surface : joined)
            delete surface.data();
        throw;
    }
    return added;
}

} // namespace

class ZORGeoStlLoader::Private
{
public:
    QIODevice* device; // not owned
    ZORGeoStlReport report;
};

ZORGeoStlLoader::ZORGeoStlLoader(QIODevice* device)
    : d(new Private{device, {}})
{
    ZOR_TRACE_CALL(device);
}

ZORGeoStlLoader::~ZORGeoStlLoader() = default;

const ZORGeoStlReport& ZORGeoStlLoader::GetReport() const
{
    return d->report;
}

QList<const ZORGeoSurface*> ZORGeoStlLoader::Load(ZORGeoContainer* container, ZORSysValue::Unit unit)
{
    ZOR_TRACE_CALL(container, unit);
    d->report = {};
    if (!container)
        throw ZORSysException(tr("container is null"));
    if (!ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).contains(unit))
        throw ZORSysException(tr("unit is no unit of length"));

    return ZORSysMemory::Read(GetDeviceName(d->device), EstimateMemory(d->device), [&] {
        Surfaces surfaces = ReadSurfaces(d->device, container, ZORSysValue::GetUnitFactor(unit), d->report);
        if (d->report.HasLosses())
            qCWarning(ZorGeometryLog).noquote() << GetDeviceName(d->device) + ": " + d->report.ToString();
        return Add(surfaces, container);
    });
}
