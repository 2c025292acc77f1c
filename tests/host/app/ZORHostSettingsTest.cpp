#include "app/ZORHostSettings.h"

#include "HostTest.h"
#include "support/HostileDisk.h"
#include "support/HostileFiles.h"

#include <ZORSystem/ZORSysSettingsManager.h>

#include <QDir>

namespace {

class ZORHostSettingsTest : public HostTest
{
};

TEST_F(ZORHostSettingsTest, TheStoreIsThatOfTheSdkWhileItLives)
{
    {
        const ZORHostSettings settings(GetPath("own.ini"), false);
        EXPECT_EQ(settings.GetStore(), ZORSysSettingsManager::GetManager()->GetSource());
        EXPECT_TRUE(settings.GetWarning().isEmpty());
        settings.GetStore()->setValue("a/b", 3);
    }
    EXPECT_EQ(nullptr, ZORSysSettingsManager::GetManager()->GetSource());
    EXPECT_EQ(3, QSettings(GetPath("own.ini"), QSettings::IniFormat).value("a/b").toInt());
}

TEST_F(ZORHostSettingsTest, TheUsersOwnFileLiesBelowTheConfigurationFolder)
{
    const ZORHostSettings settings(QString(), false);
    EXPECT_EQ(qEnvironmentVariable("XDG_CONFIG_HOME") + "/Zorvane/zorhost.ini",
              settings.GetStore()->fileName());
}

TEST_F(ZORHostSettingsTest, CleanStartsEmptyAndKeepsTheOldFile)
{
    const QString file = WriteFile("own.ini", "[Host]\nWireframe=true\n");
    const ZORHostSettings settings(file, true);
    EXPECT_TRUE(settings.GetWarning().isEmpty());
    EXPECT_TRUE(settings.GetStore()->allKeys().isEmpty());
    EXPECT_TRUE(QSettings(file + ".bak", QSettings::IniFormat).value("Host/Wireframe").toBool());
}

TEST_F(ZORHostSettingsTest, ADamagedFileIsCopiedAndSaidSo)
{
    const QByteArray damaged = "[Host]\nWireframe=true\n\x01\x02 no key here\n[unclosed\n";
    const QString file = WriteFile("own.ini", damaged);
    const ZORHostSettings settings(file, false);
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
    const ZORHostSettings settings(GetPath("own.ini"), false);
    EXPECT_TRUE(settings.GetWarning().contains("cannot be read")) << settings.GetWarning().toStdString();
}

TEST_F(ZORHostSettingsTest, WhatCannotBeReadIsLeftAloneAndNothingIsKept)
{
    const QString folder = QFileInfo(GetPath("a")).absolutePath();
    const QString pipe = HostileFiles::MakePipe(folder), socket = HostileFiles::MakeSocket(folder);
    const QString zeros = HostileFiles::MakeZeros(folder, qint64(4) << 30);
    for (const QString& path : {pipe, socket, zeros}) {
        const ZORHostSettings settings(path, path != zeros);
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

TEST_F(ZORHostSettingsTest, AFileThatCannotBeWrittenIsSaidSo)
{
    const QString file = WriteFile("own.ini", "[Host]\nWireframe=true\n");
    const ReadOnlyFolder readOnly(GetPath({}));
    const ZORHostSettings settings(file, false);
    EXPECT_TRUE(settings.GetWarning().contains("cannot be written")) << settings.GetWarning().toStdString();
    EXPECT_TRUE(settings.GetStore()->value("Host/Wireframe").toBool());
}

TEST_F(ZORHostSettingsTest, AFolderThatCannotBeMadeIsSaidSo)
{
    // Below a file there is no folder, not even for root.
    const ZORHostSettings settings(WriteFile("file", "x") + "/own.ini", false);
    EXPECT_TRUE(settings.GetWarning().contains("cannot be written")) << settings.GetWarning().toStdString();
}

} // namespace
