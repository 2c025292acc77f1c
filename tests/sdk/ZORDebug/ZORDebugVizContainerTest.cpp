#include "support/Printers.h"
#include "support/TraceCalls.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORDebug/ZORDebugVizObject.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORVisualization/ZORVisPointPrimitive.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisRepSet.h>
#include <ZORVisualization/ZORVisTextPrimitive.h>
#include <ZORVisualization/ZORVisTrianglePrimitive.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

using Container = ZORDebugVizContainer;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// Leaves the one container as empty as it found it.
class ZORDebugVizContainerTest : public testing::Test
{
public:
    ZORDebugVizContainerTest() { Container::GetContainer()->RemoveAllObjects(); }
    ~ZORDebugVizContainerTest() override { Container::GetContainer()->RemoveAllObjects(); }

    static ZORDebugVizObject* Last()
    {
        Container* const container = Container::GetContainer();
        return container->GetObject(container->GetNumObjects() - 1);
    }
    static const ZORVisRepGraphics* LastRep() { return dynamic_cast<ZORVisRepGraphics*>(Last()->GetRep()); }

    /// The n-th primitive of the last object; null when it is of another class.
    template<class T>
    static const T* Primitive(qsizetype n = 0)
    {
        return LastRep() ? dynamic_cast<const T*>(LastRep()->GetPrimitives().value(n)) : nullptr;
    }
    static qsizetype NumPrimitives() { return LastRep() ? LastRep()->GetPrimitives().size() : 0; }
};

TEST_F(ZORDebugVizContainerTest, IsEmptyAtFirstAndHasNoObjectOutsideItsRange)
{
    Container* const container = Container::GetContainer();
    EXPECT_EQ(container, Container::GetContainer());
    EXPECT_EQ(container->GetNumObjects(), 0);
    EXPECT_EQ(container->GetObject(0), nullptr);
    EXPECT_EQ(container->GetObject(-1), nullptr);
}

TEST_F(ZORDebugVizContainerTest, KeepsObjectsInTheOrderOfTheCalls)
{
    Container::AddLabel({}, 1, 2, 3, QStringLiteral("first"), 0);
    Container::AddPoint({}, 1, 2, 3, 0, QStringLiteral("second"), 0);
    Container::AddPolyline({}, 1, 2, 3, 0, QStringLiteral("third"), 0);
    Container* const container = Container::GetContainer();
    ASSERT_EQ(container->GetNumObjects(), 3);
    EXPECT_EQ(container->GetObject(0)->GetLabel(), QStringLiteral("first"));
    EXPECT_EQ(container->GetObject(1)->GetLabel(), QStringLiteral("second"));
    EXPECT_EQ(container->GetObject(2)->GetLabel(), QStringLiteral("third"));
    EXPECT_EQ(container->GetObject(3), nullptr);
}

TEST_F(ZORDebugVizContainerTest, DrawsAPointInItsColourAndSymbolWithItsLabel)
{
    Container::AddPoint({1, 2, 3}, 10, 20, 30, 4, QStringLiteral("P"), 8);
    ASSERT_EQ(NumPrimitives(), 2);
    EXPECT_EQ(LastRep()->GetOptions().GetColor(), QColor(10, 20, 30));
    EXPECT_EQ(LastRep()->GetOptions().GetPointSymbol(), ZORVisOptions::FullCircle);
    ASSERT_TRUE(Primitive<ZORVisPointPrimitive>());
    EXPECT_EQ(Primitive<ZORVisPointPrimitive>()->GetPoints(), ZORMathSetOfPoints({{1, 2, 3}}));
    const auto* text = Primitive<ZORVisTextPrimitive>(1);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->GetText(), QStringLiteral("P"));
    EXPECT_EQ(text->GetPosition(), ZORMathPoint(1, 2, 3));
    EXPECT_EQ(text->GetAnchorLocation(), ZORVisTextPrimitive::UpperRight);
    EXPECT_EQ(text->GetScalability(), ZORVisTextPrimitive::FixedSize);
}

