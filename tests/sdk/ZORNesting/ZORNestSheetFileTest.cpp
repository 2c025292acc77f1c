// Tests of the sheet files of nesting jobs.

#include "NestingTest.h"

#include <cmath>
#include <numbers>

using Segment = ZORNestResultSegment;

namespace {

class ZORNestSheetFileTest : public NestingTest
{
protected:
    /// A rib with every kind of segment, a hole, and marks on several layers.
    static ZORNestResultItem MakeRib()
    {
        const auto on = [](Segment segment, Segment::Layer layer) {
            segment.SetLayer(layer);
            return segment;
        };
        const QList<Segment> outline = {
            on(Segment::CreateLine({0, 0, 0}, {40, 0, 0}), Segment::Nest),
            on(Segment::CreateArc(Segment::ArcCounterClockwise, {40, 0, 0}, {40, 16, 0}, {40, 8, 0}),
               Segment::Nest),
            on(Segment::CreateSpline({Segment::CreateLine({40, 16, 0}, {20, 14, 0}),
                                      Segment::CreateLine({20, 14, 0}, {6, 12, 0})}),
               Segment::Nest),
            on(Segment::CreateArc(Segment::ArcClockwise, {6, 12, 0}, {0, 6, 0}, {0, 12, 0}), Segment::Nest),
            on(Segment::CreateLine({0, 6, 0}, {0, 0, 0}), Segment::Nest),
            on(Segment::CreateLine({-1, -1, 0}, {0, 0, 0}), Segment::LeadIn)};
        Segment text = on(Segment::CreateText({10, 4, 0}, {20, 4, 0}, "RIB"), Segment::EtchingData);
        text.SetTextHeight(3);
        text.SetTextWidth(0.8);
        text.SetTextAngle(0.25);
        text.SetTextTiltAngle(0.1);
        text.SetFont("romans");
        text.SetTextJustification(Segment::TopLeft);
        Segment mark =
            on(Segment::CreateOther(Segment::SegmentType(17), {5, 5, 0}, {8, 5, 0}), Segment::Extra);
        mark.SetColor(Qt::red);
        mark.SetLineStyle(3);
        ZORNestResultShape marks({text, mark});
        marks.SetRawShapeFather(0);
        marks.SetShapeStatus(5);

        ZORNestResultItem item(QStringLiteral("Rib"));
        item.SetPartName(QStringLiteral("Rib part"));
        item.SetAssemblyName(QStringLiteral("Wing"));
        item.SetSubassemblyName(QStringLiteral("Box"));
        item.SetJobName(QStringLiteral("J-7"));
        item.SetComment(QStringLiteral("comment"));
        item.AddShape(ZORNestResultShape(outline));
        item.AddShape(MakeHole(MakeCircle(4, 40, 8)));
        item.AddShape(marks);
        return item;
    }
    static QByteArray MakeFile(const ZORNestResultItem& item)
    {
        ZORNestResult result(ZORNestResult::Translation);
        result.AddItem(item);
        return WriteResult(result);
    }
    /// The first item of a job of this one part.
    ZORNestResultItem NestOne(const ZORNestNestingInputItem& item)
    {
        const ZORNestNestingResponse* const response = Nest(MakeJob({item}, {MakeSheets("s", 100, 100)}));
        sheet = ReadSheets(response).value(0);
        return sheet.GetItems().isEmpty() ? ZORNestResultItem() : *sheet.GetItems().at(0);
    }
    /// Mirrored, turned, moved.
    static ZORMathPoint Place(const ZORNestResultItem& item, const ZORMathPoint& p)
    {
        const double x = item.IsMirrored() ? -p.GetX() : p.GetX();
        const double c = std::cos(item.GetOrientation());
        const double s = std::sin(item.GetOrientation());
        return {c * x - s * p.GetY() + item.GetPosition().GetX(),
                s * x + c * p.GetY() + item.GetPosition().GetY(), 0};
    }
    static void ExpectPlaced(const Segment& source, const Segment& placed, const ZORNestResultItem& item)
    {
        const double noise = 1e-9;
        EXPECT_EQ(source.GetLayer(), placed.GetLayer());
        EXPECT_EQ(source.GetColor(), placed.GetColor());
        EXPECT_EQ(source.GetLineStyle(), placed.GetLineStyle());
        ASSERT_EQ(source.GetNumSplineGeometry(), placed.GetNumSplineGeometry());
        for (int sub = -1; sub < source.GetNumSplineGeometry(); ++sub) {
            const Segment::SegmentType type = source.GetType(sub);
            const bool isArc = type == Segment::ArcClockwise || type == Segment::ArcCounterClockwise;
            EXPECT_EQ(isArc && item.IsMirrored() ? -type : int(type), int(placed.GetType(sub)));
            EXPECT_LT(Place(item, source.GetStartPoint(sub)).DistanceTo(placed.GetStartPoint(sub)), noise);
            EXPECT_LT(Place(item, source.GetEndPoint(sub)).DistanceTo(placed.GetEndPoint(sub)), noise);
            if (!isArc)
                continue;
            EXPECT_LT(Place(item, source.GetArcCenter(sub)).DistanceTo(placed.GetArcCenter(sub)), noise);
        }
    }
    static void ExpectPlaced(const ZORNestResultItem& source, const ZORNestResultItem& placed)
    {
        ASSERT_EQ(source.GetShapes().size(), placed.GetShapes().size());
        for (qsizetype i = 0; i < source.GetShapes().size(); ++i) {
            const ZORNestResultShape& from = *source.GetShapes().at(i);
            const ZORNestResultShape& to = *placed.GetShapes().at(i);
            EXPECT_EQ(from.GetRawShapeFather(), to.GetRawShapeFather());
            EXPECT_EQ(from.GetShapeHole(), to.GetShapeHole());
            EXPECT_EQ(from.GetShapeStatus(), to.GetShapeStatus());
            EXPECT_NEAR(from.GetArea(), to.GetArea(), 1e-9 * from.GetArea());
            EXPECT_NEAR(from.GetPerimeter(), to.GetPerimeter(), 1e-9 * from.GetPerimeter());
            ASSERT_EQ(from.GetSegments().size(), to.GetSegments().size());
            for (qsizetype s = 0; s < from.GetSegments().size(); ++s)
                ExpectPlaced(from.GetSegments().at(s), to.GetSegments().at(s), placed);
        }
    }

