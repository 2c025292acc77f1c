// The entries of the console that run the SDK's own commands, with the library of these commands loaded and without.

#include "core/ZORTestDialog.h"
#include "support/BenchTest.h"
#include "support/DialogFrame.h"

#include <ZORFeature/ZORFeatObject.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLibrary>
#include <QTableView>

namespace {

constexpr const char* kEntries[] = {"actionCreate_Layup", "actionMaterials", "actionCreate_Rosette",
                                    "actionCreate_Projection"};

class ZORTestStandardCommandsTest : public BenchTest
{
protected:
    ~ZORTestStandardCommandsTest() override
    {
        if (library.isLoaded()) {
            EXPECT_TRUE(library.unload());
        }
    }
    void Accept()
    {
        frame.command->Accept();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    bool HasObject(const QByteArray& className) const
    {
        for (int i = 0; i < GetContainer()->GetNumGeometry(); ++i) {
            if (GetContainer()->GetGeometryByIndex(i)->metaObject()->className() == className)
                return true;
        }
        return false;
    }

    DialogFrame frame;
    QLibrary library{QStringLiteral(ZOR_STANDARD_COMMANDS)};
};

TEST_F(ZORTestStandardCommandsTest, SayThatNoActionMatchesWithoutTheLibrary)
{
    OpenConsole();
    for (const char* entry : kEntries) {
        TriggerMenu(entry);
        EXPECT_EQ(QStringList{"No action matches the menu action."}, boxes.TakeErrors()) << entry;
        EXPECT_TRUE(frame.content.isNull()) << entry;
    }
}

TEST_F(ZORTestStandardCommandsTest, OpenTheirDialogsAndCreateObjectsWithTheLibrary)
{
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    AddSurface("Skin");
    AddPoint("Corner", {0.5, 0.5, 3});
    OpenConsole();
    for (const char* entry : kEntries) {
        TriggerMenu(entry);
        ASSERT_FALSE(frame.content.isNull()) << entry;
        EXPECT_EQ(QString(), frame.command->GetProblem()) << entry;
        Accept();
        EXPECT_TRUE(frame.command.isNull()) << entry;
    }
    EXPECT_TRUE(boxes.Take().isEmpty());
    for (const char* className :
         {"ZORCompLayup", "ZORCompSequence", "ZORCompMaterialLibrary", "ZORCompRosette", "ZORWFProjection"})
        EXPECT_TRUE(HasObject(className)) << className;

    // What they created can be selected at once.
    CloseConsole();
    ZORTestDialog* const curveOnSupport = Open("ZORTestWFCurveOnSupportDlg");
    ASSERT_NE(nullptr, curveOnSupport);
    QStringList entries;
    for (const QComboBox* combo : curveOnSupport->findChildren<QComboBox*>()) {
        for (int i = 0; i < combo->count(); ++i)
            entries.append(combo->itemText(i));
    }
    EXPECT_FALSE(entries.filter("(Projection 1)").isEmpty()) << entries.join(", ").toStdString();
    PressCancel();
}

TEST_F(ZORTestStandardCommandsTest, SayAgainThatNoActionMatchesOnceTheLibraryIsUnloaded)
{
    OpenConsole();
    ASSERT_TRUE(library.load());
    TriggerMenu("actionCreate_Rosette");
    ASSERT_FALSE(frame.content.isNull());
    EXPECT_TRUE(library.unload());
    EXPECT_TRUE(frame.content.isNull()) << "its dialogs end with it";
    TriggerMenu("actionCreate_Rosette");
    EXPECT_EQ(QStringList{"No action matches the menu action."}, boxes.TakeErrors());
}

} // namespace
