// Root of the SDK's exception family.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QByteArray>
#include <QString>

#include <exception>

/// Failure of an SDK operation, with a message fit for the user.
class ZORSYSTEM_EXPORT ZORSysException : public std::exception
{
public:
    explicit ZORSysException(const QString& message);
    ~ZORSysException() override;

    QString GetMessage() const { return m_message; }
    const char* what() const noexcept override { return m_what.constData(); }

    /// Message of the exception that was constructed last in this thread; for the API trace, which
    /// sees a call end by an exception without seeing the exception.
    static QString GetLastMessage();

private:
    QString m_message;
    QByteArray m_what;
};
