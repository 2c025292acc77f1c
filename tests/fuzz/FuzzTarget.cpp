#include "FuzzTarget.h"

#include <ZORWorker/ZORWorkContext.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <future>

namespace {

/// Lends the context of a job.
class LentContext
{
public:
    LentContext()
    {
        ZORWorkJob job;
        job.name = QStringLiteral("fuzz");
        job.run = [this](const ZORWorkContext& context) {
            m_context.set_value(&context);
            m_end.get_future().wait();
            return ZORWorkResult();
        };
        m_processor.AddJob(job);
        m_processor.Execute();
        m_lent = m_context.get_future().get();
    }
    ~LentContext() { m_end.set_value(); }
    Q_DISABLE_COPY_MOVE(LentContext)

    const ZORWorkContext& Get() const { return *m_lent; }

private:
    std::promise<const ZORWorkContext*> m_context;
    std::promise<void> m_end;
    const ZORWorkContext* m_lent = nullptr;
    ZORWorkProcessor m_processor; // last: it waits for the job, which uses the rest
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Warnings about damaged inputs are expected, and printing them takes most of the time.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static const QGuiApplication application(argc, argv);
    return 0;
}

void Require(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

const ZORWorkContext& GetJobContext()
{
    static const LentContext context;
    return context.Get();
}
