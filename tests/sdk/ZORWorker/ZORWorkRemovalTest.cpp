// Tests of how the files of work directories are removed.

#include "HelpersTest.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <cstring>
#include <dlfcn.h>
#include <mutex>
#include <stdexcept>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

/// The threads that remove files of the tests.
class Removers
{
public:
    static constexpr char kFile[] = "content.txt";

    static void Add(const char* path)
    {
        const size_t length = std::strlen(path);
        if (length < sizeof kFile - 1 || std::strcmp(path + length - (sizeof kFile - 1), kFile) != 0)
            return;
        const std::lock_guard lock(s_mutex);
        s_threads.push_back(gettid());
    }
    static std::vector<pid_t> Take()
    {
        const std::lock_guard lock(s_mutex);
        return std::exchange(s_threads, {});
    }

private:
    static inline std::mutex s_mutex;
    static inline std::vector<pid_t> s_threads;
};

} // namespace

// Libraries call these instead of those of the C library.
extern "C" __attribute__((visibility("default"))) int unlinkat(int folder, const char* path, int flags)
{
    static const auto original = reinterpret_cast<decltype(&unlinkat)>(dlsym(RTLD_NEXT, "unlinkat"));
    Removers::Add(path);
    return original(folder, path, flags);
}

extern "C" __attribute__((visibility("default"))) int unlink(const char* path)
{
    static const auto original = reinterpret_cast<decltype(&unlink)>(dlsym(RTLD_NEXT, "unlink"));
    Removers::Add(path);
    return original(path);
}

namespace {

class ZORWorkRemovalTest : public HelpersTest
{
protected:
    /// Adds a job that writes a file and runs until it is asked to end.
    ZORWorkResponse* AddWriter(bool fails)
    {
        ZORWorkJob job;
        job.name = "job";
        job.run = [this, fails](const ZORWorkContext& context) -> ZORWorkResult {
            m_jobThread = gettid();
            QFile file(context.GetWorkDirectory() + '/' + Removers::kFile);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            context.SetProgress(0.5);
            if (fails)
                throw std::runtime_error("no luck");
            while (!context.IsStopped())
                context.ThrowIfCanceled();
            return {};
        };
        return processor->AddJob(job);
    }
    /// Waits until the file is removed, which neither this thread nor that of the job does.
    void ExpectRemoval() const
    {
        std::vector<pid_t> threads;
        EXPECT_TRUE(QTest::qWaitFor([&] { return !(threads = Removers::Take()).empty(); }, kPatience));
        ASSERT_EQ(1U, threads.size());
        EXPECT_NE(gettid(), threads[0]);
        EXPECT_NE(m_jobThread, threads[0]);
        EXPECT_TRUE(QTest::qWaitFor([this] { return GetRooms().isEmpty(); }, kPatience));
    }

private:
    std::atomic<pid_t> m_jobThread = 0;
};

TEST_F(ZORWorkRemovalTest, CanceledJobsDoNotWaitForIt)
{
    ZORWorkResponse* const response = AddWriter(false);
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    ExpectRemoval();
}

TEST_F(ZORWorkRemovalTest, FailedJobsDoNotWaitForIt)
{
    ZORWorkResponse* const response = AddWriter(true);
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ("no luck", response->GetFailureReason());
    ExpectRemoval();
}

TEST_F(ZORWorkRemovalTest, TheProcessorDoesNotWaitForIt)
{
    ZORWorkResponse* const response = AddWriter(false);
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    processor.reset();
    EXPECT_EQ(QStringList(), GetDirectories());
    ExpectRemoval();
}

TEST_F(ZORWorkRemovalTest, ResultsDoNotWaitForIt)
{
    ZORWorkResponse* const response = AddWriter(false);
    processor->Execute();
    ASSERT_TRUE(WaitForProgress(response));
    processor->Stop();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(Status::Finished, response->GetStatus());
    EXPECT_EQ(1, GetDirectories().size());
    processor.reset();
    EXPECT_EQ(QStringList(), GetDirectories());
    ExpectRemoval();
}

} // namespace
