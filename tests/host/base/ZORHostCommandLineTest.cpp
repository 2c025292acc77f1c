#include "base/ZORHostCommandLine.h"

#include "support/Printers.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {

using Status = ZORHostCommandLine::Status;

ZORHostCommandLine Parse(const QStringList& arguments)
{
    return ZORHostCommandLine::Parse(QStringList("zorhost") + arguments);
}

TEST(ZORHostCommandLineTest, DefaultsWithoutArguments)
{
    const ZORHostCommandLine line = Parse({});
    EXPECT_EQ(Status::Run, line.status);
    EXPECT_TRUE(line.options.plugins.isEmpty());
    EXPECT_TRUE(line.options.defaultPlugins);
    EXPECT_TRUE(line.options.settingsFile.isEmpty());
    EXPECT_FALSE(line.options.cleanSettings);
    EXPECT_FALSE(line.options.themeGiven);
    EXPECT_TRUE(line.options.scriptFile.isEmpty());
    EXPECT_TRUE(line.options.filesToOpen.isEmpty());
}

TEST(ZORHostCommandLineTest, TakesRepeatedPluginsAndFilesInOrderAndMakesThemAbsolute)
{
    const ZORHostCommandLine line = Parse(
        {"--plugin", "a.so", "--open", "x.stl", "--plugin", "/lib/b.so", "y.stl", "--no-default-plugins"});
    ASSERT_EQ(Status::Run, line.status);
    const QDir here;
    EXPECT_EQ(QStringList({here.absoluteFilePath("a.so"), "/lib/b.so"}), line.options.plugins);
    EXPECT_FALSE(line.options.defaultPlugins);
    EXPECT_EQ(QStringList({here.absoluteFilePath("x.stl"), here.absoluteFilePath("y.stl")}),
              line.options.filesToOpen);
}

TEST(ZORHostCommandLineTest, TakesSettingsScriptAndVariables)
{
    const ZORHostCommandLine line =
        Parse({"--settings", "/tmp/s.ini", "--clean-settings", "--script", "/tmp/s.txt", "--define",
               "OUT=/tmp/a=b", "--define", "EMPTY=", "--theme", "dark"});
    ASSERT_EQ(Status::Run, line.status);
    EXPECT_EQ(QString("/tmp/s.ini"), line.options.settingsFile);
    EXPECT_TRUE(line.options.cleanSettings);
    EXPECT_EQ(QString("/tmp/s.txt"), line.options.scriptFile);
    EXPECT_EQ(QString("/tmp/a=b"), line.options.variables.value("OUT"));
    EXPECT_TRUE(line.options.variables.contains("EMPTY"));
    EXPECT_TRUE(line.options.themeGiven);
    EXPECT_TRUE(line.options.theme == ZORHostOptions::Theme::Dark);
}

TEST(ZORHostCommandLineTest, ThePluginOptionIsKeptFromQt)
{
    EXPECT_EQ(QByteArray("--load-plugin"), ZORHostCommandLine::ProtectFromQt("--plugin"));
    EXPECT_EQ(QByteArray("--load-plugin=a.so"), ZORHostCommandLine::ProtectFromQt("--plugin=a.so"));
    EXPECT_EQ(QByteArray("--plugins"), ZORHostCommandLine::ProtectFromQt("--plugins"));
    EXPECT_EQ(QStringList("/a.so"), Parse({"--load-plugin=/a.so"}).options.plugins);
}

TEST(ZORHostCommandLineTest, HelpListsEveryOption)
{
    const ZORHostCommandLine line = Parse({"--help"});
    ASSERT_EQ(Status::Exit, line.status);
    for (const char* option : {"--plugin", "--settings", "--clean-settings", "--script", "--define", "--open",
                               "--theme", "--help", "--version"})
        EXPECT_TRUE(line.text.contains(QLatin1String(option))) << option;
}

TEST(ZORHostCommandLineTest, VersionIsThatOfTheProgram)
{
    const ZORHostCommandLine line = Parse({"--version"});
    EXPECT_EQ(Status::Exit, line.status);
    EXPECT_EQ(QString("zorhost 1.0.0\n"), line.text);
}

TEST(ZORHostCommandLineTest, MistakesAreExplained)
{
    const std::pair<QStringList, QString> mistakes[] = {
        {{"--colour"}, "Unknown option 'colour'."},
        {{"--plugin"}, "Missing value after '--plugin'."},
        {{"--theme", "blue"}, "Unknown theme 'blue': choose light, dark or system."},
        {{"--define", "=x"}, "The option --define needs name=value, not '=x'."},
        {{"--settings", ""}, "The option --settings needs the name of a file."},
    };
    for (const auto& [arguments, message] : mistakes) {
        const ZORHostCommandLine line = Parse(arguments);
        EXPECT_EQ(Status::Error, line.status) << message.toStdString();
        EXPECT_EQ(message + "\nRun zorhost --help for the options.\n", line.text);
    }
}

} // namespace
