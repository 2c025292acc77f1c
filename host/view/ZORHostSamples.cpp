#include "view/ZORHostSamples.h"

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
