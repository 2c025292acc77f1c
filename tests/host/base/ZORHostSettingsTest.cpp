#include "base/ZORHostSettings.h"

#include "HostTest.h"
#include "base/ZORHostIniFormat.h"
#include "support/FileContent.h"
#include "support/HostileDisk.h"
#include "support/HostileFiles.h"
#include "support/KillDuring.h"
#include "support/WarningCatcher.h"

#include <ZORSystem/ZORSysSettingsManager.h>

#include <QDir>

#include <sys/file.h>

namespace {

using Start = ZORHostSettings::Start;

class ZORHostSettingsTest : public HostTest
{
};

TEST_F(ZORHostSettingsTest, TheStoreIsThatOfTheSdkWhileItLives)
{
    {
        const ZORHostSettings settings(GetPath("own.ini"), Start::LastSession);
        EXPECT_EQ(settings.GetStore(), ZORSysSettingsManager::GetManager()->GetSource());
        EXPECT_TRUE(settings.GetWarning().isEmpty());
        settings.GetStore()->setValue("a/b", 3);
    }
    EXPECT_EQ(nullptr, ZORSysSettingsManager::GetManager()->GetSource());
    EXPECT_EQ(3, QSettings(GetPath("own.ini"), QSettings::IniFormat).value("a/b").toInt());
}

TEST_F(ZORHostSettingsTest, TheUsersOwnFileLiesBelowTheConfigurationFolder)
{
    const ZORHostSettings settings(QString(), Start::LastSession);
    EXPECT_EQ(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Zorvane/zorhost.ini",
              settings.GetStore()->fileName());
}

TEST_F(ZORHostSettingsTest, CleanStartsEmptyAndKeepsTheOldFile)
{
    const QString file = WriteFile("own.ini", "[Host]\nWireframe=true\n");
    const ZORHostSettings settings(file, Start::Defaults);
    EXPECT_TRUE(settings.GetWarning().isEmpty());
    EXPECT_TRUE(settings.GetStore()->allKeys().isEmpty());
    EXPECT_TRUE(QSettings(file + ".bak", QSettings::IniFormat).value("Host/Wireframe").toBool());
}

TEST_F(ZORHostSettingsTest, ADamagedFileIsCopiedAndSaidSo)
{
    const QByteArray damaged = "[Host]\nWireframe=true\n\x01\x02 no key here\n[unclosed\n";
    const QString file = WriteFile("own.ini", damaged);
    // As for the user's own file, which is looked up by settings in the same format.
    const QSettings first(file, ZORHostIniFormat::Get());
    const ZORHostSettings settings(file, Start::LastSession);
    EXPECT_TRUE(settings.GetWarning().contains("is damaged")) << settings.GetWarning().toStdString();
    EXPECT_TRUE(settings.GetWarning().contains(QDir::toNativeSeparators(file)));
    QFile copy(file + ".damaged");
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(damaged, copy.readAll());
    EXPECT_TRUE(settings.GetStore()->value("Host/Wireframe").toBool());
}

TEST_F(ZORHostSettingsTest, AFolderInPlaceOfTheFileIsSaidSo)
{
    QDir().mkdir(GetPath("own.ini"));
    const ZORHostSettings settings(GetPath("own.ini"), Start::LastSession);
    EXPECT_TRUE(settings.GetWarning().contains("cannot be read")) << settings.GetWarning().toStdString();
}

TEST_F(ZORHostSettingsTest, WhatCannotBeReadIsLeftAloneAndNothingIsKept)
{
    const QString folder = QFileInfo(GetPath("a")).absolutePath();
    const QString pipe = HostileFiles::MakePipe(folder), socket = HostileFiles::MakeSocket(folder);
    const QString zeros = HostileFiles::MakeZeros(folder, qint64(4) << 30);
    for (const QString& path : {pipe, socket, zeros}) {
        const ZORHostSettings settings(path, path == zeros ? Start::LastSession : Start::Defaults);
        EXPECT_EQ(QString("The settings file '%1' cannot be read; the defaults are used.").arg(path),
                  settings.GetWarning());
        EXPECT_TRUE(settings.GetStore()->allKeys().isEmpty());
        ZORHostSettings::Write("Key", 3);
        settings.GetStore()->sync();
        EXPECT_EQ(3, ZORHostSettings::Read("Key").toInt());
        EXPECT_TRUE(QFileInfo::exists(path));
        EXPECT_FALSE(QFileInfo::exists(path + ".bak"));
    }
}

TEST_F(ZORHostSettingsTest, APipeOrASocketInPlaceOfTheLockHoldsNothingUp)
{
    const QString path = WriteFile("own.ini", "[Host]\ntext=old\n");
    const QString folder = QFileInfo(path).absolutePath();
    for (const QString& obstacle : {HostileFiles::MakePipe(folder), HostileFiles::MakeSocket(folder)}) {
        ASSERT_TRUE(QFile::rename(obstacle, path + ".lock"));
        {
            const ZORHostSettings settings(path, Start::LastSession);
            EXPECT_EQ(QString("The settings file '%1' cannot be read; the defaults are used.").arg(path),
                      settings.GetWarning());
            ZORHostSettings::Write("Key", 3);
            settings.GetStore()->sync();
        }
        EXPECT_EQ(QByteArray("[Host]\ntext=old\n"), ReadFile(path));
        ASSERT_TRUE(QFile::remove(path + ".lock"));
    }
}

TEST_F(ZORHostSettingsTest, AFileThatCannotBeWrittenIsSaidSo)
{
    const QString file = WriteFile("own.ini", "[Host]\nWireframe=true\n");
    const ReadOnlyFolder readOnly(GetPath({}));
    const ZORHostSettings settings(file, Start::LastSession);
    EXPECT_TRUE(settings.GetWarning().contains("cannot be written")) << settings.GetWarning().toStdString();
    EXPECT_TRUE(settings.GetStore()->value("Host/Wireframe").toBool());
}

TEST_F(ZORHostSettingsTest, AFolderThatCannotBeMadeIsSaidSo)
{
    // Below a file there is no folder, not even for root.
    const ZORHostSettings settings(WriteFile("file", "x") + "/own.ini", Start::LastSession);
    EXPECT_TRUE(settings.GetWarning().contains("cannot be written")) << settings.GetWarning().toStdString();
}

TEST_F(ZORHostSettingsTest, AFileIsReadAndWrittenAsQtDoes)
{
    const QString path = GetPath("own.ini");
    const QMap<QString, QVariant> values = {{"plain", 1},
                                            {"Host/Geometry", QByteArray("\0\xff,;\"", 5)},
                                            {"Host/Size", QSize(3, 4)},
                                            {"Host/a b\u00e4/%", QString("\u00e4, \"b\"; \n\\x")},
                                            {"Debug/Empty", QString()},
                                            {"Debug/List", QStringList({"a", "b, c", ""})},
                                            {"Debug/Number", 0.1}};
    const auto expectValues = [&values](const QSettings& settings) {
        EXPECT_EQ(values.keys(), settings.allKeys());
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            EXPECT_TRUE(settings.value(value.key()).toString() == value->toString()
                        && settings.value(value.key()).toStringList() == value->toStringList()
                        && settings.value(value.key()).toSize() == value->toSize())
                << value.key().toStdString();
    };
    {
        const ZORHostSettings settings(path, Start::LastSession);
        for (auto value = values.cbegin(); value != values.cend(); ++value)
            settings.GetStore()->setValue(value.key(), *value);
    }
    expectValues(QSettings(path, QSettings::IniFormat));
    const ZORHostSettings settings(path, Start::LastSession);
    expectValues(*settings.GetStore());
    settings.GetStore()->clear();
    settings.GetStore()->sync();
    EXPECT_EQ(QSettings::NoError, settings.GetStore()->status());
    EXPECT_EQ(QStringList(), QSettings(path, QSettings::IniFormat).allKeys());
}

TEST_F(ZORHostSettingsTest, AFullDiskKeepsTheFileAndTheValues)
{
    SmallDisk disk(64 * 1024);
    if (!disk.IsMounted())
        GTEST_SKIP() << "this user must not mount a disk";
    const QString path = disk.GetPath("own.ini");
    const ZORHostSettings settings(path, Start::LastSession);
    settings.GetStore()->setValue("Host/text", "old");
    settings.GetStore()->sync();
    const QByteArray before = ReadFile(path);
    EXPECT_EQ(QByteArray("[Host]\ntext=old\n"), before);
    QFile rest(disk.GetPath("rest"));
    ASSERT_TRUE(rest.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (rest.write(QByteArray(4096, 'x')) > 0)
        continue;
    for (int pages = 0; pages < 4; ++pages) { // free; one of them is for the lock
        ASSERT_TRUE(rest.resize(rest.size() - (pages == 0 ? 0 : 4096)));
        settings.GetStore()->setValue("Host/text", QString(15'000, 'n'));
        settings.GetStore()->sync();
        EXPECT_EQ(before, ReadFile(path)) << pages;
    }
    EXPECT_EQ(QStringList({"own.ini", "rest"}),
              QDir(disk.GetFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name));
    ASSERT_TRUE(rest.resize(0));
    settings.GetStore()->sync();
    EXPECT_LT(15'000, ReadFile(path).size()) << "the value was kept";
}

TEST_F(ZORHostSettingsTest, AKillLeavesAWholeFileThatCanBeWritten)
{
    ASSERT_TRUE(QDir().mkpath(GetPath("writing")) && QDir().mkpath(GetPath("temporary")));
    const QString path = GetPath("writing/own.ini");
    const QByteArray small = "[Host]\ntext=old\n", large = "[Host]\ntext=" + QByteArray(20'000, 'n') + "\n";
    WriteFile("writing/own.ini", small);
    std::mt19937 random(13);
    for (int kill = 0; kill < 20; ++kill) {
        const bool isRunning = KillDuring(
            [&](int i) {
                qputenv("TMPDIR", QFile::encodeName(GetPath("temporary"))); // of the killed process alone
                const ZORHostSettings settings(path, Start::LastSession);
                settings.GetStore()->setValue("Host/text",
                                              i % 2 == 0 ? QString(20'000, 'n') : QString("old"));
                settings.GetStore()->sync();
            },
            random, 60);
        ASSERT_TRUE(isRunning);
        const QByteArray present = ReadFile(path);
        EXPECT_TRUE(present == small || present == large) << kill << ": " << present.size() << " bytes";
    }
    const ZORHostSettings settings(path, Start::LastSession);
    EXPECT_EQ(QString(), settings.GetWarning());
    settings.GetStore()->setValue("Host/text", "new"); // whoever was killed may have held the lock
    settings.GetStore()->sync();
    EXPECT_EQ(QSettings::NoError, settings.GetStore()->status());
    EXPECT_EQ(QByteArray("[Host]\ntext=new\n"), ReadFile(path));
}

// Whoever makes the lock may be killed before its number is in it.
TEST_F(ZORHostSettingsTest, AnEmptyLockWithoutAnOwnerIsNotWaitedFor)
{
    const QString path = GetPath("own.ini");
    QFile lock(WriteFile("own.ini.lock", QByteArray()));
    ASSERT_TRUE(lock.open(QIODevice::ReadWrite));
    ASSERT_EQ(0, flock(lock.handle(), LOCK_EX));
    {
        const ZORHostSettings settings(path, Start::LastSession);
        EXPECT_TRUE(lock.exists()) << "its owner lives";
    }
    lock.close();
    const ZORHostSettings settings(path, Start::LastSession);
    EXPECT_FALSE(lock.exists()) << "every write would wait for half a minute";
    settings.GetStore()->setValue("Host/text", "new");
    settings.GetStore()->sync();
    EXPECT_EQ(QByteArray("[Host]\ntext=new\n"), ReadFile(path));
}

TEST_F(ZORHostSettingsTest, AFolderThatBecomesReadOnlyKeepsTheFileAndTheValues)
{
    const QByteArray before = "[Host]\ntext=old\n";
    const QString path = WriteFile("own.ini", before);
    const ZORHostSettings settings(path, Start::LastSession);
    EXPECT_EQ(QString(), settings.GetWarning());
    settings.GetStore()->setValue("Host/text", "new");
    {
        const ReadOnlyFolder readOnly(GetPath({}));
        settings.GetStore()->sync();
        EXPECT_EQ(before, ReadFile(path));
        EXPECT_EQ("new", settings.GetStore()->value("Host/text").toString());
    }
    EXPECT_EQ(QStringList("own.ini"), QDir(GetPath({})).entryList({"own.ini*"}, QDir::Files | QDir::Hidden));
    settings.GetStore()->sync();
    EXPECT_EQ(QByteArray("[Host]\ntext=new\n"), ReadFile(path)) << "the value was kept";
}

TEST_F(ZORHostSettingsTest, AFolderThatBecomesReadOnlyIsLoggedOnce)
{
    const QString path = WriteFile("own.ini", "[Host]\ntext=old\n");
    const WarningCatcher warnings;
    const ZORHostSettings settings(path, Start::LastSession);
    const QStringList expected("zor.host: the settings cannot be written: Permission denied");
    for (int round = 1; round <= 2; ++round) {
        {
            const ReadOnlyFolder readOnly(GetPath({}));
            for (const char* text : {"a", "b", "c"}) {
                settings.GetStore()->setValue("Host/text", text);
                QCoreApplication::processEvents();
            }
            EXPECT_EQ(expected.size() * round, warnings.GetLines().size());
            EXPECT_EQ(expected.constFirst(), warnings.GetLines().value(round - 1));
        }
        settings.GetStore()->setValue("Host/round", round);
        QCoreApplication::processEvents();
        EXPECT_EQ("[Host]\nround=" + QByteArray::number(round) + "\ntext=c\n", ReadFile(path));
    }
}

TEST_F(ZORHostSettingsTest, ValuesThatTheEndCannotWriteAreLogged)
{
    const QString path = WriteFile("own.ini", "[Host]\ntext=old\n");
    const WarningCatcher warnings;
    auto settings = std::make_unique<ZORHostSettings>(path, Start::LastSession);
    const ReadOnlyFolder readOnly(GetPath({}));
    settings->GetStore()->setValue("Host/text", "new");
    settings.reset();
    EXPECT_EQ(QStringList("zor.host: the settings cannot be written: Permission denied"),
              warnings.GetLines());
}

TEST_F(ZORHostSettingsTest, AFolderThatVanishesIsMadeForTheNextValue)
{
    const QString folder = GetPath("vanishing"), path = folder + "/own.ini";
    const ZORHostSettings settings(path, Start::LastSession);
    settings.GetStore()->setValue("Host/text", "old");
    settings.GetStore()->sync();
    ASSERT_TRUE(QDir(folder).removeRecursively());
    settings.GetStore()->setValue("Host/text", "new");
    EXPECT_EQ("new", settings.GetStore()->value("Host/text").toString());
    settings.GetStore()->sync();
    EXPECT_EQ(QByteArray("[Host]\ntext=new\n"), ReadFile(path));

    ASSERT_TRUE(QDir(folder).removeRecursively());
    QFile file(folder); // takes the place of the folder
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    settings.GetStore()->setValue("Host/text", "newer");
    settings.GetStore()->sync();
    EXPECT_EQ("newer", settings.GetStore()->value("Host/text").toString());
    ASSERT_TRUE(file.remove());
    settings.GetStore()->sync();
    EXPECT_EQ(QByteArray("[Host]\ntext=newer\n"), ReadFile(path)) << "the value was kept";
}

TEST_F(ZORHostSettingsTest, WithoutATemporaryFileTheSettingsStayAsTheyAre)
{
    const QByteArray content = "[Host]\nWireframe=true\n";
    const QString path = WriteFile("own.ini", content);
    const QByteArray former = qgetenv("TMPDIR");
    for (const char* folder : {"/proc", former.isEmpty() ? "/tmp" : former.constData()}) {
        qputenv("TMPDIR", folder);
        {
            const ZORHostSettings settings(path, Start::LastSession);
            settings.GetStore()->setValue("Host/other", 1);
        }
        EXPECT_EQ(content, ReadFile(path));
    }
    if (former.isNull())
        qunsetenv("TMPDIR");
}

} // namespace