    ZORNestResult sheet; // keeps the items
};

} // namespace

TEST_F(ZORNestSheetFileTest, AFileHoldsTheSheetAndTheNamesOfItsItems)
{
    const ZORNestResultItem placed = NestOne(MakeItem("as listed", MakeFile(MakeRib())));
    EXPECT_TRUE(sheet.IsValid());
    EXPECT_EQ(ZORNestResult::Nesting, sheet.GetResultType());
    EXPECT_EQ(ZORMathPoint(0, 0, 0), sheet.GetSheet().GetLowerPoint());
    EXPECT_EQ(ZORMathPoint(100, 100, 0), sheet.GetSheet().GetUpperPoint());
    EXPECT_EQ("as listed", placed.GetName());
    EXPECT_EQ("Rib part", placed.GetPartName());
    EXPECT_EQ("Wing", placed.GetAssemblyName());
    EXPECT_EQ("Box", placed.GetSubassemblyName());
    EXPECT_EQ("J-7", placed.GetJobName());
    EXPECT_EQ("comment", placed.GetComment());
}

TEST_F(ZORNestSheetFileTest, ShapesLieWhereThePoseTellsInEveryHandAndTurn)
{
    const ZORNestResultItem rib = MakeRib();
    for (const bool isMirrored : {false, true}) {
        for (const double degrees : {0.0, 90.0, 180.0, 270.0, 33.0}) {
            ZORNestNestingInputItem item = MakeItem("r", MakeFile(rib));
            item.SetMirrored(isMirrored);
            item.SetOrientation(degrees * std::numbers::pi / 180);
            const ZORNestResultItem placed = NestOne(item);
            EXPECT_EQ(isMirrored, placed.IsMirrored());
            EXPECT_NEAR(degrees * std::numbers::pi / 180, placed.GetOrientation(), 1e-12);
            ExpectPlaced(rib, placed);
            EXPECT_EQ(QStringList(), FindFaults(sheet, 0));
        }
    }
}

