// Composites source files of the format ZOR_FUZZ_FORMAT give features and can be written, or a reason.

#include "FuzzTarget.h"

#include <ZORComposites/ZORCompFormat.h>
#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORSystem/ZORSysException.h>

#include <QBuffer>

namespace {

void MakeFeatures(const ZORCompDocument& document, const ZORCompReadReport& report)
{
    ZORFeatContainer container;
    auto* const root =
        qobject_cast<ZORCompRoot*>(container.GetFeatureRoot(ZORCompRoot::staticMetaObject.className()));
    ZORCompReadProcessor processor(root, true);
    processor.Add(document, QStringLiteral("layup"), report);
    processor.Finalize();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    container.Save(buffer);
}

void WriteAndRead(const ZORCompDocument& document)
{
    const ZORCompFormat& xml = ZORCompFormat::Find("layup-xml");
    const QByteArray written = xml.Write(document);
    ZORCompReadReport report;
    Require(xml.Write(xml.Parse(written, report)) == written, "what was written is read again");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    ZORCompReadReport report;
    ZORCompDocument document;
    try {
        document = ZORCompFormat::Find(ZOR_FUZZ_FORMAT).Parse(ToBytes(data, size), report);
        document.Check();
    } catch (const ZORSysException& exception) {
        Require(!exception.GetMessage().isEmpty(), "a refusal has a reason");
        return 0;
    }
    MakeFeatures(document, report);
    WriteAndRead(document);
    return 0;
}
