#include "window/ZORHostRescue.h"

#include "base/ZORHostSettings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace {

constexpr char kKey[] = "RescuedDocuments";

} // namespace

QString ZORHostRescue::MakePath()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/rescued");
    folder.mkpath(".");
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString start = QDateTime::currentDateTime().toString("yyyy-MM-dd-hhmmss");
    QString path = folder.filePath(start + ".ZORCont");
    for (int number = 2; QFile::exists(path); ++number)
        path = folder.filePath(QStringLiteral("%1-%2.ZORCont").arg(start).arg(number));
    return path;
}

void ZORHostRescue::Remember(const QString& path)
{
    ZORHostSettings::Write(kKey, ZORHostSettings::Read(kKey).toStringList() + QStringList(path));
}

QStringList ZORHostRescue::TakeNotices()
{
    QStringList notices;
    for (const QString& path : ZORHostSettings::Read(kKey).toStringList()) {
        if (QFile::exists(path)) {
            notices.append(
                QCoreApplication::translate(
                    "ZORHostRescue", "A session was ended with unsaved changes. Its document is in '%1'.")
                    .arg(QDir::toNativeSeparators(path)));
        }
    }
    if (!ZORHostSettings::Read(kKey).toStringList().isEmpty())
        ZORHostSettings::Write(kKey, QStringList());
    return notices;
}
