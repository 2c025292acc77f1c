// Start of a helper process.

#pragma once

#include <ZORSystem/ZORSysDescriptor.h>

#include <QString>

#include <csignal>
#include <sys/types.h>

/// A process that has just been started, and this side's ends of its streams.
class ZORWorkSpawned
{
public:
    pid_t pid = -1;
    ZORSysDescriptor socket; // non-blocking stream, descriptor kSocket of the process
    ZORSysDescriptor errors; // non-blocking end of a pipe, to read its standard error from
    ZORSysDescriptor wake;   // eventfd of this side alone, to interrupt waiting
};

namespace ZORWorkSpawn {

/// Descriptor of the socket in the helper process.
constexpr int kSocket = 3;
/// Makes the helper process write the stack of its main thread, which runs the job, to its standard error.
constexpr int kStackSignal = SIGUSR2;

/// Starts \a program with the socket, nothing on its standard input, its standard output discarded, no other
/// descriptor, no signal blocked or ignored, and the environment of this process but for ZOR_API_TRACE and
/// for what would connect it to a display. Its arguments are "--serve" and the id of this process.
///
/// The process dies with the calling thread, which therefore is to live as long as the caller's process.
/// \throws ZORSysException the reason
ZORWorkSpawned Spawn(const QString& program);

} // namespace ZORWorkSpawn
