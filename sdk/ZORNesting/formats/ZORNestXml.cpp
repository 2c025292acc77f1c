#include "ZORNestXml_p.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysXmlGuard.h>

#include <QCoreApplication>

namespace ZORNestXml {

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORNestXml)
};

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
        throw ZORSysException(
            Texts::tr("line %1: %2").arg(QString::number(reader.lineNumber()), reader.errorString()));
}

} // namespace ZORNestXml
