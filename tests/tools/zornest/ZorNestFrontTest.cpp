#include "FrontTest.h"
#include "support/TestData.h"

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QTest>

#include <csignal>

namespace {

using ZorNestFrontTest = FrontTest;

TEST_F(ZorNestFrontTest, ALayoutNamesItemsAndSheetsByTheirIds)
{
    const Outcome outcome = Run({SaveSquares(), QStringLiteral("--steps"), QStringLiteral("3000"),
                                 QStringLiteral("--out"), GetPath(QStringLiteral("layout.json"))});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, QString()) << "no bar where nobody watches";
    EXPECT_TRUE(outcome.output.contains(QLatin1String("remnant")));
    const QJsonObject layout = ReadLayout(QStringLiteral("layout.json"));
    EXPECT_EQ(layout["format"].toString(), QLatin1String("nest-layout"));
    EXPECT_EQ(layout["version"].toInt(), 1);
    ASSERT_EQ(layout["sheets"].toArray().size(), 1);
    const QJsonObject sheet = layout["sheets"].toArray()[0].toObject();
    EXPECT_EQ(sheet["packaging"].toInt(), 4);
    EXPECT_EQ(sheet["stack"].toInt(), 1);
    EXPECT_FALSE(sheet.contains("length")) << "of rolls only";
    int discs = 0;
    for (const QJsonValue placement : sheet["placements"].toArray()) {
        const bool isDisc = placement["item"].toInt() == 9;
        EXPECT_EQ(placement["mirror"].toBool(), isDisc);
        EXPECT_NEAR(placement["rotation_deg"].toDouble(), isDisc ? 30 : 0, 1e-9);
        discs += isDisc ? 1 : 0;
    }
    EXPECT_EQ(discs, 1);
    EXPECT_EQ(sheet["placements"].toArray().size(), 4);
}

TEST_F(ZorNestFrontTest, WhatIsNotPlacedIsNamedWithItsReason)
{
    const QString large = QStringLiteral(R"(,{"id": 12, "name": "door", "demand": 2,
        "shape": {"type": "polygon", "data": {"outer": [[0, 0], [90, 0], [90, 90]], "inner": []}}})");
    const Outcome outcome = Run({SaveSquares(large), QStringLiteral("--steps"), QStringLiteral("1000"),
                                 QStringLiteral("--out"), GetPath(QStringLiteral("layout.json"))});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.output.contains(
        QLatin1String("not placed: 2 of item 12 \"door\": larger than every sheet\n")));
    const QJsonArray unplaced = ReadLayout(QStringLiteral("layout.json"))["unplaced"].toArray();
    ASSERT_EQ(unplaced.size(), 1);
    EXPECT_EQ(unplaced[0]["item"].toInt(), 12);
    EXPECT_EQ(unplaced[0]["count"].toInt(), 2);
    EXPECT_EQ(unplaced[0]["reason"].toString(), QLatin1String("larger than every sheet"));
}

TEST_F(ZorNestFrontTest, PicturesAndAReportAreWritten)
{
    const QString folder = GetPath(QStringLiteral("pictures/of"));
    const Outcome outcome =
        Run({SaveSquares(), QStringLiteral("--steps"), QStringLiteral("1000"), QStringLiteral("--png"),
             folder, QStringLiteral("--html"), GetPath(QStringLiteral("report.html"))});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList(QStringLiteral("sheet-0.png")));
    const QImage picture(QDir(folder).filePath(QStringLiteral("sheet-0.png")));
    EXPECT_GT(picture.width(), 500);
    EXPECT_GT(picture.height(), 500) << "of a square sheet";
    QFile report(GetPath(QStringLiteral("report.html")));
    ASSERT_TRUE(report.open(QIODevice::ReadOnly));
    const QString html = QString::fromUtf8(report.readAll());
    for (const char* text : {"board", "square", "disc", "<img"})
        EXPECT_TRUE(html.contains(QLatin1String(text))) << text;
    EXPECT_EQ(Run({SaveSquares(), QStringLiteral("--png"), GetPath(QStringLiteral("report.html/x"))}).code,
              4);
}

