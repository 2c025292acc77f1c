#include "TestKinds.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkJobKind.h>

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <stdexcept>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

Q_LOGGING_CATEGORY(TestKindLog, "test.kind")

volatile int s_sink = 0;

[[noreturn]] void Spin()
{
    for (;;)
        s_sink = s_sink + 1;
}

// The sanitizer would end the process in its own way.
[[noreturn, gnu::no_sanitize("address", "undefined")]] void Crash()
{
    volatile int* const nowhere = nullptr;
    *nowhere = 1;
    std::abort();
}

[[noreturn]] void Allocate()
{
    std::vector<std::vector<char>> blocks;
    for (;;)
        blocks.emplace_back(size_t(1) << 24, 'x');
}

int Overflow(int depth)
{
    volatile char frame[4096] = {};
    frame[depth % 4096] = 1;
    return depth == s_sink - 1 ? 0 : Overflow(depth + 1) + frame[0];
}

[[noreturn]] void RunInThread(const std::function<void()>& function)
{
    std::thread thread(function);
    thread.join();
    Spin(); // the process ends before
}

// More writers than processors, so that the pipe is hardly ever empty.
[[noreturn]] void Flood()
{
    const std::vector<char> text(4096, 'x');
    const auto write = [&text] {
        for (;;)
            s_sink = s_sink + int(::write(STDERR_FILENO, text.data(), text.size()));
    };
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 2 * std::thread::hardware_concurrency(); ++i)
        threads.emplace_back(write);
    write();
    std::abort();
}

// Takes the system a while to end.
[[noreturn]] void HoldMemory(const ZORWorkContext& context)
{
    const std::vector<char> memory(size_t(1) << 28, 'x');
    context.SetProgress(0.5);
    s_sink = memory[size_t(s_sink)];
    Spin();
}

void AwaitStop(const ZORWorkContext& context)
{
    while (!context.IsStopped())
        QThread::yieldCurrentThread();
    context.ThrowIfCanceled();
}

ZORWorkResult Return(const QByteArray& data)
{
    return ZORWorkResult(data);
}

ZORWorkResult WriteFile(const ZORWorkContext& context)
{
    const QString path = context.GetWorkDirectory() + "/made.txt";
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("made") != 4)
        throw ZORSysException("cannot write");
    return ZORWorkResult({ZORWorkResource(path)}, "bytes");
}

ZORWorkResult WriteLongFile(const ZORWorkContext& context)
{
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    QFile file(context.GetWorkDirectory() + "/long.txt");
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(QByteArray(5000, 'x')) == 5000 && file.flush();
    setrlimit(RLIMIT_FSIZE, &before);
    return Return(isWritten ? "written" : "refused");
}

ZORWorkResult Print()
{
    std::puts("on standard output");
    std::fflush(stdout);
    std::fputs("on standard error\n", stderr);
    return {};
}

ZORWorkResult Log()
{
    qCWarning(TestKindLog) << "from a job";
    return {};
}

ZORWorkResult ListDescriptors()
{
    QStringList targets;
    for (const QFileInfo& link : QDir("/proc/self/fd").entryInfoList(QDir::System | QDir::Files)) {
        std::vector<char> target(4096);
        const ssize_t size = readlink(link.filePath().toLocal8Bit(), target.data(), target.size());
        if (size > 0)
            targets.append(link.fileName() + u' ' + QString::fromLocal8Bit(target.data(), size));
    }
    return ZORWorkResult(targets.join(u'\n').toLocal8Bit());
}

// With a context and the rest of the command.
using Command = std::function<ZORWorkResult(const ZORWorkContext&, const QByteArray&)>;

using Commands = std::map<QByteArray, Command>;
using Context = ZORWorkContext;
using Text = QByteArray;

Commands MakeFaults()
{
    return {
        {"crash", [](const Context&, const Text&) -> ZORWorkResult { Crash(); }},
        {"abort", [](const Context&, const Text&) -> ZORWorkResult { std::abort(); }},
        {"exit", [](const Context&, const Text&) -> ZORWorkResult { _exit(3); }},
        {"throw", [](const Context&, const Text&) -> ZORWorkResult { throw std::runtime_error("no luck"); }},
        {"overflow", [](const Context&, const Text&) { return Return(Text::number(Overflow(0))); }},
        {"memory", [](const Context&, const Text&) -> ZORWorkResult { Allocate(); }},
        {"thread-memory", [](const Context&, const Text&) -> ZORWorkResult { RunInThread(Allocate); }},
        {"thread-throw",
         [](const Context&, const Text&) -> ZORWorkResult {
             RunInThread([] { throw std::runtime_error("in a thread"); });
         }},
        {"spin", [](const Context&, const Text&) -> ZORWorkResult { Spin(); }},
        {"flood",
         [](const Context& context, const Text&) -> ZORWorkResult {
             context.SetProgress(0.5);
             Flood();
         }},
        {"hold", [](const Context& context, const Text&) -> ZORWorkResult { HoldMemory(context); }},
        {"interim",
         [](const Context& context, const Text& text) -> ZORWorkResult {
             context.SetInterimResult("an older one");
             context.SetInterimResult(text);
             context.SetProgress(0.5);
             Spin();
         }},
        {"interim-crash",
         [](const Context& context, const Text& text) -> ZORWorkResult {
             context.SetInterimResult(text);
             context.SetProgress(0.5);
             AwaitStop(context);
             Crash();
         }},
        {"outside",
         [](const Context& context, const Text&) {
             return ZORWorkResult({ZORWorkResource(context.GetWorkDirectory() + "/../other.txt")});
         }},
    };
}

Commands MakeCommands()
{
    return {
        {"echo", [](const Context&, const Text& text) { return Return(text); }},
        {"pid", [](const Context&, const Text&) { return Return(Text::number(getpid())); }},
        {"wait",
         [](const Context& context, const Text&) {
             AwaitStop(context);
             return Return("stopped");
         }},
        {"progress",
         [](const Context& context, const Text&) {
             context.SetProgress(0.25);
             context.SetProgress(0.5);
             AwaitStop(context);
             return Return("stopped");
         }},
        {"log", [](const Context&, const Text&) { return Log(); }},
        {"print", [](const Context&, const Text&) { return Print(); }},
        {"file", [](const Context& context, const Text&) { return WriteFile(context); }},
        {"long-file", [](const Context& context, const Text&) { return WriteLongFile(context); }},
        {"variable",
         [](const Context&, const Text& name) {
             return Return(qEnvironmentVariableIsSet(name) ? "set " + qgetenv(name) : QByteArray("unset"));
         }},
        {"descriptors", [](const Context&, const Text&) { return ListDescriptors(); }},
    };
}

const Commands& GetCommands()
{
    static const Commands commands = [] {
        Commands all = MakeCommands();
        all.merge(MakeFaults());
        return all;
    }();
    return commands;
}

ZORWorkResult Run(const ZORWorkContext& context, const QByteArray& input)
{
    const qsizetype blank = input.indexOf(' ');
    const QByteArray name = blank < 0 ? input : input.left(blank);
    return GetCommands().at(name)(context, blank < 0 ? QByteArray() : input.mid(blank + 1));
}

ZORWorkResult Complete(const ZORWorkContext& context, const QByteArray&, const QByteArray& interim)
{
    if (interim == "crash")
        Crash();
    if (interim == "throw")
        throw ZORSysException("cannot be completed");
    return ZORWorkResult(QByteArray(context.IsStopped() ? "completed " : "not stopped ") + interim);
}

} // namespace

void RegisterTestKinds()
{
    ZORWorkJobKind::Register("test", Run, Complete);
}
