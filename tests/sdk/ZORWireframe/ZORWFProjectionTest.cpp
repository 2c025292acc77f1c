#include "CurveOnSupportTest.h"

#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORWireframe/ZORWFProjection.h>

#include <QPointer>
#include <QSignalSpy>

#include <cmath>
#include <functional>

namespace {

class ZORWFProjectionTest : public CurveOnSupportTest
{
protected:
    ZORWFProjection* AddProjection(ZORFeatGeometry* source)
    {
        auto* const feature = Add<ZORWFProjection>();
        feature->SetSource(source);
        feature->SetSupport(support);
        return feature;
    }
    static const ZORGeoPointOnSurface* PointOf(const ZORFeatGeometry* feature)
    {
        const ZORTopBody* const body = feature->GetBody();
        return body ? qobject_cast<const ZORGeoPointOnSurface*>(body->GetGeometry()) : nullptr;
    }
};

TEST_F(ZORWFProjectionTest, StartsWithoutInputsAndWithoutABody)
{
    const auto* const feature = Add<ZORWFProjection>();
    EXPECT_EQ(feature->GetBody(), nullptr);
    EXPECT_EQ(feature->GetFailure(), QString());
    EXPECT_EQ(feature->GetSource(), nullptr);
    EXPECT_EQ(feature->GetSupport(), nullptr);
    EXPECT_TRUE(feature->GetInputs().isEmpty());
    EXPECT_EQ(feature->GetLabel(), QString("Projection.1"));
    EXPECT_TRUE(container.GetRegisteredTypes().contains(&ZORWFProjection::staticMetaObject));
}

TEST_F(ZORWFProjectionTest, PointGoesToTheNearestPlace)
{
    const auto* const feature = AddProjection(AddPoint({30, 40, 12}));
    const ZORGeoPointOnSurface* const point = PointOf(feature);
    ASSERT_NE(point, nullptr);
    EXPECT_TRUE(IsNear(point->GetMathPoint(), {30, 40, 0}));
    EXPECT_EQ(point->GetSurface(), surface);
    EXPECT_TRUE(point->IsInitialized());
    EXPECT_TRUE(feature->GetBody()->IsInitialized());
    EXPECT_EQ(feature->GetBody()->GetDimension(), 0);
}

TEST_F(ZORWFProjectionTest, CurveIsLaidOntoTheSupport)
{
    const auto* const feature = AddProjection(AddLine({10, 20, 5}, {90, 20, 5}));
    ASSERT_TRUE(Runs(feature, {10, 20, 0}, {90, 20, 0}));
    EXPECT_NEAR(CurveOf(feature)->GetLength(), 80, 1e-9);
    EXPECT_EQ(feature->GetBody()->GetDimension(), 1);
    // The floor is nearer up to the bisector of the edge, then the wall.
    const auto* const bent = AddProjection(AddLine({90, 50, 1}, {99, 50, 50}));
    EXPECT_TRUE(Runs(bent, {90, 50, 0}, {100, 50, 50}));
}

TEST_F(ZORWFProjectionTest, CurveThatStandsUprightIsAPoint)
{
    const auto* const feature = AddProjection(AddLine({30, 40, 5}, {30, 40, 25}));
    ASSERT_NE(PointOf(feature), nullptr);
    EXPECT_TRUE(IsNear(PointOf(feature)->GetMathPoint(), {30, 40, 0}));
}

TEST_F(ZORWFProjectionTest, WaitsForItsInputsAndComputesOnceForThem)
{
    auto* const feature = new ZORWFProjection(folder);
    QSignalSpy changes(feature, &ZORFeatGeometry::BodyChanged);
    feature->SetSource(start);
    feature->SetSupport(support);
    EXPECT_EQ(feature->GetBody(), nullptr) << "not registered yet";
    feature->Initialize();
    EXPECT_NE(PointOf(feature), nullptr);
    EXPECT_EQ(changes.size(), 1);
    feature->SetSource(start);
    EXPECT_EQ(changes.size(), 1) << "the same one again";
    feature->SetSource(nullptr);
    EXPECT_NE(PointOf(feature), nullptr) << "the last result stays";
    EXPECT_EQ(feature->GetFailure(), QString());
}

TEST_F(ZORWFProjectionTest, FollowsFeaturesItIsComputedFrom)
{
    auto* const curve = AddDirected(kPointDirection);
    auto* const feature = AddProjection(curve);
    auto* const again = AddProjection(feature);
    EXPECT_TRUE(Runs(again, {40, 20, 0}, {80, 20, 0}));
    curve->SetEndLength(10);
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {60, 20, 0}));
    EXPECT_TRUE(Runs(again, {40, 20, 0}, {60, 20, 0}));
    feature->SetSource(AddLine({1, 1, 1}, {2, 1, 1}));
    QSignalSpy changes(feature, &ZORFeatGeometry::BodyChanged);
    curve->SetEndLength(20);
    EXPECT_EQ(changes.size(), 0) << "an input no longer";
}

