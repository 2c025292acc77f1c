// The settings store of the application.

#pragma once

#include <QCoreApplication>
#include <QSettings>
#include <QString>
#include <QTemporaryDir>
#include <QVariant>

#include <memory>

/// Opens the settings store and hands it to the SDK's settings manager for its own life time.
///
/// The store is an INI file: the user's own (organisation "Zorvane", application "zorhost" below the
/// user's configuration folder) or one named by the caller.
///
/// Values that cannot be written, for example because the folder became read-only, are kept and written as soon as that is
/// possible. The log has one warning with the reason.
class ZORHostSettings
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostSettings)

public:
    /// What a session starts from.
    enum class Start {
        LastSession,
        Defaults, ///< a file that is there is renamed to "<file>.bak"
    };

    /// \param fileName  empty for the user's own file. What ZORSysFile does not open, and files above 16 MB, are left
    ///                  alone: the defaults are used and nothing is kept.
    ZORHostSettings(const QString& fileName, Start start);
    ~ZORHostSettings();
    Q_DISABLE_COPY_MOVE(ZORHostSettings)

    /// A setting of the host, group "Host" of the store that the settings manager has now; the default without
    /// a store. The group is entered for this access only: dialogs run in between, and others use the store.
    static QVariant Read(const QString& key, const QVariant& defaultValue = {});
    /// Does nothing without a store.
    static void Write(const QString& key, const QVariant& value);

    QSettings* GetStore() const { return m_store.get(); }
    /// What the user has to know about the file: it cannot be read or written (nothing will be kept), or it
    /// was damaged (what could be read is used, a copy is kept as "<file>.damaged"). Empty when all is well.
    QString GetWarning() const { return m_warning; }

private:
    void MoveAway(const QString& fileName);
    void ReplaceStore(const QString& fileName);
    void WarnUnreadable(const QString& fileName);
    void CheckReadable(const QString& fileName);
    void CheckWritable();

    std::unique_ptr<QTemporaryDir> m_substitute; // null where the file itself can be used
    std::unique_ptr<QSettings> m_store;
    QString m_warning;
};
