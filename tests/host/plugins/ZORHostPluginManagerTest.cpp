#include "plugins/ZORHostPluginManager.h"

#include "HostTest.h"
#include "actions/ZORHostPublishedActions.h"
#include "plugins/ZORHostPluginDialog.h"
#include "support/HostileFiles.h"
#include "support/QtMessages.h"

#include <ZORCommand/ZORCmdController.h>

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>

#include <sys/stat.h>

namespace {

using State = ZORHostPlugin::State;

QString PluginFile(const QString& target)
{
    return QStringLiteral(ZOR_TEST_PLUGIN_DIR "/lib%1.so").arg(target);
}

bool IsMapped(const QString& file)
{
    QFile maps("/proc/self/maps");
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(QFile::encodeName(file));
}

class ZORHostPluginManagerTest : public HostTest
{
public:
    ~ZORHostPluginManagerTest() override
    {
        for (const ZORHostPlugin& plugin : QList(manager.GetPlugins())) {
            if (plugin.state == State::Loaded) {
                EXPECT_TRUE(manager.Unload(plugin.path)) << plugin.path.toStdString();
            }
        }
        qunsetenv("ZOR_PLUGIN_PATH");
    }
    /// The one record after a failed attempt to load \a file.
    QString ReasonOf(const QString& file)
    {
        EXPECT_FALSE(manager.Load(file));
        EXPECT_FALSE(IsMapped(file)) << file.toStdString();
        const ZORHostPlugin& plugin = manager.GetPlugins().constLast();
        EXPECT_EQ(State::Failed, plugin.state);
        EXPECT_TRUE(file.endsWith(QFileInfo(plugin.path).fileName()));
        return plugin.reason;
    }

    /// "loaded" or the reason of the one plug-in in a folder of this test; empty for none.
    QString StateIn(const QString& folder) const
    {
        const QString path = QFileInfo(GetPath(folder)).canonicalFilePath();
        for (const ZORHostPlugin& plugin : manager.GetPlugins()) {
            if (QFileInfo(plugin.path).absolutePath() == path)
                return plugin.state == State::Loaded ? QStringLiteral("loaded") : plugin.reason;
        }
        return {};
    }

