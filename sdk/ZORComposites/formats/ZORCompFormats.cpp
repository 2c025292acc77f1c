#include "ZORCompFormats_p.h"
#include "ZORCompJsonParser_p.h"

#include <ZORComposites/ZORCompFormat.h>

namespace {

// In one file, for the order in which they are listed.
const ZORCompFormatRegistration jsonRegistration(ZorCompJsonFormat());
const ZORCompFormatRegistration xmlRegistration(ZorCompXmlFormat());

} // namespace

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

} // namespace

const ZORCompFormat& ZorCompJsonFormat()
{
    static const JsonFormat format;
    return format;
}
