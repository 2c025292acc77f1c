#include "ZORCompFormat.h"

#include "formats/ZORCompJsonParser_p.h"
#include "formats/ZORCompXmlParser_p.h"
#include "formats/ZORCompXmlSerializer_p.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysXmlGuard.h>

#include <QMutex>

#include <algorithm>

namespace {

struct Registry
{
    QMutex mutex; // libraries may be loaded while other threads read files
    QList<const ZORCompFormat*> formats;
};

// Never destroyed: registrations with static storage may end later than any static list.
Registry& GetRegistry()
{
    static auto* const registry = new Registry;
    return *registry;
}

QList<const ZORCompFormat*> GetRegistered()
{
    Registry& registry = GetRegistry();
    const QMutexLocker lock(&registry.mutex);
    return registry.formats;
}

const ZORCompFormat* FindIn(const QList<const ZORCompFormat*>& formats, const QByteArray& id)
{
    const auto found = std::find_if(formats.begin(), formats.end(),
                                    [&id](const ZORCompFormat* format) { return format->GetId() == id; });
    return found == formats.end() ? nullptr : *found;
}

class JsonFormat : public ZORCompFormat
{
public:
    QByteArray GetId() const override { return "compost-json"; }
    QList<QString> GetFileFilters() const override
    {
        return {ZORCompJsonFields::tr("CompoST Layup (*.json)")};
    }
    ZORCompDocument Parse(const QByteArray& content, ZORCompReadReport& report) const override
    {
        return ZORCompJsonParser(report).Parse(content);
    }
};

class XmlFormat : public ZORCompFormat
{
public:
    QByteArray GetId() const override { return "layup-xml"; }
    QList<QString> GetFileFilters() const override { return {ZORCompXmlParser::tr("Layup XML (*.xml)")}; }
    ZORCompDocument Parse(const QByteArray& content, ZORCompReadReport&) const override
    {
        // The parser itself reports elements that are nested too deep, with their line.
        using ZORSysXmlGuard::Verdict;
        const Verdict verdict = ZORSysXmlGuard::Scan(content).verdict;
        if (verdict != Verdict::Harmless && verdict != Verdict::TooDeep)
            throw ZORSysException(ZORSysXmlGuard::GetReason(verdict));
        return ZORCompXmlParser(content).Parse();
    }
    bool CanWrite() const override { return true; }
    QByteArray Write(const ZORCompDocument& document) const override
    {
        return ZORCompXmlSerializer(document).Write();
    }
};

const JsonFormat kJsonFormat;
const XmlFormat kXmlFormat;

// Together, for the order in which they are listed.
const ZORCompFormatRegistration kJsonRegistration(kJsonFormat);
const ZORCompFormatRegistration kXmlRegistration(kXmlFormat);

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
    const QList<const ZORCompFormat*> registered = GetRegistered();
    QList<const ZORCompFormat*> formats;
    for (const ZORCompFormat* format : registered) {
        if (FindIn(registered, format->GetId()) == format && !formats.contains(format))
            formats.append(format);
    }
    return formats;
}

const ZORCompFormat& ZORCompFormat::Find(const QByteArray& id)
{
    const ZORCompFormat* const format = FindIn(GetRegistered(), id);
    if (!format)
        throw ZORSysException(tr("composites format '%1' is unknown").arg(QString::fromUtf8(id)));
    return *format;
}

ZORCompFormatRegistration::ZORCompFormatRegistration(const ZORCompFormat& format)
    : m_format(format)
{
    ZOR_TRACE_CALL(&format);
    Registry& registry = GetRegistry();
    const QMutexLocker lock(&registry.mutex);
    registry.formats.append(&format);
}

ZORCompFormatRegistration::~ZORCompFormatRegistration()
{
    Registry& registry = GetRegistry();
    const QMutexLocker lock(&registry.mutex);
    registry.formats.removeOne(&m_format);
}
