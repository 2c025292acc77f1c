#include "base/ZORHostIniFormat.h"

#include <ZORSystem/ZORSysReplacedFile.h>

#include <QFile>
#include <QHash>
#include <QSet>
#include <QTemporaryDir>

namespace {

// The last group in the order of QSettings, so that a text that ends with it is complete.
constexpr char16_t kEndKey[] = u"\uffff/isComplete";
constexpr char kEnd[] = "[%UFFFF]\nisComplete=true\n";

QSet<QString> damagedFiles;
/// Files of which nothing could be read, so that they must not be replaced.
QSet<QString> unreadFiles;

/// Why files could not be written last.
QHash<QString, QString> writeErrors;

/// QSettings reads and writes files only.
QString GetFileName(const QIODevice& device)
{
    const auto* const file = qobject_cast<const QFileDevice*>(&device);
    return file ? file->fileName() : QString();
}

/// Only QSettings knows its INI format, and only in files: what it reads and writes goes through a temporary one.
class TemporaryIniFile
{
public:
    bool IsValid() const { return m_folder.isValid(); }
    QString GetPath() const { return m_folder.filePath(QStringLiteral("settings.ini")); }
    bool Write(const QByteArray& text) const
    {
        QFile file(GetPath());
        return IsValid() && file.open(QIODevice::WriteOnly) && ZORSysReplacedFile::WriteAll(file, text);
    }
    QByteArray Read() const
    {
        QFile file(GetPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    const QTemporaryDir m_folder; // for this user alone
};

bool ReadIni(QIODevice& device, QSettings::SettingsMap& map)
{
    const TemporaryIniFile file;
    const QByteArray content = device.readAll();
    const auto* const source = qobject_cast<const QFileDevice*>(&device);
    const bool isRead = !source || source->error() == QFileDevice::NoError;
    if (!isRead || !file.Write(content)) {
        unreadFiles.insert(GetFileName(device));
        return false;
    }
    unreadFiles.remove(GetFileName(device));
    const QSettings text(file.GetPath(), QSettings::IniFormat);
    for (const QString& key : text.allKeys())
        map.insert(key, text.value(key));
    if (text.status() == QSettings::NoError)
        damagedFiles.remove(GetFileName(device));
    else
        damagedFiles.insert(GetFileName(device));
    return true;
}

/// Returns the text of an INI file; empty when it cannot be made.
QByteArray MakeText(const QSettings::SettingsMap& map)
{
    const TemporaryIniFile file;
    if (!file.IsValid())
        return {};
    {
        QSettings text(file.GetPath(), QSettings::IniFormat);
        for (auto setting = map.cbegin(); setting != map.cend(); ++setting)
            text.setValue(setting.key(), setting.value());
        text.setValue(QString::fromUtf16(kEndKey), true);
    }
    QByteArray text = file.Read();
    if (!text.endsWith(kEnd))
        return {};
    text.chop(qsizetype(sizeof kEnd) - 1);
    return text.trimmed() + '\n';
}

bool WriteIni(QIODevice& device, const QSettings::SettingsMap& map)
{
    const QByteArray text = unreadFiles.contains(GetFileName(device)) ? QByteArray() : MakeText(map);
    if (!text.isEmpty() && ZORSysReplacedFile::WriteAll(device, text)) {
        writeErrors.remove(GetFileName(device));
        return true;
    }
    writeErrors[GetFileName(device)] =
        text.isEmpty() ? QStringLiteral("no temporary file") : device.errorString();
    return false;
}

} // namespace

QSettings::Format ZORHostIniFormat::Get()
{
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("ini"), &ReadIni, &WriteIni, Qt::CaseSensitive);
    return format;
}

bool ZORHostIniFormat::IsDamaged(const QSettings& settings)
{
    return damagedFiles.contains(settings.fileName());
}

QString ZORHostIniFormat::GetWriteError(const QSettings& settings)
{
    return writeErrors.value(settings.fileName());
}
