#include "support/MemoryLimit.h"
#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <QByteArray>

#include <gtest/gtest.h>

#include <vector>

namespace {

constexpr qint64 kMega = 1'000'000;

TEST(ZORSysMemoryTest, FormatsSizesInMegabytesAndGigabytes)
{
    EXPECT_EQ(QString("1 MB"), ZORSysMemory::FormatSize(0));
    EXPECT_EQ(QString("1 MB"), ZORSysMemory::FormatSize(1));
    EXPECT_EQ(QString("45 MB"), ZORSysMemory::FormatSize(45 * kMega));
    EXPECT_EQ(QString("999 MB"), ZORSysMemory::FormatSize(999 * kMega));
    EXPECT_EQ(QString("1.2 GB"), ZORSysMemory::FormatSize(1'234 * kMega));
    EXPECT_EQ(QString("17592.2 GB"), ZORSysMemory::FormatSize(qint64(1) << 44));
    using Pair = std::pair<QString, QString>;
    EXPECT_EQ(Pair("1.2 GB", "900 MB"), ZORSysMemory::FormatSizes(1'234 * kMega, 900 * kMega));
    EXPECT_EQ(Pair("1.12 GB", "1.07 GB"), ZORSysMemory::FormatSizes(1'120 * kMega, 1'070 * kMega));
    EXPECT_EQ(Pair("128.0 MB", "127.9 MB"), ZORSysMemory::FormatSizes(128 * kMega, 127'900'000));
    EXPECT_EQ(Pair("1.000000001 GB", "1.000000000 GB"),
              ZORSysMemory::FormatSizes(1'000 * kMega + 1, 1'000 * kMega));
    EXPECT_EQ(Pair("0.3 MB", "0.2 MB"), ZORSysMemory::FormatSizes(300'000, 200'000));
    EXPECT_EQ(Pair("0.000001 MB", "0.000000 MB"), ZORSysMemory::FormatSizes(1, 0));
}

TEST(ZORSysMemoryTest, ReturnsTheResultOfReading)
{
    EXPECT_EQ(7, ZORSysMemory::Read("a.stl", 0, [] { return 7; }));
    int value = 0;
    EXPECT_EQ(&value, &ZORSysMemory::Read("a.stl", 1, [&value]() -> int& { return value; }));
}

TEST(ZORSysMemoryTest, MakesAMessageOfRunningOutOfMemory)
{
    const auto fail = []() -> int { throw std::bad_alloc(); };
    EXPECT_EQ(QString("not enough memory to read '/tmp/a.stl'"),
              MessageOf([&] { ZORSysMemory::Read("/tmp/a.stl", 0, fail); }));
    EXPECT_EQ(QString("not enough memory to read '/tmp/a.stl' (needs about 2 MB)"),
              MessageOf([&] { ZORSysMemory::Read("/tmp/a.stl", 2 * kMega, fail); }));
}

TEST(ZORSysMemoryTest, LeavesOtherExceptionsAlone)
{
    EXPECT_THROW(ZORSysMemory::Read("a", 0, []() -> int { throw 42; }), int);
}

TEST(ZORSysMemoryTest, RefusesWhatCannotFitBeforeItIsRead)
{
    bool isRead = false;
    const auto read = [&isRead] { isRead = true; };
    EXPECT_EQ(QString("not enough memory to read 'a' (needs about 1000000000.0 GB)"),
              MessageOf([&] { ZORSysMemory::Read("a", qint64(1'000'000'000) * 1'000'000'000, read); }));
    EXPECT_FALSE(isRead);
}

TEST(ZORSysMemoryTest, TheLimitOfTheAddressSpaceCounts)
{
    ZOR_REQUIRE_MEMORY_LIMITS();
    EXPECT_GT(ZORSysMemory::GetAvailable(), 50 * kMega);
    EXPECT_EQ(1, RunWithMemory(50 * kMega, [] {
                  const qint64 available = ZORSysMemory::GetAvailable();
                  return available > 40 * kMega && available <= 51 * kMega ? 1 : 0;
              }));
    EXPECT_EQ(1, RunWithMemory(0, [] { return ZORSysMemory::GetAvailable() < 2 * kMega ? 1 : 0; }));
}

TEST(ZORSysMemoryTest, AReserveKeepsMemoryForTheMessage)
{
    ZOR_REQUIRE_MEMORY_LIMITS();
    // The reader takes all that it can get, and keeps it when it fails.
    EXPECT_EQ(1, RunWithMemory(100 * kMega, [] {
                  std::vector<QByteArray> taken;
                  try {
                      ZORSysMemory::Read("a.stl", 0, [&taken] {
                          for (;;)
                              taken.emplace_back(100'000, 'x');
                      });
                  } catch (const ZORSysFileException&) {
                      return QByteArray(10 * kMega, 'x').size() == 10 * kMega ? 1 : 0;
                  }
                  return 0;
              }));
}

TEST(ZORSysMemoryTest, AReserveIsReleasedAndHeldAgain)
{
    ZORSysMemory::Reserve reserve(1 << 20);
    EXPECT_TRUE(reserve.IsHeld());
    reserve.Release();
    EXPECT_FALSE(reserve.IsHeld());
    reserve.Release();
    reserve.Hold();
    EXPECT_TRUE(reserve.IsHeld());
}

TEST(ZORSysMemoryTest, AReserveThatDoesNotFitIsNotHeld)
{
    const ZORSysMemory::Reserve reserve(qint64(1) << 60);
    EXPECT_FALSE(reserve.IsHeld());
}

TEST(ZORSysMemoryTest, AListThatDoesNotFitThrowsInsteadOfCrashing)
{
    ZOR_REQUIRE_MEMORY_LIMITS();
    EXPECT_TRUE(ZORSysMemory::MakeList<double>(0).isEmpty());
    EXPECT_EQ(QList<double>({0, 0}), ZORSysMemory::MakeList<double>(2));
    EXPECT_EQ(kBadAllocEscaped, RunWithMemory(10 * kMega, [] {
                  return int(ZORSysMemory::MakeList<double>(10 * kMega).size() % 2);
              }));
}

} // namespace
