#include "console/ZORTestGeoInspectionDlg.h"

#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"

#include <ZORGeometry/ZORGeoPoint.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTableView>

namespace {

class ZORTestGeoInspectionDlgTest : public BenchTest
{
protected:
    /// Presses "Inspect" on row \a row of the container table.
    ZORTestGeoInspectionDlg* Inspect(int row)
    {
        auto* table = InConsole<QTableView>("_ContTable");
        table->setCurrentIndex(table->model()->index(row, 0));
        Click("_ContInspectBtn");
        const auto dialogs = console->findChildren<ZORTestGeoInspectionDlg*>();
        EXPECT_EQ(1, dialogs.size());
        return dialogs.value(0);
    }
};

TEST_F(ZORTestGeoInspectionDlgTest, HasTheFormWithBothAreasEmpty)
{
    const ZORTestGeoInspectionDlg dlg(nullptr);
    EXPECT_EQ(QString("Inspect Geometry"), dlg.windowTitle());
    EXPECT_EQ(QSize(221, 253), dlg.size());
    const auto text = [&dlg](const char* name) {
        const auto* widget = dlg.findChild<QWidget*>(QLatin1String(name));
        return widget ? widget->property("text").toString() : QStringLiteral("no such widget");
    };
    EXPECT_EQ(QString("Constructor trace:"), text("_ConstLabel"));
    EXPECT_EQ(QString("Reference count traces:"), text("_RefLabel"));
    EXPECT_EQ(QString("Only remaining references"), text("_RemRefChk"));
    EXPECT_EQ(0, dlg.findChild<QComboBox*>("_RefCombo")->count());
    for (const char* name : {"_ConstEdit", "_RefEdit"}) {
        const auto* edit = dlg.findChild<QPlainTextEdit*>(QLatin1String(name));
        ASSERT_NE(nullptr, edit);
        EXPECT_EQ(QString(), edit->toPlainText());
        EXPECT_EQ(QPlainTextEdit::NoWrap, edit->lineWrapMode());
    }
}

TEST_F(ZORTestGeoInspectionDlgTest, OpensAsAChildOfTheConsoleWithoutBlocking)
{
    ZORGeoPoint* point = AddPoint(QStringLiteral("A"));
    OpenConsole();
    const ZORTestGeoInspectionDlg* dlg = Inspect(0);
    ASSERT_NE(nullptr, dlg);
    EXPECT_TRUE(dlg->isVisible());
    EXPECT_FALSE(dlg->isModal());
    EXPECT_EQ(console.data(), dlg->parentWidget());
    EXPECT_EQ(point, dlg->GetGeometry());
}

TEST_F(ZORTestGeoInspectionDlgTest, IsReusedForTheNextGeometry)
{
    AddPoint(QStringLiteral("A"));
    ZORGeoPoint* second = AddPoint(QStringLiteral("B"));
    OpenConsole();
    ZORTestGeoInspectionDlg* dlg = Inspect(0);
    EXPECT_EQ(dlg, Inspect(1));
    EXPECT_EQ(second, dlg->GetGeometry());
    dlg->close();
    EXPECT_EQ(dlg, Inspect(1)) << "closing only hides it";
    EXPECT_TRUE(dlg->isVisible());
}

TEST_F(ZORTestGeoInspectionDlgTest, LosesItsGeometryWhenThatIsDestroyed)
{
    ZORGeoPoint* point = AddPoint(QStringLiteral("A"));
    OpenConsole();
    const ZORTestGeoInspectionDlg* dlg = Inspect(0);
    point->RemoveNoReferences();
    EXPECT_EQ(nullptr, dlg->GetGeometry());
    EXPECT_TRUE(dlg->isVisible());
}

TEST_F(ZORTestGeoInspectionDlgTest, ShowsTheDataOfTheCurrentReferenceTrace)
{
    ZORTestGeoInspectionDlg dlg(nullptr);
    auto* combo = dlg.findChild<QComboBox*>("_RefCombo");
    const auto* edit = dlg.findChild<QPlainTextEdit*>("_RefEdit");
    combo->addItem("one", "first trace");
    combo->addItem("two", "second trace");
    EXPECT_EQ(QString("first trace"), edit->toPlainText());
    combo->setCurrentIndex(1);
    EXPECT_EQ(QString("second trace"), edit->toPlainText());
    combo->clear();
    EXPECT_EQ(QString(), edit->toPlainText());
}

TEST_F(ZORTestGeoInspectionDlgTest, OnlyRemainingReferencesChangesNothing)
{
    ZORTestGeoInspectionDlg dlg(nullptr);
    dlg.show();
    auto* combo = dlg.findChild<QComboBox*>("_RefCombo");
    combo->addItem("one", "first trace");
    dlg.findChild<QCheckBox*>("_RemRefChk")->click();
    EXPECT_EQ(1, combo->count());
    EXPECT_EQ(QString("first trace"), dlg.findChild<QPlainTextEdit*>("_RefEdit")->toPlainText());
    EXPECT_EQ(QString(), dlg.findChild<QPlainTextEdit*>("_ConstEdit")->toPlainText());
}

TEST_F(ZORTestGeoInspectionDlgTest, ConnectsItsTwoSlotsOnce)
{
    ZORTestGeoInspectionDlg dlg(nullptr);
    auto* check = dlg.findChild<QCheckBox*>("_RemRefChk");
    auto* combo = dlg.findChild<QComboBox*>("_RefCombo");
    const auto disconnectCheck = [&] {
        return QObject::disconnect(check, &QCheckBox::stateChanged, &dlg,
                                   &ZORTestGeoInspectionDlg::OnRemRefChange);
    };
    const auto disconnectCombo = [&] {
        return QObject::disconnect(combo, &QComboBox::currentTextChanged, &dlg,
                                   &ZORTestGeoInspectionDlg::OnRefTraceChange);
    };
    EXPECT_TRUE(disconnectCheck());
    EXPECT_FALSE(disconnectCheck());
    EXPECT_TRUE(disconnectCombo());
    EXPECT_FALSE(disconnectCombo());
}

} // namespace
