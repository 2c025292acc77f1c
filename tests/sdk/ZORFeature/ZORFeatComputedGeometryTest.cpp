#include "support/MessageOf.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatComputedGeometry.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <QPointer>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

/// A point of given coordinates, or one beside the point of another feature; fails beyond x = 5.
class StepFeature : public ZORFeatComputedGeometry
{
    Q_OBJECT

public:
    StepFeature(ZORFeatObject* parent, double x)
        : ZORFeatComputedGeometry(parent)
        , m_x(x)
    {
    }

    void SetBase(ZORFeatObject* base) { SetInput(m_base, base); }
    void SetNote(ZORFeatObject* note) { SetInput(m_note, note, false); }
    void SetX(double x)
    {
        m_x = x;
        Update();
    }
    double GetX() const { return GetPoint()->GetMathPoint().GetX(); }
    const ZORGeoCartesianPoint* GetPoint() const
    {
        return GetBody() ? qobject_cast<const ZORGeoCartesianPoint*>(GetBody()->GetGeometry()) : nullptr;
    }
    QList<ZORFeatObject*> GetInputs() const override
    {
        QList<ZORFeatObject*> inputs{m_base.Get(), m_note.Get()};
        inputs.removeAll(nullptr);
        return inputs;
    }

    bool needsBase = false;
    mutable int computations = 0;

protected:
    bool IsComplete() const override { return m_base || !needsBase; }
    ZORFeatShape Compute() const override
    {
        ++computations;
        const auto* const base = qobject_cast<const StepFeature*>(m_base.Get());
        const double x = base ? base->GetX() + 1 : m_x;
        if (x > 5)
            throw ZORSysException("too far");
        auto* const point = new ZORGeoCartesianPoint(GetContainer(), {x, 0, 0});
        return {new ZORTopBody(GetContainer(), point), {point}};
    }

private:
    double m_x;
    ZORGeoReference<ZORFeatObject> m_base;
    ZORGeoReference<ZORFeatObject> m_note;
};

/// A feature without a shape that is made from another one.
class RemarkFeature : public ZORFeatFolder
{
    Q_OBJECT

public:
    explicit RemarkFeature(ZORFeatObject* parent)
        : ZORFeatFolder(parent)
    {
    }
    QList<ZORFeatObject*> GetInputs() const override
    {
        return subject ? QList<ZORFeatObject*>{subject} : QList<ZORFeatObject*>();
    }

    QPointer<ZORFeatObject> subject;
};

