#include "ZORCompFormat.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

namespace {

// Never destroyed: registrations with static storage may end later than any static list.
QList<const ZORCompFormat*>& Registered()
{
    static auto* const formats = new QList<const ZORCompFormat*>;
    return *formats;
}

const ZORCompFormat* FindRegistered(const QByteArray& id)
{
    for (const ZORCompFormat* format : std::as_const(Registered())) {
        if (format->GetId() == id)
            return format;
    }
    return nullptr;
}

} // namespace

ZORCompFormat::ZORCompFormat() = default;

ZORCompFormat::~ZORCompFormat() = default;

bool ZORCompFormat::CanWrite() const
{
    return false;
}

QByteArray ZORCompFormat::Write(const ZORCompDocument&) const
{
    throw ZORSysException(tr("composites format '%1' cannot be written").arg(QString::fromUtf8(GetId())));
}

QList<const ZORCompFormat*> ZORCompFormat::GetFormats()
{
    QList<const ZORCompFormat*> formats;
    for (const ZORCompFormat* format : std::as_const(Registered())) {
        if (FindRegistered(format->GetId()) == format && !formats.contains(format))
            formats.append(format);
    }
    return formats;
}

const ZORCompFormat& ZORCompFormat::Find(const QByteArray& id)
{
    const ZORCompFormat* const format = FindRegistered(id);
    if (!format)
        throw ZORSysException(tr("composites format '%1' is unknown").arg(QString::fromUtf8(id)));
    return *format;
}

ZORCompFormatRegistration::ZORCompFormatRegistration(const ZORCompFormat& format)
    : m_format(format)
{
    ZOR_TRACE_CALL(&format);
    Registered().append(&format);
}

ZORCompFormatRegistration::~ZORCompFormatRegistration()
{
    Registered().removeOne(&m_format);
}
