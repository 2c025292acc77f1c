#include "widgets/ZORTestStrategySelector.h"

#include "support/BenchTest.h"
#include "support/ItemTexts.h"

#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMetaMethod>
#include <QPushButton>
#include <QSignalSpy>

namespace {

class ZORTestStrategySelectorTest : public BenchTest
{
protected:
    void Configure()
    {
        selector.setProperty("label", "Strategy: ");
        selector.SetEnvironment(GetEnvironment());
    }

    template<class Widget>
    Widget* Find(const char* objectName)
    {
        return selector.findChild<Widget*>(QLatin1String(objectName));
    }
    QComboBox* Combo() { return Find<QComboBox>("_Combo"); }
    QStringList Entries() { return GetTexts(Combo()); }

    ZORFeatRoot* GetRoot() { return GetContainer()->GetFeatureRoot("ZORCompRoot"); }
    ZORCompStrategy* AddStrategy(ZORFeatObject* parent, const QString& label)
    {
        auto* strategy = new ZORCompStrategy(parent);
        strategy->Initialize();
        strategy->SetLabel(label);
        return strategy;
    }

    ZORTestStrategySelector selector{nullptr};
};

TEST_F(ZORTestStrategySelectorTest, FormIsThatOfTheGeometrySelector)
{
    EXPECT_EQ(QString("ZORTestStrategySelector"), selector.objectName());
    EXPECT_EQ(QString("Form"), selector.windowTitle());
    EXPECT_EQ(QSize(529, 377), selector.size());
    EXPECT_NE(nullptr, Find<QHBoxLayout>("horizontalLayout"));
    const auto* column = Find<QVBoxLayout>("verticalLayout");
    ASSERT_NE(nullptr, column);
    EXPECT_EQ(Combo(), column->itemAt(0)->widget());
    EXPECT_EQ(Find<QListWidget>("_List"), column->itemAt(1)->widget());
    EXPECT_TRUE(Find<QListWidget>("_List")->isHidden()) << "one strategy at a time";
    EXPECT_EQ(QString("Label: "), Find<QLabel>("_Label")->text());
    EXPECT_EQ(QString("..."), Find<QPushButton>("_Button")->text());
    EXPECT_EQ(30, Find<QPushButton>("_Button")->maximumWidth());
}

TEST_F(ZORTestStrategySelectorTest, SignalAndSlotsAreDeclaredInOrder)
{
    const QMetaObject& metaObject = ZORTestStrategySelector::staticMetaObject;
    QStringList signatures;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i)
        signatures.append(QLatin1String(metaObject.method(i).methodSignature()));
    EXPECT_EQ(QStringList({"SelectionChanged(const ZORCompStrategy*)", "OnReload()", "OnBrowseClicked()"}),
              signatures);
    EXPECT_EQ(QList<QByteArray>{"Strategy"}, metaObject.method(metaObject.methodOffset()).parameterNames());
}

TEST_F(ZORTestStrategySelectorTest, EmptyContainerGivesTheTestEntry)
{
    EXPECT_EQ(0, Combo()->count());
    Configure();
    EXPECT_EQ(QString("Strategy: "), Find<QLabel>("_Label")->text());
    EXPECT_EQ(QStringList({"mt Strategy test"}), Entries());
    EXPECT_EQ(quintptr(0x234234234), quintptr(selector.GetSelectedStrategy()));
    EXPECT_TRUE(ZORTestStrategySelector::IsTestHandle(selector.GetSelectedStrategy()));
    EXPECT_STREQ("ZORCompStrategy*", Combo()->itemData(0, Qt::UserRole).metaType().name());
}

TEST_F(ZORTestStrategySelectorTest, StrategiesFollowInTheOrderOfTheRoot)
{
    auto* folder = new ZORFeatFolder(GetRoot());
    folder->Initialize();
    ZORCompStrategy* const last = AddStrategy(GetRoot(), "A");
    ZORCompStrategy* const inner = AddStrategy(folder, "Z");
    AddStrategy(GetContainer()->GetFeatureRoot("ZORFeatRoot"), "Elsewhere");
    Configure();
    EXPECT_EQ(QStringList({"mt Strategy test", "Z", "A"}), Entries()) << "folders are walked, others skipped";
    EXPECT_EQ(0, Combo()->currentIndex());
    Combo()->setCurrentIndex(1);
    EXPECT_EQ(inner, selector.GetSelectedStrategy());
    Combo()->setCurrentIndex(2);
    EXPECT_EQ(last, selector.GetSelectedStrategy());
    EXPECT_FALSE(ZORTestStrategySelector::IsTestHandle(last));
    EXPECT_EQ(last, Combo()->itemData(2, Qt::UserRole).value<ZORCompStrategy*>());
}

TEST_F(ZORTestStrategySelectorTest, ReloadMakesTheTestEntryCurrentAgain)
{
    Configure();
    AddStrategy(GetRoot(), "S");
    EXPECT_EQ(1, Combo()->count()) << "lists follow a reload, not the container";
    selector.OnReload();
    EXPECT_EQ(2, Combo()->count());
    Combo()->setCurrentIndex(1);
    selector.OnReload();
    EXPECT_EQ(QStringList({"mt Strategy test", "S"}), Entries());
    EXPECT_EQ(0, Combo()->currentIndex());
}

TEST_F(ZORTestStrategySelectorTest, StrategyDeletedSinceTheReloadIsNone)
{
    ZORCompStrategy* const strategy = AddStrategy(GetRoot(), "S");
    Configure();
    Combo()->setCurrentIndex(1);
    strategy->Remove();
    EXPECT_EQ(nullptr, selector.GetSelectedStrategy());
}

TEST_F(ZORTestStrategySelectorTest, BrowsingChangesNothing)
{
    AddStrategy(GetRoot(), "S");
    Configure();
    Combo()->setCurrentIndex(1);
    const int numBefore = GetContainer()->GetNumGeometry();
    const QSignalSpy changed(&selector, &ZORTestStrategySelector::SelectionChanged);
    Find<QPushButton>("_Button")->click();
    EXPECT_EQ(QStringList({"mt Strategy test", "S"}), Entries());
    EXPECT_EQ(1, Combo()->currentIndex());
    EXPECT_EQ(0, changed.count());
    EXPECT_EQ(numBefore, GetContainer()->GetNumGeometry());
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
}

} // namespace
