// Tests of ZORGeoContainer.

#include "support/Printers.h"
#include "support/Threads.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>
#include <QStringList>

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace {

ZORGeoCartesianPoint* AddPoint(ZORGeoContainer& container, const QString& name = {})
{
    auto* point = new ZORGeoCartesianPoint(&container, ZORMathPoint(1, 2, 3));
    point->setObjectName(name);
    point->Initialize();
    return point;
}

TEST(ZORGeoContainerTest, ListsGeometriesInTheOrderOfTheirRegistration)
{
    ZORGeoContainer container;
    EXPECT_EQ(0, container.GetNumGeometry());
    EXPECT_EQ(nullptr, container.GetGeometryByIndex(0));
    auto* late = new ZORGeoCartesianPoint(&container, ZORMathPoint());
    const auto* early = AddPoint(container);
    late->Initialize();
    EXPECT_EQ(2, container.GetNumGeometry());
    EXPECT_EQ(early, container.GetGeometryByIndex(0));
    EXPECT_EQ(late, container.GetGeometryByIndex(1));
    EXPECT_EQ(nullptr, container.GetGeometryByIndex(-1));
    EXPECT_EQ(nullptr, container.GetGeometryByIndex(2));
}

TEST(ZORGeoContainerTest, NamesGeometriesAfterTheirClass)
{
    ZORGeoContainer container;
    EXPECT_EQ(QString("CartesianPoint.1"), AddPoint(container)->objectName());
    auto* line = new ZORGeoLine(&container, {0, 0, 0}, {1, 0, 0});
    line->Initialize();
    EXPECT_EQ(QString("Line.1"), line->objectName());
    EXPECT_EQ(QString("CartesianPoint.2"), AddPoint(container)->objectName());
    EXPECT_EQ(QString("mine"), AddPoint(container, "mine")->objectName());
}

TEST(ZORGeoContainerTest, NeverGivesANameThatIsInUse)
{
    ZORGeoContainer container;
    AddPoint(container, "CartesianPoint.1");
    AddPoint(container)->setObjectName("CartesianPoint.3");
    EXPECT_EQ(QString("CartesianPoint.4"), AddPoint(container)->objectName());

    EXPECT_EQ(QString("skin"), container.GetUniqueName("skin"));
    ZORGeoGeometry* skin = AddPoint(container, "skin");
    EXPECT_EQ(QString("skin.2"), container.GetUniqueName("skin"));
    skin->setObjectName("spar");
    EXPECT_EQ(QString("skin"), container.GetUniqueName("skin"));
    delete skin;
    EXPECT_EQ(QString("spar"), container.GetUniqueName("spar"));
}

TEST(ZORGeoContainerTest, TellsOfAdditionAndRemoval)
{
    ZORGeoContainer container;
    QStringList log;
    QObject::connect(&container, &ZORGeoContainer::GeometryAdded, [&](const ZORGeoGeometry* geometry) {
        log << "added " + geometry->objectName() << QString::number(container.GetNumGeometry());
    });
    QObject::connect(&container, &ZORGeoContainer::GeometryAboutToBeRemoved, [&](ZORGeoGeometry* geometry) {
        const bool isWhole = qobject_cast<ZORGeoCartesianPoint*>(geometry);
        log << QString::fromLatin1(isWhole ? "whole" : "base") << QString::number(container.GetNumGeometry());
    });
    QObject::connect(&container, &ZORGeoContainer::GeometryRemoved,
                     [&] { log << "removed" << QString::number(container.GetNumGeometry()); });
    ZORGeoGeometry* first = AddPoint(container);
    ZORGeoGeometry* second = AddPoint(container);
    first->RemoveNoReferences();
    delete second;
    EXPECT_EQ(QStringList({"added CartesianPoint.1", "1", "added CartesianPoint.2", "2", "whole", "2",
                           "removed", "1", "base", "1", "removed", "0"}),
              log);
}

TEST(ZORGeoContainerTest, SurvivesAReceiverThatDeletesTheAnnouncedGeometry)
{
    ZORGeoContainer container;
    ZORGeoGeometry* point = AddPoint(container);
    int removed = 0;
    QObject::connect(&container, &ZORGeoContainer::GeometryAboutToBeRemoved,
                     [](auto* geometry) { delete geometry; });
    QObject::connect(&container, &ZORGeoContainer::GeometryRemoved, [&removed] { ++removed; });
    point->RemoveNoReferences();
    EXPECT_EQ(0, container.GetNumGeometry());
    EXPECT_EQ(1, removed);
}

TEST(ZORGeoContainerTest, ClearDestroysEverythingNewestFirst)
{
    ZORGeoContainer container;
    for (int i = 0; i < 4; ++i)
        AddPoint(container);
    container.GetGeometryByIndex(1)->AddReference(nullptr);
    QStringList order;
    QObject::connect(&container, &ZORGeoContainer::GeometryAboutToBeRemoved,
                     [&order](ZORGeoGeometry* geometry) { order << geometry->objectName().right(1); });
    container.Clear();
    EXPECT_EQ(0, container.GetNumGeometry());
    EXPECT_EQ(QStringList({"4", "3", "2", "1"}), order);
}

TEST(ZORGeoContainerTest, DestructionTakesItsGeometriesAlongAndClearsReferences)
{
    auto container = std::make_unique<ZORGeoContainer>();
    const ZORGeoReference<ZORGeoGeometry> reference(AddPoint(*container));
    const QPointer<ZORGeoGeometry> other = AddPoint(*container);
    auto unregistered = std::make_unique<ZORGeoCartesianPoint>(container.get(), ZORMathPoint());
    int signalsSeen = 0;
    QObject::connect(container.get(), &ZORGeoContainer::GeometryAboutToBeRemoved, [&] { ++signalsSeen; });
    container.reset();
    EXPECT_EQ(nullptr, reference.Get());
    EXPECT_TRUE(other.isNull());
    EXPECT_EQ(nullptr, unregistered->GetContainer());
    EXPECT_THROW(unregistered->Initialize(), ZORSysException);
    EXPECT_EQ(0, signalsSeen);
}

// Against a plain list, with removals in every place and look-ups in between.
TEST(ZORGeoContainerTest, IndicesStayRightThroughRandomChanges)
{
    std::mt19937 random(3);
    ZORGeoContainer container;
    QList<ZORGeoGeometry*> expected;
    for (int step = 0; step < 20000; ++step) {
        const unsigned action = random() % 8;
        if (action < 3 || expected.isEmpty()) {
            expected.append(AddPoint(container, "p"));
        } else if (action < 6 && step % 4000 > 1000) {
            const qsizetype index = action == 3   ? 0
                                    : action == 4 ? expected.size() - 1
                                                  : qsizetype(random() % unsigned(expected.size()));
            delete expected.takeAt(index);
        }
        ASSERT_EQ(expected.size(), container.GetNumGeometry());
        for (int look = 0; look < 3 && !expected.isEmpty(); ++look) {
            const int index = int(random() % unsigned(expected.size()));
            ASSERT_EQ(expected[index], container.GetGeometryByIndex(index)) << step;
        }
        if (step % 500 == 0) {
            for (int index = 0; index < expected.size(); ++index)
                ASSERT_EQ(expected[index], container.GetGeometryByIndex(index)) << step;
        }
    }
}

// The first look-ups among holes build a tree, later ones pack the list.
TEST(ZORGeoContainerTest, SeveralThreadsLookUpBetweenHoles)
{
    ZORGeoContainer container;
    QList<ZORGeoGeometry*> expected;
    QList<ZORGeoGeometry*> removed;
    for (int i = 0; i < 300; ++i)
        (i % 3 == 1 ? removed : expected).append(AddPoint(container));
    qDeleteAll(removed);

    constexpr int kNumThreads = 4;
    std::array<QList<ZORGeoGeometry*>, kNumThreads> found;
    RunInThreads(kNumThreads, [&](int thread) {
        for (int i = 0; i < container.GetNumGeometry(); ++i)
            found[thread].append(container.GetGeometryByIndex(i));
    });
    for (const QList<ZORGeoGeometry*>& list : found)
        EXPECT_EQ(expected, list);
    EXPECT_EQ(nullptr, container.GetGeometryByIndex(int(expected.size())));

    delete expected.takeAt(7); // whatever the threads have built follows changes
    AddPoint(container);
    EXPECT_EQ(expected[7], container.GetGeometryByIndex(7));
    EXPECT_EQ(expected.last(), container.GetGeometryByIndex(int(expected.size()) - 1));
}

TEST(ZORGeoContainerTest, SeveralThreadsGetDifferentNames)
{
    ZORGeoContainer container;
    AddPoint(container, "p");
    constexpr int kNumThreads = 4;
    std::array<QStringList, kNumThreads> names;
    RunInThreads(kNumThreads, [&](int thread) {
        for (int i = 0; i < 50; ++i)
            names[thread].append(container.GetUniqueName("p"));
    });
    QStringList all;
    for (const QStringList& list : names)
        all += list;
    all.removeDuplicates();
    EXPECT_EQ(4 * 50, all.size());
}

// Quadratic behavior would exceed the time limit of the test.
TEST(ZORGeoContainerTest, HoldsAHundredThousandGeometries)
{
    ZORGeoContainer container;
    for (int i = 0; i < 100000; ++i)
        AddPoint(container);
    qsizetype letters = 0;
    for (int i = 0; i < container.GetNumGeometry(); ++i)
        letters += container.GetGeometryByIndex(i)->objectName().size();
    EXPECT_GT(letters, 100000);
    while (container.GetNumGeometry() > 70000)
        container.GetGeometryByIndex(0)->RemoveNoReferences();
    while (container.GetNumGeometry() > 40000)
        container.GetGeometryByIndex(container.GetNumGeometry() / 2)->RemoveNoReferences();
    EXPECT_EQ(40000, container.GetNumGeometry());
    container.Clear();
    EXPECT_EQ(0, container.GetNumGeometry());
}

TEST(ZORGeoContainerTest, KnowsTheRegisteredClassesByName)
{
    const auto names = [] {
        QStringList list;
        const QList<const QMetaObject*> types = ZORGeoContainer().GetRegisteredTypes();
        for (const QMetaObject* type : types)
            list.append(QString::fromLatin1(type->className()));
        return list;
    };
    const QStringList known = {
        "ZORGeoCartesianPoint", "ZORGeoCurve",   "ZORGeoCurveOnSurface",   "ZORGeoGeometry",
        "ZORGeoLine",           "ZORGeoPoint",   "ZORGeoPointOnCurve",     "ZORGeoPointOnSurface",
        "ZORGeoPolyline",       "ZORGeoSurface", "ZORGeoTriangleEdgeCurve"};
    EXPECT_EQ(known, names());
    {
        const ZORGeoTypeRegistration first(&QObject::staticMetaObject);
        {
            const ZORGeoTypeRegistration again(&QObject::staticMetaObject);
            EXPECT_EQ("QObject", names().value(0));
        }
        EXPECT_EQ(known.size() + 1, names().size());
    }
    EXPECT_EQ(known.size(), names().size());
}

} // namespace