    ZORHostPluginManager manager;
};

TEST_F(ZORHostPluginManagerTest, LoadsAPluginAndReadsItsMetadata)
{
    ASSERT_TRUE(manager.Load(PluginFile("GoodPlugin")));
    ASSERT_EQ(1, manager.GetPlugins().size());
    const ZORHostPlugin& plugin = manager.GetPlugins().constFirst();
    EXPECT_EQ(QString("Good"), plugin.name);
    EXPECT_EQ(QString("2.3.4"), plugin.version);
    EXPECT_EQ(QString("1.0.0"), plugin.sdkVersion);
    EXPECT_EQ(State::Loaded, plugin.state);
    EXPECT_TRUE(plugin.reason.isEmpty());
    EXPECT_NE(nullptr, ZORCmdController::GetController()->GetAction("GoodPluginCmd"));
}

TEST_F(ZORHostPluginManagerTest, AnotherMinorVersionOfTheSdkIsFine)
{
    EXPECT_TRUE(manager.Load(PluginFile("InertPlugin")));
}

TEST_F(ZORHostPluginManagerTest, AnotherMajorVersionIsRefusedBeforeTheLibraryIsMapped)
{
    EXPECT_EQ(
        QString("'libOtherMajorPlugin.so' was built with SDK version 2.0.0, this host has version 1.0.0: "
                "the major versions differ"),
        ReasonOf(PluginFile("OtherMajorPlugin")));
}

TEST_F(ZORHostPluginManagerTest, BrokenFilesFailWithAReason)
{
    EXPECT_EQ(QString("the file does not exist"), ReasonOf(GetPath("nothing.so")));
    EXPECT_EQ(QString("this is a folder, not a library"),
              ReasonOf(QFileInfo(GetPath(".")).canonicalFilePath()));
    EXPECT_EQ(QString("it is not a regular file"),
              ReasonOf(HostileFiles::MakePipe(QFileInfo(GetPath(".")).canonicalFilePath(), "pipe.so")));
    const QString incomplete = "this is no complete library: the file is cut short or of another kind";
    EXPECT_EQ(incomplete, ReasonOf(WriteFile("text.so", QByteArray("just a text\n").repeated(1000))));
    EXPECT_EQ(incomplete, ReasonOf(WriteFile("empty.so", QByteArray())));
    const QString folder = QFileInfo(GetPath(".")).canonicalFilePath();
    EXPECT_EQ(incomplete, ReasonOf(HostileFiles::MakeZeros(folder, qint64(4) << 30, "zeros.so")));
    const QString plain = ReasonOf(PluginFile("PlainLibrary"));
    EXPECT_TRUE(plain.startsWith("this is no plug-in: ")) << plain.toStdString();
    EXPECT_EQ(
        QString("this is a plug-in for something else: its interface is 'org.example.OtherProgram', not "
                "'org.zorvane.sdk.Plugin'"),
        ReasonOf(PluginFile("ForeignPlugin")));
    EXPECT_EQ(QString("'libNoVersionPlugin.so' does not say which version of the SDK it was built with"),
              ReasonOf(PluginFile("NoVersionPlugin")));
    const QString missing = ReasonOf(PluginFile("MissingSymbolPlugin"));
    EXPECT_TRUE(missing.contains("undefined symbol: ThisFunctionIsNowhereDefined")) << missing.toStdString();
}

TEST_F(ZORHostPluginManagerTest, EveryTruncatedLibraryFailsWithAReason)
{
    QFile whole(PluginFile("GoodPlugin"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray contents = whole.readAll();
    const QString file = WriteFile("cut.so", contents);
    // Stack traces need the debug information at the end of the file, too.
    constexpr qsizetype kSteps = 300;
    const qsizetype step = contents.size() / kSteps;
    for (qsizetype size = contents.size() - 1; size > 0; size -= step) {
        ASSERT_TRUE(QFile::resize(file, size));
        ASSERT_EQ(QString("this is no complete library: the file is cut short or of another kind"),
                  ReasonOf(file))
            << size;
    }
}

TEST_F(ZORHostPluginManagerTest, ALibraryFoundTwiceIsLoadedOnce)
{
    const QString file = PluginFile("GoodPlugin");
    ASSERT_TRUE(manager.Load(file));
    ASSERT_TRUE(manager.Load(QFileInfo(file).absolutePath() + "/../libs/" + QFileInfo(file).fileName()));
    ASSERT_TRUE(QFile::link(file, GetPath("link.so")));
    ASSERT_TRUE(manager.Load(GetPath("link.so")));
    EXPECT_EQ(1, manager.GetPlugins().size());
    ASSERT_TRUE(QFile::copy(file, GetPath("copy.so")));
    EXPECT_FALSE(manager.Load(GetPath("copy.so")));
    EXPECT_EQ(QStringLiteral("a plug-in of this name is already loaded from '%1'").arg(file),
              manager.GetPlugins().constLast().reason);
    EXPECT_EQ(1, ZORCmdController::GetController()->GetActions("Good").size());
}

TEST_F(ZORHostPluginManagerTest, AFailedFileCanBeTriedAgain)
{
    const QString file = GetPath("late.so");
    EXPECT_FALSE(manager.Load(file));
    ASSERT_TRUE(QFile::copy(PluginFile("InertPlugin"), file));
    EXPECT_TRUE(manager.Load(file));
    EXPECT_EQ(1, manager.GetPlugins().size());
}

TEST_F(ZORHostPluginManagerTest, SearchPathComesFromTheEnvironmentFirst)
{
    qputenv("ZOR_PLUGIN_PATH", "/first/./x:/second");
    const QStringList path = ZORHostPluginManager::GetSearchPath();
    ASSERT_GE(path.size(), 3);
    EXPECT_EQ(QString("/first/x"), path[0]);
    EXPECT_EQ(QString("/second"), path[1]);
    EXPECT_TRUE(path.constLast().endsWith("/zorsdk/plugins"));
}

TEST_F(ZORHostPluginManagerTest, ATruncatedLibraryInTheSearchPathIsNotRead)
{
    QFile whole(PluginFile("GoodPlugin"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray contents = whole.readAll();
    for (const QString& folder : QStringList({"plugins", "others"})) {
        ASSERT_TRUE(QDir().mkpath(GetPath(folder)));
        WriteFile(folder + "/cut.so", contents.left(contents.size() / 2));
    }
    WriteFile("others/script.so", "GROUP ( libc.so.6 )\n");
    qputenv("ZOR_PLUGIN_PATH", QFile::encodeName(GetPath("plugins") + ":" + GetPath("others")));
    manager.LoadFromSearchPath();
    const QString reason = "this is no complete library: the file is cut short or of another kind";
    EXPECT_EQ(reason, StateIn("plugins"));
    EXPECT_EQ(reason, StateIn("others"));
    for (const ZORHostPlugin& plugin : manager.GetPlugins())
        EXPECT_FALSE(plugin.path.endsWith("script.so"));
}

TEST_F(ZORHostPluginManagerTest, FoldersOfTheEnvironmentAreIgnoredWhenOthersMayFillThem)
{
    for (const QString& folder : QStringList({"own", "shared", "sticky", "shared/inside"})) {
        ASSERT_TRUE(QDir().mkpath(GetPath(folder)));
        ASSERT_TRUE(QFile::copy(PluginFile("InertPlugin"), GetPath(folder) + "/InertPlugin.so"));
    }
    ASSERT_EQ(0, chmod(QFile::encodeName(GetPath("shared")).constData(), 0777));
    ASSERT_EQ(0, chmod(QFile::encodeName(GetPath("sticky")).constData(), 01777));
    ASSERT_TRUE(QFile::link(GetPath("shared"), GetPath("link")));
    const QString present = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(GetPath(".")));
    QtMessages messages;
    for (const QString& name : QStringList({"shared", "sticky", "link"})) {
        qputenv("ZOR_PLUGIN_PATH", QFile::encodeName(GetPath(name)));
        manager.LoadFromSearchPath();
        EXPECT_EQ(QString(), StateIn(name));
        EXPECT_EQ(QStringList(QStringLiteral(
                                  "The folder '%1' of ZOR_PLUGIN_PATH is ignored: everybody may write to it")
                                  .arg(GetPath(name))),
                  messages.TakeWarnings());
    }
    for (const QString& relative : QStringList({"own", "./own", "."})) {
        qputenv("ZOR_PLUGIN_PATH", relative.toLatin1());
        manager.LoadFromSearchPath();
        EXPECT_EQ(QString(), StateIn("own"));
        EXPECT_FALSE(ZORHostPluginManager::GetSearchPath().contains(GetPath("own")));
        EXPECT_EQ(
            QStringList(QStringLiteral("The folder '%1' of ZOR_PLUGIN_PATH is ignored: its path is relative")
                            .arg(relative)),
            messages.TakeWarnings());
    }
    ASSERT_TRUE(QDir::setCurrent(present));
    // The folder counts, not those in which it lies.
    qputenv("ZOR_PLUGIN_PATH", QFile::encodeName(GetPath("shared/inside")));
    manager.LoadFromSearchPath();
    EXPECT_EQ("loaded", StateIn("shared/inside"));
    EXPECT_EQ(QStringList(), messages.TakeWarnings());
}

TEST_F(ZORHostPluginManagerTest, AFileThatEverybodyMayChangeIsLoadedOnlyByName)
{
    ASSERT_TRUE(QDir().mkpath(GetPath("own")));
    const QString file = GetPath("own/InertPlugin.so");
    ASSERT_TRUE(QFile::copy(PluginFile("InertPlugin"), file));
    ASSERT_EQ(0, chmod(QFile::encodeName(file).constData(), 0666));
    qputenv("ZOR_PLUGIN_PATH", QFile::encodeName(GetPath("own")));
    QtMessages messages;
    manager.LoadFromSearchPath();
    EXPECT_EQ("the file is ignored in ZOR_PLUGIN_PATH: everybody may write to it", StateIn("own"));
    EXPECT_EQ(1, messages.TakeWarnings().size());
    ASSERT_EQ(0, chmod(QFile::encodeName(GetPath("own")).constData(), 0777));
    EXPECT_TRUE(manager.Load(file));
}

TEST_F(ZORHostPluginManagerTest, LoadsFromTheSearchPathAndPassesOverOtherLibraries)
{
    QDir().mkpath(GetPath("libs"));
    for (const char* target :
         {"GoodPlugin", "InertPlugin", "PlainLibrary", "ForeignPlugin", "OtherMajorPlugin"}) {
        const QString name = QString::fromLatin1(target);
        ASSERT_TRUE(QFile::copy(PluginFile(name), GetPath("libs/" + name + ".so")));
    }
    qputenv("ZOR_PLUGIN_PATH", QFile::encodeName(GetPath("libs")));
    manager.LoadFromSearchPath();
    QStringList states;
    for (const ZORHostPlugin& plugin : manager.GetPlugins()) {
        if (plugin.path.startsWith(QFileInfo(GetPath("libs")).canonicalFilePath()))
            states.append(plugin.name + (plugin.state == State::Loaded ? " loaded" : " failed"));
    }
    EXPECT_EQ(QStringList({"Good loaded", "Inert loaded", "OtherMajor failed"}), states);
}

TEST_F(ZORHostPluginManagerTest, UnloadingClosesItsWindowsAndWithdrawsItsActions)
{
    QMenuBar bar;
    QToolBar toolBar;
    const ZORHostPublishedActions published(&bar, nullptr, &toolBar, nullptr);
    EXPECT_TRUE(bar.actions().isEmpty());
    const QString file = PluginFile("GoodPlugin");
    ASSERT_TRUE(manager.Load(file));
    ASSERT_EQ(1, bar.actions().size());
    EXPECT_EQ(QString("&Good"), bar.actions().constFirst()->text());
    QAction* action = ZORCmdController::GetController()->GetAction("GoodPluginCmd");
    ASSERT_NE(nullptr, action);
    EXPECT_TRUE(toolBar.actions().contains(action));
    QPointer<QWidget> own = new QLabel("window of the host");
    own->show();
    action->trigger();
    action->trigger();
    EXPECT_EQ(2, ZORHostPluginManager::FindWindows(file).size());

    EXPECT_TRUE(manager.Unload(file));
    EXPECT_FALSE(IsMapped(file));
    EXPECT_TRUE(ZORHostPluginManager::FindWindows(file).isEmpty());
    EXPECT_EQ(nullptr, ZORCmdController::GetController()->GetAction("GoodPluginCmd"));
    EXPECT_TRUE(bar.actions().isEmpty());
    EXPECT_TRUE(toolBar.actions().isEmpty());
    EXPECT_EQ(State::Unloaded, manager.GetPlugins().constFirst().state);
    EXPECT_TRUE(own && own->isVisible());
    delete own;
    QCoreApplication::processEvents(); // nothing of the library may be left in the queue
}

TEST_F(ZORHostPluginManagerTest, LoadsAndUnloadsManyTimes)
{
    const QString file = PluginFile("GoodPlugin");
    for (int i = 0; i < 25; ++i) {
        ASSERT_TRUE(manager.Load(file)) << i;
        ZORCmdController::GetController()->GetAction("GoodPluginCmd")->trigger();
        ASSERT_EQ(1, ZORHostPluginManager::FindWindows(file).size());
        ASSERT_TRUE(manager.Unload(file)) << manager.GetPlugins().constFirst().reason.toStdString();
        ASSERT_FALSE(IsMapped(file));
    }
    EXPECT_EQ(1, manager.GetPlugins().size());
}

/// A window that may not want to close.
class Stubborn : public QWidget
{
protected:
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

TEST_F(ZORHostPluginManagerTest, AWindowThatRefusesToCloseKeepsItsLibrary)
{
    const QString file = PluginFile("GoodPlugin");
    ASSERT_TRUE(manager.Load(file));
    ZORCmdController::GetController()->GetAction("GoodPluginCmd")->trigger();
    QWidget* window = ZORHostPluginManager::FindWindows(file).constFirst();
    Stubborn frame;
    frame.setWindowTitle("Stubborn");
    window->setParent(&frame);
    frame.show();
    EXPECT_FALSE(manager.Unload(file));
    EXPECT_EQ(QString("the window 'Stubborn' did not close"), manager.GetPlugins().constFirst().reason);
    EXPECT_EQ(State::Loaded, manager.GetPlugins().constFirst().state);
    EXPECT_TRUE(IsMapped(file));
    delete window;
}

TEST_F(ZORHostPluginManagerTest, ThePageListsEveryFileWithItsState)
{
    manager.Load(PluginFile("GoodPlugin"));
    manager.Load(PluginFile("OtherMajorPlugin"));
    ZORHostPluginDialog dialog(&manager, nullptr);
    dialog.show();
    auto* table = dialog.findChild<QTableWidget*>("_PluginTable");
    auto* unload = dialog.findChild<QPushButton*>("_PluginUnloadBtn");
    ASSERT_EQ(2, table->rowCount());
    EXPECT_EQ(QString("Good"), table->item(0, 0)->text());
    EXPECT_EQ(QString("2.3.4"), table->item(0, 1)->text());
    EXPECT_EQ(QString("Loaded"), table->item(0, 2)->text());
    EXPECT_TRUE(table->item(0, 4)->text().endsWith("libGoodPlugin.so"));
    EXPECT_EQ(QString("Not loaded"), table->item(1, 2)->text());
    EXPECT_TRUE(table->item(1, 3)->text().contains("major versions differ"));
    const QString folders = dialog.findChild<QLabel*>("_PluginPathLbl")->text();
    for (const QString& folder : ZORHostPluginManager::GetSearchPath())
        EXPECT_TRUE(folders.contains(folder)) << folder.toStdString();

    EXPECT_FALSE(unload->isEnabled());
    table->selectRow(1);
    EXPECT_FALSE(unload->isEnabled());
    table->selectRow(0);
    ASSERT_TRUE(unload->isEnabled());
    unload->click();
    EXPECT_EQ(QString("Unloaded"), table->item(0, 2)->text());
    EXPECT_FALSE(unload->isEnabled());
}

} // namespace
