#include "view/ZORHostSelection.h"

#include "HostTest.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORMathematics/ZORMathPoint.h>

#include <QSignalSpy>

namespace {

using Objects = QList<ZORGeoGeometry*>;

class ZORHostSelectionTest : public HostTest
{
protected:
    ZORHostSelectionTest()
    {
        m_selection.SetContainer(GetContainer());
        for (int i = 0; i < 3; ++i)
            m_points.append(AddPoint(i));
    }

    ZORFeatContainer* GetContainer() const { return GetEnvironment()->GetContainer(); }

    ZORGeoGeometry* AddPoint(double x) const
    {
        auto* const point = new ZORGeoCartesianPoint(GetContainer(), ZORMathPoint(x, 0, 0));
        point->Initialize();
        return point;
    }

    ZORHostSelection m_selection;
    Objects m_points;
    QSignalSpy m_changes{&m_selection, &ZORHostSelection::Changed};
    QSignalSpy m_hovers{&m_selection, &ZORHostSelection::HoveredChanged};
};

} // namespace

TEST_F(ZORHostSelectionTest, KeepsTheOrderOfSelection)
{
    m_selection.Set({m_points[2], m_points[0]});
    m_selection.Add({m_points[0], m_points[1]});
    EXPECT_EQ((Objects{m_points[2], m_points[0], m_points[1]}), m_selection.GetObjects());
    EXPECT_EQ(m_points[1], m_selection.GetLast());
    m_selection.Toggle({m_points[2], m_points[1], m_points[2]});
    EXPECT_EQ((Objects{m_points[0], m_points[2]}), m_selection.GetObjects());
    m_selection.Remove({m_points[0], m_points[0]});
    EXPECT_EQ(Objects{m_points[2]}, m_selection.GetObjects());
    EXPECT_EQ(4, m_changes.size());
}

TEST_F(ZORHostSelectionTest, ReportsOnlyRealChanges)
{
    m_selection.Clear();
    m_selection.Set({});
    m_selection.Remove({m_points[0]});
    EXPECT_EQ(0, m_changes.size());
    m_selection.Set({m_points[0], m_points[0], nullptr});
    m_selection.Set({m_points[0]});
    m_selection.Add({m_points[0]});
    EXPECT_EQ(1, m_changes.size());
    EXPECT_EQ(1, m_selection.GetCount());
}

TEST_F(ZORHostSelectionTest, IgnoresObjectsThatAreNotInTheContainer)
{
    ZORFeatContainer other;
    ZORGeoCartesianPoint foreign(&other, ZORMathPoint());
    const auto unregistered = std::make_unique<ZORGeoCartesianPoint>(GetContainer(), ZORMathPoint());
    m_selection.Set({&foreign, unregistered.get(), nullptr});
    m_selection.SetHovered(unregistered.get());
    EXPECT_TRUE(m_selection.IsEmpty());
    EXPECT_EQ(nullptr, m_selection.GetHovered());
    EXPECT_EQ(0, m_changes.size() + m_hovers.size());
}

TEST_F(ZORHostSelectionTest, DropsObjectsThatAreRemovedAtOnceAndReportsThemTogether)
{
    m_selection.Set(m_points);
    m_changes.clear();
    m_points[0]->RemoveNoReferences();
    EXPECT_EQ((Objects{m_points[1], m_points[2]}), m_selection.GetObjects());
    delete m_points[2];
    EXPECT_EQ(Objects{m_points[1]}, m_selection.GetObjects());
    EXPECT_EQ(0, m_changes.size());
    EXPECT_TRUE(WaitFor([this] { return m_changes.size() == 1; }));
    GetContainer()->Clear();
    EXPECT_TRUE(m_selection.IsEmpty());
    EXPECT_TRUE(WaitFor([this] { return m_changes.size() == 2; }));
}

TEST_F(ZORHostSelectionTest, DoesNotTakeObjectsThatAreBeingRemoved)
{
    QObject::connect(
        GetContainer(), &ZORGeoContainer::GeometryAboutToBeRemoved, &m_selection,
        [this](ZORGeoGeometry* geometry) {
            if (geometry == m_points[0])
                m_points[1]->RemoveNoReferences(); // a removal inside of another one
            m_selection.Add({geometry, m_points[0]});
            m_selection.SetHovered(geometry);
        },
        Qt::DirectConnection);
    m_points[0]->RemoveNoReferences();
    EXPECT_TRUE(m_selection.IsEmpty());
    EXPECT_EQ(nullptr, m_selection.GetHovered());
    m_selection.Add({m_points[2]});
    EXPECT_EQ(Objects{m_points[2]}, m_selection.GetObjects());
}

TEST_F(ZORHostSelectionTest, HoversOneLivingObject)
{
    m_selection.SetHovered(m_points[0]);
    m_selection.SetHovered(m_points[0]);
    EXPECT_EQ(1, m_hovers.size());
    delete m_points[0];
    EXPECT_EQ(nullptr, m_selection.GetHovered());
    EXPECT_EQ(2, m_hovers.size());
    EXPECT_EQ(0, m_changes.size());
}

TEST_F(ZORHostSelectionTest, ForgetsEverythingWithItsContainer)
{
    auto container = std::make_unique<ZORFeatContainer>();
    m_selection.SetContainer(container.get());
    auto* const point = new ZORGeoCartesianPoint(container.get(), ZORMathPoint());
    point->Initialize();
    m_selection.Set({point, m_points[0]});
    m_selection.SetHovered(point);
    EXPECT_EQ(Objects{point}, m_selection.GetObjects());
    container.reset();
    EXPECT_TRUE(m_selection.IsEmpty());
    EXPECT_EQ(nullptr, m_selection.GetHovered());
    m_selection.SetContainer(GetContainer());
    m_selection.Set({m_points[1]});
    m_selection.SetContainer(nullptr);
    EXPECT_TRUE(m_selection.IsEmpty());
    m_selection.Set({m_points[1]});
    EXPECT_TRUE(m_selection.IsEmpty());
}

TEST_F(ZORHostSelectionTest, FiltersByTheKindOfTheShape)
{
    auto* const line = new ZORGeoLine(GetContainer(), ZORMathPoint(), ZORMathPoint(1, 0, 0));
    line->Initialize();
    auto* const folder = new ZORFeatFolder(GetContainer()->GetFeatureRoot("ZORFeatRoot"));
    folder->Initialize();
    m_selection.SetFilter(ZORHostObjectKind::Curve);
    EXPECT_TRUE(m_selection.Accepts(line));
    EXPECT_FALSE(m_selection.Accepts(m_points[0]));
    EXPECT_FALSE(m_selection.Accepts(folder));
    EXPECT_FALSE(m_selection.Accepts(nullptr));
    m_selection.SetFilter(ZORHostObjectKind::Point | ZORHostObjectKind::Feature);
    EXPECT_FALSE(m_selection.Accepts(line));
    EXPECT_TRUE(m_selection.Accepts(m_points[0]));
    EXPECT_TRUE(m_selection.Accepts(folder));
    m_selection.Set({line}); // the filter is for picking alone
    EXPECT_TRUE(m_selection.Contains(line));
}
