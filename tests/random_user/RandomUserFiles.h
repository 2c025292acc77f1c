// The files that the random user opens and saves.

#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

/// Good, damaged and odd files in a separate folder: inputs of all kinds, each also cut short and with
/// some bytes changed; empty ones, folders, a very long name, a link to itself, named pipes and, where the
/// system allows to make them, devices.
class RandomUserFiles
{
public:
    /// Writes the files into \a folder, which is created.
    explicit RandomUserFiles(const QString& folder);

    QString GetFolder() const { return m_folder.path(); }
    QString GetPath(const QString& name) const { return m_folder.filePath(name); }
    /// Names that can be chosen where a file is to be read: one in four does not exist or is not a regular
    /// file.
    QStringList GetNamesToRead() const;
    /// Names that can be chosen where a file is to be written. They never lead out of the folder.
    static QStringList GetNamesToWrite();
    static QStringList GetFolderNames();

private:
    void CopySamples() const;
    void AddDamaged(const QString& name) const;
    void AddParts() const;
    void AddOddFiles() const;
    void AddContainerFile() const;
    void AddPipesAndDevices() const;
    void AddLibraries() const;
    void Write(const QString& name, const QByteArray& contents) const;

    QDir m_folder;
};
