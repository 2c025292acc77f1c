// A stream of bytes gives the same messages in whatever pieces it arrives, or a reason, and messages keep what they
// hold. The first byte is the length of the pieces.

#include "FuzzTarget.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/helper/ZORWorkProtocol_p.h>

namespace {

using ZORWorkProtocol::Message;

/// Messages as bytes, and how the stream ended.
struct Reading
{
    QList<QByteArray> messages;
    QString failure;

    friend bool operator==(const Reading&, const Reading&) = default;
};

Reading ReadWhole(const QByteArray& stream)
{
    Reading reading;
    try {
        for (const Message& message : ZORWorkProtocol::DecodeAll(stream))
            reading.messages.append(ZORWorkProtocol::Encode(message));
    } catch (const ZORSysException& exception) {
        reading.failure = exception.GetMessage();
        Require(!reading.failure.isEmpty(), "a refusal has a reason");
    }
    return reading;
}

Reading ReadPieces(const QByteArray& stream, qsizetype length)
{
    Reading reading;
    ZORWorkProtocol::Decoder decoder;
    try {
        for (qsizetype at = 0; at < stream.size(); at += length) {
            decoder.Append(QByteArrayView(stream).sliced(at, std::min(length, stream.size() - at)));
            while (const std::optional<Message> message = decoder.Take())
                reading.messages.append(ZORWorkProtocol::Encode(*message));
        }
    } catch (const ZORSysException& exception) {
        reading.failure = exception.GetMessage();
    }
    return reading;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray stream = ToBytes(data + 1, size - 1);
    const Reading whole = ReadWhole(stream);
    const Reading pieces = ReadPieces(stream, 1 + data[0] % 16);
    Require(whole.failure == pieces.failure, "pieces fail like the whole");
    Require(!whole.failure.isEmpty() || whole.messages == pieces.messages, "pieces say what the whole says");
    for (const QByteArray& message : pieces.messages)
        Require(ReadWhole(message) == Reading{{message}, {}}, "a message is read as it was");
    return 0;
}
