// What the base directory of jobs holds.

#pragma once

#include <QDir>
#include <QStringList>

/// The folders of processes.
inline QStringList ListRooms(const QString& base)
{
    return QDir(base).entryList({"zorjobs-*"}, QDir::AllEntries | QDir::System);
}

/// All entries, with the directories of jobs instead of the folders of their processes. What a thread is about to remove
/// is hidden, and not among them.
inline QStringList ListWorkDirectories(const QString& base)
{
    QStringList directories;
    const QDir folder(base);
    for (const QString& entry : folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        if (!entry.startsWith("zorjobs-"))
            directories.append(entry);
        else
            directories += QDir(folder.filePath(entry)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }
    return directories;
}