namespace {

class ZORFeatComputedGeometryTest : public testing::Test
{
protected:
    StepFeature* Add(double x)
    {
        auto* const feature = new StepFeature(root, x);
        feature->Initialize();
        return feature;
    }
    ZORFeatContainer container;
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
};

TEST_F(ZORFeatComputedGeometryTest, ComputesWhenItIsRegisteredAndWheneverAnInputIsAnother)
{
    auto* const first = new StepFeature(root, 2);
    EXPECT_EQ(first->GetBody(), nullptr);
    first->Initialize();
    first->Initialize();
    EXPECT_EQ(first->computations, 1);
    EXPECT_EQ(first->GetX(), 2);
    auto* const second = Add(0);
    second->SetBase(first);
    second->SetBase(first);
    EXPECT_EQ(second->computations, 2) << "not for the same one again";
    EXPECT_EQ(second->GetX(), 3);
    second->SetNote(first);
    EXPECT_EQ(second->computations, 2) << "the result does not depend on it";
    EXPECT_EQ(first->GetReferenceCount(), 2);
}

TEST_F(ZORFeatComputedGeometryTest, ChangesRunThroughAChainOfFeatures)
{
    auto* const first = Add(0);
    auto* const second = Add(0);
    auto* const third = Add(0);
    second->SetBase(first);
    third->SetBase(second);
    QSignalSpy changes(third, &ZORFeatGeometry::BodyChanged);
    first->SetX(3);
    EXPECT_EQ(third->GetX(), 5);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(MessageOf([&] { first->SetX(4); }), QString()) << "its own computation is fine";
    EXPECT_EQ(second->GetX(), 5);
    EXPECT_EQ(third->GetX(), 5) << "the last good result";
    EXPECT_EQ(third->GetFailure(), QString("too far"));
    first->SetX(1);
    EXPECT_EQ(third->GetX(), 3);
    EXPECT_EQ(third->GetFailure(), QString());
}

TEST_F(ZORFeatComputedGeometryTest, FollowsAnInputAsLongAsItIsOneInAnyRole)
{
    auto* const first = Add(0);
    auto* const second = Add(0);
    second->SetBase(first);
    second->SetNote(first);
    second->SetBase(nullptr);
    const int before = second->computations;
    first->SetX(1);
    EXPECT_EQ(second->computations, before + 1) << "still a note";
    second->SetNote(nullptr);
    first->SetX(2);
    EXPECT_EQ(second->computations, before + 1);
    EXPECT_EQ(first->GetReferenceCount(), 0);
}

TEST_F(ZORFeatComputedGeometryTest, WaitsWhileAnInputIsMissing)
{
    auto* const first = Add(1);
    auto* const second = Add(0);
    second->SetBase(first);
    second->needsBase = true;
    first->Remove();
    second->SetX(4);
    EXPECT_EQ(second->GetX(), 2);
    EXPECT_EQ(second->GetFailure(), QString());
    EXPECT_TRUE(second->GetInputs().isEmpty());
}

TEST_F(ZORFeatComputedGeometryTest, CannotDependOnItselfOverFeaturesOfAnyClass)
{
    auto* const first = Add(0);
    auto* const second = Add(0);
    auto* const remark = new RemarkFeature(root);
    remark->Initialize();
    remark->subject = second;
    second->SetBase(first);
    const QString message("a feature cannot depend on itself");
    EXPECT_EQ(MessageOf([&] { first->SetBase(first); }), message);
    EXPECT_EQ(MessageOf([&] { first->SetBase(second); }), message);
    EXPECT_EQ(MessageOf([&] { first->SetNote(remark); }), message) << "over a folder that is made from it";
    EXPECT_TRUE(first->GetInputs().isEmpty());
    EXPECT_EQ(remark->GetReferenceCount(), 0);
    remark->subject = nullptr;
    EXPECT_EQ(MessageOf([&] { first->SetNote(remark); }), QString());
    EXPECT_TRUE(second->DependsOn(remark));
    EXPECT_TRUE(second->DependsOn(second));
    EXPECT_FALSE(remark->DependsOn(second));
    EXPECT_FALSE(second->DependsOn(root)) << "parents are no inputs";
}

TEST_F(ZORFeatComputedGeometryTest, DependenciesAreFoundInManyLayers)
{
    // Every feature twice an input of the next: 2^60 ways from the last to the first.
    QList<StepFeature*> chain{Add(-100)};
    for (int i = 0; i < 60; ++i) {
        chain.append(Add(0));
        chain.constLast()->SetBase(chain[i]);
        chain.constLast()->SetNote(chain[i]);
    }
    EXPECT_TRUE(chain.constLast()->DependsOn(chain.constFirst()));
    EXPECT_EQ(MessageOf([&] { chain.constFirst()->SetNote(chain.constLast()); }),
              QString("a feature cannot depend on itself"));
}

TEST_F(ZORFeatComputedGeometryTest, NewShapeTakesTheNamesOfTheOldAndTheFeatureTakesItAlong)
{
    auto* const feature = Add(1);
    const int numGeometry = container.GetNumGeometry();
    const QPointer<ZORTopBody> body = feature->GetBody();
    const QString bodyName = body->objectName();
    const QString pointName = feature->GetPoint()->objectName();
    feature->SetX(2);
    EXPECT_TRUE(body.isNull());
    EXPECT_EQ(container.GetNumGeometry(), numGeometry);
    EXPECT_EQ(feature->GetBody()->objectName(), bodyName);
    EXPECT_EQ(feature->GetPoint()->objectName(), pointName);
    feature->Remove();
    EXPECT_EQ(container.GetNumGeometry(), numGeometry - 3);
}

TEST(ZORFeatShapeTest, DestroysWhatItHoldsAndMovesIt)
{
    ZORFeatContainer container;
    auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    const QPointer<ZORTopBody> body = new ZORTopBody(&container, point);
    {
        ZORFeatShape shape(body, {point});
        shape.Initialize();
        EXPECT_EQ(container.GetNumGeometry(), 2);
        EXPECT_EQ(container.GetGeometryByIndex(0), point) << "the body comes after what it is made of";
        ZORFeatShape other(std::move(shape));
        EXPECT_EQ(shape.GetBody(), nullptr); // NOLINT(bugprone-use-after-move)
        shape = std::move(other);
        EXPECT_EQ(shape.GetBody(), body);
        EXPECT_EQ(shape.GetGeometry(), QList<ZORGeoGeometry*>{point});
    }
    EXPECT_TRUE(body.isNull());
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST(ZORFeatShapeTest, ForgetsWhatSomebodyElseDestroys)
{
    ZORFeatContainer container;
    auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    ZORFeatShape shape(new ZORTopBody(&container, point), {point});
    shape.Initialize();
    container.Clear();
    EXPECT_EQ(shape.GetBody(), nullptr);
    EXPECT_TRUE(shape.GetGeometry().isEmpty());
    shape.Initialize();
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

} // namespace

#include "ZORFeatComputedGeometryTest.moc"
