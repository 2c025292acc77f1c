#include "core/ZORTestCommandRegistry.h"

#include "core/ZORTestCommand.h"
#include "core/ZORTestDialog.h"
#include "core/ZORTestDialogCommand.h"
#include "support/BenchTest.h"
#include "visualization/ZORTestVisualizer.h"

#include <ZORSystem/ZORSysException.h>

#include <QApplication>
#include <QSet>

// The classes of these tests, in a registry of their own. Three stand for geometry classes: only the
// names along the chain of meta-objects count.

class FakeGeometry : public QObject
{
    Q_OBJECT
};

class FakeCurve : public FakeGeometry
{
    Q_OBJECT
};

class FakeLine : public FakeCurve
{
    Q_OBJECT
};

class FakeCommand : public ZORTestCommand
{
    Q_OBJECT
    Q_CLASSINFO("label", "Fake")
    Q_CLASSINFO("createdTypes", "FakeCurve FakeLine")

public:
    Q_INVOKABLE explicit FakeCommand(ZORTestEnvironment* environment)
        : ZORTestCommand(environment)
    {
    }
};

class FakeDialog : public ZORTestDialog
{
    Q_OBJECT
    Q_CLASSINFO("createdTypes", "FakeLine")

public:
    Q_INVOKABLE explicit FakeDialog(ZORTestEnvironment* environment)
        : ZORTestDialog(environment)
    {
    }
    bool Apply() override { return true; }
};

class FakeOther : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit FakeOther(ZORTestEnvironment* environment)
        : QObject(environment)
    {
    }
};

class FakeWithoutConstructor : public ZORTestCommand
{
    Q_OBJECT

public:
    explicit FakeWithoutConstructor(ZORTestEnvironment* environment)
        : ZORTestCommand(environment)
    {
    }
};

class FakeVisualizerBase : public ZORTestVisualizer
{
    Q_OBJECT

public:
    ZORVisVirtualObject* Visualize(ZORTestEnvironment*, ZORGeoGeometry*) override { return nullptr; }
};

class FakeCurveVisualizer : public FakeVisualizerBase
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "FakeCurve FakeOther")

public:
    Q_INVOKABLE FakeCurveVisualizer() = default;
};

class FakeLineVisualizer : public FakeVisualizerBase
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "FakeLine")

public:
    Q_INVOKABLE FakeLineVisualizer() = default;
};

class OtherLineVisualizer : public FakeVisualizerBase
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "FakeLine")

public:
    Q_INVOKABLE OtherLineVisualizer() = default;
};

class VisualizerWithoutConstructor : public FakeVisualizerBase
{
    Q_OBJECT
    Q_CLASSINFO("supportedGeometry", "FakeCurve")
};

class VisualizerWithoutClassInfo : public FakeVisualizerBase
{
    Q_OBJECT

public:
    Q_INVOKABLE VisualizerWithoutClassInfo() = default;
};

namespace {

class ZORTestCommandRegistryTest : public BenchTest
{
protected:
    ZORTestCommandRegistry registry;
};

TEST_F(ZORTestCommandRegistryTest, CreatesACommandAsAChildOfTheEnvironment)
{
    registry.Register(&FakeCommand::staticMetaObject);
    const ZORTestCommand* command = registry.Create("FakeCommand", GetEnvironment());
    ASSERT_NE(nullptr, qobject_cast<const FakeCommand*>(command));
    EXPECT_EQ(GetEnvironment(), command->parent());
}

TEST_F(ZORTestCommandRegistryTest, WrapsADialogIntoADialogCommand)
{
    registry.Register(&FakeDialog::staticMetaObject);
    ZORTestCommand* command = registry.Create("FakeDialog", GetEnvironment());
    EXPECT_NE(nullptr, qobject_cast<ZORTestDialogCommand*>(command));
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (qobject_cast<FakeDialog*>(window))
            delete window;
    }
}

TEST_F(ZORTestCommandRegistryTest, CreatesNothingForUnknownNames)
{
    registry.Register(&FakeCommand::staticMetaObject);
    EXPECT_EQ(nullptr, registry.Create("", GetEnvironment()));
    EXPECT_EQ(nullptr, registry.Create("fakecommand", GetEnvironment()));
    EXPECT_EQ(nullptr, registry.Create("ZORTestCommand", GetEnvironment()));
}

