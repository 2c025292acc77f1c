#include "ZORSysFileException.h"

ZORSysFileException::~ZORSysFileException() = default;

ZORSysFileOpenException::ZORSysFileOpenException(const QString& path, const QString& deviceError)
    : ZORSysFileException(ZORSysFileOpenException::tr("cannot open file '%1': %2").arg(path, deviceError))
{
}

ZORSysFileOpenException::~ZORSysFileOpenException() = default;
