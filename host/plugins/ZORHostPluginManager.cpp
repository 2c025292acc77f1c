#include "plugins/ZORHostPluginManager.h"

#include "base/ZORHostLogging.h"

#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysLibraryFile.h>

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QVersionNumber>
#include <QWidget>

#include <algorithm>
#include <dlfcn.h>
#include <elf.h>

namespace {

const QLatin1String kInterfaceId("org.zorvane.sdk.Plugin");

/// The file that holds the address; empty for none.
QString FileOfAddress(const void* address)
{
    Dl_info info;
    if (dladdr(address, &info) == 0 || !info.dli_fname)
        return {};
    return QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath();
}

bool IsClassOf(const QObject* object, const QString& canonicalPath)
{
    for (const QMetaObject* type = object->metaObject(); type; type = type->superClass()) {
        if (FileOfAddress(type) == canonicalPath)
            return true;
    }
    return false;
}

/// Returns whether a file begins as libraries do, also where the rest is missing. Scripts of linkers do not, which have
/// names of libraries.
bool BeginsAsLibrary(const QString& path)
{
    ZORSysFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(SELFMAG) == QByteArray(ELFMAG, SELFMAG);
}

/// Interface named by the metadata of a complete library, read without running it; empty for none.
QString ReadInterface(const QString& path)
{
    return QPluginLoader(path).metaData().value(QLatin1String("IID")).toString();
}

QStringList ReadFoldersOfEnvironment()
{
    return qEnvironmentVariable("ZOR_PLUGIN_PATH").split(QDir::listSeparator(), Qt::SkipEmptyParts);
}

bool IsWritableByEverybody(const QFileInfo& file)
{
    return file.exists() && file.permission(QFile::WriteOther);
}

bool IsMapped(const QString& path)
{
    void* handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOLOAD | RTLD_LAZY);
    if (!handle)
        return false;
    dlclose(handle);
    return true;
}

} // namespace

ZORHostPluginManager::ZORHostPluginManager(QObject* parent)
    : QObject(parent)
{
}

ZORHostPluginManager::~ZORHostPluginManager() = default;

QStringList ZORHostPluginManager::GetSearchPath()
{
    QStringList folders;
    for (const QString& folder : ReadFoldersOfEnvironment()) {
        if (FindReasonToIgnore(folder).isEmpty())
            folders.append(folder);
    }
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : {ZOR_HOST_BUILD_PLUGIN_DIR, ZOR_HOST_PLUGIN_DIR})
        folders.append(program.filePath(QString::fromUtf8(folder)));
    for (QString& folder : folders)
        folder = QDir::cleanPath(QDir(folder).absolutePath());
    folders.removeDuplicates();
    return folders;
}

QString ZORHostPluginManager::FindReasonToIgnore(const QString& folder)
{
    if (!QDir::isAbsolutePath(folder))
        return tr("its path is relative");
    return IsWritableByEverybody(QFileInfo(folder)) ? tr("everybody may write to it") : QString();
}

QString ZORHostPluginManager::GetSdkVersion()
{
    return QStringLiteral(ZOR_SDK_VERSION);
}

ZORHostPlugin& ZORHostPluginManager::Record(const QString& path)
{
    const auto known = std::find_if(m_plugins.begin(), m_plugins.end(),
                                    [&path](const ZORHostPlugin& plugin) { return plugin.path == path; });
    if (known != m_plugins.end())
        return *known;
    ZORHostPlugin plugin;
    plugin.path = path;
    plugin.name = QFileInfo(path).fileName();
    m_plugins.append(plugin);
    return m_plugins.last();
}

bool ZORHostPluginManager::Fail(ZORHostPlugin& plugin, const QString& reason)
{
    plugin.reason = reason;
    qCWarning(lcHost).noquote() << tr("Plug-in '%1': %2").arg(QDir::toNativeSeparators(plugin.path), reason);
    emit Changed();
    return false;
}

