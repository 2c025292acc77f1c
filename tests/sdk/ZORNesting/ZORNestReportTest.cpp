// Tests of ZORNestReport.

#include "NestedLayout.h"
#include "support/Printers.h"

#include <ZORNesting/ZORNestReport.h>
#include <ZORNesting/report/ZORNestReportPart_p.h>

#include <QRegularExpression>
#include <QTextDocument>

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace ZORNestSolver {
namespace {

/// Two rectangles on a sheet, one of them mirrored, and a roll with a stack.
class ZORNestReportTest : public testing::Test
{
protected:
    ZORNestReportTest()
    {
        job.items.push_back(MakeRectangle("plate", 400, 100));
        job.items.push_back(MakeRectangle("a <b> & %1", 50, 50));
        job.items[1].contours.push_back(MakeContour({{10, 10}, {20, 10}, {20, 20}, {10, 20}}));
        SheetKind sheet;
        sheet.name = "sheet & co";
        sheet.width = 500;
        sheet.length = 1000;
        SheetKind roll = sheet;
        roll.name = "roll";
        roll.length = std::numeric_limits<double>::quiet_NaN();
        job.kinds = {sheet, roll};
        job.separation = 5;
        solution.sheets.push_back({0, 1000, 1, {{0, {false, 0, {0, 0}}}, {0, {true, 0, {400, 110}}}}});
        solution.sheets.push_back({1, 62.5, 2, {{1, {false, 1, {50, 50}}}}});
    }

    static Item MakeRectangle(const std::string& name, double width, double height)
    {
        Item item;
        item.name = name;
        item.contours = {MakeContour({{0, 0}, {width, 0}, {width, height}, {0, height}})};
        return item;
    }
    QString Write() const
    {
        ZORNestReport report(MakeLayout(job, solution));
        report.SetMaterial(material, thickness);
        report.SetRunTime(runTime);
        report.SetEnding(ending);
        report.SetRemarks(remarks);
        return QString::fromUtf8(report.Write());
    }
    QImage DrawSheet(qsizetype sheet, int width) const
    {
        return ZORNestReport(MakeLayout(job, solution)).DrawSheet(sheet, width);
    }
    /// What a reader sees, a line for each paragraph and table cell.
    QStringList GetLines() const
    {
        QTextDocument document;
        document.setHtml(Write());
        QStringList lines;
        for (const QString& line : document.toPlainText().split(u'\n')) {
            if (!line.trimmed().isEmpty())
                lines.append(line.trimmed());
        }
        return lines;
    }
    /// The value behind a name, the first one from a line on.
    static QString GetValue(const QStringList& lines, const QString& name, const QString& from = {})
    {
        const qsizetype begin = from.isEmpty() ? 0 : lines.indexOf(from);
        EXPECT_GE(begin, 0) << qPrintable(from);
        return lines.value(lines.indexOf(name, begin) + 1);
    }

    Job job;
    Solution solution;
    QString material = QStringLiteral("CF <180>");
    double thickness = 0.125;
    double runTime = 12.34;
    QString ending = QStringLiteral("stopped");
    QStringList remarks;
};

} // namespace

TEST_F(ZORNestReportTest, TotalsCountEverySheetOfAStack)
{
    const QStringList lines = GetLines();
    ASSERT_GE(lines.size(), 3);
    EXPECT_EQ("Nesting report", lines[0]);
    EXPECT_EQ(u"CF <180> · 0.125 mm", lines[1]);
    EXPECT_EQ("All parts are placed.", lines[2]);
    // 2 x 40000 on 500000, 2 x 2400 on 2 x 31250
    EXPECT_EQ("15.1 %", GetValue(lines, "Utilisation"));
    EXPECT_EQ("4 of 4", GetValue(lines, "Parts placed"));
    EXPECT_EQ(u"0.563 m²", GetValue(lines, "Material used"));
    EXPECT_EQ("3", GetValue(lines, "Sheets"));
    EXPECT_EQ(u"0.085 m²", GetValue(lines, "Area of parts"));
    EXPECT_EQ("2240 mm", GetValue(lines, "Cut length"));
    EXPECT_EQ("none given", GetValue(lines, "Cost"));
    EXPECT_EQ("12.3 s", GetValue(lines, "Run time"));
    EXPECT_EQ("1", GetValue(lines, "Seed"));
    EXPECT_EQ("stopped", GetValue(lines, "Ended"));
}

TEST_F(ZORNestReportTest, ASheetTellsItsUseAndWhatRemains)
{
    const QStringList lines = GetLines();
    const QString sheet = "Sheet 0: sheet & co";
    EXPECT_EQ("16.0 %", GetValue(lines, "Utilisation", sheet));
    EXPECT_EQ("2", GetValue(lines, "Parts", sheet));
    EXPECT_EQ(u"1000 × 500 mm", GetValue(lines, "Size", sheet));
    EXPECT_EQ("400 mm", GetValue(lines, "Used length", sheet));
    EXPECT_EQ(u"595 × 500 mm", GetValue(lines, "Remnant", sheet));
    EXPECT_EQ("2000 mm", GetValue(lines, "Cut length", sheet));
    EXPECT_EQ(u"40000 mm²", lines.value(lines.indexOf("1 of 2", lines.indexOf(sheet)) + 2));
}

TEST_F(ZORNestReportTest, NumbersOfAColumnShareTheirUnit)
{
    const auto getAreas = [this] {
        QStringList units;
        QRegularExpressionMatchIterator cells =
            QRegularExpression(QString::fromUtf8("<td>[\\d.]+ (mm²|m²)</td>")).globalMatch(Write());
        while (cells.hasNext())
            units.append(cells.next().captured(1));
        return units;
    };
    EXPECT_EQ(QStringList({QString::fromUtf8("mm²"), QString::fromUtf8("mm²")}),
              getAreas()); // of 40000 and 2400 mm²
    solution.sheets.pop_back();
    EXPECT_EQ(QStringList{QString::fromUtf8("m²")}, getAreas());
}

TEST_F(ZORNestReportTest, ARollTellsItsLengthAndItsStack)
{
    const QStringList lines = GetLines();
    const QString roll = "Sheet 1: roll";
    EXPECT_EQ("7.7 %", GetValue(lines, "Utilisation", roll));
    EXPECT_EQ("500 mm", GetValue(lines, "Roll width", roll));
    EXPECT_EQ("62.5 mm", GetValue(lines, "Used length", roll));
    EXPECT_EQ("the rest of the roll", GetValue(lines, "Remnant", roll));
    EXPECT_EQ("240 mm", GetValue(lines, "Cut length", roll));
    EXPECT_EQ("2 sheets at once", GetValue(lines, "Stack", roll));
    EXPECT_EQ("1", GetValue(lines, "a <b> & %1", roll));
    EXPECT_EQ(u"57.3°", lines.value(lines.indexOf("no", lines.indexOf(roll)) + 1));
    EXPECT_EQ(u"2400 mm²", lines.constLast());
}

TEST_F(ZORNestReportTest, TheLargerOfTwoRemnantsIsTold)
{
    solution.sheets[0].placements = {{0, {false, 0, {600, 0}}}};
    EXPECT_EQ(u"1000 × 395 mm", GetValue(GetLines(), "Remnant"));
    job.items[0] = MakeRectangle("plate", 986, 486); // 9 mm are left of either side
    solution.sheets[0].placements = {{0, {}}};
    EXPECT_EQ("none", GetValue(GetLines(), "Remnant"));
}

TEST_F(ZORNestReportTest, WhatIsNotKnownIsLeftOut)
{
    ending.clear();
    material.clear();
    thickness = 0;
    const QStringList lines = GetLines();
    EXPECT_FALSE(lines.contains("Ended"));
    EXPECT_EQ("All parts are placed.", lines.value(1));
}

TEST_F(ZORNestReportTest, EveryPartWithoutAPlaceIsListedWithItsReason)
{
    solution.unplaced = {{0, 3, "larger than every sheet"}, {1, 1, "a < b"}};
    const QStringList lines = GetLines();
    EXPECT_TRUE(lines.contains("4 of 8 parts found no place."));
    EXPECT_EQ("4 of 8", GetValue(lines, "Parts placed"));
    const qsizetype begin = lines.indexOf("Not placed");
    ASSERT_GE(begin, 0);
    EXPECT_EQ(QStringList({"Not placed", "No.", "Part", "Count", "Reason", "1", "plate", "3",
                           "larger than every sheet", "2", "a <b> & %1", "1", "a < b"}),
              lines.mid(begin, 13));
}

TEST_F(ZORNestReportTest, RemarksAreListed)
{
    EXPECT_FALSE(GetLines().contains("Remarks"));
    remarks = QStringList({"first <i>"});
    solution.remarks = {"second"};
    const QStringList lines = GetLines();
    const qsizetype begin = lines.indexOf("Remarks");
    ASSERT_GE(begin, 0);
    EXPECT_EQ("first <i>", lines.value(begin + 1));
    EXPECT_EQ("second", lines.value(begin + 2));
}

TEST_F(ZORNestReportTest, CostsAreToldWhereThereAreAny)
{
    job.kinds[0].cost = 3;
    solution.cost = 12.25;
    EXPECT_EQ("12.25", GetValue(GetLines(), "Cost"));
}

TEST_F(ZORNestReportTest, ARunWithoutSheetsTellsWhy)
{
    solution = {};
    EXPECT_EQ(QStringList(
                  {"Nesting report", QString::fromUtf8("CF <180> · 0.125 mm"), "There is nothing to nest."}),
              GetLines());
    solution.unplaced = {{0, 2, "no sheet left"}};
    material.clear();
    thickness = 0;
    EXPECT_EQ(QStringList({"Nesting report", "2 of 2 parts found no place.", "Not placed", "No.", "Part",
                           "Count", "Reason", "1", "plate", "2", "no sheet left"}),
              GetLines());
}

TEST_F(ZORNestReportTest, LongNumbersAreGivenInLargerUnits)
{
    runTime = 3725;
    job.items[0] = MakeRectangle("plate", 61528, 200);
    const QStringList lines = GetLines();
    EXPECT_EQ("62 min 5 s", GetValue(lines, "Run time"));
    EXPECT_EQ("247.15 m", GetValue(lines, "Cut length"));
}

TEST_F(ZORNestReportTest, AnglesAreListedUpToFour)
{
    solution.sheets[1].placements.clear();
    for (int i = 0; i < 9; ++i)
        solution.sheets[1].placements.push_back({1, {false, -1e-9 + 0.1 * (i % 6), {20.0 * i, 0}}});
    const QStringList lines = GetLines();
    EXPECT_EQ(QString::fromUtf8("0°, 5.73°, 11.46°, 17.19° …"), lines.value(lines.size() - 2));
}

TEST_F(ZORNestReportTest, EverySheetHasItsPictureWithinTheText)
{
    const QString html = Write();
    EXPECT_EQ(2, html.count("<img"));
    EXPECT_EQ(2, html.count("src=\"data:image/png;base64,"));
    static const QRegularExpression kPicture(
        "width=\"(\\d+)\" height=\"(\\d+)\" src=\"data:image/png;base64,([^\"]+)\"");
    QRegularExpressionMatchIterator matches = kPicture.globalMatch(html);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QImage image = QImage::fromData(QByteArray::fromBase64(match.captured(3).toLatin1()), "PNG");
        EXPECT_EQ(2 * match.captured(1).toInt(), image.width() & ~1);
        EXPECT_EQ(2 * match.captured(2).toInt(), image.height() & ~1);
        EXPECT_LE(match.captured(1).toInt(), 468);
    }
    QTextDocument document;
    document.setHtml(html);
    EXPECT_EQ(QVariant(), document.resource(QTextDocument::ImageResource, QUrl("file")));
}

