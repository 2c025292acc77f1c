// Runs the program itself.

#include "ProgramTest.h"

#include <QDir>
#include <QProcess>

#include <csignal>

namespace {

const QString kSamples = QStringLiteral("SAMPLES=" ZOR_TEST_SAMPLES);

using ZORHostProgramTest = ProgramTest;

TEST_F(ZORHostProgramTest, AnswersHelpAndVersionWithoutADisplay)
{
    EXPECT_EQ(0, Run({"--version"}, {"QT_QPA_PLATFORM=xcb", "DISPLAY="}));
    EXPECT_EQ(QString("zorhost 1.0.0\n"), out);
    EXPECT_EQ(0, Run({"--help"}, {"QT_QPA_PLATFORM=xcb", "DISPLAY="}));
    EXPECT_TRUE(out.contains("--plugin <file>")) << out.toStdString();
}

TEST_F(ZORHostProgramTest, JobsGetTheMemoryOfTheSettings)
{
    const QString limit = "ZORWorkHelpers::SetMemoryLimit(67108864)\n";
    for (const char* const settings : {"", "[Host]\nJobMemoryLimit=64\n", "[Host]\nJobMemoryLimit=much\n"}) {
        WriteFile("host.ini", settings);
        EXPECT_EQ(0, RunScript("in ZORHostMainWindow\n", {}, {"ZOR_API_TRACE=" + GetPath("trace.txt")}));
        QFile trace(GetPath("trace.txt"));
        ASSERT_TRUE(trace.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(trace.readAll());
        EXPECT_EQ(QByteArrayView(settings).contains("64") ? 1 : 0, text.count(limit)) << text.toStdString();
        EXPECT_EQ(QByteArrayView(settings).contains("64") ? 1 : 0, text.count("SetMemoryLimit"));
    }
}

TEST_F(ZORHostProgramTest, AFileBeyondTheLimitOfTheUserIsAnErrorOnly)
{
    fileLimit = 2000;
    const QString picture = GetPath("window.png");
    EXPECT_EQ(1, RunScript("in ZORHostMainWindow\nscreenshot window " + picture.toUtf8() + '\n', {},
                           {"ZOR_NO_GRAPHICS=1"}));
    EXPECT_TRUE((out + err).contains("cannot write the picture '" + picture + "': File too large"))
        << (out + err).toStdString();
}

TEST_F(ZORHostProgramTest, AWrongOptionEndsWithCodeTwo)
{
    EXPECT_EQ(2, Run({"--nonsense"}));
    EXPECT_TRUE(err.contains("Unknown option 'nonsense'.")) << err.toStdString();
    EXPECT_TRUE(out.isEmpty());
}

TEST_F(ZORHostProgramTest, AScriptThatSucceedsEndsWithCodeZero)
{
    const QString part = WriteTetrahedron("part.stl");
    EXPECT_EQ(0, RunScript("in ZORHostMainWindow\n"
                           "expect title is \"Untitled - Zorvane Host\"\n"
                           "expect triangles part is 4\n"
                           "screenshot view ${OUT}/view.png\n"
                           "screenshot window ${OUT}/window.png\n"
                           "expect colors ${OUT}/view.png above 10\n",
                           {"--define", "OUT=" + GetPath("out"), "--open", part}))
        << out.toStdString() << err.toStdString();
    EXPECT_TRUE(out.contains("All as expected.")) << out.toStdString();
    EXPECT_TRUE(QFile::exists(GetPath("out/window.png")));
    EXPECT_TRUE(QFile::exists(GetPath("host.ini")));
}

TEST_F(ZORHostProgramTest, AScriptThatFailsEndsWithCodeOne)
{
    EXPECT_EQ(1, RunScript("in ZORHostMainWindow\nexpect title is Nothing\n"));
    EXPECT_TRUE(
        out.contains("FAILED test.zorscript:2: title is 'Untitled - Zorvane Host', expected: is 'Nothing'"))
        << out.toStdString();
    EXPECT_EQ(1, RunScript("trigger \"No Such Action\"\n"));
}

TEST_F(ZORHostProgramTest, AScriptThatEndsTheProgramBeforeItsOwnEndFails)
{
    EXPECT_EQ(1, RunScript("in ZORHostMainWindow\ntrigger _QuitAction\nwait 5 window Never is open\n"));
}

TEST_F(ZORHostProgramTest, AScriptThatCannotBeReadEndsWithCodeTwo)
{
    EXPECT_EQ(2, RunScript("jump\n"));
    EXPECT_TRUE(err.contains("test.zorscript:1: unknown step 'jump'")) << err.toStdString();
}

TEST_F(ZORHostProgramTest, AnErrorBoxNobodyExpectsFailsTheScript)
{
    EXPECT_EQ(1, RunScript("in ZORHostMainWindow\nanswer file ${FILE}\ntrigger _OpenAction\n",
                           {"--define", "FILE=" + WriteFile("bad.stl", "\xff\xfe bad")}));
    EXPECT_TRUE(out.contains("unexpected dialog 'Error' (QMessageBox)")) << out.toStdString();
}

TEST_F(ZORHostProgramTest, LoadsTheBenchAndTheStandardCommandsOfTheBuildTree)
{
    const QString script =
        WriteFile("commands.zorscript", "in ZORHostMainWindow\n"
                                        "trigger _PluginsAction\n"
                                        "in _PluginDialog\n"
                                        "expect cell _PluginTable ZORStandardCommands State is Loaded\n"
                                        "expect cell _PluginTable ZORTesting State is Loaded\n"
                                        "close\n"
                                        "in ZORHostMainWindow\n"
                                        "expect geometries is 0\n"
                                        "trigger \"Create Rosette\"\n"
                                        "in _DialogFrame\n"
                                        "set _LabelEdit Axes\n"
                                        "click OK\n"
                                        "wait 5 window _DialogFrame is closed\n"
                                        "in ZORHostMainWindow\n"
                                        "expect geometries is 4\n");
    EXPECT_EQ(0, Run({"--script", script, "--settings", GetPath("host.ini")}))
        << out.toStdString() << err.toStdString();
}

TEST_F(ZORHostProgramTest, LoadsPluginsByOptionAndSearchPathAndReportsBadOnes)
{
    const QString folder = QStringLiteral(ZOR_TEST_PLUGIN_DIR);
    EXPECT_EQ(0, RunScript("in ZORHostMainWindow\n"
                           "trigger \"Good Action\"\n"
                           "in _GoodPluginWindow\n"
                           "expect title is \"Plug-in Window\"\n"
                           "in ZORHostMainWindow\n"
                           "expect value _NoticeLbl contains \"libOtherMajorPlugin.so\"\n"
                           "trigger _PluginsAction\n"
                           "in _PluginDialog\n"
                           "expect rows _PluginTable is 2\n"
                           "expect cell _PluginTable Good State is Loaded\n"
                           "select _PluginTable Good\n"
                           "click _PluginUnloadBtn\n"
                           "expect cell _PluginTable Good State is Unloaded\n"
                           "wait 5 window _GoodPluginWindow is closed\n",
                           {"--plugin", folder + "/libGoodPlugin.so", "--plugin",
                            folder + "/libOtherMajorPlugin.so"}))
        << out.toStdString() << err.toStdString();
    EXPECT_TRUE(err.contains("the major versions differ")) << err.toStdString();
    EXPECT_EQ(0, Run({"--script", WriteFile("test.zorscript", "trigger \"Good Action\"\n"), "--settings",
                      GetPath("host.ini")},
                     {"ZOR_PLUGIN_PATH=" + folder}))
        << out.toStdString() << err.toStdString();
}

TEST_F(ZORHostProgramTest, EndsWithAMessageWhereThereIsTooLittleMemoryToStart)
{
    ZOR_REQUIRE_MEMORY_LIMITS();
    memoryLimit = 170;
    EXPECT_EQ(3, Run({"--clean-settings", "--settings", GetPath("host.ini")}));
    EXPECT_TRUE(err.startsWith("zorhost: not enough memory to start: ")) << err.toStdString();
}

TEST_F(ZORHostProgramTest, AFileThatDoesNotFitIntoTheMemoryLeavesTheDocumentAndTheProgramAsTheyWere)
{
    ZOR_REQUIRE_MEMORY_LIMITS();
    const QString large = WriteSparseStl("large.stl", 20'000'000);
    for (const int limit : {400, 550, 700}) {
        memoryLimit = limit;
        EXPECT_EQ(
            0, RunScript("in ZORHostMainWindow\n"
                         "answer file ${LARGE}\n"
                         "answer box OK \"Not enough memory to read '${LARGE}' (needs about 1.5 GB)\"\n"
                         "trigger _OpenAction\n"
                         "expect geometries is 0\n"
                         "answer file ${PART}\n"
                         "trigger _OpenAction\n"
                         "expect geometries is 1\n",
                         {"--define", "LARGE=" + large, "--define", "PART=" + WriteTetrahedron("part.stl")}))
            << limit << " MB: " << out.toStdString() << err.toStdString();
    }
}

TEST_F(ZORHostProgramTest, OpensItsWindowWithoutGraphicsContext)
{
    EXPECT_EQ(0, RunScript("in ZORHostMainWindow\n"
                           "screenshot window ${OUT}/window.png\n"
                           "screenshot view ${OUT}/view.png\n"
                           "expect colors ${OUT}/view.png above 10\n",
                           {"--define", "OUT=" + GetPath("out"), "--open", WriteTetrahedron("part.stl")},
                           {"ZOR_NO_GRAPHICS=1"}))
        << out.toStdString() << err.toStdString();
}

TEST_F(ZORHostProgramTest, SettingsThatCannotBeKeptAreOnTheNoticeBar)
{
    const QString file = WriteFile("file", "x") + "/host.ini";
    EXPECT_EQ(0,
              Run({"--no-default-plugins", "--settings", file, "--script",
                   WriteFile("test.zorscript", "in ZORHostMainWindow\n"
                                               "expect value _NoticeLbl contains \"cannot be written\"\n")}))
        << out.toStdString() << err.toStdString();
    EXPECT_TRUE(err.contains("cannot be written")) << err.toStdString();
}

const QByteArray kWaitForever = "wait 60 window Never is open\n";

/// Starts a nesting job of a minute from the console; the documents of the script lie in ${OUT}.
const QByteArray kStartHeavyJob = R"script(in ZORHostMainWindow
trigger "SDK Test"
in ZORTestMainDialog
trigger "Translate"
in ZORTestNestTranslateDlg
set Provider "Contours (XML)"
answer file "${SAMPLES}/contours.xml"
click _AddBtn
answer file "${OUT}"
answer box OK "Translation has finished"
click _TranslateBtn
wait 30 value _ProgBar is 1
click OK
in ZORTestMainDialog
trigger "Nest"
in ZORTestNestNestingDlg
answer file "${OUT}/Ply.1.msi"
click _AddItemBtn
edit _ItemTable 0 Quantity 500
answer form Width
  set Width 1700
  click OK
end
answer text "roll"
click _PackagingAddBtn
set "Max Run Time" 60
set "Min Run Time" 60
click Compute
wait 30 value _ProgBar above 0
in ZORHostMainWindow
print closing
)script";

TEST_F(ZORHostProgramTest, EndsWhileAHeavyJobRuns)
{
    // The end of the script ends the program directly; Quit closes its windows first.
    for (const QByteArray& end : {QByteArray(), "trigger _QuitAction\n" + kWaitForever}) {
        const QString script = WriteFile("heavy.zorscript", kStartHeavyJob + end);
        QProcess process;
        process.start(ZOR_TEST_HOST, {"--script", script, "--settings", GetPath("host.ini"), "--define",
                                      "OUT=" + GetPath("."), "--define", kSamples});
        QByteArray output;
        while (!output.contains("closing") && process.waitForReadyRead(60'000))
            output += process.readAllStandardOutput();
        ASSERT_TRUE(output.contains("closing")) << output.toStdString();
        EXPECT_TRUE(process.waitForFinished(10'000)) << "the program waits for its job";
        EXPECT_EQ(QProcess::NormalExit, process.exitStatus());
        output += process.readAllStandardOutput();
        EXPECT_FALSE(output.contains("unexpected dialog")) << output.toStdString();
    }
}

TEST_F(ZORHostProgramTest, SignalsEndItInOrder)
{
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        QProcess process;
        process.setChildProcessModifier([number] { std::signal(number, SIG_DFL); }); // shells may ignore it
        process.start(ZOR_TEST_HOST, {"--no-default-plugins", "--settings", GetPath("signal.ini"), "--open",
                                      WriteTetrahedron("part.stl")});
        // Its signals are its own when the window stands.
        ASSERT_TRUE(WaitFor([&] { return CatchesSignal(process.processId(), number); }));
        kill(pid_t(process.processId()), number);
        ASSERT_TRUE(process.waitForFinished(60'000)) << number;
        EXPECT_EQ(QProcess::NormalExit, process.exitStatus()) << number;
        EXPECT_EQ(128 + number, process.exitCode());
        EXPECT_TRUE(QFile::remove(GetPath("signal.ini"))) << "the settings are saved";
    }
}

TEST_F(ZORHostProgramTest, SignalsEndItsJobsAndRemoveTheirDirectories)
{
    const QString temporary = GetPath("temporary");
    ASSERT_TRUE(QDir().mkpath(temporary));
    QProcess process;
    process.setProcessEnvironment(Environment({"TMPDIR=" + temporary}));
    process.start(ZOR_TEST_HOST,
                  {"--script", WriteFile("heavy.zorscript", kStartHeavyJob + kWaitForever), "--settings",
                   GetPath("host.ini"), "--define", "OUT=" + GetPath("."), "--define", kSamples});
    QByteArray output;
    while (!output.contains("closing") && process.waitForReadyRead(60'000))
        output += process.readAllStandardOutput();
    ASSERT_TRUE(output.contains("closing")) << output.toStdString();
    EXPECT_EQ(1, QDir(temporary).entryList({"zorjobs-*"}, QDir::Dirs).size());
    kill(pid_t(process.processId()), SIGTERM);
    ASSERT_TRUE(process.waitForFinished(10'000)) << "the program waits for its job";
    EXPECT_EQ(1, process.exitCode()) << "the script did not end";
    EXPECT_EQ(QStringList(), QDir(temporary).entryList({"zorjobs-*"}, QDir::Dirs));
}

TEST_F(ZORHostProgramTest, AScriptQuitsWithUnsavedWorkWithoutAQuestion)
{
    EXPECT_EQ(1, Run({"--script",
                      WriteFile("test.zorscript", "in ZORHostMainWindow\n"
                                                  "trigger \"Create Rosette\"\n"
                                                  "in _DialogFrame\n"
                                                  "click OK\n"
                                                  "wait 5 window _DialogFrame is closed\n"
                                                  "in ZORHostMainWindow\n"
                                                  "expect geometries is 4\n"
                                                  "trigger _QuitAction\n"
                                                  "wait 60 window Never is open\n"),
                      "--settings", GetPath("host.ini")}));
    EXPECT_FALSE(out.contains("FAILED")) << out.toStdString();
    EXPECT_FALSE(out.contains("unexpected dialog")) << out.toStdString();
}

} // namespace
