// What a process and its helpers say to each other.

#pragma once

#include "ZORWorkerGlobal.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

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

/// Caller: run this one.
struct Job
{
    QByteArray kind;
    QByteArray input;
    QString directory;
    qint64 memoryLimit = 0;  // bytes beyond what the helper has; 0: unlimited
    bool isStopped = false;  // from the beginning
    bool hasInterim = false; // which is to be completed instead of running the job
    QByteArray interim = {};
};

/// Caller: end with what there is.
struct Stop
{
};

/// Caller: give up.
struct Cancel
{
};

/// Helper: the job has come so far. The first message about a job is a progress of 0, which says that it
/// begins.
struct Progress
{
    double value = 0;
};

/// Helper: the job could end with this.
struct Interim
{
    QByteArray result;
};

/// Helper: the job is done.
struct Result
{
    QStringList files;
    QByteArray data;
};

/// Helper: the job has failed.
struct Failure
{
    QString reason;
    bool endsHelper = false; // it takes no further job
};

/// Helper: the job has given up.
struct Canceled
{
};

/// Helper: a line for the log.
struct Log
{
    quint8 severity = 0; // QtMsgType
    QByteArray category;
    QString text;
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
