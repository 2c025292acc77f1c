#include "OperationTest.h"

#include <ZORFeature/ZORFeatFolder.h>

#include <QLineEdit>

namespace {

class ZORTestCreateFolderDlgTest : public OperationTest
{
protected:
    void OpenDialog() { ASSERT_NE(nullptr, Open("ZORTestCreateFolderDlg")); }
};

TEST_F(ZORTestCreateFolderDlgTest, FormAsksForAParentAndALabel)
{
    AddFolder("F");
    OpenDialog();
    ExpectClass("Create Folder", {});
    EXPECT_EQ(QStringList({"Parent Folder: ", "Label: "}), GetCaptions());
    EXPECT_EQ(QStringList({"ZORFeatFolder"}), GetGeoTypes());
    EXPECT_EQ(2, GetCandidates("_ParentSel").size()) << "the root is a folder as well";
    EXPECT_EQ(QString(), Field<QLineEdit>("_LabelEdit")->text());
}

TEST_F(ZORTestCreateFolderDlgTest, OkAddsALabelledFolder)
{
    ZORFeatFolder* const parent = AddFolder("F");
    OpenDialog();
    Select("_ParentSel", "F (F)");
    TypeInto("_LabelEdit", "Stringer \"A\"");
    EXPECT_EQ(QStringList({"ZORFeatFolder::ZORFeatFolder(<F>)", "ZORFeatObject::Initialize()",
                           "ZORFeatObject::SetLabel(\"Stringer \\\"A\\\"\")"}),
              TraceOk());
    const auto* const folder = TakeOnly<ZORFeatFolder>();
    ASSERT_TRUE(folder);
    EXPECT_EQ(parent, folder->GetParentFeature());
    EXPECT_EQ(QString("Stringer \"A\""), folder->GetLabel());
}

TEST_F(ZORTestCreateFolderDlgTest, EmptyLabelKeepsTheDefault)
{
    AddFolder("F");
    OpenDialog();
    Select("_ParentSel", "F (F)");
    EXPECT_EQ(QStringList({"ZORFeatFolder::ZORFeatFolder(<F>)", "ZORFeatObject::Initialize()"}), TraceOk());
    const auto* const folder = TakeOnly<ZORFeatFolder>();
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->objectName(), folder->GetLabel());
    EXPECT_TRUE(folder->GetLabel().startsWith("Folder."));
}

TEST_F(ZORTestCreateFolderDlgTest, BlankIsALabelOfItsOwn)
{
    AddFolder("F");
    OpenDialog();
    TypeInto("_LabelEdit", " ");
    PressOk();
    EXPECT_EQ(QString(" "), TakeOnly<ZORFeatFolder>()->GetLabel());
}

TEST_F(ZORTestCreateFolderDlgTest, MissingParentIsReported)
{
    OpenDialog();
    TypeInto("_LabelEdit", "A");
    ExpectRefused("Selection of parent folder is invalid", SdkCalls::None);
}

TEST_F(ZORTestCreateFolderDlgTest, ParentThatWasRemovedMeanwhileIsReported)
{
    ZORFeatFolder* const folder = AddFolder("F");
    OpenDialog();
    Select("_ParentSel", "F (F)");
    folder->Remove();
    PressOk();
    EXPECT_EQ(QStringList({"Selection of parent folder is invalid"}), boxes.TakeErrors());
}

TEST_F(ZORTestCreateFolderDlgTest, ConsoleOpensItFromItsMenu)
{
    ExpectMenuOpens("actionCreate_Folder", "ZORTestCreateFolderDlg");
}

} // namespace
