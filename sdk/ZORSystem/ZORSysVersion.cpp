#include "ZORSysVersion.h"

#include <QVersionNumber>

int ZORSysVersion::GetMajor()
{
    return ZOR_SDK_VERSION_MAJOR;
}

int ZORSysVersion::GetMinor()
{
    return ZOR_SDK_VERSION_MINOR;
}

int ZORSysVersion::GetPatch()
{
    return ZOR_SDK_VERSION_PATCH;
}

QString ZORSysVersion::GetString()
{
    return QVersionNumber(GetMajor(), GetMinor(), GetPatch()).toString();
}

bool ZORSysVersion::IsCompatible(const QString& version)
{
    const QVersionNumber number = QVersionNumber::fromString(version);
    return !number.isNull() && number.majorVersion() == GetMajor() && number.minorVersion() <= GetMinor();
}
