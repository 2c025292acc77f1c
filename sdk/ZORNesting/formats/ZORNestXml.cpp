#include "ZORNestXml_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysXmlGuard.h>

#include <QCoreApplication>

namespace ZORNestXml {

namespace {

QString Tr(const char* text)
{
    return QCoreApplication::translate("ZORNestXml", text);
}

} // namespace

void CheckMarkup(const QByteArray& bytes, QXmlStreamReader& reader)
{
    const ZORSysXmlGuard::Finding finding = ZORSysXmlGuard::Scan(bytes);
    if (finding.verdict != ZORSysXmlGuard::Verdict::Harmless)
        throw ZORSysException(ZORSysXmlGuard::GetReason(finding.verdict));
    reader.setEntityExpansionLimit(finding.numExpanded);
}

void CheckError(const QXmlStreamReader& reader)
{
    if (reader.hasError())
        throw ZORSysException(Tr("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString()));
}

} // namespace ZORNestXml
