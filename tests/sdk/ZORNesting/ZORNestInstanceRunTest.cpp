// Tests of ZORNestInstanceRun and of the layouts that it finds.

#include "support/Printers.h"

#include <ZORNesting/ZORNestInstance.h>
#include <ZORNesting/ZORNestInstanceRun.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

const char kSquares[] = R"({"items": [
    {"id": 7, "demand": 4, "allowed_orientations": [0], "shape": {"data": [[0, 0], [10, 0], [10, 10], [0, 10]]}},
    {"id": 9, "name": "door", "demand": 2, "shape": {"data": [[0, 0], [90, 0], [90, 90], [0, 90]]}}],
  "packagings": [{"id": 4, "quantity": 2, "width": 20, "length": 25, "cost": 3}]})";
const char kStrip[] = R"({"strip_height": 10, "items": [
    {"demand": 3, "allowed_orientations": [0], "shape": {"data": [[0, 0], [10, 0], [10, 10], [0, 10]]}}]})";

/// Parts that may be turned freely: no layout is known to be the best one.
const char kTriangles[] = R"({"strip_height": 30, "items": [
    {"demand": 9, "shape": {"data": [[0, 0], [10, 0], [12, 9], [4, 7]]}},
    {"demand": 9, "shape": {"data": [[0, 0], [7, 1], [3, 8]]}}]})";

ZORNestLayout Nest(const char* document)
{
    ZORNestInstanceRun run(ZORNestInstance::Read(document, ZORNestInstance::Purpose::Nesting));
    run.SetLimit(ZORNestInstanceRun::Clock::Steps, 500);
    return run.Execute();
}

} // namespace

TEST(ZORNestInstanceRunTest, ALayoutDescribesItsSheets)
{
    const ZORNestLayout layout = Nest(kSquares);
    ASSERT_EQ(1, layout.GetNumSheets());
    EXPECT_EQ(0, layout.GetPackaging(0));
    EXPECT_EQ(4, layout.GetNumParts(0));
    EXPECT_EQ(25, layout.GetUsedLength(0));
    EXPECT_EQ(1, layout.GetStack(0));
    ASSERT_TRUE(layout.GetRemnantLength(0).has_value());
    EXPECT_NEAR(5, *layout.GetRemnantLength(0), 1e-9);
    ASSERT_EQ(1, layout.MeasureDensities().size());
    EXPECT_NEAR(80, layout.MeasureDensities().at(0).value_or(0), 1e-9);
    EXPECT_EQ(3, layout.GetCost());
    EXPECT_EQ(QStringList(), layout.FindFaults());
    EXPECT_EQ(2, layout.GetInstance().GetNumItems());
}

TEST(ZORNestInstanceRunTest, ALayoutNamesWhatIsNotPlaced)
{
    const ZORNestLayout layout = Nest(kSquares);
    ASSERT_EQ(1, layout.GetNumUnplaced());
    EXPECT_EQ(1, layout.GetUnplacedItem(0));
    EXPECT_EQ(2, layout.GetUnplacedCount(0));
    EXPECT_EQ("larger than every sheet", layout.GetUnplacedReason(0));
    const QJsonObject json = QJsonDocument::fromJson(layout.WriteJson()).object();
    EXPECT_EQ(9, json["unplaced"][0]["item"].toInt());
    EXPECT_EQ(4, json["sheets"][0]["packaging"].toInt());
    EXPECT_FALSE(json["sheets"][0].toObject().contains("length"));
}

TEST(ZORNestInstanceRunTest, ARollHasALengthAndNoRemnant)
{
    const ZORNestLayout layout = Nest(kStrip);
    ASSERT_EQ(1, layout.GetNumSheets());
    EXPECT_NEAR(30, layout.GetUsedLength(0), 1e-6);
    EXPECT_FALSE(layout.GetRemnantLength(0).has_value());
    const QJsonObject json = QJsonDocument::fromJson(layout.WriteJson()).object();
    EXPECT_NEAR(30, json["sheets"][0]["length"].toDouble(), 1e-6);
}

TEST(ZORNestInstanceRunTest, AnEmptyInstanceHasAnEmptyLayout)
{
    const ZORNestLayout layout = ZORNestInstanceRun(ZORNestInstance()).Execute();
    EXPECT_EQ(0, layout.GetNumSheets());
    EXPECT_EQ(0, layout.GetNumUnplaced());
    EXPECT_TRUE(layout.MeasureDensities().isEmpty());
    EXPECT_EQ(QStringList(), layout.FindFaults());
}

TEST(ZORNestInstanceRunTest, AStopEndsARunWithoutLimit)
{
    ZORNestInstanceRun run(ZORNestInstance::Read(kTriangles, ZORNestInstance::Purpose::Nesting));
    run.SetLimit(ZORNestInstanceRun::Clock::Wall, 3600);
    EXPECT_FALSE(run.IsStopRequested());
    std::atomic<bool> isOver = false;
    std::thread stopper([&run, &isOver] {
        while (run.GetProgress() == 0 && !isOver)
            std::this_thread::yield();
        run.RequestStop();
    });
    const ZORNestLayout layout = run.Execute();
    isOver = true;
    stopper.join();
    EXPECT_TRUE(run.IsStopRequested());
    ASSERT_EQ(1, layout.GetNumSheets());
    EXPECT_EQ(18, layout.GetNumParts(0));
}