bool ZORHostPluginManager::Load(const QString& fileName)
{
    const QFileInfo file(fileName);
    // Links and different spellings of one file count as one.
    const QString path = file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
    ZORHostPlugin& plugin = Record(path);
    if (plugin.state == ZORHostPlugin::State::Loaded)
        return true;
    plugin.state = ZORHostPlugin::State::Failed;
    plugin.reason.clear();
    if (!file.exists())
        return Fail(plugin, tr("the file does not exist"));
    if (file.isDir())
        return Fail(plugin, tr("this is a folder, not a library"));
    if (const QString obstacle = ZORSysFile::FindObstacle(path, QIODevice::ReadOnly); !obstacle.isEmpty())
        return Fail(plugin, obstacle);
    if (!file.isReadable())
        return Fail(plugin, tr("the file cannot be read"));
    if (!ZORSysLibraryFile::IsWhole(path))
        return Fail(plugin, tr("this is no complete library: the file is cut short or of another kind"));
    if (!ReadMetaData(plugin) || !CheckVersion(plugin) || !CheckNotLoaded(plugin))
        return Fail(plugin, plugin.reason);

    auto library = std::make_unique<QLibrary>(path);
    // All symbols at once: what is missing shows now and not in the middle of the work. Hints belong to the
    // record that all objects of one file share; this also drops the one of QPluginLoader that forbids to
    // unload.
    library->setLoadHints(QLibrary::ResolveAllSymbolsHint);
    if (!library->load())
        return Fail(plugin, library->errorString());
    m_libraries[path] = std::move(library);
    plugin.state = ZORHostPlugin::State::Loaded;
    qCInfo(lcHost).noquote() << tr("Plug-in %1 %2 loaded from '%3'")
                                    .arg(plugin.name, plugin.version, QDir::toNativeSeparators(path));
    emit Changed();
    return true;
}

void ZORHostPluginManager::LoadFromSearchPath()
{
    QStringList ofEnvironment;
    for (const QString& folder : ReadFoldersOfEnvironment()) {
        const QString reason = FindReasonToIgnore(folder);
        if (reason.isEmpty())
            ofEnvironment.append(QDir::cleanPath(folder));
        else
            qCWarning(lcHost).noquote()
                << tr("The folder '%1' of ZOR_PLUGIN_PATH is ignored: %2").arg(folder, reason);
    }
    const QStringList folders = GetSearchPath();
    for (const QString& folder : folders)
        LoadFromFolder(folder, ofEnvironment.contains(folder) ? Trust::OwnFilesOnly : Trust::AllFiles);
}

void ZORHostPluginManager::LoadFromFolder(const QString& folder, Trust trust)
{
    const QFileInfoList files = QDir(folder).entryInfoList({"*.so"}, QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        const QString path = file.absoluteFilePath();
        const bool isWhole = ZORSysLibraryFile::IsWhole(path);
        const QString id = isWhole ? ReadInterface(path) : QString();
        // A library without metadata beside the plug-ins is none of ours, unless the folder is for plug-ins
        // only. The metadata of a damaged one are unknown, so that the user has to learn of it.
        const bool isDamaged = !isWhole && BeginsAsLibrary(path);
        if (id.isEmpty() && !isDamaged && QDir(folder).dirName() != QLatin1String("plugins"))
            continue;
        if (!id.isEmpty() && id != kInterfaceId)
            continue;
        if (trust == Trust::OwnFilesOnly && IsWritableByEverybody(file))
            Refuse(path, tr("the file is ignored in ZOR_PLUGIN_PATH: everybody may write to it"));
        else
            Load(path);
    }
}

void ZORHostPluginManager::Refuse(const QString& path, const QString& reason)
{
    ZORHostPlugin& plugin = Record(QFileInfo(path).canonicalFilePath());
    if (plugin.state == ZORHostPlugin::State::Loaded)
        return; // the user asked for it by name
    plugin.state = ZORHostPlugin::State::Failed;
    Fail(plugin, reason);
}

