// Root of the SDK's exception family.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QString>

#include <exception>

/// Failure of an SDK operation, with a message fit for the user.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORSYSTEM_EXPORT ZORSysException : public std::exception
{
public:
    explicit ZORSysException(const QString& message);
    ZORSysException(const ZORSysException& other);
    ZORSysException& operator=(const ZORSysException& other);
    ~ZORSysException() override;

    QString GetMessage() const { return m_message; }
    /// The message in UTF-8.
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_message;
    QByteArray m_what;
    quint64 m_number = 0; // of this object among all of the process
};
