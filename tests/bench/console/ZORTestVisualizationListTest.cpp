#include "console/ZORTestVisualizationList.h"

#include "console/ZORTestMainDialog.h"
#include "core/ZORTestRegistration.h"
#include "support/BenchTest.h"
#include "visualization/ZORTestVisualizer.h"

#include <ZORDebug/ZORDebugVizContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QCheckBox>
#include <QListWidget>
#include <QSet>
#include <QSignalSpy>
#include <QTableView>

/// A class that only the visualizer below draws.
class ProbeGeometry : public ZORGeoGeometry
{
    Q_OBJECT

public:
    explicit ProbeGeometry(ZORGeoContainer* container)
        : ZORGeoGeometry(container)
    {
    }
};

/// A class that nobody draws.
class UndrawnGeometry : public ZORGeoGeometry
{
    Q_OBJECT

public:
    explicit UndrawnGeometry(ZORGeoContainer* container)
        : ZORGeoGeometry(container)
    {
    }
};

class ProbeVisualizer : public ZORTestVisualizer
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "ProbeGeometry")

public:
    enum Behaviour { Draw, Cancel, Throw };

    Q_INVOKABLE ProbeVisualizer() = default;

    ZORVisVirtualObject* Visualize(ZORTestEnvironment* environment, ZORGeoGeometry* geometry) override
    {
        ++calls;
        if (behaviour == Cancel)
            return nullptr;
        if (behaviour == Throw)
            throw ZORSysException(QStringLiteral("geometry is not a probe"));
        last = new ZORVisVirtualObject(environment->GetEnvironment(), geometry);
        return last;
    }

    static inline Behaviour behaviour = Draw;
    static inline int calls = 0;
    static inline QPointer<ZORVisVirtualObject> last;
};

ZOR_TEST_REGISTER(ProbeVisualizer)

namespace {

class ZORTestVisualizationListTest : public BenchTest
{
protected:
    ZORTestVisualizationListTest()
    {
        ProbeVisualizer::behaviour = ProbeVisualizer::Draw;
        ProbeVisualizer::calls = 0;
        OpenConsole();
    }
    ~ZORTestVisualizationListTest() override { ZORDebugVizContainer::GetContainer()->RemoveAllObjects(); }

    template<class Geometry = ProbeGeometry>
    Geometry* Add(const char* name)
    {
        auto* geometry = new Geometry(GetContainer());
        geometry->setObjectName(QLatin1String(name));
        geometry->Initialize();
        console->RefreshContainer();
        return geometry;
    }

    /// Presses "Visualize" on the row \a name of the container table.
    void Visualize(const char* name)
    {
        auto* table = InConsole<QTableView>("_ContTable");
        const QModelIndexList found = table->model()->match(table->model()->index(0, 0), Qt::DisplayRole,
                                                            QString::fromLatin1(name), 1, Qt::MatchExactly);
        ASSERT_EQ(1, found.size());
        table->setCurrentIndex(found.first());
        Click("_ContVisuBtn");
    }

    QListWidget* GetList() { return InConsole<QListWidget>("_VisList"); }

    QStringList GetRows()
    {
        QStringList rows;
        for (int row = 0; row < GetList()->count(); ++row)
            rows.append(GetList()->item(row)->text());
        rows.sort(); // the list has the order of a hash
        return rows;
    }

    void MakeCurrent(const char* name)
    {
        const auto found = GetList()->findItems(QString::fromLatin1(name), Qt::MatchExactly);
        ASSERT_EQ(1, found.size());
        GetList()->setCurrentItem(found.first());
    }