class ZorNestSignalTest : public ZorNestFrontTest, public testing::WithParamInterface<int>
{
};

TEST_P(ZorNestSignalTest, AnInterruptedRunWritesItsBestLayout)
{
    const QString path = GetPath(QStringLiteral("layout.json"));
    QProcess process;
    process.start(QStringLiteral(ZORNEST_PROGRAM),
                  {Save(QStringLiteral("strip.json"), R"({"strip_height": 30,
        "items": [{"demand": 9, "shape": {"data": [[0, 0], [10, 0], [12, 9], [4, 7]]}},
                  {"demand": 9, "shape": {"data": [[0, 0], [7, 1], [3, 8]]}}]})"),
                   QStringLiteral("--time"), QStringLiteral("600"), QStringLiteral("--out"), path});
    ASSERT_TRUE(process.waitForStarted());
    QFile status(QStringLiteral("/proc/%1/status").arg(process.processId()));
    const auto catchesSignal = [&status] { // the mask has the bit of the signal once the run begins
        if (!status.open(QIODevice::ReadOnly))
            return true;
        const QList<QByteArray> lines = status.readAll().split('\n');
        status.close();
        for (const QByteArray& line : lines)
            if (line.startsWith("SigCgt:"))
                return (line.mid(7).trimmed().toULongLong(nullptr, 16) & (1ULL << (GetParam() - 1))) != 0;
        return false;
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return catchesSignal(); }, 60000));
    kill(static_cast<pid_t>(process.processId()), GetParam());
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(ReadLayout(QStringLiteral("layout.json"))["sheets"][0]["placements"].toArray().size(), 18);
}

INSTANTIATE_TEST_SUITE_P(Signals, ZorNestSignalTest, testing::Values(SIGINT, SIGTERM));

TEST_F(ZorNestFrontTest, TheSameStepsWriteTheSameFile)
{
    const QString free = QStringLiteral(R"(, {"id": 12, "demand": 5, "max_deviation_deg": 180,
        "shape": {"type": "simple_polygon", "data": [[0, 0], [7, 0], [0, 4]]}})");
    QList<QByteArray> layouts;
    for (const QString& seed : {QStringLiteral("3"), QStringLiteral("3"), QStringLiteral("4")}) {
        const QString path = GetPath(QStringLiteral("layout.json"));
        EXPECT_EQ(Run({SaveSquares(free), QStringLiteral("--steps"), QStringLiteral("2000"),
                       QStringLiteral("--seed"), seed, QStringLiteral("--out"), path})
                      .code,
                  0);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        layouts.append(file.readAll());
    }
    EXPECT_EQ(layouts[0], layouts[1]);
    EXPECT_NE(layouts[0], layouts[2]);
}

TEST_F(ZorNestFrontTest, BinsThatWereCutWithoutWasteAreFilledAgain)
{
    ZOR_REQUIRE_TEST_DATA(folder, "nesting/multibin");
    int optimal = 0;
    int known = 0;
    for (const QString& name :
         QDir(folder).entryList({QStringLiteral("terashima1_*.json")}, QDir::Files, QDir::Name)) {
        QFile file(QDir(folder).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QJsonValue optimum =
            QJsonDocument::fromJson(file.readAll()).object().value(QLatin1String("known_optimum_bins"));
        if (!optimum.isDouble())
            continue;
        const QString path = GetPath(QStringLiteral("layout.json"));
        EXPECT_EQ(Run({file.fileName(), QStringLiteral("--steps"), QStringLiteral("60000"),
                       QStringLiteral("--out"), path})
                      .code,
                  0)
            << name.toStdString();
        const qsizetype bins = ReadLayout(QStringLiteral("layout.json"))["sheets"].toArray().size();
        EXPECT_LE(bins, optimum.toInt() + 1) << name.toStdString();
        optimal += bins == optimum.toInt() ? 1 : 0;
        ++known;
    }
    EXPECT_GE(2 * optimal, known);
}

} // namespace
