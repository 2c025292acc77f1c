#include "ContainerCommandTest.h"
#include "console/ZORTestInitializeRootCmd.h"
#include "console/ZORTestLoadContainerCmd.h"
#include "console/ZORTestMainDialog.h"
#include "console/ZORTestSaveContainerCmd.h"
#include "core/ZORTestOptionsDlg.h"

#include <ZORGeometry/ZORGeoPoint.h>

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTreeWidget>

namespace {

using ContainerFilesTest = ContainerCommandTest;

TEST_F(ContainerFilesTest, CommandsHaveTheirLabels)
{
    EXPECT_EQ("Save Container", LabelOf(ZORTestSaveContainerCmd::staticMetaObject));
    EXPECT_EQ("Save Container", LabelOf(ZORTestLoadContainerCmd::staticMetaObject)) << "the same on purpose";
    EXPECT_EQ("Initialize Root", LabelOf(ZORTestInitializeRootCmd::staticMetaObject));
}

TEST_F(ContainerFilesTest, SavesToTheChosenFileAndStoresItsPath)
{
    AddPoint("P", {1, 2, 3});
    answers.AnswerFile(path);
    Open("ZORTestSaveContainerCmd");
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Save Container"), shown[0].title);
    EXPECT_EQ(QStringList({"Zorvane Container Files (*.ZORCont)"}), shown[0].filters);
    EXPECT_EQ(QString(), shown[0].fileName);
    EXPECT_TRUE(shown[0].isSaving);
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(path, GetSettings()->value("Debug/SaveContainer/Dir").toString());
    EXPECT_EQ(QStringList({"Debug/SaveContainer/Dir"}), GetSettings()->allKeys());
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(ContainerFilesTest, StartsAtTheFileOfTheLastTime)
{
    Save();
    answers.CancelFile();
    Open("ZORTestSaveContainerCmd");
    EXPECT_EQ(QString("part.ZORCont"), answers.Take().constFirst().fileName);
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(path, GetSettings()->value("Debug/SaveContainer/Dir").toString());
}

TEST_F(ContainerFilesTest, LoadStartsAtTheFileOfTheLastTimeAndKeepsItWhenCancelled)
{
    Save();
    answers.AnswerFile(path);
    Open("ZORTestLoadContainerCmd");
    answers.Take();
    GetSettings()->setValue("Debug/SaveContainer/Dir", GetPath("other.ZORCont"));
    answers.CancelFile();
    Open("ZORTestLoadContainerCmd");
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("part.ZORCont"), shown[0].fileName);
    EXPECT_EQ(QFileInfo(path).absolutePath(), shown[0].directory);
    EXPECT_EQ(QList<bool>({true, false}), finished);
    EXPECT_EQ(path, GetSettings()->value("Debug/LoadContainer/Dir").toString());
}

TEST_F(ContainerFilesTest, QueriesBelongToTheConsole)
{
    OpenConsole();
    for (const char* action : {"_FileMenuSaveAction", "_FileMenuLoadAction"}) {
        answers.CancelFile();
        TriggerMenu(action);
    }
    answers.CancelInput();
    TriggerMenu("_InitializeRootAction");
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(3, shown.size());
    for (const DialogAnswerer::Shown& query : shown)
        EXPECT_EQ(console.data(), query.parent) << query.title.toStdString();
}

TEST_F(ContainerFilesTest, BoxesHaveNoParentWhileAConsoleIsOpen)
{
    OpenConsole();
    answers.AnswerFile(path, [this] { QDir().mkpath(path); });
    TriggerMenu("_FileMenuSaveAction");
    EXPECT_EQ(QList{ErrorBox("Cannot open the file for writing.")}, boxes.Take());
    QDir().rmdir(path);
    QFile(path).open(QIODevice::WriteOnly);
    answers.AnswerFile(path, [this] { QFile::remove(path); });
    TriggerMenu("_FileMenuLoadAction");
    EXPECT_EQ(QList{ErrorBox("Cannot open the file for reading.")}, boxes.Take());
}

TEST_F(ContainerFilesTest, LoadsWhatWasSavedAndStoresItsPath)
{
    AddPoint("P", {1, 2, 3});
    Save();
    GetContainer()->Clear();
    answers.AnswerFile(path);
    Open("ZORTestLoadContainerCmd");
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size());
    EXPECT_EQ(QString("Load Container"), shown[0].title);
    EXPECT_EQ(QStringList({"Zorvane Container Files (*.ZORCont)"}), shown[0].filters);
    EXPECT_FALSE(shown[0].isSaving);
    EXPECT_EQ(QList<bool>({true}), finished);
    EXPECT_EQ(path, GetSettings()->value("Debug/LoadContainer/Dir").toString());
    ASSERT_EQ(1, GetContainer()->GetNumGeometry());
    const auto* point = qobject_cast<ZORGeoPoint*>(GetContainer()->GetGeometryByIndex(0));
    ASSERT_TRUE(point);
    EXPECT_EQ(QString("P"), point->objectName());
    EXPECT_EQ(ZORMathPoint(1, 2, 3), point->GetMathPoint());
}

TEST_F(ContainerFilesTest, CancelledDialogsChangeNothing)
{
    for (const char* name : {"ZORTestSaveContainerCmd", "ZORTestLoadContainerCmd"}) {
        answers.CancelFile();
        Open(name);
    }
    EXPECT_EQ(QList<bool>({false, false}), finished);
    EXPECT_TRUE(GetSettings()->allKeys().isEmpty());
}

