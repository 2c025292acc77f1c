#include "ZORSysXmlGuard.h"

#include "files/ZORSysXmlScanner_p.h"

#include <QBuffer>
#include <QCoreApplication>

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
    const auto translate = [](const char* text) {
        return QCoreApplication::translate("ZORSysXmlGuard", text);
    };
    switch (verdict) {
    case Verdict::Harmless:
        break;
    case Verdict::TooDeep:
        return translate("XML elements nest more than %1 deep").arg(kMaximumDepth);
    case Verdict::TooManyAttributes:
        return translate("an XML element has more than %1 attributes").arg(kMaximumAttributes);
    case Verdict::TooMuchExpansion:
        return translate("the entities of the XML expand too far");
    case Verdict::Malformed:
        return translate("XML is not well-formed");
    }
    return {};
}

} // namespace ZORSysXmlGuard
