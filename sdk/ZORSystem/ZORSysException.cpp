#include "ZORSysException.h"

namespace {
thread_local QString lastMessage;
}

ZORSysException::ZORSysException(const QString& message)
    : m_message(message)
    , m_what(message.toUtf8())
{
    lastMessage = message;
}

QString ZORSysException::GetLastMessage()
{
    return lastMessage;
}

ZORSysException::~ZORSysException() = default;
