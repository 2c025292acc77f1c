#include "view/ZORHostSamples.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QCoreApplication>
#include <QDir>

#include <memory>

namespace {

const QColor kSurfaceColor(0x8f, 0xa9, 0xc4);

void Show(ZORGeoSurface* surface, ZORFeatEnvironment* environment)
{
    ZORVisOptions options;
    options.SetColor(kSurfaceColor);
    auto object = std::make_unique<ZORVisVirtualObject>(environment, surface);
    object->SetRep(new ZORVisRepGraphics({new ZORVisSurfacePrimitive(surface)}, options));
    QObject::connect(surface, &QObject::destroyed, object.get(), &QObject::deleteLater);
    environment->AddVirtualObject(object.get());
    object.release(); // the environment owns it
}

} // namespace

QString ZORHostSamples::FindFolder()
{
    const QString program = QCoreApplication::applicationDirPath();
    QStringList candidates = {program + "/../samples", program + "/../share/zorsdk/samples"};
    if (qEnvironmentVariableIsSet("ZOR_SAMPLES"))
        candidates = QStringList(qEnvironmentVariable("ZOR_SAMPLES"));
    for (const QString& folder : std::as_const(candidates)) {
        if (!folder.isEmpty() && QDir(folder).exists())
            return QDir::cleanPath(QDir(folder).absolutePath());
    }
    return {};
}

QStringList ZORHostSamples::GetFiles()
{
    const QString folder = FindFolder();
    if (folder.isEmpty())
        return {};
    QStringList files;
    const QFileInfoList entries =
        QDir(folder).entryInfoList({"*.stl"}, QDir::Files | QDir::Readable, QDir::Name);
    for (const QFileInfo& entry : entries)
        files.append(entry.absoluteFilePath());
    return files;
}

bool ZORHostIsContainerFile(const QString& fileName)
{
    return fileName.endsWith(QLatin1String(".ZORCont"), Qt::CaseInsensitive);
}

int ZORHostOpenFile(const QString& fileName, ZORFeatEnvironment* environment)
{
    ZORSysFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw ZORSysFileOpenException(QDir::toNativeSeparators(fileName), file.errorString());
    ZORFeatContainer* container = environment->GetContainer();
    const int before = container->GetNumGeometry();
    if (ZORHostIsContainerFile(fileName))
        container->Load(file);
    else
        ZORGeoStlLoader(&file).Load(container, ZORSysValue::Millimeter);
    try {
        ZORHostShowSurfaces(environment, before);
    } catch (...) {
        while (container->GetNumGeometry() > before) // one may take others with it
            delete container->GetGeometryByIndex(container->GetNumGeometry() - 1);
        throw;
    }
    return container->GetNumGeometry() - before;
}

void ZORHostShowSurfaces(ZORFeatEnvironment* environment, int first)
{
    const ZORFeatContainer* container = environment->GetContainer();
    for (int i = first; i < container->GetNumGeometry(); ++i) {
        if (auto* surface = qobject_cast<ZORGeoSurface*>(container->GetGeometryByIndex(i)))
            Show(surface, environment);
    }
}
