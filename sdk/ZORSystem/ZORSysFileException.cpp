#include "ZORSysFileException.h"

#include <QCoreApplication>

ZORSysFileException::~ZORSysFileException() = default;

ZORSysFileOpenException::ZORSysFileOpenException(const QString& path, const QString& deviceError)
    : ZORSysFileException(QCoreApplication::translate("ZORSysFileOpenException", "cannot open file '%1': %2")
                              .arg(path, deviceError))
{
}

ZORSysFileOpenException::~ZORSysFileOpenException() = default;
