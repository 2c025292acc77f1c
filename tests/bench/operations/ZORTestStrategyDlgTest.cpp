#include "OperationTest.h"
#include "core/ZORTestCommandRegistry.h"
#include "widgets/ZORTestStrategySelector.h"

#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatRoot.h>

#include <QComboBox>
#include <QSettings>

namespace {

constexpr char kKey[] = "Debug/Strategy/something";

class ZORTestStrategyDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestStrategyDlg")); }
    QComboBox* Combo() { return Field<ZORTestStrategySelector>("_StrategySel")->findChild<QComboBox*>(); }
    /// Opens the dialog with a strategy, chosen.
    ZORCompStrategy* Choose()
    {
        auto* strategy = new ZORCompStrategy(GetContainer()->GetFeatureRoot("ZORCompRoot"));
        strategy->Initialize();
        strategy->SetLabel("Geodesic");
        TakeNew();
        OpenDialog();
        Combo()->setCurrentIndex(1);
        return strategy;
    }
};

TEST_F(ZORTestStrategyDlgTest, FormAsksForAStrategy)
{
    Choose();
    EXPECT_EQ(QString("Using Strategy Selector"), dialog->windowTitle());
    EXPECT_EQ(QString("Getting Strategy"), GetClassInfo("label"));
    EXPECT_EQ(QString("ZORCompStrategy"), GetClassInfo("createdTypes"));
    EXPECT_EQ(QStringList({"Strategy: "}), GetCaptions());
    EXPECT_EQ(QStringList(), GetGeoTypes());
    ASSERT_EQ(2, Combo()->count());
    EXPECT_EQ(QString("mt Strategy test"), Combo()->itemText(0));
    EXPECT_EQ(QString("Geodesic"), Combo()->itemText(1));
}

TEST_F(ZORTestStrategyDlgTest, OkWritesTheSettingBackAsItWas)
{
    GetSettings()->setValue(kKey, "a value, with blanks ");
    Choose();
    PressOk();
    EXPECT_EQ(QStringList(), boxes.TakeErrors());
    EXPECT_EQ(QList<bool>({true, true}), finished);
    EXPECT_EQ(QString("a value, with blanks "), GetSettings()->value(kKey).toString());
    EXPECT_EQ(QStringList({kKey}), GetSettings()->allKeys());
    EXPECT_TRUE(TakeNew().isEmpty());
}

TEST_F(ZORTestStrategyDlgTest, MissingSettingIsWrittenAsAnEmptyText)
{
    Choose();
    PressOk();
    EXPECT_EQ(QStringList({kKey}), GetSettings()->allKeys());
    EXPECT_EQ(QString(""), GetSettings()->value(kKey).toString());
}

TEST_F(ZORTestStrategyDlgTest, TestEntryIsReportedWithoutBeingTouched)
{
    OpenDialog();
    EXPECT_EQ(QString("mt Strategy test"), Combo()->currentText());
    PressOk();
    EXPECT_EQ(QStringList({"Strategy selection invalid"}), boxes.TakeErrors());
    EXPECT_EQ(QStringList(), GetSettings()->allKeys());
}

TEST_F(ZORTestStrategyDlgTest, StrategyThatIsGoneIsReported)
{
    Choose()->Remove();
    PressOk();
    EXPECT_EQ(QStringList({"Strategy selection invalid"}), boxes.TakeErrors());
    EXPECT_EQ(QStringList(), GetSettings()->allKeys());
}

TEST_F(ZORTestStrategyDlgTest, SelectorsOfStrategiesOfferIt)
{
    QStringList creators;
    for (const QMetaObject* creator : ZORTestCommandRegistry::Instance().FindCreators("ZORCompStrategy"))
        creators.append(QLatin1String(creator->className()));
    creators.sort();
    EXPECT_EQ(QStringList({"ZORTestCreateDrapingDlg", "ZORTestStrategyDlg"}), creators);
}

} // namespace
