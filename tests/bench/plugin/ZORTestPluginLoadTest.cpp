// Loads and unloads the plug-in library as a host does. The bench is reached through the SDK and through
// Qt's meta-objects alone.

#include "support/DialogAnswerer.h"
#include "support/DialogFrame.h"
#include "support/HeapGrowth.h"
#include "support/MessageBoxCatcher.h"

#include <ZORCommand/ZORCmdController.h>
#include <ZORCommand/ZORCmdDialogCommand.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysInit.h>
#include <ZORSystem/ZORSysSettingsManager.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QJsonObject>
#include <QLibrary>
#include <QMainWindow>
#include <QPluginLoader>
#include <QPushButton>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

const QString kLibraryPath = QStringLiteral(ZORTESTING_PATH);

bool IsMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
    return maps.readAll().contains("libZORTesting");
}

/// Names of the types that Qt's registry holds by data of the library, that is of the address range in which
/// \a symbol lies now or lay before.
class MappedRange
{
public:
    MappedRange()
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        EXPECT_TRUE(maps.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = maps.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (!line.contains("libZORTesting"))
                continue;
            const QList<QByteArray> bounds = line.split(' ').constFirst().split('-');
            m_begin = std::min(m_begin, quintptr(bounds[0].toULongLong(nullptr, 16)));
            m_end = std::max(m_end, quintptr(bounds[1].toULongLong(nullptr, 16)));
        }
        EXPECT_LT(m_begin, m_end);
    }

    QStringList GetRegisteredTypes() const
    {
        QStringList ids;
        for (int id = QMetaType::User + 1; id < QMetaType::User + 1024; ++id) {
            if (!QMetaType::isRegistered(id))
                continue;
            const auto address = quintptr(QMetaType(id).iface());
            if (address >= m_begin && address < m_end)
                ids.append(QString::number(id) + u' ' + QString::fromLatin1(QMetaType(id).name()));
        }
        return ids;
    }

private:
    quintptr m_begin = std::numeric_limits<quintptr>::max();
    quintptr m_end = 0;
};

class ZORTestPluginLoadTest : public testing::Test
{
protected:
    ZORTestPluginLoadTest()
        : m_settings(m_directory.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)
    {
        ZORSysInitialize();
        ZORSysSettingsManager::GetManager()->SetSource(&m_settings);
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(&m_environment);
    }
    ~ZORTestPluginLoadTest() override
    {
        ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr);
        ZORSysSettingsManager::GetManager()->SetSource(nullptr);
    }

    static QAction* GetAction(const char* id) { return ZORCmdController::GetController()->GetAction(id); }

    /// The window of that class that is to be seen; null without one.
    static QWidget* FindWindow(const char* className)
    {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (window->inherits(className) && window->isVisible())
                return window;
        }
        return nullptr;
    }
    /// Opens a console through the published action.
    static QMainWindow* OpenConsole()
    {
        GetAction("ZORTestMainCommand")->trigger();
        return qobject_cast<QMainWindow*>(FindWindow("ZORTestMainDialog"));
    }
    /// Nests nothing, which gives results too.
    static void Nest(const QMainWindow* console)
    {
        console->findChild<QAction*>(QStringLiteral("actionNest"))->trigger();
        const QWidget* dialog = FindWindow("ZORTestNestNestingDlg");
        ASSERT_NE(nullptr, dialog);
        Click(dialog, "_ComputeBtn");
        constexpr int kPatience = 30000;
        ASSERT_TRUE(QTest::qWaitFor([] { return FindWindow("ZORTestNestNestingResultDlg"); }, kPatience));
        FindWindow("ZORTestNestNestingResultDlg")->close();
    }

    static void Click(const QWidget* window, const char* objectName)
    {
        auto* button = window->findChild<QPushButton*>(QLatin1String(objectName));
        ASSERT_NE(nullptr, button) << objectName;
        button->click();
    }

    static void ProcessEvents()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// One session of a developer with the bench: a geometry is listed, inspected and displayed, a dialog is
    /// opened and left open, an entry fails, a nesting runs, the options are written. Only the geometry stays.
    ZORGeoPolyline* UseBench()
    {
        ZORMathSetOfPoints points;
        points.append({0, 0, 0});
        points.append({1, 0, 0});
        auto* curve = new ZORGeoPolyline(m_environment.GetContainer(), points, true);
        curve->Initialize();

        QMainWindow* console = OpenConsole();
        EXPECT_NE(nullptr, console);
        if (!console)
            return curve;
        auto* table = console->findChild<QTableView*>(QStringLiteral("_ContTable"));
        table->setCurrentIndex(table->model()->index(table->model()->rowCount() - 1, 0));
        Click(console, "_ContInspectBtn");
        answers.Accept("ZORTestCurveVisOptionsDlg");
        Click(console, "_ContVisuBtn");
        EXPECT_EQ(1, m_environment.GetNumVirtualObjects());
        console->findChild<QCheckBox*>(QStringLiteral("_ShowDebugChk"))->click();
        console->findChild<QAction*>(QStringLiteral("_ExportSTLAction"))->trigger();
        console->findChild<QAction*>(QStringLiteral("_OffsetCurveAction"))->trigger();
        EXPECT_EQ(QStringList{"Command not registered"}, boxes.TakeErrors());
        Nest(console);

        DialogFrame frame;
        GetAction("ZORTestOptionsCmd")->trigger();
        EXPECT_NE(nullptr, frame.command);
        frame.command->Accept();

        console->close();
        ProcessEvents();
        EXPECT_EQ(0, m_environment.GetNumVirtualObjects());
        return curve;
    }

    MessageBoxCatcher boxes;
    DialogAnswerer answers;
    ZORFeatEnvironment m_environment;

