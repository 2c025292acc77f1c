// Tests of what nesting jobs make of their inputs.

#include "NestingRunTest.h"

namespace {

using ZORNestNestingRunTest = NestingRunTest;

TEST_F(ZORNestNestingRunTest, EmptyTablesComplete)
{
    const Response* const nothing = Nest(MakeJob({}, {}));
    EXPECT_TRUE(nothing->GetSheetFiles().isEmpty());
    EXPECT_TRUE(nothing->GetReportFile().contains("There is nothing to nest."));
    EXPECT_TRUE(nothing->GetRemarks().isEmpty());

    const Response* const noParts = Nest(MakeJob({}, {MakeSheets("s", 10, 10)}));
    EXPECT_TRUE(noParts->GetSheetFiles().isEmpty());

    const Response* const noSheets = Nest(MakeJob({MakeSquare("a", 10, 2)}, {}));
    EXPECT_TRUE(noSheets->GetSheetFiles().isEmpty());
    EXPECT_EQ(QStringList({"not placed: 2 of part 'a': no sheet left"}), noSheets->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, OnlyWhatIsWantedIsMade)
{
    const Response* const response =
        Nest(MakeJob({MakeSquare("none", 10, 0), MakeSquare("one", 10), MakeSquare("less", 10, -2)},
                     {MakeSheets("s", 50, 50, 3)}));
    EXPECT_EQ(QStringList({"one"}), GetNames(response));
    EXPECT_EQ(1, response->GetSheetFiles().size());
    EXPECT_EQ(QStringList({"part 'less': quantity -2 counts as 0"}), response->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, SheetsOfNoQuantityAreNotUsed)
{
    const Response* const response =
        Nest(MakeJob({MakeSquare("a", 10)}, {MakeSheets("none", 50, 50, 0), MakeSheets("less", 50, 50, -1)}));
    EXPECT_TRUE(response->GetSheetFiles().isEmpty());
    EXPECT_EQ(
        QStringList({"not placed: 1 of part 'a': no sheet left", "sheet 'less': quantity -1 counts as 0"}),
        response->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, WhatIsLargerThanEverySheetStopsNothing)
{
    const Response* const response = Nest(
        MakeJob({MakeSquare("large", 100, 1000000), MakeSquare("small", 10)}, {MakeSheets("s", 50, 50)}));
    EXPECT_EQ(QStringList({"small"}), GetNames(response));
    EXPECT_EQ(QStringList({"not placed: 1000000 of part 'large': larger than every sheet"}),
              response->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, WhatFindsNoSheetIsCounted)
{
    const Response* const response =
        Nest(MakeJob({MakeSquare("a", 10, 2000000000)}, {MakeSheets("s", 10.5, 10.5, 2)}));
    EXPECT_EQ(2, response->GetSheetFiles().size());
    EXPECT_EQ(QStringList({"not placed: 1999999998 of part 'a': no sheet left"}), response->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, BadContentsAreReportedAndTheRestIsNested)
{
    ZORNestNestingInputItem cut = MakeSquare("cut", 5, 4);
    const QByteArray half = cut.GetContents().left(cut.GetContents().size() / 2);
    const Response* const response = Nest(MakeJob(
        {MakeItem("empty", {}, 3), MakeItem("text", "nonsense"), MakeItem("half", half),
         MakeSquare("good", 10), MakeItem("open", MakePart({ZORNestResultShape(MakeRectangle(5, 5).mid(1))})),
         MakeItem("no shape", MakePart({})),
         MakeItem("no item", WriteResult(ZORNestResult(ZORNestResult::Translation)), 2),
         MakeItem("far", MakePart({ZORNestResultShape(MakeRectangle(1e300, 5))})),
         MakeItem("unwanted", "x", 0)},
        {MakeSheets("s", 50, 50)}));
    EXPECT_EQ(QStringList({"good"}), GetNames(response));
    const QStringList remarks = response->GetRemarks();
    ASSERT_EQ(8, remarks.size());
    EXPECT_EQ("not placed: 3 of part 'empty': the file is not a result file", remarks[0]);
    EXPECT_EQ("not placed: 1 of part 'text': the file is not a result file", remarks[1]);
    EXPECT_TRUE(remarks[2].startsWith("not placed: 1 of part 'half': "));
    EXPECT_EQ("not placed: 1 of part 'open': has no closed outline", remarks[3]);
    EXPECT_EQ("not placed: 1 of part 'no shape': has no closed outline", remarks[4]);
    EXPECT_EQ("not placed: 2 of part 'no item': file holds no part", remarks[5]);
    EXPECT_EQ("not placed: 1 of part 'far': reaches beyond 1 km", remarks[6]);
    EXPECT_EQ("part 'unwanted': the file is not a result file", remarks[7]);
    const QString report = QString::fromUtf8(response->GetReportFile());
    for (const char* text : {"the file is not a result file", "has no closed outline", "file holds no part"})
        EXPECT_TRUE(report.contains(QLatin1String(text))) << text;
}

TEST_F(ZORNestNestingRunTest, NumbersThatCannotBeUsedAreReported)
{
    ZORNestNestingInputItem item = MakeSquare("%1 %2", 10);
    item.SetOrientation(NAN);
    item.SetMaxDeviation(-1);
    ZORNestNestingInputPackaging sheet = MakeSheets("s", 50, 50);
    sheet.SetTopTrim(-1);
    ZORNestNestingInput input = MakeJob({item}, {sheet, MakeSheets("flat", -5, HUGE_VAL)});
    input.SetItemSeparation(-2);
    input.SetFrameWidth(NAN);
    input.SetStackSize(-4);
    input.SetMaxRunTime(NAN);
    input.SetPackagingUsageRule(ZORNestBaseFeature::PackagingUsageRule(17));
    const Response* const response = Nest(input);
    EXPECT_EQ(QStringList({"%1 %2"}), GetNames(response));
    EXPECT_EQ(QStringList({"part '%1 %2': orientation counts as 0 instead of nan",
                           "part '%1 %2': maximum deviation counts as 0 instead of -1",
                           "sheet 's': top trim counts as 0 instead of -1",
                           "sheet 'flat': width counts as 0 instead of -5",
                           "sheet 'flat': length counts as 0 instead of inf",
                           "item separation counts as 0 instead of -2",
                           "frame width counts as 0 instead of nan", "sheet \"flat\" has no usable area"}),
              response->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, ARollIsUsedAsShortAsPossible)
{
    ZORNestNestingInput input = MakeJob({MakeSquare("a", 10, 8)}, {MakeSheets("roll", 20.01, kRoll)});
    input.SetMaxSteps(3000);
    const Response* const response = Nest(input);
    const QList<ZORNestResult> sheets = ReadSheets(response);
    ASSERT_EQ(1, sheets.size());
    EXPECT_EQ(8, sheets[0].GetItems().size());
    EXPECT_EQ(20.01, sheets[0].GetSheet().GetUpperPoint().GetY());
    EXPECT_LT(GetLength(sheets[0]), 42);
    EXPECT_GE(GetLength(sheets[0]), 40);
}

TEST_F(ZORNestNestingRunTest, SeparationFrameAndTrimsAreKept)
{
    ZORNestNestingInputPackaging sheet = MakeSheets("s", 60, 70);
    sheet.SetLeftTrim(4);
    sheet.SetRightTrim(9);
    sheet.SetTopTrim(7);
    sheet.SetBottomTrim(2);
    ZORNestNestingInput input = MakeJob({MakeSquare("a", 10, 40)}, {sheet});
    input.SetItemSeparation(3);
    input.SetFrameWidth(5);
    const Response* const response = Nest(input);
    ASSERT_EQ(1, response->GetSheetFiles().size());
    const ZORNestResult result = ReadSheets(response).at(0);
    EXPECT_GE(result.GetItems().size(), 6);
    EXPECT_EQ(QStringList(), FindFaults(result, 3, 5));
    ZORMathBoundingBox box;
    for (const ZORNestResultItem* item : result.GetItems())
        box.Add(item->GetShapes().at(0)->GetBoundingBox());
    EXPECT_GE(box.GetLowerPoint().GetX(), 9 - 1e-6);
    EXPECT_GE(box.GetLowerPoint().GetY(), 7 - 1e-6);
    EXPECT_LE(box.GetUpperPoint().GetX(), 56 + 1e-6);
    EXPECT_LE(box.GetUpperPoint().GetY(), 48 + 1e-6);
}

TEST_F(ZORNestNestingRunTest, TheSeedDeterminesTheLayout)
{
    QList<QByteArray> files;
    for (const quint64 seed : {1, 2, 2}) {
        ZORNestNestingInput input =
            MakeJob({MakeItem("w", MakeWedge(), 9), MakeSquare("b", 7, 9)}, {MakeSheets("r", 40, kRoll)});
        input.SetMaxSteps(1000);
        input.SetMaxDeviation(0.4);
        input.SetSeed(seed);
        files += Nest(input)->GetSheetFiles();
    }
    ASSERT_EQ(3, files.size());
    EXPECT_NE(files[0], files[1]);
    EXPECT_EQ(files[1], files[2]);
}

TEST_F(ZORNestNestingRunTest, TheMinimumRunTimeKeepsAJobSearching)
{
    // Nothing can be gained: the second part has no room, though the area would suffice.
    const QList<ZORNestNestingInputItem> items = {MakeSquare("a", 10, 2)};
    const QList<ZORNestNestingInputPackaging> sheets = {MakeSheets("s", 15, 15)};
    ZORNestNestingInput patient(QString(), 0, items, sheets);
    patient.SetMinRunTime(1e21);
    Response* const waiting = processor->AddInput(patient);
    processor->Execute(waiting);
    ASSERT_TRUE(QTest::qWaitFor([=] { return waiting->GetProgress() > 0; }, kPatience));
    for (int i = 0; i < 3; ++i) {
        const Response* const response = Nest(ZORNestNestingInput(QString(), 0, items, sheets));
        EXPECT_TRUE(response->GetReportFile().contains("no further gain"));
    }
    EXPECT_EQ(Response::Running, waiting->GetStatus());
    processor->Stop(waiting);
    ASSERT_TRUE(WaitForEnd(waiting));
    EXPECT_EQ(QStringList({"a"}), GetNames(waiting));
    EXPECT_EQ(Response::Completed, waiting->GetStatus());
}

TEST_F(ZORNestNestingRunTest, StacksAreOneFileAndNeverOverproduce)
{
    ZORNestNestingInput input = MakeJob({MakeSquare("a", 10, 5)}, {MakeSheets("s", 10.5, 10.5, 5)});
    input.SetStackSize(2);
    const Response* const response = Nest(input);
    QList<int> sizes;
    for (const ZORNestResult& sheet : ReadSheets(response))
        sizes.append(sheet.GetStackSize());
    EXPECT_EQ(QList<int>({2, 2, 1}), sizes);
    EXPECT_TRUE(response->GetRemarks().isEmpty());
    const QString report = QString::fromUtf8(response->GetReportFile());
    EXPECT_EQ(2, report.count("2 sheets at once"));
    EXPECT_TRUE(report.contains(">5 of 5<"));
}

TEST_F(ZORNestNestingRunTest, ScarceSheetsGoToTheHighestPriority)
{
    ZORNestNestingInputItem important = MakeSquare("important", 9);
    important.SetPriority(2);
    const Response* const response =
        Nest(MakeJob({MakeSquare("large", 10), important}, {MakeSheets("s", 12, 12)}));
    EXPECT_EQ(QStringList({"important"}), GetNames(response));
    EXPECT_EQ(QStringList({"not placed: 1 of part 'large': no sheet left"}), response->GetRemarks());
}

TEST_F(ZORNestNestingRunTest, RulesChooseTheKindsOfSheets)
{
    ZORNestNestingInputPackaging dear = MakeSheets("dear", 50, 50, 2);
    dear.SetCost(10);
    ZORNestNestingInputPackaging cheap = MakeSheets("cheap", 22, 22, 2);
    cheap.SetCost(1.5);
    const auto getReport = [&](ZORNestBaseFeature::PackagingUsageRule rule) {
        ZORNestNestingInput input = MakeJob({MakeSquare("a", 10, 4)}, {dear, cheap});
        input.SetMaxSteps(2000);
        input.SetPackagingUsageRule(rule);
        const Response* const response = Nest(input);
        EXPECT_EQ(4, GetNames(response).size());
        return QString::fromUtf8(response->GetReportFile());
    };
    EXPECT_TRUE(getReport(ZORNestBaseFeature::AsListed).contains("Sheet 0: dear"));
    EXPECT_TRUE(getReport(ZORNestBaseFeature::BestSize).contains("Sheet 0: cheap"));
    const QString mix = getReport(ZORNestBaseFeature::BestMix);
    EXPECT_TRUE(mix.contains("Sheet 0: cheap"));
    EXPECT_TRUE(mix.contains(">1.50<"));
}

TEST_F(ZORNestNestingRunTest, EveryItemOfAFileIsAPart)
{
    ZORNestResult file(ZORNestResult::Translation);
    for (const char* name : {"left", "right"}) {
        ZORNestResultItem item{QString::fromLatin1(name)};
        item.AddShape(ZORNestResultShape(MakeRectangle(5, 5)));
        file.AddItem(item);
    }
    const Response* const response =
        Nest(MakeJob({MakeItem("kit", WriteResult(file), 2)}, {MakeSheets("s", 30, 30)}));
    EXPECT_EQ(QStringList({"kit / left", "kit / left", "kit / right", "kit / right"}), GetNames(response));
}

TEST_F(ZORNestNestingRunTest, PartsThatFitNoSheetTakeNoPlaceOfOthers)
{
    const Response* const response =
        Nest(MakeJob({MakeSquare("large", 10, 30000)}, {MakeSheets("r", 1, kRoll)}));
    EXPECT_EQ(QStringList({"not placed: 30000 of part 'large': larger than every sheet"}),
              response->GetRemarks());

    const Response* const after =
        Nest(MakeJob({MakeSquare("large", 10, 5000), MakeSquare("b", 0.5, 3)}, {MakeSheets("r", 1, kRoll)}));
    EXPECT_EQ(QStringList({"not placed: 5000 of part 'large': larger than every sheet"}),
              after->GetRemarks());
    EXPECT_EQ(QStringList({"b", "b", "b"}), GetNames(after))
        << "parts that do not fit leave the others their room";
}

TEST_F(ZORNestNestingRunTest, SpecksAndSliversHoldNothingUp)
{
    const QByteArray sliver = MakePart({ZORNestResultShape(MakeRectangle(90, 1e-4))});
    const Response* const response =
        Nest(MakeJob({MakeSquare("speck", 1e-7), MakeItem("sliver", sliver, 3), MakeSquare("a", 50)},
                     {MakeSheets("s", 100, 100)}));
    EXPECT_EQ(QStringList({"a", "sliver", "sliver", "sliver"}), GetNames(response));
    EXPECT_EQ(QStringList({"not placed: 1 of part 'speck': has no closed outline"}), response->GetRemarks());
}

} // namespace
