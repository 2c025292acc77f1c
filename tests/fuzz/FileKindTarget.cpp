// Any content is recognized as a file of some kind, and the same kind wherever it begins in a device.

#include "FuzzTarget.h"

#include <ZORExchange/ZORExcFileKind.h>
#include <ZORSystem/ZORSysDocumentEnvelope.h>

#include <QBuffer>

namespace {

using ZORExcFileKind::Kind;

Kind Recognize(QByteArray bytes, qint64 position)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    buffer.seek(position);
    const Kind kind = ZORExcFileKind::Recognize(buffer);
    Require(buffer.pos() == position, "the device stays where it was");
    return kind;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray content = ToBytes(data, size);
    const Kind kind = Recognize(content, 0);
    Require((kind == Kind::Empty) == content.isEmpty(), "only nothing is empty");
    Require(Recognize("skipped" + content, 7) == kind, "what is before the position does not matter");
    const bool isBinary = kind == Kind::Container || kind == Kind::Result;
    Require(isBinary == ZORSysDocumentEnvelope::HasSignature(content),
            "the signature decides about binary files");
    Require(!ZORExcFileKind::GetName(kind).isEmpty(), "every kind has a name");
    return 0;
}
