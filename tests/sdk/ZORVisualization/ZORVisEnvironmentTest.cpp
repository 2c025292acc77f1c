#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisEnvironment.h>
#include <ZORVisualization/ZORVisPolylinePrimitive.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QObject>
#include <QPointer>

#include <gtest/gtest.h>

namespace {

// What an environment has told, in order: "+" added, "-" removed, "*" changed.
class Witness
{
public:
    explicit Witness(ZORVisEnvironment* environment)
    {
        QObject::connect(environment, &ZORVisEnvironment::ObjectAdded, &m_context,
                         [this](ZORVisVirtualObject* object) { Note("+", object); });
        QObject::connect(environment, &ZORVisEnvironment::ObjectRemoved, &m_context,
                         [this](ZORVisVirtualObject* object) { Note("-", object); });
        QObject::connect(environment, &ZORVisEnvironment::ObjectChanged, &m_context,
                         [this](ZORVisVirtualObject* object) { Note("*", object); });
    }

    std::string events;
    ZORVisVirtualObject* last = nullptr;

private:
    void Note(const char* event, ZORVisVirtualObject* object)
    {
        events += event;
        last = object;
    }
    QObject m_context;
};

ZORVisRep* NewRep()
{
    return new ZORVisRepGraphics({}, ZORVisOptions());
}

} // namespace

TEST(ZORVisEnvironmentTest, AddingListsAnObjectAndTellsSo)
{
    ZORVisEnvironment environment;
    Witness witness(&environment);
    auto* object = new ZORVisVirtualObject(&environment, nullptr);
    EXPECT_EQ(environment.GetNumVirtualObjects(), 0);
    EXPECT_EQ(object->GetEnvironment(), nullptr);

    environment.AddVirtualObject(object);

    EXPECT_EQ(environment.GetVirtualObjects(), QList<ZORVisVirtualObject*>{object});
    EXPECT_EQ(object->GetEnvironment(), &environment);
    EXPECT_EQ(witness.events, "+");
    EXPECT_EQ(witness.last, object);
}

TEST(ZORVisEnvironmentTest, AddingTwiceOrNothingDoesNothing)
{
    ZORVisEnvironment environment;
    auto* object = new ZORVisVirtualObject(&environment, nullptr);
    environment.AddVirtualObject(object);
    Witness witness(&environment);

    environment.AddVirtualObject(object);
    environment.AddVirtualObject(nullptr);

    EXPECT_EQ(environment.GetNumVirtualObjects(), 1);
    EXPECT_EQ(witness.events, "");
}

TEST(ZORVisEnvironmentTest, ObjectsAreListedInTheOrderInWhichTheyWereAdded)
{
    ZORVisEnvironment environment;
    QList<ZORVisVirtualObject*> objects;
    for (int i = 0; i < 100; ++i)
        objects.append(new ZORVisVirtualObject(&environment, nullptr));
    for (ZORVisVirtualObject* object : std::as_const(objects))
        environment.AddVirtualObject(object);
    delete objects.takeAt(50);
    delete objects.takeFirst();

    EXPECT_EQ(environment.GetVirtualObjects(), objects);
}

TEST(ZORVisEnvironmentTest, DeletingAnObjectTakesItOut)
{
    ZORVisEnvironment environment;
    auto* object = new ZORVisVirtualObject(&environment, nullptr);
    environment.AddVirtualObject(object);
    Witness witness(&environment);
    int listedAtSignal = -1;
    QObject::connect(&environment, &ZORVisEnvironment::ObjectRemoved, &environment,
                     [&] { listedAtSignal = environment.GetNumVirtualObjects(); });

    delete object;

    EXPECT_EQ(witness.events, "-");
    EXPECT_EQ(witness.last, object);
    EXPECT_EQ(listedAtSignal, 0);
    EXPECT_EQ(environment.GetNumVirtualObjects(), 0);
}

TEST(ZORVisEnvironmentTest, TheEndOfTheEnvironmentIsTheEndOfItsObjects)
{
    auto* environment = new ZORVisEnvironment;
    const QPointer<ZORVisVirtualObject> listed = new ZORVisVirtualObject(environment, nullptr);
    const QPointer<ZORVisVirtualObject> unlisted = new ZORVisVirtualObject(environment, nullptr);
    environment->AddVirtualObject(listed);
    Witness witness(environment);
    bool destroyed = false;
    QObject::connect(environment, &QObject::destroyed, [&] { destroyed = true; });

    delete environment;

    EXPECT_TRUE(destroyed);
    EXPECT_FALSE(listed);
    EXPECT_TRUE(unlisted);
    EXPECT_EQ(witness.events, "");
    delete unlisted;
}

TEST(ZORVisEnvironmentTest, AnObjectLeavesItsEnvironmentForAnother)
{
    ZORVisEnvironment first;
    ZORVisEnvironment second;
    auto* object = new ZORVisVirtualObject(&first, nullptr);
    first.AddVirtualObject(object);
    Witness witness(&first);

    second.AddVirtualObject(object);

    EXPECT_EQ(witness.events, "-");
    EXPECT_EQ(first.GetNumVirtualObjects(), 0);
    EXPECT_EQ(second.GetVirtualObjects(), QList<ZORVisVirtualObject*>{object});
}

