// Tests of following computations, and of the notices about files.

#include <ZORSystem/ZORSysFileNotices.h>
#include <ZORSystem/ZORSysProgress.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

namespace {

constexpr int kManyChecks = 20'000'000; // take longer than the interval of reports

/// Checks until a report has come.
template<class Condition>
void CheckUntil(double part, const Condition& condition)
{
    for (qint64 i = 0; !condition() && i < 100LL * kManyChecks; ++i)
        ZORSysProgress::Check(part);
}

void CheckOften()
{
    for (int i = 0; i < kManyChecks; ++i)
        ZORSysProgress::Check(0);
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
    std::thread([] { EXPECT_NO_THROW(CheckOften()); }).join();
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
        CheckOften();
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