TEST_F(ZORWFProjectionTest, FailuresOfCompleteInputsSayWhatIsWrong)
{
    auto* const empty = Add<ZORWFRawSurface>(
        Make<ZORGeoSurface>("Empty", QList<ZORMathPoint>{}, QList<ZORGeoSurface::Corners>{}));
    auto* const line = AddLine({0, 0, 0}, {1, 0, 0});
    auto* const feature = AddProjection(start);
    const ZORTopBody* const body = feature->GetBody();
    const auto fails = [&](const char* message, const std::function<void()>& call) {
        EXPECT_EQ(MessageOf(call), QLatin1String(message));
        EXPECT_EQ(feature->GetFailure(), QLatin1String(message));
        EXPECT_EQ(feature->GetBody(), body) << "the last good result stays";
    };
    fails("the support is no surface", [&] { feature->SetSupport(line); });
    EXPECT_EQ(feature->GetSupport(), line) << "the input is kept";
    feature->SetSupport(nullptr);
    EXPECT_EQ(feature->GetFailure(), QString());
    feature->SetSource(support);
    fails("the source is neither a point nor a curve", [&] { feature->SetSupport(support); });
    feature->SetSource(nullptr);
    feature->SetSupport(empty);
    fails("nothing of the source can be projected onto the support", [&] { feature->SetSource(start); });
}

TEST_F(ZORWFProjectionTest, CannotDependOnItself)
{
    auto* const feature = AddProjection(start);
    auto* const curve = AddPointToPoint(feature, AddPoint({60, 20, 0}));
    auto* const last = AddProjection(curve);
    const QString message("a feature cannot depend on itself");
    EXPECT_EQ(MessageOf([&] { feature->SetSource(feature); }), message);
    EXPECT_EQ(MessageOf([&] { feature->SetSource(curve); }), message);
    EXPECT_EQ(MessageOf([&] { feature->SetSupport(last); }), message);
    EXPECT_EQ(MessageOf([&] { curve->SetEndPoint(last); }), message);
    EXPECT_EQ(feature->GetSource(), start);
    EXPECT_EQ(feature->GetSupport(), support);
    EXPECT_TRUE(last->DependsOn(start));
    EXPECT_FALSE(start->DependsOn(last));
}

TEST_F(ZORWFProjectionTest, NewResultTakesThePlaceAndTheNamesOfTheOld)
{
    auto* const feature = AddProjection(AddLine({10, 20, 5}, {90, 20, 5}));
    const QPointer<ZORTopBody> body = feature->GetBody();
    const QPointer<const ZORGeoCurveOnSurface> curve = CurveOf(feature);
    const QString bodyName = body->objectName();
    const int numGeometry = container.GetNumGeometry();
    auto* const other = AddLine({10, 30, 5}, {90, 30, 5}); // line, body and feature
    feature->SetSource(other);
    EXPECT_TRUE(body.isNull());
    EXPECT_TRUE(curve.isNull());
    EXPECT_EQ(container.GetNumGeometry(), numGeometry + 3);
    EXPECT_EQ(feature->GetBody()->objectName(), bodyName);
    EXPECT_EQ(CurveOf(feature)->objectName(), QString("CurveOnSurface.1"));
    EXPECT_EQ(feature->GetBody()->GetReferenceCount(), 1);
    EXPECT_EQ(CurveOf(feature)->GetReferenceCount(), 1);
    feature->SetSource(start);
    EXPECT_EQ(feature->GetBody()->objectName(), bodyName);
    EXPECT_EQ(PointOf(feature)->objectName(), QString("PointOnSurface.1")) << "not that of a curve";
}

TEST_F(ZORWFProjectionTest, CountsReferencesAndLeavesNothingBehind)
{
    const int numBefore = container.GetNumGeometry();
    auto* const feature = AddProjection(start);
    EXPECT_EQ(start->GetReferenceCount(), 1);
    EXPECT_EQ(support->GetReferenceCount(), 1);
    EXPECT_EQ(container.GetNumGeometry(), numBefore + 3) << "point, body and feature";
    feature->Remove();
    EXPECT_EQ(start->GetReferenceCount(), 0);
    EXPECT_EQ(support->GetReferenceCount(), 0);
    EXPECT_EQ(container.GetNumGeometry(), numBefore);

    auto* const other = AddProjection(start);
    const ZORTopBody* const body = other->GetBody();
    start->Remove();
    support->Remove();
    EXPECT_EQ(other->GetSource(), nullptr);
    EXPECT_EQ(other->GetBody(), body);
    delete surface;
    ASSERT_NE(PointOf(other), nullptr);
    EXPECT_TRUE(IsNear(PointOf(other)->GetMathPoint(), {50, 20, 0}));
}

TEST_F(ZORWFProjectionTest, SurvivesReceiversThatRemoveItWhileItComputes)
{
    auto* const line = AddLine({10, 20, 5}, {90, 20, 5});
    const int numBefore = container.GetNumGeometry();
    for (const char* className : {"ZORGeoCurveOnSurface", "ZORTopBody"}) {
        QPointer<ZORWFProjection> feature = Add<ZORWFProjection>();
        feature->SetSupport(support);
        const auto connection = QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &container,
                                                 [&](const ZORGeoGeometry* geometry) {
                                                     if (geometry->inherits(className))
                                                         feature->Remove();
                                                 });
        feature->SetSource(line);
        QObject::disconnect(connection);
        EXPECT_TRUE(feature.isNull());
        EXPECT_EQ(container.GetNumGeometry(), numBefore) << "nothing is left behind";
    }
}

TEST_F(ZORWFProjectionTest, TracesItsOwnCallsAlone)
{
    support->setObjectName("Su");
    start->setObjectName("St");
    const QString name("ZORWFProjection::");
    EXPECT_EQ(TraceCalls([&] { AddProjection(start)->SetSource(nullptr); }),
              (QStringList{name + "ZORWFProjection(<F>)", "ZORFeatComputedGeometry::Initialize()",
                           name + "SetSource(<St>)", name + "SetSupport(<Su>)", name + "SetSource(null)"}));
}

} // namespace
