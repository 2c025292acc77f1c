#include "document/ZORHostRecentFiles.h"

#include "base/ZORHostSettings.h"

#include <QFileInfo>

namespace {

constexpr char kKey[] = "RecentFiles";

} // namespace

QStringList ZORHostRecentFiles::GetFiles()
{
    QStringList files = ZORHostSettings::Read(kKey).toStringList();
    files.removeIf([](const QString& file) { return !QFileInfo(file).isAbsolute(); }); // edited by hand
    files.removeDuplicates();
    return files.first(std::min(qsizetype(kMost), files.size()));
}

void ZORHostRecentFiles::Add(const QString& file)
{
    QStringList files = GetFiles();
    const QString path = QFileInfo(file).absoluteFilePath();
    files.removeAll(path);
    files.prepend(path);
    ZORHostSettings::Write(kKey, files.first(std::min(qsizetype(kMost), files.size())));
}

void ZORHostRecentFiles::Remove(const QString& file)
{
    QStringList files = GetFiles();
    if (files.removeAll(file) > 0)
        ZORHostSettings::Write(kKey, files);
}

void ZORHostRecentFiles::Clear()
{
    ZORHostSettings::Write(kKey, QStringList());
}
