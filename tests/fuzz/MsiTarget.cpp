// Nesting result files give a result that can be drawn and written again, or an invalid result.
//
// An input with the signature of a file is a file; any other one is the document of a file, which is given the
// header and the checksum that the engine would never find.

#include "FuzzTarget.h"

#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORNesting/ZORNestVisOptions.h>
#include <ZORNesting/ZORNestVisRepFactory.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>
#include <ZORVisualization/ZORVisRep.h>

#include <QBuffer>

#include <memory>

namespace {

ZORNestResult Read(QByteArray file)
{
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    return ZORNestResultReader(&buffer).Read(nullptr);
}

QByteArray Write(const ZORNestResult& result)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    Require(ZORNestResultWriter(&buffer).Write(result) == buffer.size(), "a valid result can be written");
    return buffer.data();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    QByteArray file = ToBytes(data, size);
    if (!ZORSysDocumentEnvelope::HasSignature(file))
        file = ZORSysDocumentEnvelope(QStringLiteral("result file"), 1, 100).Wrap(file);
    const ZORNestResult result = Read(file);
    if (!result.IsValid()) {
        Require(result.GetItems().isEmpty(), "an invalid result is empty");
        return 0;
    }
    const QByteArray written = Write(result);
    const ZORNestResult again = Read(written);
    Require(again.IsValid(), "what was written can be read");
    Require(Write(again) == written, "what was read is written as it was");
    const std::unique_ptr<ZORVisRep> rep(ZORNestVisRepFactory::CreateRep(result, ZORNestVisOptions()));
    Require(rep != nullptr, "every result can be drawn");
    return 0;
}
