// Exceptions about files.

#pragma once

#include <ZORSystem/ZORSysException.h>

#include <QCoreApplication>

/// A file could not be read, written or understood.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSYSTEM_EXPORT ZORSysFileException : public ZORSysException
{
public:
    using ZORSysException::ZORSysException;
    ~ZORSysFileException() override;
};

/// A file could not be opened. Message: "cannot open file '%1': %2".
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSYSTEM_EXPORT ZORSysFileOpenException : public ZORSysFileException
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysFileOpenException)

public:
    /// \param path         the file as the user named it
    /// \param deviceError  reason given by the device, for example QIODevice::errorString()
    ZORSysFileOpenException(const QString& path, const QString& deviceError);
    ~ZORSysFileOpenException() override;
};