private:
    QTemporaryDir m_directory;
    QSettings m_settings;
};

TEST_F(ZORTestPluginLoadTest, TellsItsVersionsWithoutBeingLoaded)
{
    const QJsonObject metaData = QPluginLoader(kLibraryPath).metaData();
    EXPECT_EQ(QString("org.zorvane.sdk.Plugin"), metaData.value("IID").toString());
    const QJsonObject own = metaData.value("MetaData").toObject();
    EXPECT_EQ(QString("ZORTesting"), own.value("name").toString());
    EXPECT_EQ(QString("1.0.0"), own.value("version").toString());
    EXPECT_EQ(QString("1.0.0"), own.value("sdkVersion").toString());
    EXPECT_FALSE(IsMapped());
}

TEST_F(ZORTestPluginLoadTest, PublishesItsActionsAndItsFlagWhileItIsLoaded)
{
    EXPECT_EQ(nullptr, GetAction("ZORTestMainCommand"));
    QLibrary library(kLibraryPath);
    ASSERT_TRUE(library.load()) << library.errorString().toStdString();
    const auto* loaded = reinterpret_cast<const bool*>(library.resolve("_ZORTestingLoaded"));
    ASSERT_NE(nullptr, loaded);
    EXPECT_TRUE(*loaded);
    for (const char* id : {"ZORTestMainCommand", "ZORTestOptionsCmd"}) {
        ASSERT_NE(nullptr, GetAction(id)) << id;
        EXPECT_EQ(QString("Test"), GetAction(id)->property("category").toString());
    }
    EXPECT_EQ(2, ZORCmdController::GetController()->GetActions("Test").size());
    EXPECT_TRUE(library.unload());
    EXPECT_FALSE(IsMapped());
    EXPECT_EQ(nullptr, GetAction("ZORTestMainCommand"));
    EXPECT_TRUE(ZORCmdController::GetController()->GetActions("Test").isEmpty());
}

TEST_F(ZORTestPluginLoadTest, LoadsAsAQtPluginToo)
{
    QPluginLoader loader(kLibraryPath);
    loader.setLoadHints({});
    ASSERT_TRUE(loader.load()) << loader.errorString().toStdString();
    EXPECT_NE(nullptr, loader.instance());
    UseBench();
    EXPECT_TRUE(loader.unload());
    EXPECT_FALSE(IsMapped());
}

TEST_F(ZORTestPluginLoadTest, LeavesNothingBehindWhenItIsLoadedAndUnloadedManyTimes)
{
    const auto cycle = [this] {
        QLibrary library(kLibraryPath);
        ASSERT_TRUE(library.load()) << library.errorString().toStdString();
        ZORGeoPolyline* curve = UseBench();
        const MappedRange range;
        ASSERT_TRUE(library.unload()) << library.errorString().toStdString();
        ASSERT_FALSE(IsMapped());
        EXPECT_EQ(QStringList(), range.GetRegisteredTypes());
        // What the bench was connected to lives on without it.
        curve->RemoveNoReferences();
        ProcessEvents();
    };
    // Qt itself keeps some 3 KB per set of windows until the application ends.
    const double growth = MeasureHeapGrowth(50, cycle);
    if (HasFatalFailure())
        return;
    EXPECT_LT(growth, 8192.0) << "bytes per cycle";
    EXPECT_EQ(0, m_environment.GetContainer()->GetNumGeometry());
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty());
}

} // namespace
