// Tests of following computations, and of the notices about files.

#include <ZORSystem/ZORSysFileNotices.h>
#include <ZORSystem/ZORSysProgress.h>

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;

/// Checks until a report has come, at most 10 s.
template<class Condition>
void CheckUntil(double part, const Condition& condition)
{
    const auto end = Clock::now() + std::chrono::seconds(10);
    while (!condition() && Clock::now() < end)
        ZORSysProgress::Check(part);
}

TEST(ZORSysProgressTest, NobodyHasToFollow)
{
    EXPECT_NO_THROW(ZORSysProgress::Check(0.5));
}

TEST(ZORSysProgressTest, ReportsPartsThatNeverShrinkNorExceedOne)
{
    QList<double> parts;
    const ZORSysProgress progress([&](double part) {
        parts.append(part);
        return true;
    });
    CheckUntil(0.5, [&] { return parts.size() == 1; });
    CheckUntil(0.2, [&] { return parts.size() == 2; });
    CheckUntil(3, [&] { return parts.size() == 3; });
    EXPECT_EQ(QList<double>({0.5, 0.5, 1}), parts);
}

TEST(ZORSysProgressTest, CanceledComputationsThrow)
{
    const ZORSysProgress progress([](double) { return false; });
    try {
        CheckUntil(0, [] { return false; });
        ADD_FAILURE() << "it goes on";
    } catch (const ZORSysCanceledException& exception) {
        EXPECT_EQ(QString("canceled"), exception.GetMessage());
    }
}

TEST(ZORSysProgressTest, OtherThreadsAreNotFollowed)
{
    const ZORSysProgress progress([](double) { return false; });
    std::thread([] {
        const auto end = Clock::now() + std::chrono::milliseconds(50);
        while (Clock::now() < end)
            EXPECT_NO_THROW(ZORSysProgress::Check(0));
    }).join();
}

TEST(ZORSysProgressTest, TheLatestFollowsAndTheFormerGoesOnAfterIt)
{
    int numOuter = 0;
    const ZORSysProgress outer([&](double) { return ++numOuter > 0; });
    {
        int numInner = 0;
        const ZORSysProgress inner([&](double) { return ++numInner > 0; });
        CheckUntil(0, [&] { return numInner == 2; });
        EXPECT_EQ(0, numOuter);
    }
    CheckUntil(0, [&] { return numOuter == 1; });
    EXPECT_EQ(1, numOuter);
}

TEST(ZORSysProgressTest, WhatTheFunctionComputesItselfIsNotFollowed)
{
    int numReports = 0;
    const ZORSysProgress progress([&](double) {
        ++numReports;
        const auto end = Clock::now() + std::chrono::milliseconds(50);
        while (Clock::now() < end)
            ZORSysProgress::Check(0);
        return true;
    });
    CheckUntil(0, [&] { return numReports == 1; });
    EXPECT_EQ(1, numReports);
}

TEST(ZORSysProgressTest, WhatTheFunctionThrowsPassesThroughAndItIsCalledAgain)
{
    int numReports = 0;
    const ZORSysProgress progress([&](double) -> bool {
        if (++numReports == 1)
            throw std::runtime_error("broken");
        return true;
    });
    EXPECT_THROW(CheckUntil(0, [] { return false; }), std::runtime_error);
    CheckUntil(0, [&] { return numReports == 2; });
    EXPECT_EQ(2, numReports);
}

TEST(ZORSysFileNoticesTest, PassesOnWhatIsNotEmpty)
{
    QObject context;
    QStringList files;
    QObject::connect(ZORSysFileNotices::GetInstance(), &ZORSysFileNotices::Reported, &context,
                     [&](const QString& file, const QStringList& notices) {
                         files.append(file);
                         EXPECT_EQ(QStringList("half of it"), notices);
                     });
    ZORSysFileNotices::GetInstance()->Report("a", {"half of it"});
    ZORSysFileNotices::GetInstance()->Report("b", {});
    EXPECT_EQ(QStringList("a"), files);
}

} // namespace
