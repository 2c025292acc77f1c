#include "nesting/ZORTestReadMSIFileCmd.h"

#include "console/ZORTestMainDialog.h"
#include "core/ZORTestCommandRegistry.h"
#include "support/BenchTest.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORNesting/ZORNestResultWriter.h>
#include <ZORVisualization/ZORVisRep.h>

#include <QAction>
#include <QFile>
#include <QMetaClassInfo>

namespace {

using Segment = ZORNestResultSegment;

QStringList* debugLines = nullptr; // receives the debug messages while a LogCatcher lives

void CollectDebugLine(QtMsgType type, const QMessageLogContext& context, const QString& line)
{
    if (type == QtDebugMsg && qstrcmp(context.category, "default") == 0)
        debugLines->append(line);
}

class LogCatcher
{
public:
    LogCatcher()
        : m_former(qInstallMessageHandler(&CollectDebugLine))
    {
        debugLines = &m_lines;
    }
    ~LogCatcher() { qInstallMessageHandler(m_former); }
    Q_DISABLE_COPY_MOVE(LogCatcher)

    const QStringList& GetLines() const { return m_lines; }

private:
    QStringList m_lines;
    const QtMessageHandler m_former;
};

class ZORTestReadMSIFileCmdTest : public BenchTest
{
protected:
    ZORTestReadMSIFileCmdTest() { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }
    ~ZORTestReadMSIFileCmdTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

    /// Runs the command on a file and gives the messages that it logged.
    QStringList DumpFile(const QString& file)
    {
        answers.AnswerFile(file);
        const LogCatcher log;
        Open("ZORTestReadMSIFileCmd");
        return log.GetLines();
    }
    QStringList Dump(const ZORNestResult& result)
    {
        EXPECT_GT(ZORNestResultWriter(path).Write(result), 0);
        return DumpFile(path);
    }
    /// The dump of one item with one shape of one segment, from the line behind the segment's number to its rule.
    QStringList DumpSegment(const Segment& segment)
    {
        ZORNestResultItem item;
        item.AddShape(ZORNestResultShape({segment}));
        ZORNestResult result(ZORNestResult::Nesting);
        result.AddItem(item);
        const QStringList lines = Dump(result);
        EXPECT_EQ(QString("\t\t\t\tSegment #:  0"), lines.value(27));
        return lines.mid(28, lines.size() - 30);
    }

    const QString path = GetPath("sheet.msi");
};

/// \param expected  begins with a line break, every line ends with one
void ExpectLines(const char* expected, const QStringList& lines)
{
    QStringList wanted = QString::fromUtf8(expected).split(QLatin1Char('\n'));
    wanted.removeFirst();
    wanted.removeLast();
    for (qsizetype i = 0; i < std::max(wanted.size(), lines.size()); ++i)
        EXPECT_EQ(wanted.value(i), lines.value(i)) << "line " << i;
}

TEST_F(ZORTestReadMSIFileCmdTest, ClassTellsItsEstablishedLabelAndTypes)
{
    const QMetaObject& metaObject = ZORTestReadMSIFileCmd::staticMetaObject;
    EXPECT_STREQ("Import STL Surface", metaObject.classInfo(metaObject.indexOfClassInfo("label")).value());
    EXPECT_EQ(QList<QByteArray>({"ZORGeoSurface"}), ZORTestCommandRegistry::CreatedTypes(&metaObject));
}

TEST_F(ZORTestReadMSIFileCmdTest, AsksForTheFileWithoutParent)
{
    Dump(ZORNestResult(ZORNestResult::Nesting));
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Select MSI file to read"), shown[0].title);
    EXPECT_EQ(QStringList({"MSI Files (*.msi)"}), shown[0].filters);
    EXPECT_EQ(nullptr, shown[0].parent);
    EXPECT_FALSE(shown[0].isSaving);
}

TEST_F(ZORTestReadMSIFileCmdTest, ACancelledDialogWritesAndDrawsNothing)
{
    answers.CancelFile();
    const LogCatcher log;
    Open("ZORTestReadMSIFileCmd");
    EXPECT_EQ(QStringList(), log.GetLines());
    EXPECT_EQ(0, ZORDebugVizContainer::GetContainer()->GetNumObjects());
    EXPECT_EQ(QList<bool>({false}), finished);
}

TEST_F(ZORTestReadMSIFileCmdTest, WhatCannotBeReadHasTheFiveLinesOfTheHeader)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("G0 X1");
    file.close();
    QStringList lines = DumpFile(path);
    ASSERT_EQ(5, lines.size());
    EXPECT_EQ(QStringLiteral("Result file:  \"%1\"").arg(path), lines.takeFirst());
    ExpectLines(R"dump(
	Number of Items:  0
	Type of result:  nesting
	Items Dump below
	========================================================
)dump",
                lines);
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestReadMSIFileCmdTest, OnlyTypeOneIsATranslation)
{
    for (const int type : {0, 1, 2, -1, 77}) {
        const QStringList lines = Dump(ZORNestResult(ZORNestResult::ResultType(type)));
        EXPECT_EQ(QLatin1String(type == 1 ? "\tType of result:  translation" : "\tType of result:  nesting"),
                  lines.value(2));
    }
}