TEST_F(ZORNestSheetFileTest, QuarterTurnsAreExact)
{
    ZORNestNestingInputItem item = MakeItem("s", MakePart({ZORNestResultShape(MakeRectangle(30, 20))}));
    item.SetOrientation(std::numbers::pi / 2);
    const ZORNestResultItem placed = NestOne(item);
    for (const Segment& side : placed.GetShapes().at(0)->GetSegments()) {
        EXPECT_TRUE(side.GetStartPoint().GetX() == side.GetEndPoint().GetX()
                    || side.GetStartPoint().GetY() == side.GetEndPoint().GetY());
    }
}

TEST_F(ZORNestSheetFileTest, TextsTurnWithThePart)
{
    ZORNestNestingInputItem item = MakeItem("r", MakeFile(MakeRib()));
    item.SetOrientation(0.5);
    const ZORNestResultItem placed = NestOne(item);
    const Segment text = placed.GetShapes().at(2)->GetSegments().at(0);
    EXPECT_EQ("RIB", text.GetText());
    EXPECT_EQ("romans", text.GetFont());
    EXPECT_EQ(3, text.GetTextHeight());
    EXPECT_EQ(0.8, text.GetTextWidth());
    EXPECT_EQ(0.1, text.GetTextTiltAngle());
    EXPECT_NEAR(0.75, text.GetTextAngle(), 1e-12);
    EXPECT_EQ(Segment::TopLeft, text.GetTextJustification());
}

TEST_F(ZORNestSheetFileTest, TextsOnMirroredPartsStayReadableInTheirMirroredPlace)
{
    const auto nestText = [this](Segment::TextJustification justification) {
        Segment text = Segment::CreateText({10, 4, 0}, {10, 4, 0}, "T");
        text.SetTextAngle(0.25);
        text.SetTextJustification(justification);
        ZORNestNestingInputItem item =
            MakeItem("t", MakePart({ZORNestResultShape(MakeRectangle(30, 20)), ZORNestResultShape({text})}));
        item.SetMirrored(true);
        item.SetOrientation(0.5);
        return NestOne(item).GetShapes().at(1)->GetSegments().at(0);
    };
    const Segment text = nestText(Segment::BaselineLeft);
    EXPECT_EQ(1, text.GetTextWidth());
    EXPECT_NEAR(0.5 - 0.25, text.GetTextAngle(), 1e-12);
    EXPECT_EQ(Segment::BaselineRight, text.GetTextJustification());
    EXPECT_EQ(Segment::MiddleCenter, nestText(Segment::MiddleCenter).GetTextJustification());
    EXPECT_EQ(Segment::TopLeft, nestText(Segment::TopRight).GetTextJustification());
    EXPECT_EQ(Segment::BottomRight, nestText(Segment::BottomLeft).GetTextJustification());
    EXPECT_EQ(Segment::BaselineRight, nestText(Segment::TextJustification(99)).GetTextJustification());
}

TEST_F(ZORNestSheetFileTest, PosesLeadOnFromThoseOfTheFile)
{
    ZORNestResultItem item(QStringLiteral("moved"));
    item.SetPosition({3, 4, 0});
    item.SetOrientation(0.5);
    item.SetMirrored(true);
    item.AddShape(ZORNestResultShape(MakeRectangle(30, 20)));
    ZORNestNestingInputItem input = MakeItem("m", MakeFile(item));
    input.SetMirrored(true);
    input.SetOrientation(0.75);
    const ZORNestResultItem placed = NestOne(input);
    EXPECT_FALSE(placed.IsMirrored()); // twice
    EXPECT_NEAR(0.75 - 0.5, placed.GetOrientation(), 1e-12);
    // The corner of the shape at the origin is where the pose of this job alone puts it.
    const ZORMathPoint corner = placed.GetShapes().at(0)->GetSegments().at(0).GetStartPoint();
    const ZORMathVector moved = placed.GetPosition() - corner;
    EXPECT_NEAR(-3 * std::cos(0.75) - 4 * std::sin(0.75), moved.GetX(), 1e-9);
    EXPECT_NEAR(-3 * std::sin(0.75) + 4 * std::cos(0.75), moved.GetY(), 1e-9);
}

