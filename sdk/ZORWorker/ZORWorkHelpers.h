// The helper processes of this process, and the function that a helper program consists of.

#pragma once

#include <ZORWorker/ZORWorkerGlobal.h>

#include <QString>
#include <QtGlobal>

/// Settings of all helper processes.
///
/// Helpers start when a job needs one, at most one per processor of the machine, and stay for the next jobs;
/// jobs that are stopped before they begin may start as many more for their own time. All processors
/// (ZORWorkProcessor) share them. They end with this process, however it ends.
///
/// Thread safety: thread-safe.
class ZORWORKER_EXPORT ZORWorkHelpers
{
public:
    /// The program that runs as helper. At first "zorworker", which belongs to the SDK: in the libexec
    /// folder that belongs to the library, or in the build tree of the SDK.
    static QString GetProgram();
    /// An application with its own job kinds brings its own program, whose main() registers them and calls
    /// Serve(). Jobs that run already go on in the program of before. An empty path makes all jobs run in
    /// threads.
    static void SetProgram(const QString& path);

    /// Memory of one job in bytes, for processors without their own limit. At first half of the machine's
    /// memory.
    static qint64 GetMemoryLimit();
    /// \param bytes  0 or less restores half of the machine's memory
    static void SetMemoryLimit(qint64 bytes);

    /// Runs the jobs that arrive until the process that started this one ends. A main() that calls it needs a
    /// QCoreApplication, or what else its kinds need, and nothing more.
    /// \return exit code for main(): 0, or 2 with a line on stderr when no caller started it
    static int Serve(int argc, char** argv);
};
