#include "ZORCompFormats_p.h"
#include "ZORCompXmlParser_p.h"
#include "ZORCompXmlSerializer_p.h"

#include <ZORComposites/ZORCompFormat.h>

namespace {

class XmlFormat : public ZORCompFormat
{
public:
    QByteArray GetId() const override { return "layup-xml"; }
    QList<QString> GetFileFilters() const override { return {ZORCompXmlParser::tr("Layup XML (*.xml)")}; }
    ZORCompDocument Parse(const QByteArray& content, ZORCompReadReport&) const override
    {
        return ZORCompXmlParser(content).Parse();
    }
    bool CanWrite() const override { return true; }
    QByteArray Write(const ZORCompDocument& document) const override
    {
        return ZORCompXmlSerializer(document).Write();
    }
};

} // namespace

const ZORCompFormat& ZorCompXmlFormat()
{
    static const XmlFormat format;
    return format;
}
