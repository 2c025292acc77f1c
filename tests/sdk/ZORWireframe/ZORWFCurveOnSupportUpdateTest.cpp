// Tests of ZORWFCurveOnSupport: when it computes, what it holds and what it leaves behind.

#include "CurveOnSupportTest.h"

#include <QPointer>
#include <QSignalSpy>

#include <memory>

namespace {

using ZORWFCurveOnSupportUpdateTest = CurveOnSupportTest;

TEST_F(ZORWFCurveOnSupportUpdateTest, WaitsUntilTheInputsOfItsMethodAreThere)
{
    auto* const feature = Add<ZORWFCurveOnSupport>();
    feature->SetSupport(nullptr);
    feature->SetStartPoint(start);
    feature->SetEndPoint(nullptr);
    feature->SetStartLength(kNan);
    feature->AddStartLimit(nullptr);
    feature->AddEndLimit(nullptr);
    feature->SetDirection(nullptr);
    feature->SetSupport(support);
    feature->SetComputationMethod(kPointDirection);
    EXPECT_EQ(feature->GetBody(), nullptr) << "no direction";
    feature->SetDirection(folder);
    EXPECT_TRUE(Runs(feature, {0, 20, 0}, {100, 20, 100}));
    feature->SetComputationMethod(kPointToPoint);
    EXPECT_TRUE(Runs(feature, {0, 20, 0}, {100, 20, 100})) << "no end point: the last result stays";
    feature->SetEndPoint(AddPoint({60, 20, 0}));
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {60, 20, 0}));
    EXPECT_EQ(feature->GetFailure(), QString());
}

TEST_F(ZORWFCurveOnSupportUpdateTest, ComputesOnceForTheOrderInWhichDialogsSetIt)
{
    auto* const feature = Add<ZORWFCurveOnSupport>();
    QSignalSpy changes(feature, &ZORFeatGeometry::BodyChanged);
    feature->SetSupport(support);
    feature->SetComputationMethod(kPointDirection);
    feature->SetStartPoint(start);
    feature->SetEndPoint(nullptr);
    feature->SetStartLength(0);
    feature->SetEndLength(30);
    feature->AddEndLimit(AddLimit({70, 0, 0}, {70, 40, 0}));
    EXPECT_EQ(changes.size(), 0);
    feature->SetDirection(folder);
    feature->SetAngle(0);
    feature->SetDirectionFlipped(false);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {70, 20, 0}));
}

TEST_F(ZORWFCurveOnSupportUpdateTest, ComputesNothingBeforeItIsRegistered)
{
    auto* const feature = new ZORWFCurveOnSupport(folder);
    feature->SetSupport(support);
    feature->SetStartPoint(start);
    feature->SetEndPoint(AddPoint({60, 20, 0}));
    EXPECT_EQ(feature->GetBody(), nullptr);
    feature->Initialize();
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {60, 20, 0}));
    feature->Initialize();
    EXPECT_EQ(folder->GetChildren().count(feature), 1);

    const auto orphan = std::make_unique<ZORWFCurveOnSupport>(nullptr);
    orphan->SetSupport(support);
    EXPECT_EQ(MessageOf([&] { orphan->Initialize(); }), QString("geometry has no container"));
}

TEST_F(ZORWFCurveOnSupportUpdateTest, FailureWhileItIsRegisteredLeavesItRegistered)
{
    auto* const feature = new ZORWFCurveOnSupport(folder);
    feature->SetSupport(start);
    feature->SetStartPoint(start);
    feature->SetEndPoint(start);
    EXPECT_EQ(MessageOf([&] { feature->Initialize(); }), QString("the support is no surface"));
    EXPECT_TRUE(feature->IsInitialized());
    feature->SetSupport(support);
    EXPECT_TRUE(Runs(feature, {50, 20, 0}, {50, 20, 0}));
}

TEST_F(ZORWFCurveOnSupportUpdateTest, FollowsFeaturesItIsComputedFrom)
{
    auto* const end = AddPoint({60, 50, 0});
    auto* const limit = AddPointToPoint(AddPoint({60, 0, 0}), end);
    auto* const feature = AddDirected(kPointDirection);
    feature->AddEndLimit(limit);
    auto* const last = AddDirected(kConstantAngle);
    last->SetDirection(feature);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {60, 20, 0}));
    EXPECT_TRUE(Runs(last, {40, 20, 0}, {80, 20, 0}));

    limit->SetStartPoint(AddPoint({75, 0, 0}));
    limit->SetEndPoint(AddPoint({75, 50, 0}));
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {75, 20, 0}));
    feature->SetAngle(kPi / 2);
    EXPECT_TRUE(Runs(last, {50, 10, 0}, {50, 50, 0})) << "its direction was turned";

    feature->ClearLimits();
    QSignalSpy changes(feature, &ZORFeatGeometry::BodyChanged);
    limit->SetEndPoint(end);
    EXPECT_EQ(changes.size(), 0) << "an input no longer";
}

