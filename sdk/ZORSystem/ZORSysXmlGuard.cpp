#include "ZORSysXmlGuard.h"

#include "files/ZORSysXmlScanner_p.h"

#include <QBuffer>
#include <QCoreApplication>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORSysXmlGuard)
};

} // namespace

namespace ZORSysXmlGuard {

Finding Scan(QIODevice& device)
{
    return Scanner(device).Scan();
}

Finding Scan(const QByteArray& document)
{
    QBuffer buffer;
    buffer.setData(document);
    buffer.open(QIODevice::ReadOnly);
    return Scan(buffer);
}

QString GetReason(Verdict verdict)
{
    switch (verdict) {
    case Verdict::Harmless:
        break;
    case Verdict::TooDeep:
        return Texts::tr("XML elements nest more than %1 deep").arg(kMaximumDepth);
    case Verdict::TooManyAttributes:
        return Texts::tr("an XML element has more than %1 attributes").arg(kMaximumAttributes);
    case Verdict::TooMuchExpansion:
        return Texts::tr("the entities of the XML expand too far");
    case Verdict::Malformed:
        return Texts::tr("XML is not well-formed");
    }
    return {};
}

} // namespace ZORSysXmlGuard