TEST_F(ZORTestCommandRegistryTest, CreatesNothingForClassesOfAnotherKindAndLeavesThemToTheirParent)
{
    registry.Register(&FakeOther::staticMetaObject);
    EXPECT_EQ(nullptr, registry.Create("FakeOther", GetEnvironment()));
    EXPECT_EQ(1, GetEnvironment()->findChildren<FakeOther*>().size());
}

TEST_F(ZORTestCommandRegistryTest, CreatesNothingForAClassWithoutAnInvokableConstructor)
{
    registry.Register(&FakeWithoutConstructor::staticMetaObject);
    EXPECT_EQ(nullptr, registry.Create("FakeWithoutConstructor", GetEnvironment()));
}

TEST_F(ZORTestCommandRegistryTest, KeepsOneEntryOfAClassRegisteredTwice)
{
    registry.Register(&FakeCommand::staticMetaObject);
    registry.Register(&FakeCommand::staticMetaObject);
    EXPECT_EQ(QList<QByteArray>{"FakeCommand"}, registry.GetClassNames());
    EXPECT_EQ(1, registry.FindCreators("FakeLine").size());
    registry.Unregister(&FakeCommand::staticMetaObject);
    EXPECT_TRUE(registry.GetClassNames().isEmpty());
    registry.Unregister(&FakeCommand::staticMetaObject);
    EXPECT_EQ(nullptr, registry.Create("FakeCommand", GetEnvironment()));
}

TEST_F(ZORTestCommandRegistryTest, ReplacesAClassByALaterOneOfTheSameName)
{
    registry.Register(&FakeCommand::staticMetaObject);
    // A second library with a class of that name: same name, another meta-object.
    const QMetaObject twin = FakeCommand::staticMetaObject;
    registry.Register(&twin);
    EXPECT_EQ(QList<QByteArray>{"FakeCommand"}, registry.GetClassNames());
    EXPECT_EQ(QList<const QMetaObject*>{&twin}, registry.FindCreators("FakeLine"));
}

TEST_F(ZORTestCommandRegistryTest, FindsCreatorsByExactTypeName)
{
    registry.Register(&FakeCommand::staticMetaObject);
    registry.Register(&FakeDialog::staticMetaObject);
    registry.Register(&FakeOther::staticMetaObject);
    EXPECT_EQ(QList<const QMetaObject*>{&FakeCommand::staticMetaObject}, registry.FindCreators("FakeCurve"));
    EXPECT_EQ(2, registry.FindCreators("FakeLine").size());
    EXPECT_TRUE(registry.FindCreators("FakeGeometry").isEmpty());
    EXPECT_TRUE(registry.FindCreators("Fake").isEmpty());
    EXPECT_TRUE(registry.FindCreators("FakeCurve FakeLine").isEmpty());
    EXPECT_TRUE(registry.FindCreators("").isEmpty());
}

TEST_F(ZORTestCommandRegistryTest, SplitsCreatedTypesAtBlanks)
{
    EXPECT_EQ((QList<QByteArray>{"FakeCurve", "FakeLine"}),
              ZORTestCommandRegistry::CreatedTypes(&FakeCommand::staticMetaObject));
    EXPECT_TRUE(ZORTestCommandRegistry::CreatedTypes(&FakeOther::staticMetaObject).isEmpty());
}

TEST_F(ZORTestCommandRegistryTest, SeparatesVisualizersFromCommandsAndKeepsTheirOrder)
{
    registry.Register(&FakeLineVisualizer::staticMetaObject);
    registry.Register(&FakeCommand::staticMetaObject);
    registry.Register(&FakeCurveVisualizer::staticMetaObject);
    EXPECT_EQ(QList<QByteArray>{"FakeCommand"}, registry.GetClassNames());
    const QList<const QMetaObject*> expected{&FakeLineVisualizer::staticMetaObject,
                                             &FakeCurveVisualizer::staticMetaObject};
    EXPECT_EQ(expected, registry.GetVisualizers());
    registry.Unregister(&FakeLineVisualizer::staticMetaObject);
    EXPECT_EQ(expected, registry.GetVisualizers());
}

