// The formats of this library.

#include "ZORCompJsonParser_p.h"
#include "ZORCompXmlParser_p.h"
#include "ZORCompXmlSerializer_p.h"

#include <ZORComposites/ZORCompFormat.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysXmlGuard.h>

namespace {

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

// In one file, for the order in which they are listed.
const ZORCompFormatRegistration kJsonRegistration(kJsonFormat);
const ZORCompFormatRegistration kXmlRegistration(kXmlFormat);

} // namespace