TEST_F(ZORDebugVizContainerTest, DrawsALineInItsStyleAndLabelsTheWantedPlace)
{
    const struct
    {
        int lineAnchor;
        ZORMathPoint place;
    } cases[] = {{0, {0, 0, 0}}, {1, {5, 1, 0}}, {2, {10, 2, 0}}, {99, {10, 2, 0}}};
    for (const auto& [lineAnchor, place] : cases) {
        Container::AddLine({0, 0, 0}, {10, 2, 0}, 255, 255, 255, 3, QStringLiteral("L"), 4, lineAnchor);
        ASSERT_EQ(NumPrimitives(), 2);
        EXPECT_EQ(LastRep()->GetOptions().GetLineStyle(), ZORVisOptions::OneDashOneDot);
        EXPECT_EQ(Primitive<ZORVisPolylinePrimitive>()->GetPoints(),
                  ZORMathSetOfPoints({{0, 0, 0}, {10, 2, 0}}));
        EXPECT_EQ(Primitive<ZORVisTextPrimitive>(1)->GetPosition(), place) << lineAnchor;
        EXPECT_EQ(Primitive<ZORVisTextPrimitive>(1)->GetAnchorLocation(), ZORVisTextPrimitive::Center);
    }
}

TEST_F(ZORDebugVizContainerTest, JoinsPolylinePointsAsAChainOrInPairs)
{
    const ZORMathSetOfPoints points{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    const struct
    {
        int type;
        ZORVisPolylinePrimitive::Structure structure;
    } cases[] = {{0, ZORVisPolylinePrimitive::Chain},
                 {1, ZORVisPolylinePrimitive::Pairs},
                 {-7, ZORVisPolylinePrimitive::Chain}};
    for (const auto& [type, structure] : cases) {
        Container::AddPolyline(points, 255, 255, 0, 12, QString(), type);
        ASSERT_EQ(NumPrimitives(), 1) << "an empty label draws no text";
        EXPECT_EQ(Primitive<ZORVisPolylinePrimitive>()->GetStructure(), structure) << type;
        EXPECT_EQ(Primitive<ZORVisPolylinePrimitive>()->GetPoints(), points);
        EXPECT_EQ(LastRep()->GetOptions().GetLineStyle(), ZORVisOptions::LongDashThreeDot);
        EXPECT_EQ(LastRep()->GetOptions().GetColor(), QColor(255, 255, 0));
    }
}

TEST_F(ZORDebugVizContainerTest, DrawsTrianglesAndLabelsTheMiddleOfASingleOne)
{
    Container::AddTriangle({0, 0, 0}, {3, 0, 0}, {0, 3, 3}, 0, 128, 255, QStringLiteral("T"), 4);
    ASSERT_EQ(NumPrimitives(), 2);
    ASSERT_TRUE(Primitive<ZORVisTrianglePrimitive>());
    EXPECT_EQ(Primitive<ZORVisTrianglePrimitive>()->GetNumTriangles(), 1);
    EXPECT_TRUE(IsNear(Primitive<ZORVisTextPrimitive>(1)->GetPosition(), {1, 1, 1}));

    Container::AddTriangles({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 0, 0, 0,
                            QString());
    ASSERT_EQ(NumPrimitives(), 1);
    EXPECT_EQ(Primitive<ZORVisTrianglePrimitive>()->GetNumTriangles(), 2);
}

TEST_F(ZORDebugVizContainerTest, TakesTheDefaultForCodesAndColoursOutOfRange)
{
    Container::AddPoint({}, 256, 4000000000U, 255, 11, QStringLiteral("x"), 9);
    EXPECT_EQ(LastRep()->GetOptions().GetColor(), QColor(255, 255, 255));
    EXPECT_EQ(LastRep()->GetOptions().GetPointSymbol(), ZORVisOptions::Cross);
    EXPECT_EQ(Primitive<ZORVisTextPrimitive>(1)->GetAnchorLocation(), ZORVisTextPrimitive::LowerLeft);
    Container::AddPoint({}, 0, 0, 0, -1, QStringLiteral("x"), -1);
    EXPECT_EQ(LastRep()->GetOptions().GetPointSymbol(), ZORVisOptions::Cross);
    EXPECT_EQ(Primitive<ZORVisTextPrimitive>(1)->GetAnchorLocation(), ZORVisTextPrimitive::LowerLeft);
    Container::AddPolyline({{0, 0, 0}, {1, 0, 0}}, 0, 0, 0, 13, QString(), 0);
    EXPECT_EQ(LastRep()->GetOptions().GetLineStyle(), ZORVisOptions::Solid);
}

TEST_F(ZORDebugVizContainerTest, KeepsAnObjectWithoutRepresentationForWhatCannotBeDrawn)
{
    const QString label = QStringLiteral("label");
    Container::AddPolyline({}, 1, 2, 3, 0, label, 0);
    EXPECT_EQ(Last()->GetRep(), nullptr) << "no points";
    Container::AddPolyline({{0, 0, 0}}, 1, 2, 3, 0, QString(), 0);
    EXPECT_EQ(Last()->GetRep(), nullptr) << "a single point";
    Container::AddPolyline({{0, 0, 0}, {kNan, 0, 0}, {1, 0, 0}}, 1, 2, 3, 0, QString(), 0);
    EXPECT_EQ(Last()->GetRep(), nullptr) << "no two finite points in a row";
    Container::AddPolyline({{0, 0, 0}, {kNan, 0, 0}, {1, 0, 0}, {2, 0, 0}}, 1, 2, 3, 0, QString(), 0);
    EXPECT_NE(Last()->GetRep(), nullptr) << "the end of the chain is finite";
    Container::AddPolyline({{kNan, 0, 0}, {0, 0, 0}, {1, 0, 0}}, 1, 2, 3, 0, QString(), 1);
    EXPECT_EQ(Last()->GetRep(), nullptr) << "the only pair is not finite";
    Container::AddPoint({kNan, 0, 0}, 1, 2, 3, 0, label, 0);
    EXPECT_EQ(Last()->GetRep(), nullptr);
    Container::AddLine({0, 0, 0}, {0, 0, kNan}, 1, 2, 3, 0, label, 0, 2);
    EXPECT_EQ(Last()->GetRep(), nullptr);
    Container::AddTriangle({0, 0, 0}, {0, kNan, 0}, {1, 1, 1}, 1, 2, 3, label, 0);
    EXPECT_EQ(Last()->GetRep(), nullptr);
    Container::AddTriangles({{0, 0, 0}, {1, 0, 0}}, 1, 2, 3, QString());
    EXPECT_EQ(Last()->GetRep(), nullptr);
    Container::AddLabel({0, 0, 0}, 1, 2, 3, QString(), 0);
    EXPECT_EQ(Last()->GetRep(), nullptr);
    Container::AddLabel({0, 0, std::numeric_limits<double>::infinity()}, 1, 2, 3, label, 0);
    EXPECT_EQ(Last()->GetRep(), nullptr);
    EXPECT_EQ(Container::GetContainer()->GetNumObjects(), 11);
}

TEST_F(ZORDebugVizContainerTest, LabelsTheFinitePlaceOfWhatIsPartlyFinite)
{
    Container::AddLine({1, 0, 0}, {kNan, 0, 0}, 1, 2, 3, 0, QStringLiteral("start"), 0, 0);
    ASSERT_EQ(NumPrimitives(), 1);
    EXPECT_EQ(Primitive<ZORVisTextPrimitive>()->GetPosition(), ZORMathPoint(1, 0, 0));
    Container::AddPolyline({{kNan, 0, 0}, {2, 0, 0}, {3, 0, 0}}, 1, 2, 3, 0, QStringLiteral("chain"), 0);
    ASSERT_EQ(NumPrimitives(), 2);
    EXPECT_EQ(Primitive<ZORVisTextPrimitive>(1)->GetPosition(), ZORMathPoint(2, 0, 0));
}

TEST_F(ZORDebugVizContainerTest, RemovesAllObjectsWithoutTouchingASetMadeOfThem)
{
    Container::AddPolyline({{0, 0, 0}, {1, 2, 3}}, 1, 2, 3, 0, QString(), 0);
    const ZORVisRepSet set({Last()->GetRep()});
    Container::GetContainer()->RemoveAllObjects();
    EXPECT_EQ(Container::GetContainer()->GetNumObjects(), 0);
    EXPECT_EQ(set.GetBoundingBox().GetUpperPoint(), ZORMathPoint(1, 2, 3));
}

TEST_F(ZORDebugVizContainerTest, TracesTheCallWithItsArgumentsInOrder)
{
    const QStringList lines = TraceCalls([] {
        Container::AddPolyline({{0, 0, 0}, {1, 2, 3}}, 255, 254, 253, 1, QStringLiteral("a"), 0);
        Container::AddPoint({1, 2, 3}, 1, 2, 3, 4, QString(), 5);
    });
    EXPECT_EQ(lines, QStringList({"ZORDebugVizContainer::AddPolyline([2], 255, 254, 253, 1, \"a\", 0)",
                                  "ZORDebugVizContainer::AddPoint((1, 2, 3), 1, 2, 3, 4, \"\", 5)"}));
}

} // namespace
