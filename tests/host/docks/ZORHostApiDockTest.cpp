#include "docks/ZORHostApiDock.h"

#include "HostTest.h"
#include "docks/ZORHostLineFilter.h"
#include "docks/ZORHostLineModel.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>

namespace {

class ZORHostApiDockTest : public HostTest
{
public:
    QStringList Calls()
    {
        dock.Flush();
        QStringList calls;
        for (int row = 0; row < dock.GetFilter()->rowCount(); ++row)
            calls.append(dock.GetFilter()->index(row, 1).data().toString());
        return calls;
    }
    void Record(bool on) { dock.findChild<QCheckBox*>("_ApiRecordChk")->setChecked(on); }
    void MakePoint(double x)
    {
        auto* point = new ZORGeoCartesianPoint(GetEnvironment()->GetContainer(), ZORMathPoint(x, 0, 0));
        point->Initialize();
    }

    ZORHostApiDock dock{nullptr};
};

TEST_F(ZORHostApiDockTest, ListsOutermostCallsOnlyWhileRecording)
{
    MakePoint(1);
    EXPECT_TRUE(Calls().isEmpty());
    EXPECT_FALSE(ZORSysApiTrace::IsEnabled());
    Record(true);
    MakePoint(2);
    const QStringList calls = Calls();
    ASSERT_EQ(2, calls.size()) << calls.join('\n').toStdString();
    EXPECT_TRUE(calls[0].startsWith("ZORGeoCartesianPoint::ZORGeoCartesianPoint(")) << calls[0].toStdString();
    EXPECT_TRUE(calls[0].contains("(2, 0, 0)")) << calls[0].toStdString();
    Record(false);
    MakePoint(3);
    EXPECT_EQ(calls, Calls());
}

TEST_F(ZORHostApiDockTest, FiltersCopiesAndShowsDurations)
{
    Record(true);
    MakePoint(2);
    Calls();
    dock.findChild<QLineEdit*>("_ApiFilterEdit")->setText("initialize");
    ASSERT_EQ(1, Calls().size());
    dock.findChild<QPushButton*>("_ApiCopyBtn")->click();
    const QStringList cells = QGuiApplication::clipboard()->text().split('\t');
    ASSERT_EQ(2, cells.size());
    EXPECT_TRUE(cells[0].endsWith("s")) << cells[0].toStdString();
    EXPECT_TRUE(cells[1].contains("::Initialize(")) << cells[1].toStdString();
}

TEST_F(ZORHostApiDockTest, IsBoundedAndShowsManyCallsInOneStep)
{
    Record(true);
    const QSignalSpy insertions(dock.GetModel(), &QAbstractItemModel::rowsInserted);
    for (int i = 0; i < 100'000; ++i)
        emit ZORSysApiTrace::GetInstance()->CallTraced("Class::Method(1)", i);
    dock.Flush();
    EXPECT_EQ(ZORHostApiDock::kCapacity, dock.GetModel()->rowCount());
    EXPECT_EQ(1, insertions.size());
}

TEST_F(ZORHostApiDockTest, DurationsHaveThreeDigits)
{
    const std::pair<qint64, const char*> cases[] = {
        {0, "0 ns"},           {870, "870 ns"},        {1234, "1.23 \u00b5s"},  {12'340, "12.3 \u00b5s"},
        {999'600, "1.00 ms"},  {4'560'000, "4.56 ms"}, {123'456'789, "123 ms"}, {1'234'567'890, "1.23 s"},
        {99'960'000, "100 ms"}};
    for (const auto& [nanoseconds, text] : cases)
        EXPECT_EQ(QString::fromUtf8(text), ZORHostApiDock::FormatDuration(nanoseconds));
}

} // namespace