TEST_F(ZORTestCommandRegistryTest, FindsTheVisualizerOfTheNearestBaseClass)
{
    registry.Register(&FakeCurveVisualizer::staticMetaObject);
    ZORTestVisualizer* ofCurve = registry.CreateVisualizer(&FakeCurve::staticMetaObject);
    ASSERT_NE(nullptr, qobject_cast<FakeCurveVisualizer*>(ofCurve));
    EXPECT_EQ(ofCurve, registry.CreateVisualizer(&FakeLine::staticMetaObject));
    EXPECT_EQ(ofCurve, registry.CreateVisualizer(&FakeOther::staticMetaObject));
    EXPECT_EQ(nullptr, registry.CreateVisualizer(&FakeGeometry::staticMetaObject));
}

TEST_F(ZORTestCommandRegistryTest, PrefersTheVisualizerOfTheClassItself)
{
    registry.Register(&FakeLineVisualizer::staticMetaObject);
    registry.Register(&FakeCurveVisualizer::staticMetaObject);
    EXPECT_NE(nullptr,
              qobject_cast<FakeLineVisualizer*>(registry.CreateVisualizer(&FakeLine::staticMetaObject)));
}

TEST_F(ZORTestCommandRegistryTest, LetsTheLaterOfTwoVisualizersOfAClassWin)
{
    registry.Register(&FakeLineVisualizer::staticMetaObject);
    registry.Register(&OtherLineVisualizer::staticMetaObject);
    EXPECT_NE(nullptr,
              qobject_cast<OtherLineVisualizer*>(registry.CreateVisualizer(&FakeLine::staticMetaObject)));
}

TEST_F(ZORTestCommandRegistryTest, ReadsTheVisualizersOnTheFirstLookUpOnly)
{
    registry.Register(&FakeCurveVisualizer::staticMetaObject);
    ZORTestVisualizer* first = registry.CreateVisualizer(&FakeLine::staticMetaObject);
    registry.Register(&FakeLineVisualizer::staticMetaObject);
    EXPECT_EQ(first, registry.CreateVisualizer(&FakeLine::staticMetaObject));
}

TEST_F(ZORTestCommandRegistryTest, GivesNoVisualizerThatCannotBeCreated)
{
    registry.Register(&VisualizerWithoutConstructor::staticMetaObject);
    EXPECT_EQ(nullptr, registry.CreateVisualizer(&FakeCurve::staticMetaObject));
    EXPECT_EQ(nullptr, registry.CreateVisualizer(&FakeCurve::staticMetaObject));
}

TEST_F(ZORTestCommandRegistryTest, ThrowsForAVisualizerWithoutClassInfoOnEveryLookUp)
{
    registry.Register(&FakeCurveVisualizer::staticMetaObject);
    registry.Register(&VisualizerWithoutClassInfo::staticMetaObject);
    for (int call = 0; call < 2; ++call) {
        try {
            registry.CreateVisualizer(&FakeCurve::staticMetaObject);
            ADD_FAILURE() << "no exception";
        } catch (const ZORSysException& exception) {
            EXPECT_EQ(QString("no geometry class info specified"), exception.GetMessage());
        }
    }
}

