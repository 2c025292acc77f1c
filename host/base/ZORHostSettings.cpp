#include "base/ZORHostSettings.h"

#include "base/ZORHostIniFormat.h"
#include "base/ZORHostLogging.h"

#include <ZORSystem/ZORSysFile.h>
#include <ZORSystem/ZORSysReplacedFile.h>
#include <ZORSystem/ZORSysSettingGroupContext.h>
#include <ZORSystem/ZORSysSettingsManager.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <cstdio>
#include <sys/file.h>

namespace {

constexpr qint64 kMaximumSize = 16 << 20; // bytes

bool ReplaceByCopy(const QString& source, const QString& target)
{
    ZORSysFile file(source);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    return file.GetReadError().isEmpty() && ZORSysReplacedFile::Replace(target, content).isEmpty();
}

/// Logs why values could not be written, once for each reason. They stay in the memory, and each change tries it again.
class WatchedSettings final : public QSettings
{
public:
    using QSettings::QSettings;
    ~WatchedSettings() override
    {
        sync();
        WarnOfErrors();
    }

protected:
    bool event(QEvent* event) override
    {
        const bool isHandled = QSettings::event(event);
        WarnOfErrors();
        return isHandled;
    }

private:
    void WarnOfErrors()
    {
        if (status() != AccessError) // which is never reset
            return;
        const QString reason = FindReason();
        if (!reason.isEmpty() && reason != m_reason)
            qCWarning(lcHost).noquote() << "the settings cannot be written:" << reason;
        m_reason = reason;
    }
    QString FindReason() const
    {
        const QString error = ZORHostIniFormat::GetWriteError(*this);
        QTemporaryFile probe(QFileInfo(fileName()).path()
                             + "/zorhost-XXXXXX"); // the file is replaced by a new one
        return !error.isEmpty() || probe.open() ? error : probe.errorString();
    }

    QString m_reason; // of the last failure
};

/// Removes what a killed process left of the lock that QSettings puts beside a file. QLockFile sees by the content of
/// its file whether the owner is alive, and waits 30 s for an owner that was killed before it wrote the content. A
/// living owner holds the lock of the system, too, save for the instant after it has made the file; to lose the file
/// then costs nothing, since settings are written to a new file that replaces the old one.
void RemoveAbandonedLock(const QString& path)
{
    ZORSysFile lock(path + ".lock");
    const bool isEmpty = QFile::exists(lock.fileName()) && lock.open(QIODevice::ReadOnly) && lock.size() == 0;
    if (isEmpty && flock(lock.handle(), LOCK_EX | LOCK_NB) == 0)
        QFile::remove(lock.fileName());
}

} // namespace

ZORHostSettings::ZORHostSettings(const QString& fileName, Start start)
{
    const QString path =
        fileName.isEmpty()
            ? QSettings(ZORHostIniFormat::Get(), QSettings::UserScope, "Zorvane", "zorhost").fileName()
            : fileName;
    const bool isUsable = ZORSysFile::FindObstacle(path, QIODevice::ReadWrite).isEmpty()
                          && ZORSysFile::FindObstacle(path + ".lock", QIODevice::ReadWrite).isEmpty();
    if (start == Start::Defaults && isUsable)
        MoveAway(path);
    RemoveAbandonedLock(path);
    if (isUsable && QFileInfo(path).size() <= kMaximumSize)
        m_store = std::make_unique<WatchedSettings>(path, ZORHostIniFormat::Get());
    else
        ReplaceStore(path);
    CheckReadable(path);
    if (m_warning.isEmpty())
        CheckWritable();
    ZORSysSettingsManager::GetManager()->SetSource(m_store.get());
}

QVariant ZORHostSettings::Read(const QString& key, const QVariant& defaultValue)
{
    QSettings* store = ZORSysSettingsManager::GetManager()->GetSource();
    if (!store)
        return defaultValue;
    const ZORSysSettingGroupContext group(store, "Host");
    return store->value(key, defaultValue);
}

void ZORHostSettings::Write(const QString& key, const QVariant& value)
{
    QSettings* store = ZORSysSettingsManager::GetManager()->GetSource();
    if (!store)
        return;
    const ZORSysSettingGroupContext group(store, "Host");
    store->setValue(key, value);
}

ZORHostSettings::~ZORHostSettings()
{
    if (ZORSysSettingsManager::GetManager()->GetSource() == m_store.get())
        ZORSysSettingsManager::GetManager()->SetSource(nullptr);
}

// The store would open a pipe and wait, rename a device, or read a file of any size into the memory.
void ZORHostSettings::ReplaceStore(const QString& fileName)
{
    m_substitute = std::make_unique<QTemporaryDir>();
    m_store = std::make_unique<QSettings>(m_substitute->filePath("zorhost.ini"), QSettings::IniFormat);
    WarnUnreadable(fileName);
}

void ZORHostSettings::WarnUnreadable(const QString& fileName)
{
    m_warning = tr("The settings file '%1' cannot be read; the defaults are used.")
                    .arg(QDir::toNativeSeparators(fileName));
}

void ZORHostSettings::MoveAway(const QString& fileName)
{
    const QString backup = fileName + ".bak";
    if (!QFile::exists(fileName))
        return;
    if (std::rename(QFile::encodeName(fileName).constData(), QFile::encodeName(backup).constData()) != 0) {
        m_warning = tr("The settings in '%1' could not be moved away to '%2'; they are used as they are.")
                        .arg(QDir::toNativeSeparators(fileName), QDir::toNativeSeparators(backup));
    }
}

void ZORHostSettings::CheckReadable(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (m_substitute || !file.exists())
        return;
    if (!file.isReadable() || m_store->status() == QSettings::FormatError) {
        WarnUnreadable(fileName);
        return;
    }
    if (!ZORHostIniFormat::IsDamaged(*m_store))
        return;
    const QString copy = fileName + ".damaged";
    m_warning =
        ReplaceByCopy(fileName, copy)
            ? tr("The settings file '%1' is damaged; what could be read is used. A copy is kept as '%2'.")
                  .arg(QDir::toNativeSeparators(fileName), QDir::toNativeSeparators(copy))
            : tr("The settings file '%1' is damaged; what could be read is used.")
                  .arg(QDir::toNativeSeparators(fileName));
}

void ZORHostSettings::CheckWritable()
{
    // The file is replaced, so that its folder has to take a new one.
    const QFileInfo folder(QFileInfo(m_store->fileName()).path());
    if (!m_store->isWritable() || (folder.exists() && !folder.isWritable())) {
        m_warning = tr("The settings file '%1' cannot be written; changes of the settings will be lost.")
                        .arg(QDir::toNativeSeparators(m_store->fileName()));
    }
}