TEST_F(ZORTestReadMSIFileCmdTest, AnItemWithoutShapesHasTwelveLinesAndItsFooter)
{
    ZORNestResult result(ZORNestResult::Translation);
    ZORNestResultItem item(QString::fromUtf8("Rib \"7\"\t\u00e4"));
    item.SetPosition({1.5, -2, 1.0 / 3});
    item.SetOrientation(1.5707963267948966);
    item.SetMirrored(true);
    item.SetPartName("Rib");
    item.SetAssemblyName("Wing");
    item.SetSubassemblyName("Box");
    item.SetJobName("J-7");
    item.SetComment("a\nb");
    result.AddItem(item);
    QStringList lines = Dump(result);
    EXPECT_EQ(QStringLiteral("Result file:  \"%1\"").arg(path), lines.takeFirst());
    ExpectLines(R"dump(
	Number of Items:  1
	Type of result:  translation
	Items Dump below
	========================================================
		Item Name:  "Rib \"7\"\tä"
		Position:  "(1.500, -2.000, 0.333)"
		Orientation:  1.5708
		Is Mirrored:  true
		Part Name:  "Rib"
		Assembly Name:  "Wing"
		Subassembly Name:  "Box"
		Job Name:  "J-7"
		Comment:  "a\nb"
		Number of Shapes:  0
		Shape Dump Below
		========================================================
	-----------------------------------------------------
)dump",
                lines);
}

TEST_F(ZORTestReadMSIFileCmdTest, ShapesAndLinesLineByLine)
{
    Segment line = Segment::CreateLine({0, 0, 0}, {10, 0, 0});
    line.SetColor(QColor(255, 0, 51));
    line.SetLayer(Segment::Nest);
    line.SetLineStyle(3);
    const ZORNestResultShape outer(
        {line, Segment::CreateLine({10, 0, 0}, {10, 20, 0}), Segment::CreateLine({10, 20, 0}, {0, 0, 0})});
    ZORNestResultShape hole;
    hole.SetRawShapeFather(0);
    hole.SetShapeHole(1);
    hole.SetShapeStatus(-32768);
    ZORNestResultItem item;
    item.AddShape(outer);
    item.AddShape(hole);
    ZORNestResult result(ZORNestResult::Nesting);
    result.AddItem(item);
    ExpectLines(R"dump(
		Number of Shapes:  2
		Shape Dump Below
		========================================================
			Shape #:  0
			Area:  100
			Perimeter:  52.3607
			Bounding Box:  "(0.000, 0.000, 0.000)" | "(10.000, 20.000, 0.000)"
			Center of Mass:  "(6.667, 6.667, 0.000)"
			Shape Father:  -1
			Shape Hole:  0
			Shape Status:  0
			Number of Segments:  3
			========================================================
				Segment #:  0
				Type: line
				Start Point:  "(0.000, 0.000, 0.000)"
				End Point:  "(10.000, 0.000, 0.000)"
				Color:  QColor(ARGB 1, 1, 0, 0.2)
				Layer: nest
				Line Style:  3
			-----------------------------------------------------
				Segment #:  1
				Type: line
				Start Point:  "(10.000, 0.000, 0.000)"
				End Point:  "(10.000, 20.000, 0.000)"
				Color:  QColor(Invalid)
				Layer: automatic
				Line Style:  0
			-----------------------------------------------------
				Segment #:  2
				Type: line
				Start Point:  "(10.000, 20.000, 0.000)"
				End Point:  "(0.000, 0.000, 0.000)"
				Color:  QColor(Invalid)
				Layer: automatic
				Line Style:  0
			-----------------------------------------------------
		-----------------------------------------------------
			Shape #:  1
			Area:  0
			Perimeter:  0
			Bounding Box:  "(0.000, 0.000, 0.000)" | "(0.000, 0.000, 0.000)"
			Center of Mass:  "(0.000, 0.000, 0.000)"
			Shape Father:  0
			Shape Hole:  1
			Shape Status:  -32768
			Number of Segments:  0
			========================================================
		-----------------------------------------------------
	-----------------------------------------------------
)dump",
                Dump(result).mid(14));
}