TEST_F(ZORTestCommandRegistryTest, HoldsTheClassesOfTheBench)
{
    const ZORTestCommandRegistry& bench = ZORTestCommandRegistry::Instance();
    QSet<QByteArray> operations;
    const QList<QByteArray> classNames = bench.GetClassNames();
    for (const QByteArray& className : classNames) {
        if (className.startsWith("ZORTest")) // others belong to this program
            operations.insert(className);
    }
    // The contract with those who start operations by name; docs/adding-a-dialog.md names this table.
    const QSet<QByteArray> expected{
        // clang-format off
        "ZORTestCompReaderCmd",
        "ZORTestCreateDrapingDlg",
        "ZORTestCreateFolderDlg",
        "ZORTestCreatePointCmd",
        "ZORTestCreateTopCurveDlg",
        "ZORTestCreateTopSurfaceDlg",
        "ZORTestCreateWFRawCurveDlg",
        "ZORTestCreateWFRawSurfaceDlg",
        "ZORTestExportSTLDlg",
        "ZORTestGeoCleanCurveDlg",
        "ZORTestGeoCreateCartesianPointDlg",
        "ZORTestGeoCreatePointOnCurveDlg",
        "ZORTestGeoGeodesicDlg",
        "ZORTestGeoProjectCurveSurDlg",
        "ZORTestGeoProjectPointCurveDlg",
        "ZORTestGeoProjectPointSurfaceDlg",
        "ZORTestGeoSurfaceEdgeDlg",
        "ZORTestImportCatiaXMLCurvesDlg",
        "ZORTestImportSTLCmd",
        "ZORTestInitializeRootCmd",
        "ZORTestLaunchStandardCmd",
        "ZORTestLoadContainerCmd",
        "ZORTestNestNestingDlg",
        "ZORTestNestTranslateDlg",
        "ZORTestNestVisualizeResultCmd",
        "ZORTestReadMSIFileCmd",
        "ZORTestSaveContainerCmd",
        "ZORTestStrategyDlg",
        "ZORTestTPCourseSmoothingDlg",
        "ZORTestTopProjectDlg",
        "ZORTestVisVectorTextDlg",
        "ZORTestWFCurveOnSupportDlg",
        "ZORTestWriteMSIFileCmd",
        // clang-format on
    };
    EXPECT_EQ(expected, operations);

    QSet<QByteArray> visualizers;
    for (const QMetaObject* visualizer : bench.GetVisualizers())
        visualizers.insert(visualizer->className());
    EXPECT_EQ(
        (QSet<QByteArray>{"ZORTestCurveVisualizer", "ZORTestPointVisualizer", "ZORTestSurfaceVisualizer"}),
        visualizers);
}

TEST_F(ZORTestCommandRegistryTest, CreatesEveryClassOfTheBench)
{
    const ZORTestCommandRegistry& bench = ZORTestCommandRegistry::Instance();
    const QList<QByteArray> classNames = bench.GetClassNames();
    for (const QByteArray& className : classNames) {
        if (!className.startsWith("ZORTest"))
            continue;
        const ZORTestCommand* command = bench.Create(className, GetEnvironment());
        ASSERT_NE(nullptr, command) << className.constData();
        EXPECT_EQ(GetEnvironment(), command->parent()) << className.constData();
        EXPECT_GE(command->metaObject()->indexOfSignal("Finished(bool)"), 0) << className.constData();
    }
    for (const QMetaObject* visualizer : bench.GetVisualizers()) {
        const std::unique_ptr<QObject> instance(visualizer->newInstance());
        EXPECT_NE(nullptr, qobject_cast<ZORTestVisualizer*>(instance.get())) << visualizer->className();
    }
    // Dialogs that are not shown are not closed either.
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows)
        delete qobject_cast<ZORTestDialog*>(window);
}

TEST_F(ZORTestCommandRegistryTest, DoesNotKnowNamesOfTheMenusThatHaveNoClass)
{
    for (const char* name : {"ZORGeoGeodesicCurveDlg", "ZORTestGeoCurveOffsetDlg", "ZORTestDrapingGeoDlg"})
        EXPECT_EQ(nullptr, ZORTestCommandRegistry::Instance().Create(name, GetEnvironment())) << name;
}

TEST_F(ZORTestCommandRegistryTest, DoesNotHoldTheClassesThatAreNoOperations)
{
    for (const char* name : {"ZORTestMainCommand", "ZORTestOptionsCmd", "ZORTestMainDialog",
                             "ZORTestOptionsDlg", "ZORTestGeoInspectionDlg", "ZORTestNestNestingResultDlg",
                             "ZORTestCurveVisOptionsDlg", "ZORTestPointVisOptionsDlg",
                             "ZORTestSurfaceVisOptionsDlg", "ZORTestCommand", "ZORTestDialogCommand"})
        EXPECT_EQ(nullptr, ZORTestCommandRegistry::Instance().Create(name, GetEnvironment())) << name;
}

} // namespace

#include "ZORTestCommandRegistryTest.moc"
