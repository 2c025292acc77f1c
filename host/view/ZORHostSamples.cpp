#include "view/ZORHostSamples.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QCoreApplication>
#include <QDir>

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
    const ZORFeatShowNew show(container);
    if (ZORHostIsContainerFile(fileName))
        container->Load(file);
    else
        ZORGeoStlLoader(&file).Load(container, ZORSysValue::Millimeter);
    return container->GetNumGeometry() - before;
}
