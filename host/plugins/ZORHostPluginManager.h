// Finds, checks, loads and unloads plug-ins.

#pragma once

#include "plugins/ZORHostPlugin.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <map>
#include <memory>

class QLibrary;
class QWidget;

/// Loads plug-in libraries by path and keeps a record of every file it has met.
///
/// A plug-in is a shared library with Qt plug-in metadata of the interface "org.zorvane.sdk.Plugin" and the
/// keys "name", "version" and "sdkVersion". The metadata is read before the library is mapped, so that a
/// library built against another major version of the SDK never runs. A library that is found twice is loaded
/// once.
class ZORHostPluginManager : public QObject
{
    Q_OBJECT

public:
    explicit ZORHostPluginManager(QObject* parent = nullptr);
    /// Leaves the loaded libraries in the process: their classes may still be in use.
    ~ZORHostPluginManager() override;

    /// The folders LoadFromSearchPath() looks in: those of the environment variable ZOR_PLUGIN_PATH
    /// (separated by colons), the library folder of the build tree, and "<libdir>/zorsdk/plugins" of the
    /// installation. Folders of the variable that are relative, or to which everybody may write, are left out.
    static QStringList GetSearchPath();
    /// Version of the SDK the host was built with.
    static QString GetSdkVersion();

    /// Loads a file. A file that was met before keeps its place in the list.
    /// \param fileName  absolute
    /// \return whether it is loaded now; the reason is in GetPlugins()
    bool Load(const QString& fileName);
    /// Loads every plug-in in the search path, by folder and file name. Other libraries that lie there are
    /// passed over without a word. A damaged library is recorded as failed, since nobody knows what it was.
    ///
    /// Logs a warning for each folder of ZOR_PLUGIN_PATH that is ignored. A plug-in in such a folder to whose file
    /// everybody may write fails. Load() takes any file.
    void LoadFromSearchPath();

    /// Closes every window of the plug-in and unmaps the library.
    /// \return whether it is out of the process; the reason is in GetPlugins()
    bool Unload(const QString& fileName);

    /// In the order in which they were met.
    const QList<ZORHostPlugin>& GetPlugins() const { return m_plugins; }

    /// The top-level windows that are of a class of the library \a path, or hold a widget that is, but for
    /// \a except.
    static QList<QWidget*> FindWindows(const QString& path, const QWidget* except = nullptr);

    /// A window that is never closed for the sake of a plug-in; not owned.
    void SetMainWindow(QWidget* window) { m_mainWindow = window; }

signals:
    /// The list or a state has changed.
    void Changed();

private:
    enum class Trust { AllFiles, OwnFilesOnly };

    static QString FindReasonToIgnore(const QString& folder);
    void LoadFromFolder(const QString& folder, Trust trust);
    void Refuse(const QString& path, const QString& reason);
    ZORHostPlugin& Record(const QString& path);
    bool Fail(ZORHostPlugin& plugin, const QString& reason);
    bool ReadMetaData(ZORHostPlugin& plugin) const;
    bool CheckVersion(ZORHostPlugin& plugin) const;
    bool CheckNotLoaded(ZORHostPlugin& plugin) const;
    bool CloseWindows(ZORHostPlugin& plugin) const;

    QList<ZORHostPlugin> m_plugins;
    std::map<QString, std::unique_ptr<QLibrary>> m_libraries; // the loaded ones, by path
    QWidget* m_mainWindow = nullptr;                          // not owned
};
