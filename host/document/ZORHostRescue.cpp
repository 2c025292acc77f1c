#include "document/ZORHostRescue.h"

#include "base/ZORHostLogging.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostRescue)
};

constexpr char kMark[] =
    ".new"; // ends the name of an empty file beside each document that no start has named yet

QDir GetFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + "/rescued");
}

} // namespace

QString ZORHostRescue::MakePath()
{
    const QDir folder = GetFolder();
    if (folder.mkpath(".") && QFileInfo(folder.path()).isDir())
        QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    // Several hosts end at the same time when a session does.
    const QString start =
        QStringLiteral("%1-%2").arg(QDateTime::currentDateTime().toString("yyyy-MM-dd-hhmmss"),
                                    QString::number(QCoreApplication::applicationPid()));
    QString path = folder.filePath(start + ".ZORCont");
    for (int number = 2; QFile::exists(path); ++number)
        path = folder.filePath(QStringLiteral("%1-%2.ZORCont").arg(start, QString::number(number)));
    return path;
}

void ZORHostRescue::Remember(const QString& path)
{
    QFile mark(path + kMark);
    if (!mark.open(QIODevice::WriteOnly))
        qCWarning(lcHost).noquote() << "the next start cannot name the rescued document:"
                                    << mark.errorString();
}

QStringList ZORHostRescue::TakeNotices()
{
    QStringList notices;
    const QDir folder = GetFolder();
    for (const QString& name : folder.entryList({QLatin1Char('*') + kMark}, QDir::Files, QDir::Name)) {
        const QString mark = folder.filePath(name);
        if (!QFile::remove(mark) && !QFile::exists(mark))
            continue; // a host that starts at the same time names it
        const QString path = mark.chopped(qstrlen(kMark));
        if (!QFile::exists(path))
            continue;
        notices.append(Texts::tr("A session was ended with unsaved changes. Its document is in '%1'.")
                           .arg(QDir::toNativeSeparators(path)));
    }
    return notices;
}