bool ZORHostPluginManager::ReadMetaData(ZORHostPlugin& plugin) const
{
    QPluginLoader loader(plugin.path);
    const QJsonObject outer = loader.metaData();
    if (outer.isEmpty()) {
        plugin.reason = tr("this is no plug-in: %1").arg(loader.errorString());
        return false;
    }
    const QString id = outer.value(QLatin1String("IID")).toString();
    if (id != kInterfaceId) {
        plugin.reason =
            tr("this is a plug-in for something else: its interface is '%1', not '%2'").arg(id, kInterfaceId);
        return false;
    }
    const QJsonObject data = outer.value(QLatin1String("MetaData")).toObject();
    plugin.name = data.value(QLatin1String("name")).toString(plugin.name);
    plugin.version = data.value(QLatin1String("version")).toString();
    plugin.sdkVersion = data.value(QLatin1String("sdkVersion")).toString();
    return true;
}

bool ZORHostPluginManager::CheckVersion(ZORHostPlugin& plugin) const
{
    const QVersionNumber theirs = QVersionNumber::fromString(plugin.sdkVersion);
    const QVersionNumber ours = QVersionNumber::fromString(GetSdkVersion());
    const QString file = QFileInfo(plugin.path).fileName();
    if (theirs.isNull()) {
        plugin.reason = tr("'%1' does not say which version of the SDK it was built with").arg(file);
    } else if (theirs.majorVersion() != ours.majorVersion()) {
        plugin.reason =
            tr("'%1' was built with SDK version %2, this host has version %3: the major versions differ")
                .arg(file, plugin.sdkVersion, GetSdkVersion());
    }
    return plugin.reason.isEmpty();
}

bool ZORHostPluginManager::CheckNotLoaded(ZORHostPlugin& plugin) const
{
    for (const ZORHostPlugin& other : m_plugins) {
        if (other.state == ZORHostPlugin::State::Loaded && other.name == plugin.name) {
            plugin.reason = tr("a plug-in of this name is already loaded from '%1'")
                                .arg(QDir::toNativeSeparators(other.path));
            return false;
        }
    }
    return true;
}

bool ZORHostPluginManager::Unload(const QString& fileName)
{
    const QFileInfo file(fileName);
    ZORHostPlugin& plugin = Record(file.exists() ? file.canonicalFilePath() : file.absoluteFilePath());
    if (plugin.state != ZORHostPlugin::State::Loaded)
        return plugin.state == ZORHostPlugin::State::Unloaded;
    plugin.reason.clear();
    if (!CloseWindows(plugin))
        return Fail(plugin, plugin.reason);
    // Commands that have ended wait for the event loop to delete them.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto library = m_libraries.find(plugin.path);
    if (!library->second->unload())
        return Fail(plugin, tr("the library could not be unloaded: %1").arg(library->second->errorString()));
    m_libraries.erase(library);
    plugin.state = ZORHostPlugin::State::Unloaded;
    if (IsMapped(plugin.path))
        return Fail(plugin, tr("the library stays in memory: something still uses it"));
    emit Changed();
    return true;
}

bool ZORHostPluginManager::CloseWindows(ZORHostPlugin& plugin) const
{
    // Closing one may open or delete others: look again after each.
    QList<QWidget*> windows = FindWindows(plugin.path, m_mainWindow);
    while (!windows.isEmpty()) {
        const QPointer<QWidget> window = windows.constFirst();
        const QString title = window->windowTitle();
        if (!window->close()) {
            plugin.reason = tr("the window '%1' did not close").arg(title);
            return false;
        }
        delete window.data(); // deleted on close, if at all, only by the event loop
        windows = FindWindows(plugin.path, m_mainWindow);
    }
    return true;
}

QList<QWidget*> ZORHostPluginManager::FindWindows(const QString& path, const QWidget* except)
{
    const QString canonicalPath = QFileInfo(path).canonicalFilePath();
    QList<QWidget*> result;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window == except)
            continue;
        const QList<QObject*> children = window->findChildren<QObject*>();
        const bool found =
            IsClassOf(window, canonicalPath)
            || std::any_of(children.cbegin(), children.cend(), [&canonicalPath](const QObject* child) {
                   return IsClassOf(child, canonicalPath);
               });
        if (found)
            result.append(window);
    }
    return result;
}
