// The stored path of a container file.

#pragma once

#include <QString>

class QSettings;

/// The key "Dir" of a group below "Debug": a whole path, in spite of its name. The groups are entered for the
/// access only: the event loop of a dialog may run others that use the store.
class ZORTestContainerPath
{
public:
    /// \param settings  not owned
    ZORTestContainerPath(QSettings* settings, const QString& group);

    /// Empty when none is stored.
    QString Read() const;
    void Write(const QString& path) const;

private:
    QSettings* const m_settings;
    const QString m_group;
};
