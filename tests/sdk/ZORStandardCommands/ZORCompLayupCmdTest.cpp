#include "StandardCommandsTest.h"
#include "support/CellEditing.h"
#include "support/QtMessages.h"

#include <ZORComposites/ZORCompLayup.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompPly.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompSequence.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QComboBox>
#include <QLabel>
#include <QTableView>
#include <QTest>

#include <numbers>

namespace {

constexpr const char* kId = "ZORCompLayupCmd.Create";
enum Column { Material, Angle };

class ZORCompLayupCmdTest : public StandardCommandsTest
{
protected:
    QTableView* GetTable() const { return Find<QTableView>("_PlyTable"); }
    void SetAngle(int row, double degrees)
    {
        SetCell("_PlyTable", row, Angle, degrees * std::numbers::pi / 180);
    }
    void SelectRow(int row) { GetTable()->setCurrentIndex(GetTable()->model()->index(row, Angle)); }
    /// "Name angle" of each row.
    QStringList GetStack() const
    {
        QStringList stack;
        const QAbstractItemModel* const model = GetTable()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            stack.append(model->index(row, Material).data().toString() + ' '
                         + model->index(row, Angle).data().toString());
        return stack;
    }
    /// The angle of each row, in degrees.
    QList<int> GetAngles() const
    {
        QList<int> angles;
        const QAbstractItemModel* const model = GetTable()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            angles.append(
                qRound(model->index(row, Angle).data(Qt::EditRole).toDouble() * 180 / std::numbers::pi));
        return angles;
    }
    QString GetSummary() const { return Find<QLabel>("_SummaryLbl")->text(); }
    /// Edits a material through the combo box of its cell.
    void ChooseMaterial(int row, const QString& name)
    {
        const QModelIndex cell = GetTable()->model()->index(row, Material);
        GetTable()->setCurrentIndex(cell);
        GetTable()->edit(cell);
        auto* const editor = qobject_cast<QComboBox*>(GetTable()->indexWidget(cell));
        ASSERT_NE(editor, nullptr);
        const int index = editor->findText(name);
        ASSERT_GE(index, 0);
        editor->setCurrentIndex(index);
        GetTable()->setCurrentIndex(GetTable()->model()->index(row, Angle)); // ends the edit
    }
};

TEST_F(ZORCompLayupCmdTest, TableWithoutCurrentCellLogsNothing)
{
    AddMaterial("Carbon", 0.25);
    Open(kId);
    Click("_AddPlyBtn");
    QtMessages messages;
    EXPECT_FALSE(GetTable()->model()->data({}).isValid());
    EXPECT_EQ(QStringList(), messages.TakeWarnings());
    Cancel();
}

TEST_F(ZORCompLayupCmdTest, CreatesALayupWithASequenceOfPlies)
{
    ZORCompMaterial* const carbon = AddMaterial("Carbon", 0.25);
    ZORCompMaterial* const glass = AddMaterial("Glass", 0.5);
    auto* const skin = AddSurface("Skin");
    auto* const rosette = new ZORCompRosette(container->GetFeatureRoot("ZORCompRoot"));
    rosette->SetLabel("Axes");
    rosette->Initialize();
    Open(kId);
    EXPECT_EQ(GetEntries("_SurfaceCombo"), QStringList({"None", "Skin"}));
    EXPECT_EQ(GetEntries("_RosetteCombo"), QStringList({"None", "Axes"}));
    EXPECT_EQ(GetSummary(), QString("0 plies"));
    Choose("_SurfaceCombo", "Skin");
    Choose("_RosetteCombo", "Axes");
    Click("_AddPlyBtn");
    Click("_AddPlyBtn");
    Click("_AddPlyBtn");
    SetAngle(1, 45);
    SetAngle(2, -30.5);
    ChooseMaterial(2, "Glass");
    EXPECT_EQ(GetStack(),
              QStringList({QString::fromUtf8("Carbon 0\u00b0"), QString::fromUtf8("Carbon 45\u00b0"),
                           QString::fromUtf8("Glass -30.5\u00b0")}));
    EXPECT_EQ(GetSummary(), QString("3 plies, 1 mm thick"));
    EXPECT_EQ(Accept(), QString());

    const auto* const layup = GetOnly<ZORCompLayup>();
    ASSERT_NE(layup, nullptr);
    EXPECT_EQ(layup->GetLabel(), QString("Layup 1"));
    EXPECT_EQ(layup->GetParentFeature(), GetOnly<ZORCompRoot>());
    EXPECT_EQ(layup->GetSurface(), skin->GetBody()->GetGeometry());
    EXPECT_EQ(layup->GetRosette(), rosette);
    ASSERT_EQ(layup->GetSequences().size(), 1);
    EXPECT_EQ(layup->GetSequences().at(0)->GetLabel(), QString("Sequence 1"));
    const QList<ZORCompPly*> plies = layup->GetPlies();
    ASSERT_EQ(plies.size(), 3);
    EXPECT_EQ(plies[0]->GetLabel(), QString("Ply 1"));
    EXPECT_EQ(plies[0]->GetMaterial(), carbon);
    EXPECT_EQ(plies[0]->GetAngle(), 0);
    EXPECT_NEAR(plies[1]->GetAngle(), std::numbers::pi / 4, 1e-12);
    EXPECT_EQ(plies[2]->GetMaterial(), glass);
    EXPECT_EQ(layup->GetThickness(), 1);
}

TEST_F(ZORCompLayupCmdTest, NeedsNeitherSurfaceNorRosetteNorPlies)
{
    Open(kId);
    EXPECT_EQ(GetProblem(), QString());
    EXPECT_EQ(Accept(), QString());
    const auto* const layup = GetOnly<ZORCompLayup>();
    ASSERT_NE(layup, nullptr);
    EXPECT_EQ(layup->GetSurface(), nullptr);
    EXPECT_EQ(layup->GetRosette(), nullptr);
    EXPECT_EQ(layup->GetNumPlies(), 0);
    EXPECT_NE(GetOnly<ZORCompSequence>(), nullptr);
}

TEST_F(ZORCompLayupCmdTest, CopiesNothingWhereNoCellIsCurrent)
{
    Open(kId);
    QAbstractItemModel* const model = GetTable()->model();
    const QAbstractItemModelTester tester(model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QTest::keyClick(GetTable(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QVariant(), model->data({}, Qt::DisplayRole));
    EXPECT_FALSE(model->setData({}, 1.0, Qt::EditRole));
}

TEST_F(ZORCompLayupCmdTest, StackIsChangedByItsButtons)
{
    AddMaterial("Carbon", 0.25);
    Open(kId);
    for (const char* button : {"_RemovePlyBtn", "_PlyUpBtn", "_PlyDownBtn", "_MirrorBtn"})
        EXPECT_FALSE(Find<QAbstractButton>(button)->isEnabled()) << button;
    for (int row = 0; row < 3; ++row) {
        Click("_AddPlyBtn");
        SetAngle(row, 10 * row);
    }
    const auto angles = [this] {
        QStringList texts = GetStack();
        texts.replaceInStrings("Carbon ", "").replaceInStrings(QString(QChar(0xb0)), "");
        return texts.join(' ');
    };
    EXPECT_FALSE(Find<QAbstractButton>("_PlyDownBtn")->isEnabled()) << "the last one is selected";
    Click("_PlyUpBtn");
    EXPECT_EQ(angles(), QString("0 20 10"));
    Click("_PlyUpBtn");
    EXPECT_EQ(angles(), QString("20 0 10"));
    EXPECT_FALSE(Find<QAbstractButton>("_PlyUpBtn")->isEnabled());
    Click("_PlyDownBtn");
    EXPECT_EQ(angles(), QString("0 20 10"));
    Click("_MirrorBtn");
    EXPECT_EQ(angles(), QString("0 20 10 10 20 0"));
    SelectRow(2);
    Click("_RemovePlyBtn");
    EXPECT_EQ(angles(), QString("0 20 10 20 0"));
    EXPECT_EQ(GetSummary(), QString("5 plies, 1.25 mm thick"));
    EXPECT_EQ(Accept(), QString());
    EXPECT_TRUE(GetOnly<ZORCompLayup>()->IsSymmetric());
}

TEST_F(ZORCompLayupCmdTest, DoesNotTakePliesWithoutAMaterial)
{
    Open(kId);
    Click("_AddPlyBtn");
    EXPECT_EQ(GetProblem(), QString("Ply 1: choose a material."));
    EXPECT_EQ(GetSummary(), QString("1 ply, thickness unknown"));
    EXPECT_EQ(Accept(), GetProblem());
    EXPECT_TRUE(GetAll<ZORCompLayup>().isEmpty());
    ZORCompMaterial* const carbon = AddMaterial("Carbon", 0.25);
    ChooseMaterial(0, "Carbon");
    EXPECT_EQ(GetProblem(), QString());
    carbon->SetLabel("Fibre");
    EXPECT_EQ(GetStack(), QStringList{QString::fromUtf8("Fibre 0\u00b0")});
    carbon->Remove();
    EXPECT_EQ(GetProblem(), QString("Ply 1: choose a material."));
    Click("_RemovePlyBtn");
    Enter("_LabelEdit", "");
    EXPECT_EQ(GetProblem(), QString("Enter a label."));
    Cancel();
}

TEST_F(ZORCompLayupCmdTest, OffersTheRosetteThatIsCreatedMeanwhile)
{
    Open(kId);
    const QPointer<ZORCmdDialogCommand> layup = frame.command;
    const QPointer<QWidget> content = frame.content;
    Click("_NewRosetteBtn");
    ASSERT_NE(frame.command, layup) << "the dialog of the rosette";
    EXPECT_EQ(Accept(), QString());
    frame.command = layup;
    frame.content = content;
    EXPECT_EQ(GetEntry("_RosetteCombo"), QString("Rosette 1"));
    EXPECT_EQ(Accept(), QString());
    EXPECT_EQ(GetOnly<ZORCompLayup>()->GetRosette(), GetOnly<ZORCompRosette>());
}

TEST_F(ZORCompLayupCmdTest, OpensTheMaterialLibrary)
{
    Open(kId);
    const QPointer<ZORCmdDialogCommand> layup = frame.command;
    const QPointer<QWidget> content = frame.content;
    Click("_MaterialsBtn");
    ASSERT_NE(frame.command, layup);
    Click("_AddBtn");
    EXPECT_EQ(Accept(), QString());
    frame.command = layup;
    frame.content = content;
    Click("_AddPlyBtn");
    EXPECT_EQ(GetProblem(), QString());
    EXPECT_EQ(GetStack(), QStringList{QString::fromUtf8("Material 1 0\u00b0")});
    Cancel();
    EXPECT_TRUE(GetAll<ZORCompLayup>().isEmpty());
}

TEST_F(ZORCompLayupCmdTest, ButtonsFinishAnOpenEditor)
{
    AddMaterial("M", 0.2);
    Open("ZORCompLayupCmd.Create");
    QtMessages messages;
    Click("_AddPlyBtn"); // opens the editor of the angle
    Click("_AddPlyBtn");
    const auto enter = [this](int row, const char* degrees) {
        QWidget* const editor = EditCell(GetTable(), row, Angle);
        ASSERT_NE(nullptr, editor) << row;
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QLatin1String(degrees));
    };
    enter(1, "30");
    Click("_PlyUpBtn");
    enter(1, "60");
    EXPECT_EQ(GetAngles(), QList<int>({30, 0}));
    Click("_MirrorBtn");
    EXPECT_EQ(GetAngles(), QList<int>({30, 60, 60, 30}));
    enter(0, "10");
    QTest::keyClick(GetTable()->indexWidget(GetTable()->currentIndex()), Qt::Key_Return);
    Click("_RemovePlyBtn");
    enter(1, "20");
    Click("_PlyDownBtn");
    EXPECT_EQ(GetAngles(), QList<int>({60, 30, 20}));
    EditCell(GetTable(), 2, Material);
    Click("_RemovePlyBtn");
    SettleEvents();
    EXPECT_EQ(GetAngles(), QList<int>({60, 30}));
    EXPECT_NE(nullptr, EditCell(GetTable(), 0, Angle)) << "the table still edits";
    EXPECT_EQ(QStringList(), messages.TakeWarnings());
}

} // namespace
