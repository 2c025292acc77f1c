// INI files of settings that survive a full disk.

#pragma once

#include <QSettings>

/// QSettings writes its own INI format without noticing that a full disk took only a part, and replaces the file by that
/// part. This format has the same content, and keeps the file unless all of the new one is written.
namespace ZORHostIniFormat {

/// Returns the format for the constructors of QSettings.
QSettings::Format Get();
/// Whether the file of settings in this format had lines without a meaning when it was read last; the others are used.
bool IsDamaged(const QSettings& settings);
/// Returns the reason why settings in this format could not be written last; empty if they could, and where the reason is
/// not one of writing.
QString GetWriteError(const QSettings& settings);

} // namespace ZORHostIniFormat
