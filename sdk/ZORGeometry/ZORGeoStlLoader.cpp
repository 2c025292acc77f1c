#include "ZORGeoStlLoader.h"

#include "mesh/ZORGeoSurface_p.h"
#include "path/ZORGeoProgressReporter_p.h"
#include "stl/ZORGeoStlContent_p.h"
#include "stl/ZORGeoStlParser_p.h"
#include "stl/ZORGeoStlSurfaces_p.h"
#include "storage/ZORGeometryLog_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysFileNotices.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QFileDevice>
#include <QtEndian>

#include <algorithm>
#include <memory>
#include <vector>

using zor::geo::ProgressReporter;

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

ZORGeoStlSurfacesData* ReadSurfaces(QIODevice* device, double factor, ZORGeoStlReport& report,
                                    ProgressReporter& progress)
{
    constexpr double kParsed = 0.8; // part of the time that parsing takes
    std::vector<ZORGeoStlSolid> solids;
    {
        progress.SetRange(0, kParsed);
        ZORGeoStlContent content(device, progress);
        solids = ZORGeoStlParser(factor, report, content).Parse();
    }
    progress.SetRange(kParsed, 1);
    auto data = std::make_unique<ZORGeoStlSurfacesData>();
    for (ZORGeoStlSolid& solid : solids) {
        progress.Update(double(data->surfaces.size()) / double(solids.size()));
        data->surfaces.push_back(
            {solid.name, ZORGeoSurfacePrivate::MakeMesh(solid.vertices, solid.triangles)});
        data->surfaces.back().mesh->GetBox(); // here rather than when somebody waits for it
        solid = {};
    }
    return data.release();
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

void ZORGeoStlLoader::CheckUnit(ZORSysValue::Unit unit)
{
    if (!ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length).contains(unit))
        throw ZORSysException(tr("unit is no unit of length"));
}

ZORGeoStlSurfaces ZORGeoStlLoader::Run(ZORSysValue::Unit unit, ProgressReporter& progress)
{
    ZORGeoStlSurfaces surfaces;
    surfaces.d = ReadSurfaces(d->device, ZORSysValue::GetUnitFactor(unit), d->report, progress);
    if (d->report.HasLosses())
        qCWarning(ZorGeometryLog).noquote() << GetDeviceName(d->device) + ": " + d->report.ToString();
    return surfaces;
}

QList<const ZORGeoSurface*> ZORGeoStlLoader::Load(ZORGeoContainer* container, ZORSysValue::Unit unit)
{
    ZOR_TRACE_CALL(container, unit);
    d->report = {};
    if (!container)
        throw ZORSysException(tr("container is null"));
    CheckUnit(unit);
    return ZORSysMemory::Read(GetDeviceName(d->device), EstimateMemory(d->device), [&] {
        ProgressReporter progress;
        QList<const ZORGeoSurface*> added = Run(unit, progress).AddTo(container);
        if (d->report.HasLosses())
            ZORSysFileNotices::GetInstance()->Report(GetDeviceName(d->device), {d->report.ToString()});
        return added;
    });
}

std::optional<ZORGeoStlSurfaces> ZORGeoStlLoader::Read(ZORSysValue::Unit unit,
                                                       const std::function<bool(double)>& report)
{
    ZOR_TRACE_CALL(unit);
    d->report = {};
    CheckUnit(unit);
    try {
        return ZORSysMemory::Read(GetDeviceName(d->device), EstimateMemory(d->device), [&] {
            ProgressReporter progress(report);
            progress.Report(0);
            std::optional<ZORGeoStlSurfaces> surfaces = Run(unit, progress);
            progress.Report(1);
            return surfaces;
        });
    } catch (const zor::geo::Canceled&) {
        return {};
    }
}