    QList<ZORVisVirtualObject*> GetShown() const { return GetFeatEnvironment()->GetVirtualObjects(); }
};

TEST_F(ZORTestVisualizationListTest, AddsTheVisualObjectToTheEnvironmentAndListsIt)
{
    const ProbeGeometry* geometry = Add("A");
    Visualize("A");
    EXPECT_EQ(QList<ZORVisVirtualObject*>{ProbeVisualizer::last}, GetShown());
    ASSERT_EQ(QStringList{"A"}, GetRows());
    EXPECT_EQ(geometry, GetList()->item(0)->data(Qt::UserRole).value<ZORGeoGeometry*>());
}

TEST_F(ZORTestVisualizationListTest, ReplacesTheVisualObjectOfTheSameGeometry)
{
    Add("A");
    Visualize("A");
    const QPointer<ZORVisVirtualObject> former(ProbeVisualizer::last);
    Visualize("A");
    EXPECT_EQ(nullptr, former.data());
    EXPECT_EQ(QList<ZORVisVirtualObject*>{ProbeVisualizer::last}, GetShown());
    EXPECT_EQ(QStringList{"A"}, GetRows());
}

TEST_F(ZORTestVisualizationListTest, ListsSeveralGeometries)
{
    for (const char* name : {"A", "B", "C"}) {
        Add(name);
        Visualize(name);
    }
    EXPECT_EQ((QStringList{"A", "B", "C"}), GetRows());
    EXPECT_EQ(3, GetShown().size());
}

TEST_F(ZORTestVisualizationListTest, ReportsAGeometryThatNobodyDraws)
{
    Add<UndrawnGeometry>("A");
    Visualize("A");
    const QList<MessageBoxCatcher::Box> expected{{QMessageBox::Critical, "Error",
                                                  "No visualizer for that type of geometry", QMessageBox::Ok,
                                                  console.data()}};
    EXPECT_EQ(expected, boxes.Take());
    EXPECT_TRUE(GetRows().isEmpty());
}

TEST_F(ZORTestVisualizationListTest, ReportsACancelledVisualizationAndKeepsTheFormerOne)
{
    Add("A");
    Visualize("A");
    const QPointer<ZORVisVirtualObject> former(ProbeVisualizer::last);
    ProbeVisualizer::behaviour = ProbeVisualizer::Cancel;
    Visualize("A");
    const QList<MessageBoxCatcher::Box> expected{
        {QMessageBox::Critical, "Error", "Visualization creation failed", QMessageBox::Ok, console.data()}};
    EXPECT_EQ(expected, boxes.Take());
    EXPECT_EQ(QList<ZORVisVirtualObject*>{former}, GetShown());
    EXPECT_EQ(QStringList{"A"}, GetRows());
}

TEST_F(ZORTestVisualizationListTest, ReportsTheExceptionOfAVisualizer)
{
    Add("A");
    ProbeVisualizer::behaviour = ProbeVisualizer::Throw;
    Visualize("A");
    EXPECT_EQ(QStringList{"geometry is not a probe"}, boxes.TakeErrors());
    EXPECT_TRUE(GetShown().isEmpty());
}

TEST_F(ZORTestVisualizationListTest, RemovesTheCurrentRowOnly)
{
    for (const char* name : {"A", "B", "C"}) {
        Add(name);
        Visualize(name);
    }
    MakeCurrent("B");
    Click("_VisRemoveBtn");
    EXPECT_EQ((QStringList{"A", "C"}), GetRows());
    EXPECT_EQ(2, GetShown().size());
    EXPECT_EQ(3, GetContainer()->GetNumGeometry());
}

TEST_F(ZORTestVisualizationListTest, EditsByRemovingAndVisualizingAgain)
{
    Add("A");
    Visualize("A");
    const QPointer<ZORVisVirtualObject> former(ProbeVisualizer::last);
    MakeCurrent("A");
    Click("_VisEditBtn");
    EXPECT_EQ(2, ProbeVisualizer::calls);
    EXPECT_EQ(nullptr, former.data());
    EXPECT_EQ(QList<ZORVisVirtualObject*>{ProbeVisualizer::last}, GetShown());
    EXPECT_EQ(QStringList{"A"}, GetRows());
}

TEST_F(ZORTestVisualizationListTest, LosesTheVisualizationWhenItsEditingIsCancelled)
{
    Add("A");
    Visualize("A");
    MakeCurrent("A");
    ProbeVisualizer::behaviour = ProbeVisualizer::Cancel;
    Click("_VisEditBtn");
    EXPECT_EQ(QStringList{"Visualization creation failed"}, boxes.TakeErrors());
    EXPECT_TRUE(GetShown().isEmpty());
    EXPECT_TRUE(GetRows().isEmpty());
}

TEST_F(ZORTestVisualizationListTest, DoesNothingWithoutACurrentRow)
{
    Add("A");
    Visualize("A");
    GetList()->setCurrentRow(-1);
    Click("_VisEditBtn");
    Click("_VisRemoveBtn");
    EXPECT_EQ(1, ProbeVisualizer::calls);
    EXPECT_EQ(1, GetShown().size());
}

TEST_F(ZORTestVisualizationListTest, RemovesAllWhileTheEnvironmentKeepsRefreshingTheList)
{
    for (const char* name : {"A", "B", "C", "D"}) {
        Add(name);
        Visualize(name);
    }
    QSignalSpy removed(GetFeatEnvironment(), &ZORVisEnvironment::ObjectRemoved);
    QList<int> rowsDuringRemoval;
    QObject::connect(GetFeatEnvironment(), &ZORVisEnvironment::ObjectRemoved, console,
                     [rows = &rowsDuringRemoval, list = GetList()] { rows->append(list->count()); });
    Click("_VisRemoveAllBtn");
    EXPECT_EQ(4, removed.count());
    EXPECT_EQ((QList<int>{3, 2, 1, 0}), rowsDuringRemoval);
    EXPECT_TRUE(GetShown().isEmpty());
    Click("_VisRemoveAllBtn");
    EXPECT_TRUE(GetRows().isEmpty());
}

TEST_F(ZORTestVisualizationListTest, RemovesAllWithoutRebuildingTheRowsForEachObject)
{
    for (const char* name : {"A", "B", "C", "D", "E", "F", "G", "H"}) {
        Add(name);
        Visualize(name);
    }
    QSignalSpy rebuilt(GetList()->model(), &QAbstractItemModel::modelReset);
    Click("_VisRemoveAllBtn");
    EXPECT_LE(rebuilt.count(), 2);
    EXPECT_TRUE(GetRows().isEmpty());
    EXPECT_TRUE(GetShown().isEmpty());
}

TEST_F(ZORTestVisualizationListTest, LeavesTheVisualObjectOfADestroyedGeometryInTheEnvironment)
{
    ProbeGeometry* geometry = Add("A");
    Visualize("A");
    const QPointer<ZORVisVirtualObject> object(ProbeVisualizer::last);
    geometry->RemoveNoReferences();
    EXPECT_EQ(QList<ZORVisVirtualObject*>{object}, GetShown());
    EXPECT_EQ(nullptr, object->GetOwner());
    EXPECT_EQ(QStringList{"A"}, GetRows()) << "until the next refresh";
    console->RefreshVisualization();
    EXPECT_TRUE(GetRows().isEmpty());
    Click("_VisRemoveAllBtn");
    EXPECT_NE(nullptr, object.data()) << "no longer the console's business";
}

TEST_F(ZORTestVisualizationListTest, IgnoresARowWhoseGeometryIsGone)
{
    ProbeGeometry* geometry = Add("A");
    Visualize("A");
    MakeCurrent("A");
    geometry->RemoveNoReferences();
    Click("_VisEditBtn");
    Click("_VisRemoveBtn");
    EXPECT_EQ(1, ProbeVisualizer::calls);
    EXPECT_EQ(1, GetShown().size());
}

TEST_F(ZORTestVisualizationListTest, SurvivesAVisualObjectThatTheEnvironmentDeleted)
{
    Add("A");
    Visualize("A");
    delete ProbeVisualizer::last;
    MakeCurrent("A");
    Click("_VisEditBtn");
    EXPECT_EQ(QList<ZORVisVirtualObject*>{ProbeVisualizer::last}, GetShown());
    delete ProbeVisualizer::last;
    Click("_VisRemoveAllBtn");
    EXPECT_TRUE(GetRows().isEmpty());
}

TEST_F(ZORTestVisualizationListTest, FollowsObjectsThatOthersAddAndRemove)
{
    Add("A");
    Visualize("A");
    GetList()->clear();
    auto* other = new ZORVisVirtualObject(GetFeatEnvironment(), nullptr);
    GetFeatEnvironment()->AddVirtualObject(other);
    EXPECT_EQ(QStringList{"A"}, GetRows());
    GetList()->clear();
    delete other;
    EXPECT_EQ(QStringList{"A"}, GetRows());
}

TEST_F(ZORTestVisualizationListTest, TakesWhatItShowsWithItWhenTheConsoleCloses)
{
    ProbeGeometry* geometry = Add("A");
    Add("B");
    Visualize("A");
    Visualize("B");
    ZORDebugVizContainer::AddPoint({1, 2, 3}, 255, 0, 0, 0, QString(), 0);
    InConsole<QCheckBox>("_ShowDebugChk")->setChecked(true);
    EXPECT_EQ(3, GetShown().size());
    CloseConsole();
    EXPECT_TRUE(GetShown().isEmpty());
    geometry->RemoveNoReferences(); // reaches nothing of the console
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
}

} // namespace

#include "ZORTestVisualizationListTest.moc"
