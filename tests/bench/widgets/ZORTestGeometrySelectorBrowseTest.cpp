// The "..." button of the geometry selector.

#include "SelectorProbes.h"
#include "console/ZORTestMainDialog.h"
#include "support/BenchTest.h"
#include "widgets/ZORTestGeometrySelector.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QTest>

namespace {

class ZORTestGeometrySelectorBrowseTest : public BenchTest
{
protected:
    ZORTestGeometrySelectorBrowseTest()
        : selector(std::make_unique<ZORTestGeometrySelector>(nullptr))
    {
        ProbePointCmd::executed.clear();
    }

    void Configure(const char* geoType, const char* bodyDim = "")
    {
        selector->setProperty("geoType", geoType);
        selector->setProperty("bodyDim", bodyDim);
        selector->SetEnvironment(GetEnvironment());
    }
    void Browse() { QTest::mouseClick(selector->findChild<QPushButton*>("_Button"), Qt::LeftButton); }
    QComboBox* Combo() { return selector->findChild<QComboBox*>("_Combo"); }
    static ProbePointDlg* FindOpenDialog()
    {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (auto* opened = qobject_cast<ProbePointDlg*>(window); opened && opened->isVisible())
                return opened;
        }
        return nullptr;
    }

    std::unique_ptr<ZORTestGeometrySelector> selector;
};

TEST_F(ZORTestGeometrySelectorBrowseTest, OffersTheCreatorsOfTheWantedClassInOrder)
{
    Configure("ProbePoint");
    answers.AnswerItem("Create Probe Point");
    Browse();

    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Select Command"), shown[0].title);
    EXPECT_EQ(QString("Command: "), shown[0].label);
    EXPECT_EQ(QStringList({"Create Probe Point", "ProbeFailingCmd"}), shown[0].items)
        << "by label, by class name where there is none";
    EXPECT_EQ(0, shown[0].currentIndex);
    EXPECT_FALSE(shown[0].isEditable);
    EXPECT_EQ(GetEnvironment()->GetUiParent(), shown[0].parent);
    EXPECT_EQ(QStringList({"ProbePointCmd"}), ProbePointCmd::executed);
}

TEST_F(ZORTestGeometrySelectorBrowseTest, ListIsRebuiltWhenTheCommandFinishes)
{
    AddPoint("A");
    AddPoint("B");
    Configure("ZORGeoCartesianPoint");
    Combo()->setCurrentIndex(1);
    answers.AnswerItem("Create Probe Point");
    Browse();
    EXPECT_EQ(3, Combo()->count());
    EXPECT_EQ(0, Combo()->currentIndex()) << "the first entry is current again";
    EXPECT_EQ(QString("A"), Combo()->currentText());
}

TEST_F(ZORTestGeometrySelectorBrowseTest, CancelRunsTheFirstCommand)
{
    Configure("ProbePoint");
    answers.CancelInput();
    Browse();
    EXPECT_EQ(QStringList({"ProbePointCmd"}), ProbePointCmd::executed);
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
}

TEST_F(ZORTestGeometrySelectorBrowseTest, FailureOfTheCommandIsShown)
{
    Configure("ProbePoint");
    answers.AnswerItem("ProbeFailingCmd");
    Browse();
    EXPECT_EQ(QStringList({"the probe failed"}), boxes.TakeErrors());
    EXPECT_EQ(QStringList({"ProbeFailingCmd"}), ProbePointCmd::executed);
}

TEST_F(ZORTestGeometrySelectorBrowseTest, UnknownClassHasNoCommand)
{
    Configure("ProbeNothing");
    answers.CancelInput();
    Browse();
    EXPECT_EQ(QStringList(), answers.Take().constFirst().items);
    EXPECT_EQ(QStringList({"Invalid command selected"}), boxes.TakeErrors());
}

TEST_F(ZORTestGeometrySelectorBrowseTest, CreatedClassIsComparedExactly)
{
    Configure("ZORGeoGeometry"); // a base of what the command creates
    answers.CancelInput();
    Browse();
    EXPECT_EQ(QStringList(), answers.Take().constFirst().items);
    EXPECT_EQ(QStringList({"Invalid command selected"}), boxes.TakeErrors());
}