TEST(ZORVisEnvironmentTest, AReceiverMayDeleteTheObjectThatWasJustAdded)
{
    ZORVisEnvironment environment;
    QObject::connect(&environment, &ZORVisEnvironment::ObjectAdded, &environment,
                     [](ZORVisVirtualObject* object) { delete object; });
    environment.AddVirtualObject(new ZORVisVirtualObject(&environment, nullptr));
    EXPECT_EQ(environment.GetNumVirtualObjects(), 0);
}

TEST(ZORVisVirtualObjectTest, SettingARepTakesItOverAndDeletesTheFormer)
{
    ZORVisEnvironment environment;
    auto* object = new ZORVisVirtualObject(&environment, nullptr);
    EXPECT_EQ(object->GetRep(), nullptr);

    int deleted = 0;
    class CountedRep final : public ZORVisRep
    {
    public:
        explicit CountedRep(int* counter)
            : ZORVisRep({})
            , m_counter(counter)
        {
        }
        ~CountedRep() override { ++*m_counter; }

    private:
        int* m_counter;
    };
    auto* first = new CountedRep(&deleted);
    object->SetRep(first);
    object->SetRep(first);
    EXPECT_EQ(object->GetRep(), first);
    EXPECT_EQ(deleted, 0);
    object->SetRep(new CountedRep(&deleted));
    EXPECT_EQ(deleted, 1);
    object->SetRep(nullptr);
    EXPECT_EQ(object->GetRep(), nullptr);
    EXPECT_EQ(deleted, 2);
    object->SetRep(new CountedRep(&deleted));
    delete object;
    EXPECT_EQ(deleted, 3);
}

TEST(ZORVisVirtualObjectTest, AListedObjectTellsAboutANewRep)
{
    ZORVisEnvironment environment;
    auto* object = new ZORVisVirtualObject(&environment, nullptr);
    Witness witness(&environment);
    object->SetRep(NewRep());
    EXPECT_EQ(witness.events, "");
    environment.AddVirtualObject(object);
    object->SetRep(NewRep());
    object->SetRep(object->GetRep());
    object->SetRep(nullptr);
    EXPECT_EQ(witness.events, "+**");
    EXPECT_EQ(witness.last, object);
}

TEST(ZORVisVirtualObjectTest, TheOwnerIsAnAssociationAndMayDieFirst)
{
    ZORVisEnvironment environment;
    auto* owner = new QObject;
    auto* object = new ZORVisVirtualObject(&environment, owner);
    environment.AddVirtualObject(object);
    EXPECT_EQ(object->GetOwner(), owner);
    EXPECT_EQ(object->parent(), nullptr);

    delete owner;

    EXPECT_EQ(object->GetOwner(), nullptr);
    EXPECT_EQ(environment.GetNumVirtualObjects(), 1);
}

TEST(ZORVisVirtualObjectTest, FollowsAGeometryThatChangesInPlace)
{
    ZORGeoContainer container;
    ZORGeoSurface surface(&container, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {{0, 1, 2}});
    const auto locate = [&](const ZORMathPoint& point) { return surface.Project(point); };
    auto curve = std::make_unique<ZORGeoCurveOnSurface>(
        QList<ZORGeoLocationOnSurface>{locate({0, 0, 0}), locate({1, 0, 0})}, false);
    const auto makeRep = [&curve] {
        return new ZORVisRepGraphics({new ZORVisPolylinePrimitive(curve.get(), {})}, ZORVisOptions());
    };
    ZORVisEnvironment environment;
    auto* const object = new ZORVisVirtualObject(&environment, nullptr);
    environment.AddVirtualObject(object);
    Witness witness(&environment);
    object->FollowGeometry(curve.get(), makeRep);
    EXPECT_EQ(object->GetRep(), nullptr) << "until the geometry changes";
    curve->SetLocations({locate({0, 0, 0}), locate({0, 1, 0})});
    EXPECT_EQ(witness.events, "*");
    ASSERT_NE(object->GetRep(), nullptr);
    EXPECT_EQ(object->GetRep()->GetBoundingBox().GetUpperPoint(), ZORMathPoint(0, 1, 0));
    object->FollowGeometry(nullptr, makeRep);
    curve->SetLocations({locate({1, 0, 0})});
    EXPECT_EQ(witness.events, "*");
    object->FollowGeometry(curve.get(), makeRep);
    curve.reset();
    EXPECT_EQ(object->GetRep()->GetBoundingBox().GetUpperPoint(), ZORMathPoint(0, 1, 0));
}

TEST(ZORVisVirtualObjectTest, NeedsNoEnvironment)
{
    ZORVisVirtualObject object(nullptr, nullptr);
    object.SetRep(NewRep());
    EXPECT_NE(object.GetRep(), nullptr);
    EXPECT_EQ(object.GetEnvironment(), nullptr);
}