TEST_F(ZORTestReadMSIFileCmdTest, ArcsInBothDirections)
{
    ExpectLines(R"dump(
				Type: arc
				Orientation:  clockwise
				Center:  "(1.000, 2.000, 0.000)"
				Radius:  5
				Start Angle:  1.5708
				Start Param:  0.25
				End Angle:  0
				End Param:  0
				Color:  QColor(Invalid)
				Layer: automatic
				Line Style:  0
			-----------------------------------------------------
)dump",
                DumpSegment(Segment::CreateArc(Segment::ArcClockwise, {1, 7, 0}, {6, 2, 0}, {1, 2, 0})));
    ExpectLines(R"dump(
				Type: arc
				Orientation:  counter-clockwise
				Center:  "(0.000, 0.000, 0.000)"
				Radius:  1234.57
				Start Angle:  3.14159
				Start Param:  0.5
				End Angle:  4.71239
				End Param:  0.75
				Color:  QColor(Invalid)
				Layer: automatic
				Line Style:  0
			-----------------------------------------------------
)dump",
                DumpSegment(Segment::CreateArc(Segment::ArcCounterClockwise, {-1234.5678, 0, 0},
                                               {0, -1234.5678, 0}, {0, 0, 0})));
}

TEST_F(ZORTestReadMSIFileCmdTest, ArcEndOffItsCircleHasNoAngle)
{
    ExpectLines(
        R"dump(
				Type: arc
				Orientation:  counter-clockwise
				Center:  "(0.000, 0.000, 0.000)"
				Radius:  5
				Start Angle:  0
				Start Param:  0
				Color:  QColor(Invalid)
				Layer: automatic
				Line Style:  0
			-----------------------------------------------------
)dump",
        DumpSegment(Segment::CreateArc(Segment::ArcCounterClockwise, {5, 0, 0}, {0, 8, 0}, {0, 0, 0})));
    // An arc without radius has no angles at all.
    ExpectLines(R"dump(
				Type: arc
				Orientation:  clockwise
				Center:  "(1.000, 1.000, 0.000)"
				Radius:  0
				Color:  QColor(Invalid)
				Layer: automatic
				Line Style:  0
			-----------------------------------------------------
)dump",
                DumpSegment(Segment::CreateCircle(Segment::ArcClockwise, {1, 1, 0}, {1, 1, 0})));
}

TEST_F(ZORTestReadMSIFileCmdTest, SplinesTellTheirPartsPointsAndTypes)
{
    // The half circle of radius 1 to 0.001 takes pi / (2 acos(0.999)) = 35.1 steps, thus 36.
    const Segment spline = Segment::CreateSpline(
        {Segment::CreateLine({0, 0, 0}, {10, 0, 0}),
         Segment::CreateArc(Segment::ArcCounterClockwise, {10, 0, 0}, {10, 2, 0}, {10, 1, 0}),
         Segment::CreateLine({10, 2, 0}, {0, 2, 0})});
    ExpectLines(
        "\n"
        "\t\t\t\tType: spline\n"
        "\t\t\t\tNumber of Points:  39\n"
        "\t\t\t\tSegments: \n"
        "\t\t\t\t\t 1 Type:  \"line\"  -  \"(0.000, 0.000, 0.000)\"  -  \"(10.000, 0.000, 0.000)\" \"\"\n"
        "\t\t\t\t\t 2 Type:  \"arc\"  -  \"(10.000, 0.000, 0.000)\"  -  \"(10.000, 2.000, 0.000)\" "
        "\" - (10.000, 1.000, 0.000)\"\n"
        "\t\t\t\t\t 3 Type:  \"line\"  -  \"(10.000, 2.000, 0.000)\"  -  \"(0.000, 2.000, 0.000)\" \"\"\n"
        "\t\t\t\tPoints: \n"
        "\t\t\t\t\t 1 \"(0.000, 0.000, 0.000)\"\n"
        "\t\t\t\t\t 2 \"(10.000, 0.000, 0.000)\"\n"
        "\t\t\t\t\t 3 \"(10.000, 2.000, 0.000)\"\n"
        "\t\t\t\t\t 4 \"(0.000, 2.000, 0.000)\"\n"
        "\t\t\t\tSpline Types: \n"
        "\t\t\t\t\t 1 Type:  0\n"
        "\t\t\t\t\t 2 Type:  -1\n"
        "\t\t\t\t\t 3 Type:  0\n"
        "\t\t\t\tColor:  QColor(Invalid)\n"
        "\t\t\t\tLayer: automatic\n"
        "\t\t\t\tLine Style:  0\n"
        "\t\t\t-----------------------------------------------------\n",
        DumpSegment(spline));
    ExpectLines("\n"
                "\t\t\t\tType: spline\n"
                "\t\t\t\tNumber of Points:  0\n"
                "\t\t\t\tSegments: \n"
                "\t\t\t\tPoints: \n"
                "\t\t\t\tSpline Types: \n"
                "\t\t\t\tColor:  QColor(Invalid)\n"
                "\t\t\t\tLayer: automatic\n"
                "\t\t\t\tLine Style:  0\n"
                "\t\t\t-----------------------------------------------------\n",
                DumpSegment(Segment::CreateSpline({})));
}

