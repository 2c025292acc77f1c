// What a process and its helpers say to each other.

#pragma once

#include "ZORWorkNews_p.h"
#include "ZORWorkOrders_p.h"
#include "ZORWorkOutcome_p.h"

#include <ZORWorker/ZORWorkerGlobal.h>

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <optional>
#include <variant>

/// Messages over a stream of bytes, and nothing but bytes: no descriptors, no input or output here.
///
/// A message is the length of its content (4 bytes), its type (1 byte, the index in Message) and the content;
/// numbers have their low byte first. Every length is checked against the bytes that there are and against a
/// bound, so that no sequence of bytes makes a reader crash, wait for memory or allocate much more than
/// it was sent.
namespace ZORWorkProtocol {

/// Grows with every change of a message. The beginning of Hello never changes.
constexpr quint32 kVersion = 1;
/// Bytes of a message's content.
constexpr qsizetype kMaximumContent = qsizetype(1) << 30;
/// Bytes of a job's input, which leaves room for an interim result.
constexpr qsizetype kMaximumInput = qsizetype(1) << 29;
/// Strings in a list, each of which needs more memory than it has bytes in a message.
constexpr quint32 kMaximumStrings = quint32(1) << 20;
/// Bytes of the reason of a failure and of a line for the log; longer ones are cut off.
constexpr qsizetype kMaximumText = qsizetype(1) << 16;

/// The first message of both sides.
struct Hello
{
    quint32 protocol = kVersion; // another one: the rest is unknown
    QByteArray sdkVersion = {};
    QList<QByteArray> kinds = {}; // that a helper knows
};

using Message = std::variant<Hello, Job, Stop, Cancel, Progress, Interim, Result, Failure, Canceled, Log>;

/// \throws ZORSysException "message of %1 bytes is too long" beyond kMaximumContent, and "message of %1
///         strings is too long" beyond kMaximumStrings
ZORWORKER_EXPORT QByteArray Encode(const Message& message);

/// Cuts a stream of bytes into messages.
class Decoder
{
public:
    ZORWORKER_EXPORT void Append(QByteArrayView bytes);
    /// The next message; none while it is incomplete. The decoder is of no use once it has thrown.
    /// \throws ZORSysException "message of unknown type %1", "message of %1 bytes is too long",
    ///         "message of %1 strings is too long", "message is cut off" or "message has bytes that do not
    ///         belong to it"
    ZORWORKER_EXPORT std::optional<Message> Take();

private:
    QByteArray m_bytes;
    qsizetype m_begin = 0; // of what has not been taken
};

/// All complete messages at the beginning of \a bytes.
/// \throws ZORSysException as Decoder::Take()
ZORWORKER_EXPORT QList<Message> DecodeAll(QByteArrayView bytes);

} // namespace ZORWorkProtocol