TEST_F(ZORNestSheetFileTest, PartsWithoutAPartNameAreCalledAsInTheirFile)
{
    ZORNestResultItem item(QStringLiteral("in the file"));
    item.AddShape(ZORNestResultShape(MakeRectangle(30, 20)));
    EXPECT_EQ("in the file", NestOne(MakeItem("in the job", MakeFile(item))).GetPartName());
}

TEST_F(ZORNestSheetFileTest, ArcsAreWhereTheyAreWhenPartsKeepApart)
{
    ZORNestNestingInput input =
        MakeJob({MakeItem("disc", MakePart({ZORNestResultShape(MakeCircle(10, 3, 4))}), 7),
                 MakeItem("rib", MakeFile(MakeRib()), 5)},
                {MakeSheets("r", 70, kRoll)});
    input.SetItemSeparation(2);
    input.SetFrameWidth(1);
    input.SetMaxSteps(2000);
    input.SetMaxDeviation(0.3);
    const QList<ZORNestResult> sheets = ReadSheets(Nest(input));
    ASSERT_EQ(1, sheets.size());
    EXPECT_EQ(12, sheets[0].GetItems().size());
    EXPECT_EQ(QStringList(), FindFaults(sheets[0], 2, 1));
}

TEST_F(ZORNestSheetFileTest, HolesTakeOtherPartsUnlessTheyHoldSomethingOfThePart)
{
    const QList<Segment> outline = MakeRectangle(50, 50);
    const ZORNestResultShape window = MakeHole(MakeRectangle(40, 40, 5, 5));
    ZORNestResultShape island(MakeRectangle(4, 4, 10, 10));
    island.SetRawShapeFather(1);
    const QList<ZORNestNestingInputPackaging> sheets = {MakeSheets("s", 50.2, 50.2)};
    const auto nest = [&](const QList<ZORNestResultShape>& shapes) {
        ZORNestNestingInput input =
            MakeJob({MakeItem("frame", MakePart(shapes)), MakeSquare("square", 20)}, sheets);
        return GetNames(Nest(input));
    };
    EXPECT_EQ(QStringList({"frame", "square"}), nest({ZORNestResultShape(outline), window}));
    EXPECT_EQ(QStringList({"frame"}), nest({ZORNestResultShape(outline), window, island}));
    EXPECT_EQ(QStringList({"frame"}), nest({ZORNestResultShape(outline)}));
}

TEST_F(ZORNestSheetFileTest, SeveralOutlinesStayTogether)
{
    const QByteArray pair = MakePart(
        {ZORNestResultShape(MakeRectangle(10, 10)), ZORNestResultShape(MakeRectangle(10, 10, 20, 0))});
    ZORNestNestingInput input =
        MakeJob({MakeItem("pair", pair, 2), MakeSquare("square", 8, 3)}, {MakeSheets("r", 32, kRoll)});
    input.SetItemSeparation(0.5);
    const ZORNestNestingResponse* const response = Nest(input);
    EXPECT_EQ(QStringList({"part 'pair' consists of 2 outlines, which are nested as one within their hull"}),
              response->GetRemarks());
    ASSERT_EQ(1, response->GetSheetFiles().size());
    EXPECT_EQ(QStringList(), FindFaults(ReadSheets(response).at(0), 0.5));
    EXPECT_EQ(5, GetNames(response).size());
}

TEST_F(ZORNestSheetFileTest, LayersThatAreNotCutDoNotCount)
{
    QList<Segment> grain = MakeRectangle(500, 500, -200, -200);
    for (Segment& segment : grain)
        segment.SetLayer(Segment::Grain);
    const ZORNestResultItem placed = NestOne(
        MakeItem("g", MakePart({ZORNestResultShape(grain), ZORNestResultShape(MakeRectangle(90, 90))})));
    EXPECT_EQ(2, placed.GetShapes().size());
}