TEST_F(ZORTestReadMSIFileCmdTest, TextsTellAllOfTheirForm)
{
    Segment text = Segment::CreateText({1, 2, 0}, {31, 2, 0}, "P \"1\"");
    text.SetTextJustification(Segment::MiddleCenter);
    text.SetTextHeight(2.5);
    text.SetTextAngle(0.1234567);
    text.SetTextWidth(0.8);
    text.SetTextTiltAngle(-1e-7);
    text.SetFont("futu\"ral");
    text.SetLayer(Segment::EtchingData);
    ExpectLines(R"dump(
				Type: Text
				Start Point:  "(1.000, 2.000, 0.000)"
				End Point:  "(31.000, 2.000, 0.000)"
				Text:  "P \"1\""
				Justification:  7
				Height:  2.5
				Angle:  0.123457
				Width:  0.8
				Tilt Angle:  -1e-07
				Font:  "futu\"ral"
				Color:  QColor(Invalid)
				Layer: etching data
				Line Style:  0
			-----------------------------------------------------
)dump",
                DumpSegment(text));
}

TEST_F(ZORTestReadMSIFileCmdTest, OtherTypesHaveNoBlockOfTheirOwn)
{
    Segment other = Segment::CreateOther(Segment::SegmentType(17), {1, 1, 0}, {2, 2, 0});
    other.SetLayer(Segment::Layer(-1));
    other.SetLineStyle(-3);
    other.SetColor(QColor(0, 0, 0, 51));
    ExpectLines(R"dump(
				Color:  QColor(ARGB 0.2, 0, 0, 0)
				Line Style:  -3
			-----------------------------------------------------
)dump",
                DumpSegment(other));
}

TEST_F(ZORTestReadMSIFileCmdTest, EveryLayerHasItsLineButThirteenAndThoseBeyond)
{
    const char* const expected[16] = {"\t\t\t\tLayer: automatic",    "\t\t\t\tLayer: nest",
                                      "\t\t\t\tLayer: tabs",         "\t\t\t\tLayer: etch box",
                                      "\t\t\t\tLayer: etching data", "\t\t\t\tLayer: non-nestable",
                                      "\t\t\t\tLayer: extra",        "\t\t\t\tLayer: lead out",
                                      "\t\t\t\tLayer: lead in",      "\t\t\t\tLayer: line string",
                                      "\t\t\t\tLayer: grid string",  "\t\t\t\tLayer: auto nibble",
                                      "\t\t\t\tLayer: auto bridge",  nullptr,
                                      "\t\t\t\tLayer: grain",        nullptr};
    for (int layer = 0; layer < 16; ++layer) {
        Segment segment = Segment::CreateLine({}, {1, 0, 0});
        segment.SetLayer(Segment::Layer(layer));
        QStringList wanted = {"\t\t\t\tColor:  QColor(Invalid)"};
        if (expected[layer])
            wanted.append(QString::fromLatin1(expected[layer]));
        wanted.append("\t\t\t\tLine Style:  0");
        wanted.append("\t\t\t-----------------------------------------------------");
        EXPECT_EQ(wanted, DumpSegment(segment).mid(3)) << layer;
    }
}

TEST_F(ZORTestReadMSIFileCmdTest, EverySegmentIsDrawn)
{
    ZORNestResultItem item;
    item.AddShape(ZORNestResultShape({Segment::CreateLine({0, 0, 0}, {10, 0, 0}),
                                      Segment::CreateCircle(Segment::ArcClockwise, {5, 0, 0}, {})}));
    ZORNestResult result(ZORNestResult::Nesting);
    result.AddItem(item);
    Dump(result);
    auto* const drawings = ZORDebugVizContainer::GetContainer();
    ASSERT_EQ(2, drawings->GetNumObjects());
    EXPECT_EQ(ZORMathPoint(10, 0, 0), drawings->GetObject(0)->GetRep()->GetBoundingBox().GetUpperPoint());
    EXPECT_NEAR(-5, drawings->GetObject(1)->GetRep()->GetBoundingBox().GetLowerPoint().GetX(), 0.001);
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
    EXPECT_EQ(QList<bool>({true}), finished);
}

TEST_F(ZORTestReadMSIFileCmdTest, RunsFromTheMenu)
{
    OpenConsole();
    answers.CancelFile();
    MenuAction("actionRead_MSI_File")->trigger();
    EXPECT_EQ(QString("Select MSI file to read"), answers.Take().value(0).title);
}

} // namespace