TEST_F(ZORNestReportTest, PartsAreDrawnWhereTheyLie)
{
    const QImage image = DrawSheet(0, 1003); // a pixel for a millimetre
    ASSERT_EQ(1003, image.width());
    ASSERT_EQ(503, image.height());
    const auto at = [&](int x, int y) { return image.pixelColor(1 + x, image.height() - 2 - y); };
    EXPECT_EQ(QColor(Qt::white), at(500, 250)); // nothing
    EXPECT_EQ(QColor(Qt::white), at(200, 105)); // between the parts
    EXPECT_EQ(at(20, 20), at(380, 80));         // the first one
    EXPECT_NE(QColor(Qt::white), at(20, 20));
    QSet<QRgb> colors; // the mirrored one is hatched
    for (int x = 10; x < 60; ++x)
        colors.insert(at(x, 130).rgb());
    EXPECT_GT(colors.size(), 1);
}

TEST_F(ZORNestReportTest, LongRollsAreDrawnInRows)
{
    job.kinds[1].width = 10;
    solution.sheets[1].usedLength = 100; // 10 to 1
    const QImage image = DrawSheet(1, 400);
    EXPECT_EQ(400, image.width());
    EXPECT_NEAR(3 * 397 / (100 / 3.0) * 10 + 2 * 12 + 3, image.height(), 1); // three rows and two gaps
}

TEST_F(ZORNestReportTest, ARollOfAnyLengthHasAPicture)
{
    for (const double length : {1e12, 1e108, std::numeric_limits<double>::max()}) {
        solution.sheets[1].usedLength = length;
        const QImage image = DrawSheet(1, 400);
        EXPECT_EQ(400, image.width());
        EXPECT_LT(image.height(), 4000);
    }
}

TEST_F(ZORNestReportTest, PartsAreMeasuredWithTheirArcsAndHoles)
{
    Contour disc;
    disc.start = {1, 0};
    disc.segments = {{{1, 0}, true, true, {0, 0}}};
    job.items[0].contours = {MakeContour({{0, 0}, {100, 0}, {100, 100}, {0, 100}}), disc};
    const std::vector<ZORNestReportPart> parts = ZORNestMeasureParts(job);
    EXPECT_NEAR(10000 - std::numbers::pi, parts[0].area, 1e-6);
    EXPECT_NEAR(400 + 2 * std::numbers::pi, parts[0].cutLength, 1e-6);
    EXPECT_NEAR(2400, parts[1].area, 1e-9);
}

} // namespace ZORNestSolver