TEST_F(ContainerFilesTest, ReplacesALongerFileAndFollowsALink)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(100000, 'x'));
    file.close();
    const QString link = GetPath("link.ZORCont");
    ASSERT_TRUE(QFile::link(path, link));
    AddPoint("P");
    answers.AnswerFile(link);
    Open("ZORTestSaveContainerCmd");
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_LT(QFileInfo(path).size(), 1000);
    answers.AnswerFile(path);
    Open("ZORTestLoadContainerCmd");
    EXPECT_EQ(2, GetContainer()->GetNumGeometry());
}

TEST_F(ContainerFilesTest, DumpsTheLoadWhenTheOptionsAskForIt)
{
    const QString dumpPath = GetPath("dump.txt");
    const auto setOptions = [](bool isOn, const QString& dumpFile) {
        ZORTestOptionsDlg options(nullptr);
        options.findChild<QCheckBox*>("_DumpContainerLoadChk")->setChecked(isOn);
        options.findChild<QLineEdit*>("_ContainerDumpEdit")->setText(dumpFile);
        options.OnOkClicked();
    };
    AddPoint("P", {1, 2, 3});
    Save();
    setOptions(true, dumpPath);
    answers.AnswerFile(path);
    Open("ZORTestLoadContainerCmd");
    EXPECT_EQ(QByteArray("Objects: 1\n0 ZORGeoCartesianPoint \"P\"\n    point = [1, 2, 3]\n"
                         "Outcome: all objects are made\n"),
              ReadFile(dumpPath));
    QFile::remove(dumpPath);
    setOptions(false, dumpPath);
    answers.AnswerFile(path);
    Open("ZORTestLoadContainerCmd");
    EXPECT_FALSE(QFile::exists(dumpPath));
    EXPECT_EQ(QList<bool>({true, true}), finished);
    setOptions(false, {});
}

TEST_F(ContainerFilesTest, LoadingRefreshesTheConsole)
{
    AddPoint("P");
    Save();
    OpenConsole();
    answers.AnswerFile(path);
    TriggerMenu("_FileMenuLoadAction");
    EXPECT_EQ(2, InConsole<QTableView>("_ContTable")->model()->rowCount());
    EXPECT_EQ(QString("P.2"), GetContainer()->GetGeometryByIndex(1)->objectName());
}

TEST_F(ContainerFilesTest, InitializesTheRootOfTheChosenClass)
{
    const QStringList roots = GetRootClasses();
    ASSERT_GT(roots.size(), 1);
    for (const QString& root : roots) {
        GetContainer()->Clear();
        answers.AnswerItem(root);
        Open("ZORTestInitializeRootCmd");
        const QList<DialogAnswerer::Shown> shown = answers.Take();
        ASSERT_EQ(1, shown.size());
        EXPECT_EQ(QString("Select the environment to initialize"), shown[0].title);
        EXPECT_EQ(QString("Environment Class:"), shown[0].label);
        EXPECT_EQ(roots, shown[0].items);
        EXPECT_EQ(0, shown[0].currentIndex);
        EXPECT_FALSE(shown[0].isEditable);
        const QList<ZORFeatRoot*> made = GetContainer()->GetFeatureRoots();
        ASSERT_EQ(1, made.size()) << root.toStdString();
        EXPECT_EQ(root, QString::fromLatin1(made.constFirst()->metaObject()->className()));
        answers.AnswerItem(root);
        Open("ZORTestInitializeRootCmd");
        EXPECT_EQ(made, GetContainer()->GetFeatureRoots()) << "it was there already";
        answers.Take();
    }
    EXPECT_EQ(QList<bool>(2 * roots.size(), true), finished);
}

TEST_F(ContainerFilesTest, OffersNothingWithoutAnyRootClass)
{
    QList<const QMetaObject*> unregistered;
    for (const QMetaObject* type : GetContainer()->GetRegisteredTypes()) {
        if (type->inherits(&ZORFeatRoot::staticMetaObject)) {
            ZORGeoContainer::UnregisterType(type);
            unregistered.append(type);
        }
    }
    EXPECT_EQ(QStringList(), GetRootClasses());
    answers.CancelInput();
    Open("ZORTestInitializeRootCmd");
    for (const QMetaObject* type : unregistered)
        ZORGeoContainer::RegisterType(type);
    const QList<DialogAnswerer::Shown> shown = answers.Take();
    ASSERT_EQ(1, shown.size()) << "asked all the same";
    EXPECT_EQ(QStringList(), shown[0].items);
    EXPECT_EQ(QList<bool>({false}), finished);
    EXPECT_EQ(0, GetContainer()->GetNumGeometry());
}

TEST_F(ContainerFilesTest, CancellingTheRootQueryChoosesItsCurrentClass)
{
    answers.CancelInput();
    Open("ZORTestInitializeRootCmd");
    const QStringList items = answers.Take().constFirst().items;
    ASSERT_EQ(1, GetContainer()->GetFeatureRoots().size());
    EXPECT_EQ(items.constFirst(),
              QString::fromLatin1(GetContainer()->GetFeatureRoots().constFirst()->metaObject()->className()));
}

TEST_F(ContainerFilesTest, TransactionButtonsChangeNothing)
{
    OpenConsole();
    AddPoint("P");
    for (const char* name : {"_TransBeginBtn", "_TransEndBtn", "_TransUndoBtn", "_TransRedoBtn"})
        Click(name);
    EXPECT_EQ(1, GetContainer()->GetNumGeometry());
    EXPECT_EQ(0, InConsole<QTreeWidget>("_TransTree")->topLevelItemCount());
}

} // namespace