TEST_F(ZORWFCurveOnSupportUpdateTest, WaitsForLimitsAndDirectionsThatHaveNoShapeYet)
{
    auto* const later = Add<ZORWFCurveOnSupport>();
    auto* const limited = AddDirected(kPointDirection);
    limited->AddEndLimit(later);
    limited->SetEndLength(40);
    EXPECT_TRUE(Runs(limited, {40, 20, 0}, {80, 20, 0})) << "the curve from before the limit";
    auto* const directed = Add<ZORWFCurveOnSupport>();
    directed->SetSupport(support);
    directed->SetComputationMethod(kPointDirection);
    directed->SetStartPoint(start);
    directed->SetEndLength(30);
    directed->SetDirection(later);
    EXPECT_EQ(directed->GetBody(), nullptr);

    later->SetSupport(support);
    later->SetStartPoint(AddPoint({85, 0, 0}));
    later->SetEndPoint(AddPoint({85, 70, 0}));
    EXPECT_TRUE(Runs(limited, {40, 20, 0}, {85, 20, 0}));
    EXPECT_TRUE(Runs(directed, {50, 0, 0}, {50, 50, 0}));
}

TEST_F(ZORWFCurveOnSupportUpdateTest, FailureAfterTheChangeOfAnInputIsLoggedAndKept)
{
    auto* const inner = AddDirected(kPointDirection);
    auto* const outer = AddDirected(kPointDirection);
    outer->SetDirection(inner);
    const ZORTopBody* const body = outer->GetBody();
    inner->SetStartLength(0);
    QSignalSpy changes(outer, &ZORFeatGeometry::BodyChanged);
    EXPECT_EQ(MessageOf([&] { inner->SetEndLength(0); }), QString()) << "its own curve is fine";
    EXPECT_EQ(outer->GetFailure(), QString("the curve of the direction ends where it starts"));
    EXPECT_NE(outer->GetBody(), nullptr);
    EXPECT_NE(outer->GetBody(), body) << "the one from after the start length";
    EXPECT_EQ(changes.size(), 0);
    inner->SetEndLength(5);
    EXPECT_EQ(outer->GetFailure(), QString());
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(ZORWFCurveOnSupportUpdateTest, CountsAReferenceForEveryInput)
{
    auto* const feature = AddDirected(kPointDirection);
    auto* const limit = AddLimit({70, 0, 0}, {70, 40, 0});
    auto* const end = AddPoint({1, 1, 0});
    const int before = folder->GetReferenceCount();
    feature->AddStartLimit(limit);
    feature->AddEndLimit(limit);
    feature->SetEndPoint(end);
    EXPECT_EQ(support->GetReferenceCount(), 1);
    EXPECT_EQ(start->GetReferenceCount(), 1);
    EXPECT_EQ(end->GetReferenceCount(), 1);
    EXPECT_EQ(limit->GetReferenceCount(), 2);
    EXPECT_EQ(before, 1) << "the direction";
    feature->SetStartPoint(end);
    feature->SetDirection(nullptr);
    EXPECT_EQ(start->GetReferenceCount(), 0);
    EXPECT_EQ(end->GetReferenceCount(), 2);
    EXPECT_EQ(folder->GetReferenceCount(), 0);
    feature->Remove();
    for (const ZORFeatObject* input : std::initializer_list<ZORFeatObject*>{support, end, limit})
        EXPECT_EQ(input->GetReferenceCount(), 0);
}

TEST_F(ZORWFCurveOnSupportUpdateTest, KeepsItsCurveWhenInputsAreRemoved)
{
    auto* const feature = AddDirected(kPointDirection);
    auto* const limit = AddLimit({70, 0, 0}, {70, 40, 0});
    feature->AddEndLimit(limit);
    const ZORTopBody* const body = feature->GetBody();
    limit->Remove();
    EXPECT_TRUE(feature->GetEndLimits().isEmpty());
    start->Remove();
    EXPECT_EQ(feature->GetStartPoint(), nullptr);
    support->Remove();
    EXPECT_EQ(feature->GetSupport(), nullptr);
    EXPECT_EQ(feature->GetBody(), body);
    feature->SetAngle(1);
    EXPECT_EQ(feature->GetBody(), body);
    EXPECT_EQ(feature->GetFailure(), QString()) << "missing inputs are no failure";
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {70, 20, 0}));

    feature->SetAngle(0);
    feature->SetStartPoint(AddPoint({50, 20, 0}));
    feature->SetSupport(Add<ZORWFRawSurface>(surface));
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0})) << "without the removed limit";
}

