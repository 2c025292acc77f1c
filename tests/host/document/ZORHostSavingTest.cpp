// Tests of writing documents in a thread while the event loop goes on.

#include "document/ZORHostSaving.h"

#include "HostTest.h"
#include "support/ContainerBytes.h"
#include "support/FileContent.h"
#include "support/HostileDisk.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QDir>

namespace {

using Outcome = ZORHostSaving::Outcome;

class ZORHostSavingTest : public HostTest
{
protected:
    ZORFeatContainer& GetContainer() const { return *GetEnvironment()->GetContainer(); }
    void AddLines(int count)
    {
        for (int i = 0; i < count; ++i)
            (new ZORGeoLine(&GetContainer(), {0.1 * i, 1.0 / (i + 1), 0}, {double(i), 2, 3}))->Initialize();
    }
    QString Name() const { return QDir::toNativeSeparators(path); }

    ZORHostSaving saving{nullptr};
    const QString path = GetPath("a%1.ZORCont");
};

TEST_F(ZORHostSavingTest, WritesTheBytesOfTheContainer)
{
    AddBox("Box");
    EXPECT_EQ(Outcome::Written, saving.Write(GetContainer(), path));
    EXPECT_EQ("", saving.GetError());
    EXPECT_EQ(SaveContainer(GetContainer()), ReadFile(path));
    EXPECT_FALSE(saving.IsBusy());
}

TEST_F(ZORHostSavingTest, WritesWhatTheDocumentWasWhenItBegan)
{
    AddBox("Box");
    const QByteArray before = SaveContainer(GetContainer());
    QObject::connect(&saving, &ZORHostSaving::Started, [this] {
        GetContainer().GetGeometryByIndex(0)->setObjectName("Other");
        AddLines(3);
    });
    EXPECT_EQ(Outcome::Written, saving.Write(GetContainer(), path));
    EXPECT_EQ(before, ReadFile(path));
    EXPECT_EQ(4, GetContainer().GetNumGeometry());
}

TEST_F(ZORHostSavingTest, CanceledAtAnyMomentTheFileIsAsItWasOrWhole)
{
    AddLines(30'000);
    const QByteArray whole = SaveContainer(GetContainer());
    int numCanceled = 0;
    for (const double moment : {0.0, 0.05, 0.2, 0.5, 0.9}) {
        WriteFile("a%1.ZORCont", "former");
        QObject context;
        QObject::connect(&saving, &ZORHostSaving::Started, &context, [&] {
            if (moment == 0)
                saving.Cancel();
        });
        QObject::connect(&saving, &ZORHostSaving::ProgressChanged, &context, [&](double progress) {
            if (progress >= moment)
                saving.Cancel();
        });
        const Outcome outcome = saving.Write(GetContainer(), path);
        numCanceled += outcome == Outcome::Canceled ? 1 : 0;
        EXPECT_NE(Outcome::Failed, outcome);
        EXPECT_EQ(outcome == Outcome::Canceled ? QByteArray("former") : whole, ReadFile(path));
        EXPECT_EQ("", saving.GetError());
    }
    EXPECT_LE(1, numCanceled);
}

TEST_F(ZORHostSavingTest, AFullDiskKeepsTheFormerFileAndNamesIt)
{
    AddLines(3000);
    WriteFile("a%1.ZORCont", "former");
    {
        const FileSizeLimit limit(4096);
        EXPECT_EQ(Outcome::Failed, saving.Write(GetContainer(), path));
    }
    EXPECT_TRUE(saving.GetError().startsWith("Cannot write '" + Name() + "': "))
        << saving.GetError().toStdString();
    EXPECT_EQ("former", ReadFile(path));
    EXPECT_EQ(Outcome::Written, saving.Write(GetContainer(), path));
    EXPECT_EQ("", saving.GetError());
}

TEST_F(ZORHostSavingTest, WhatCannotBeWrittenToIsNamed)
{
    AddBox("Box");
    for (const QString& file : {GetPath("missing/x.ZORCont"), GetPath(".")}) {
        EXPECT_EQ(Outcome::Failed, saving.Write(GetContainer(), file));
        EXPECT_TRUE(saving.GetError().contains(QDir::toNativeSeparators(file)))
            << saving.GetError().toStdString();
        EXPECT_TRUE(saving.GetError().front().isUpper());
    }
}

TEST_F(ZORHostSavingTest, ASecondFileHasToWait)
{
    AddBox("Box");
    Outcome inner = Outcome::Written;
    QObject::connect(&saving, &ZORHostSaving::Started,
                     [&] { inner = saving.Write(GetContainer(), GetPath("other.ZORCont")); });
    EXPECT_EQ(Outcome::Written, saving.Write(GetContainer(), path));
    EXPECT_EQ(Outcome::Failed, inner);
    EXPECT_FALSE(QFile::exists(GetPath("other.ZORCont")));
    EXPECT_EQ(SaveContainer(GetContainer()), ReadFile(path));
}

} // namespace
