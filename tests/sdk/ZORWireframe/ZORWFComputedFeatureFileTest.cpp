// Tests that curves on support and projections come back from container files: with their result, and following
// their inputs.

#include "CurveOnSupportTest.h"
#include "support/ContainerFiles.h"

#include <ZORWireframe/ZORWFProjection.h>

#include <QSignalSpy>

#include <functional>

namespace {

class ZORWFComputedFeatureFileTest : public CurveOnSupportTest
{
protected:
    /// Before anything changes in either container.
    template<class Feature>
    Feature* LoadedCopy(const Feature* feature) const
    {
        return CounterpartOf(feature, container, loaded);
    }
    /// The points and locations of two curves are the same, bit for bit.
    static void Compare(const ZORGeoCurveOnSurface* a, const ZORGeoCurveOnSurface* b)
    {
        ASSERT_TRUE(a && b);
        ASSERT_EQ(a->GetNumPoints(), b->GetNumPoints());
        for (int i = 0; i < a->GetNumPoints(); ++i)
            EXPECT_EQ(a->GetPoint(i), b->GetPoint(i));
        EXPECT_EQ(a->objectName(), b->objectName());
    }

    ZORFeatContainer loaded;
};

TEST_F(ZORWFComputedFeatureFileTest, KeepsInputsNumbersAndResultOfEveryMethod)
{
    for (const auto method : {kPointToPoint, kPointDirection, kConstantAngle}) {
        auto* const feature = AddDirected(method);
        feature->SetEndPoint(AddPoint({1.0 / 3, 70, 0}));
        feature->AddStartLimit(AddLimit({45, 0, 0}, {45, 40, 0}));
        feature->AddEndLimit(AddLimit({70, 0, 0}, {70, 40, 0}));
        feature->AddEndLimit(AddLimit({75, 0, 0}, {75, 40, 0}));
        feature->SetAngle(0.1);
        feature->SetDirectionFlipped(method == kConstantAngle);
        feature->SetEndLength(method == kConstantAngle ? kNan : 30);
        loaded.Clear();
        ASSERT_TRUE(RoundTrips(container, loaded));
        auto* const copy = LoadedCopy(feature);
        ASSERT_TRUE(copy);
        EXPECT_EQ(method, copy->GetComputationMethod());
        EXPECT_EQ(LoadedCopy<ZORFeatGeometry>(support), copy->GetSupport());
        EXPECT_EQ(LoadedCopy<ZORFeatGeometry>(start), copy->GetStartPoint());
        EXPECT_EQ(LoadedCopy(feature->GetEndPoint()), copy->GetEndPoint());
        EXPECT_EQ(LoadedCopy<ZORFeatObject>(folder), copy->GetDirection());
        EXPECT_EQ(1, copy->GetStartLimits().size());
        ASSERT_EQ(2, copy->GetEndLimits().size());
        EXPECT_EQ(LoadedCopy(feature->GetEndLimits()[1]), copy->GetEndLimits()[1]);
        EXPECT_EQ(10, copy->GetStartLength());
        EXPECT_EQ(std::isnan(feature->GetEndLength()), std::isnan(copy->GetEndLength()));
        EXPECT_EQ(0.1, copy->GetAngle());
        EXPECT_EQ(method == kConstantAngle, copy->IsDirectionFlipped());
        Compare(CurveOf(feature), CurveOf(copy));
    }
}

TEST_F(ZORWFComputedFeatureFileTest, ComputesNothingWhileItIsLoaded)
{
    auto* const end = AddPoint({60, 20, 0});
    auto* const feature = AddPointToPoint(start, end);
    delete feature->GetBody();
    auto* const other = AddPointToPoint(start, end);
    ASSERT_TRUE(RoundTrips(container, loaded));
    EXPECT_FALSE(LoadedCopy(feature)->GetBody()) << "it would be back";
    EXPECT_TRUE(Runs(LoadedCopy(other), {50, 20, 0}, {60, 20, 0}));
}

TEST_F(ZORWFComputedFeatureFileTest, FollowsItsInputsAfterTheLoad)
{
    auto* const limit = AddPointToPoint(AddPoint({60, 0, 0}), AddPoint({60, 50, 0}));
    auto* const feature = AddDirected(kPointDirection);
    feature->AddEndLimit(limit);
    auto* const last = AddDirected(kConstantAngle);
    last->SetDirection(feature);
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const copy = LoadedCopy(feature);
    auto* const lastCopy = LoadedCopy(last);
    QSignalSpy changes(copy, &ZORFeatGeometry::BodyChanged);
    auto* const end = new ZORWFRawPoint(LoadedCopy(folder), {75, 50, 0});
    end->Initialize();
    LoadedCopy(limit)->SetStartPoint(end);
    EXPECT_EQ(changes.size(), 1);
    copy->SetAngle(kPi / 2);
    EXPECT_EQ(changes.size(), 2);
    EXPECT_TRUE(Runs(copy, {50, 10, 0}, {50, 50, 0}));
    EXPECT_TRUE(Runs(lastCopy, {50, 10, 0}, {50, 50, 0})) << "its direction was turned";
    EXPECT_TRUE(Runs(feature, {40, 20, 0}, {60, 20, 0})) << "the other container is no part of it";
}

TEST_F(ZORWFComputedFeatureFileTest, ReplacesTheLoadedResultUnderItsNames)
{
    auto* const feature = AddPointToPoint(start, AddPoint({60, 20, 0}));
    feature->GetBody()->setObjectName("result");
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const copy = LoadedCopy(feature);
    const QPointer<ZORTopBody> body = copy->GetBody();
    const int before = loaded.GetNumGeometry();
    copy->SetEndPoint(copy->GetStartPoint());
    EXPECT_FALSE(body) << "the loaded feature owns what was loaded";
    EXPECT_EQ(before, loaded.GetNumGeometry());
    EXPECT_EQ(QString("result"), copy->GetBody()->objectName());
    copy->Remove();
    EXPECT_EQ(before - 3, loaded.GetNumGeometry());
}

TEST_F(ZORWFComputedFeatureFileTest, KeepsTheLastResultWithoutItsInputs)
{
    auto* const end = AddPoint({60, 20, 0});
    auto* const limit = AddLimit({70, 0, 0}, {70, 40, 0});
    auto* const feature = AddPointToPoint(start, end);
    feature->AddEndLimit(limit);
    end->Remove();
    limit->Remove();
    support->Remove();
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const copy = LoadedCopy(feature);
    EXPECT_FALSE(copy->GetSupport());
    EXPECT_FALSE(copy->GetEndPoint());
    EXPECT_TRUE(copy->GetEndLimits().isEmpty());
    Compare(CurveOf(feature), CurveOf(copy));
}

TEST_F(ZORWFComputedFeatureFileTest, KeepsTheResultOfASupportWhoseSurfaceIsGone)
{
    auto* const feature = AddPointToPoint(start, AddPoint({60, 20, 0}));
    delete surface;
    ASSERT_TRUE(RoundTrips(container, loaded));
    Compare(CurveOf(feature), CurveOf(LoadedCopy(feature)));
}

TEST_F(ZORWFComputedFeatureFileTest, KeepsItsFailureAndItsLastResult)
{
    auto* const feature = AddPointToPoint(start, AddPoint({60, 20, 0}));
    EXPECT_EQ(MessageOf([&] { feature->SetEndPoint(support); }), QString("the end point is no point"));
    auto* const empty = Add<ZORWFCurveOnSupport>();
    ASSERT_TRUE(RoundTrips(container, loaded));
    EXPECT_EQ(LoadedCopy(feature)->GetFailure(), QString("the end point is no point"));
    Compare(CurveOf(feature), CurveOf(LoadedCopy(feature)));
    EXPECT_FALSE(LoadedCopy(empty)->GetBody());
    EXPECT_EQ(LoadedCopy(empty)->GetFailure(), QString());
}

TEST_F(ZORWFComputedFeatureFileTest, RefusesCirclesOfInputs)
{
    auto* const first = AddPointToPoint(start, start);
    auto* const second = AddPointToPoint(start, start);
    second->SetDirection(first);
    first->SetDirection(start);
    QByteArray document = OpenContainerFile(SaveContainer(container));
    // The direction of the first becomes the second: both are numbers of four bytes.
    const auto numberOf = [this](const ZORGeoGeometry* geometry) {
        for (int i = 0; i < container.GetNumGeometry(); ++i) {
            if (container.GetGeometryByIndex(i) == geometry)
                return QByteArray(1, char(i));
        }
        return QByteArray();
    };
    const QByteArray key("direction\xd8\x4e\x44");
    const qsizetype at = document.indexOf(key) + key.size();
    ASSERT_EQ(numberOf(start), document.mid(at, 1));
    document.replace(at, 1, numberOf(second));
    EXPECT_TRUE(
        LoadFailure(loaded, SealContainerFile(document)).endsWith("a feature cannot depend on itself"));
    EXPECT_EQ(0, loaded.GetNumGeometry());
}

TEST_F(ZORWFComputedFeatureFileTest, ProjectionsKeepTheirShapeAndFollowToo)
{
    auto* const feature = Add<ZORWFProjection>();
    feature->SetSupport(support);
    feature->SetSource(AddLine({10, 10, 7}, {60, 10, 7}));
    ASSERT_TRUE(Runs(feature, {10, 10, 0}, {60, 10, 0}));
    ASSERT_TRUE(RoundTrips(container, loaded));
    auto* const copy = LoadedCopy(feature);
    Compare(CurveOf(feature), CurveOf(copy));
    EXPECT_EQ(LoadedCopy(feature->GetSource()), copy->GetSource());
    const QPointer<ZORTopBody> body = copy->GetBody();
    copy->SetSource(LoadedCopy<ZORFeatGeometry>(start));
    EXPECT_FALSE(body);
    EXPECT_EQ(0, copy->GetBody()->GetDimension());
}

TEST_F(ZORWFComputedFeatureFileTest, SurvivesDamageBehindTheChecksum)
{
    AddPointToPoint(start, AddPoint({60, 20, 0}));
    auto* const projection = Add<ZORWFProjection>();
    projection->SetSupport(support);
    projection->SetSource(AddLine({10, 10, 7}, {60, 10, 7}));
    AddDirected(kConstantAngle)->AddEndLimit(AddLimit({70, 0, 0}, {70, 40, 0}));
    const int failed = LoadDamagedFiles(
        SaveContainer(container), [] { return std::make_unique<ZORFeatContainer>(); }, 3000, 5);
    EXPECT_GT(failed, 1000);
    EXPECT_LT(failed, 3000) << "some damage only changes values";
}

TEST_F(ZORWFComputedFeatureFileTest, EveryInputIsReportedAsAChange)
{
    auto* const curve = Add<ZORWFCurveOnSupport>();
    ZORWFRawPoint* const end = AddPoint({90, 70, 0});
    ZORWFRawCurve* const limit = AddLimit({45, 0, 0}, {45, 40, 0});
    const auto expectChange = [this](const char* what, const std::function<void()>& change) {
        EXPECT_TRUE(ReportsChange(container, change)) << what;
        EXPECT_TRUE(ReportsNoChange(container, change)) << what << " again";
    };
    // Nothing is computed before the inputs are complete, so that only the setters report.
    expectChange("method", [=] { curve->SetComputationMethod(kConstantAngle); });
    expectChange("start point", [this, curve] { curve->SetStartPoint(start); });
    expectChange("end point", [=] { curve->SetEndPoint(end); });
    expectChange("start length", [=] { curve->SetStartLength(10); });
    expectChange("end length", [=] { curve->SetEndLength(30); });
    expectChange("angle", [=] { curve->SetAngle(0.5); });
    expectChange("flip", [=] { curve->SetDirectionFlipped(true); });
    EXPECT_TRUE(ReportsChange(container, [=] { curve->AddStartLimit(limit); }));
    EXPECT_TRUE(ReportsChange(container, [=] { curve->AddEndLimit(limit); }));
    expectChange("limits", [=] { curve->ClearLimits(); });
    expectChange("direction", [this, curve] { curve->SetDirection(folder); });
    expectChange("support", [this, curve] { curve->SetSupport(support); });
    auto* const projection = Add<ZORWFProjection>();
    expectChange("projection's support", [=, this] { projection->SetSupport(support); });
    expectChange("projection's source", [=] { projection->SetSource(end); });
}

} // namespace
