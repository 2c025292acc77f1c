// What the user prefers.

#pragma once

#include <QObject>

/// Choices of the user that hold for all documents, kept in the settings of the host. ZORHostPreferencesDialog edits them.
///
/// Thread safety: main thread only.
class ZORHostPreferences : public QObject
{
    Q_OBJECT

public:
    static constexpr int kMostAutosaveMinutes = 240;

    /// Returns the one object; it lives as long as the process.
    static ZORHostPreferences* Get();

    /// Returns the time between two automatic saves in minutes, 5 by default; 0 means that nothing is saved automatically.
    int GetAutosaveMinutes() const;
    void SetAutosaveMinutes(int minutes);
    /// Returns whether everything new is shown at once, also what plug-ins create without showing it; false by default.
    bool ShowsEverythingNew() const;
    void SetShowsEverythingNew(bool shows);

signals:
    /// One of the choices has changed.
    void Changed();

private:
    void Write(const QString& key, const QVariant& value);
};