TEST_F(ZORTestGeometrySelectorBrowseTest, BodiesAreCreatedOnlyByCommandsOfAnAdmissibleDimension)
{
    struct Row
    {
        const char* bodyDim;
        QStringList choices;
    };
    const QString probe = "Create Curve Body", curve = "Create Topological Curve";
    const QList<Row> table = {
        {"1", {probe, curve}}, {"0 1 2", {probe, curve, "Create Topological Surface"}}, {"0", {}}, {"", {}}};
    for (const Row& row : table) {
        Configure("ZORTopBody", row.bodyDim);
        answers.CancelInput();
        Browse();
        EXPECT_EQ(row.choices, answers.Take().constFirst().items) << row.bodyDim;
        const QStringList expectedErrors =
            row.choices.isEmpty() ? QStringList({"Invalid command selected"}) : QStringList();
        EXPECT_EQ(expectedErrors, boxes.TakeErrors()) << row.bodyDim;
    }
    EXPECT_EQ(QStringList({"ProbeCurveBodyCmd", "ProbeCurveBodyCmd"}), ProbePointCmd::executed);
}

TEST_F(ZORTestGeometrySelectorBrowseTest, OtherClassesKeepEveryCommandWhateverTheDimensions)
{
    Configure("ProbeBody", "2");
    answers.AnswerItem("Create Any Body");
    Browse();
    EXPECT_EQ(QStringList({"Create Any Body", "Create Curve Body"}), answers.Take().constFirst().items);
    EXPECT_EQ(QStringList({"ProbeAnyBodyCmd"}), ProbePointCmd::executed);
}

TEST_F(ZORTestGeometrySelectorBrowseTest, CommandsOfOneLabelShareOneChoice)
{
    Configure("ProbeTwin");
    answers.AnswerItem("Twin");
    Browse();
    EXPECT_EQ(QStringList({"Twin"}), answers.Take().constFirst().items);
    ASSERT_EQ(1, ProbePointCmd::executed.size());
    EXPECT_TRUE(ProbePointCmd::executed[0].startsWith("ProbeTwin"));
}

TEST_F(ZORTestGeometrySelectorBrowseTest, DialogReportsBackWhenItIsAccepted)
{
    Configure("ProbeDialogPoint");
    selector->setProperty("geoType", "ZORGeoPoint");
    selector->OnReload();
    selector->setProperty("geoType", "ProbeDialogPoint");
    answers.AnswerItem("Probe Point Dialog");
    Browse();
    selector->setProperty("geoType", "ZORGeoPoint");

    dialog = FindOpenDialog();
    ASSERT_NE(nullptr, dialog) << "the dialog is open and not modal";
    EXPECT_FALSE(dialog->isModal());
    EXPECT_EQ(0, Combo()->count());
    PressOk();
    EXPECT_EQ(1, Combo()->count());
}

TEST_F(ZORTestGeometrySelectorBrowseTest, SelectorMayDieBeforeItsDialogIsAnswered)
{
    Configure("ProbeDialogPoint");
    answers.AnswerItem("Probe Point Dialog");
    Browse();
    selector.reset();
    dialog = FindOpenDialog();
    ASSERT_NE(nullptr, dialog);
    PressOk();
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
}

TEST_F(ZORTestGeometrySelectorBrowseTest, ConsoleIsTheParentOfTheQuestionAndOfTheError)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu("_ExportSTLAction"));
    auto* inDialog = dialog->findChild<ZORTestGeometrySelector*>();
    ASSERT_NE(nullptr, inDialog);

    // A command of the first label runs: the import, or the reading of nesting results, which has the same one.
    answers.CancelInput();
    answers.CancelFile();
    QTest::mouseClick(inDialog->findChild<QPushButton*>("_Button"), Qt::LeftButton);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(2, shown.size());
    EXPECT_EQ(QStringList({"Import STL Surface", "Save to MSI file"}), shown[0].items);
    EXPECT_EQ(console.data(), shown[0].parent);

    inDialog->setProperty("geoType", "ProbeNothing");
    answers.CancelInput();
    QTest::mouseClick(inDialog->findChild<QPushButton*>("_Button"), Qt::LeftButton);
    const QList<MessageBoxCatcher::Box> errors = boxes.Take();
    ASSERT_EQ(1, errors.size());
    EXPECT_EQ(console.data(), errors[0].parent);
    PressCancel();
}

} // namespace