TEST_F(ZORWFCurveOnSupportUpdateTest, KeepsItsPointsWhenTheSurfaceItselfIsDestroyed)
{
    auto* const feature = AddDirected(kPointDirection);
    delete surface;
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0}));
    EXPECT_EQ(CurveOf(feature)->GetSurface(), nullptr);
    feature->SetAngle(1);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {80, 20, 0})) << "the support has no geometry: incomplete";
}

TEST_F(ZORWFCurveOnSupportUpdateTest, NewResultTakesThePlaceAndTheNamesOfTheOld)
{
    auto* const feature = AddDirected(kPointDirection);
    const QPointer<ZORTopBody> body = feature->GetBody();
    const QPointer<const ZORGeoCurveOnSurface> curve = CurveOf(feature);
    const QString bodyName = body->objectName();
    const int numGeometry = container.GetNumGeometry();
    feature->SetAngle(1);
    feature->SetAngle(2);
    EXPECT_TRUE(body.isNull());
    EXPECT_TRUE(curve.isNull());
    EXPECT_EQ(container.GetNumGeometry(), numGeometry);
    EXPECT_EQ(feature->GetBody()->objectName(), bodyName);
    EXPECT_EQ(CurveOf(feature)->objectName(), QString("CurveOnSurface.1"));
    EXPECT_EQ(feature->GetBody()->GetReferenceCount(), 1);
    EXPECT_EQ(CurveOf(feature)->GetReferenceCount(), 1);
}

TEST_F(ZORWFCurveOnSupportUpdateTest, RemoveTakesCurveAndBodyAlong)
{
    const int numBefore = container.GetNumGeometry();
    auto* const feature = AddDirected(kPointDirection);
    EXPECT_EQ(container.GetNumGeometry(), numBefore + 3);
    feature->Remove();
    EXPECT_EQ(container.GetNumGeometry(), numBefore);
    AddDirected(kPointDirection)->AddEndLimit(AddDirected(kConstantAngle));
    container.Clear();
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST_F(ZORWFCurveOnSupportUpdateTest, SurvivesReceiversThatRemoveItWhileItComputes)
{
    const int numBefore = container.GetNumGeometry();
    for (const char* className : {"ZORGeoCurveOnSurface", "ZORTopBody"}) {
        QPointer<ZORWFCurveOnSupport> feature = Add<ZORWFCurveOnSupport>();
        feature->SetComputationMethod(kPointDirection);
        feature->SetSupport(support);
        feature->SetStartPoint(start);
        const auto connection = QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &container,
                                                 [&](const ZORGeoGeometry* geometry) {
                                                     if (geometry->inherits(className))
                                                         feature->Remove();
                                                 });
        feature->SetDirection(folder);
        QObject::disconnect(connection);
        EXPECT_TRUE(feature.isNull());
        EXPECT_EQ(container.GetNumGeometry(), numBefore) << "nothing is left behind";
    }
    auto* const feature = AddDirected(kPointDirection);
    QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &container, [&] { container.Clear(); });
    feature->SetAngle(1);
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST_F(ZORWFCurveOnSupportUpdateTest, TracesItsOwnCallsAlone)
{
    ZORWFCurveOnSupport* feature = nullptr;
    support->setObjectName("Su");
    start->setObjectName("St");
    const QString name("ZORWFCurveOnSupport::");
    EXPECT_EQ(TraceCalls([&] {
                  feature = Add<ZORWFCurveOnSupport>();
                  feature->SetSupport(support);
                  feature->SetComputationMethod(kConstantAngle);
                  feature->SetStartPoint(start);
                  feature->SetEndPoint(nullptr);
                  feature->SetStartLength(kNan);
                  feature->SetEndLength(2.5);
                  feature->AddStartLimit(nullptr);
                  feature->AddEndLimit(nullptr);
                  feature->SetDirection(folder);
                  feature->SetAngle(0.25);
                  feature->SetDirectionFlipped(true);
                  feature->ClearLimits();
              }),
              (QStringList{
                  name + "ZORWFCurveOnSupport(<F>)", "ZORFeatComputedGeometry::Initialize()",
                  name + "SetSupport(<Su>)", name + "SetComputationMethod(2)", name + "SetStartPoint(<St>)",
                  name + "SetEndPoint(null)", name + "SetStartLength(nan)", name + "SetEndLength(2.5)",
                  name + "AddStartLimit(null)", name + "AddEndLimit(null)", name + "SetDirection(<F>)",
                  name + "SetAngle(0.25)", name + "SetDirectionFlipped(true)", name + "ClearLimits()"}));
    EXPECT_EQ(TraceCalls([&] { MessageOf([&] { feature->SetStartLength(-1); }); }),
              QStringList(name + "SetStartLength(-1) ! start length is negative"));
}

} // namespace
