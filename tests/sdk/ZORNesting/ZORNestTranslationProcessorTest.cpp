// Tests of ZORNestTranslationProcessor.

#include "DxfText.h"
#include "support/WarningCatcher.h"

#include <ZORNesting/ZORNestDebugOptions.h>
#include <ZORNesting/ZORNestResultReader.h>
#include <ZORNesting/ZORNestTranslationProcessor.h>
#include <ZORWorker/ZORWorkResource.h>
#include <ZORWorker/ZORWorkResponse.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

constexpr int kPatience = 120000; // ms until a test gives up

class ZORNestTranslationProcessorTest : public testing::Test
{
protected:
    ~ZORNestTranslationProcessorTest() override
    {
        ZORNestDebugOptions::GetInstance()->SetKeepTranslationWorkDirectories(false);
    }

    QString Write(const QString& name, const QByteArray& content) const
    {
        const QString path = directory.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    ZORNestTranslationResponse* Add(const QString& path, const QByteArray& provider = "dxf")
    {
        ZORNestTranslationInput input;
        input.SetInputFileType(ZORNestTranslationInput::FileType(6));
        input.SetOutputFileType(ZORNestTranslationInput::FileType(0));
        input.SetPreTranslateProvider(provider);
        return processor->AddInput(input, ZORWorkResource(path));
    }
    static bool WaitForEnd(const ZORNestTranslationResponse* response)
    {
        return QTest::qWaitFor([=] { return response->GetWorkResponse()->IsAtEnd(); }, kPatience);
    }
    static QStringList GetFiles(const ZORNestTranslationResponse* response)
    {
        QStringList paths;
        for (const ZORWorkResource& resource : response->GetWorkResponse()->GetResult().GetResources())
            paths.append(resource.GetFilePath());
        return paths;
    }

    /// The names of the files of plies with these names.
    QStringList TranslateNames(const QStringList& plies)
    {
        const QString contour =
            QStringLiteral("<OuterContour><Pt>0 0</Pt><Pt>1 0</Pt><Pt>1 1</Pt></OuterContour>");
        QString xml;
        for (const QString& ply : plies)
            xml += QStringLiteral("<Ply NAME='%1'>%2</Ply>").arg(ply, contour);
        ZORNestTranslationResponse* const response =
            Add(Write("x.xml", "<r>" + xml.toUtf8() + "</r>"), "contour-xml");
        processor->Execute();
        EXPECT_TRUE(WaitForEnd(response));
        EXPECT_EQ("", response->GetWorkResponse()->GetFailureReason());
        QStringList names;
        for (const QString& file : GetFiles(response)) {
            EXPECT_TRUE(QFile::exists(file));
            names.append(QFileInfo(file).fileName());
        }
        return names;
    }

    const QTemporaryDir directory;
    std::unique_ptr<ZORNestTranslationProcessor> processor = std::make_unique<ZORNestTranslationProcessor>();
};

TEST_F(ZORNestTranslationProcessorTest, EachPartIsAResultFileOfTypeTranslation)
{
    const QString path = Write("kit.dxf", Dxf(Square(0, 0, 10) + Square(20, 0, 5) + Circle(5, 5, 2)));
    ZORNestTranslationResponse* const response = Add(path);
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    ASSERT_EQ(ZORWorkResponse::Finished, response->GetWorkResponse()->GetStatus());
    const QStringList files = GetFiles(response);
    ASSERT_EQ(2, files.size());
    EXPECT_EQ("kit-1.msi", QFileInfo(files[0]).fileName());
    EXPECT_EQ("kit-2.msi", QFileInfo(files[1]).fileName());
    const ZORNestResult first = ZORNestResultReader(files[0]).Read(nullptr);
    ASSERT_TRUE(first.IsValid());
    EXPECT_EQ(ZORNestResult::Translation, first.GetResultType());
    ASSERT_EQ(1, first.GetItems().size());
    EXPECT_EQ("kit-1", first.GetItems().at(0)->GetPartName());
    ASSERT_EQ(2, first.GetItems().at(0)->GetShapes().size());
    EXPECT_EQ(100, first.GetItems().at(0)->GetShapes().at(0)->GetArea());
    EXPECT_EQ(1, first.GetItems().at(0)->GetShapes().at(1)->GetShapeHole());
    EXPECT_EQ(QStringList("units: 1 mm"), response->GetReport());
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(ZORNestTranslationProcessorTest, FilesAreGoneWithTheProcessor)
{
    ZORNestTranslationResponse* const response = Add(Write("a.dxf", Dxf(Circle(0, 0, 1))));
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    const QString work = response->GetWorkResponse()->GetWorkDirectory();
    EXPECT_TRUE(QFile::exists(GetFiles(response).constFirst()));
    processor.reset();
    EXPECT_FALSE(QFile::exists(work));
}

TEST_F(ZORNestTranslationProcessorTest, KeptDirectoriesHoldPartsThatNobodyDeletes)
{
    ZORNestDebugOptions::GetInstance()->SetKeepTranslationWorkDirectories(true);
    ZORNestTranslationResponse* const response = Add(Write("a.dxf", Dxf(Circle(0, 0, 1))));
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    QDir work(response->GetWorkResponse()->GetWorkDirectory());
    for (const QString& file : GetFiles(response))
        EXPECT_TRUE(QFile::remove(file));
    processor.reset();
    EXPECT_TRUE(work.exists("kept/a.msi"));
    EXPECT_TRUE(work.exists("report.txt"));
    work.removeRecursively();
}

TEST_F(ZORNestTranslationProcessorTest, NamesOfPartsBecomeNamesOfFilesOnce)
{
    const QByteArray contour = "<OuterContour><Pt>0 0</Pt><Pt>1 0</Pt><Pt>1 1</Pt></OuterContour>";
    QByteArray xml = "<r>";
    for (const char* name : {"../up", "P", "p", "", ".hid", "a:b"})
        xml += QByteArray("<Ply NAME='") + name + "'>" + contour + "</Ply>";
    ZORNestTranslationResponse* const response = Add(Write("x.xml", xml + "</r>"), "contour-xml");
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    QStringList names;
    for (const QString& file : GetFiles(response)) {
        names.append(QFileInfo(file).fileName());
        EXPECT_TRUE(file.startsWith(response->GetWorkResponse()->GetWorkDirectory()));
        EXPECT_TRUE(QFile::exists(file));
    }
    EXPECT_EQ(QStringList({"up.msi", "P.msi", "p-2.msi", "x-4.msi", "_hid.msi", "a_b.msi"}), names);
}

TEST_F(ZORNestTranslationProcessorTest, ManyPartsOfOneNameAreNumbered)
{
    // To check every number for every part takes minutes.
    constexpr int kCount = 10000;
    const QByteArray contour = "<Ply NAME='p'><OuterContour><Pt>0 0</Pt><Pt>1 0</Pt><Pt>1 1</Pt>"
                               "</OuterContour></Ply>";
    ZORNestTranslationResponse* const response =
        Add(Write("x.xml", "<r>" + contour.repeated(kCount) + "</r>"), "contour-xml");
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(response));
    const QStringList files = GetFiles(response);
    ASSERT_EQ(kCount, files.size());
    EXPECT_EQ("p.msi", QFileInfo(files[0]).fileName());
    EXPECT_EQ("p-2.msi", QFileInfo(files[1]).fileName());
    EXPECT_EQ("p-10000.msi", QFileInfo(files[kCount - 1]).fileName());
}

TEST_F(ZORNestTranslationProcessorTest, NumbersThatPartsBearThemselvesAreSkipped)
{
    EXPECT_EQ(QStringList({"p.msi", "p-3.msi", "p-2.msi", "P-4.msi", "p-3-2.msi", "p-5.msi"}),
              TranslateNames({"p", "p-3", "p", "P", "p-3", "p"}));
}

TEST_F(ZORNestTranslationProcessorTest, NamesOfFilesAreCutToTheirBytesAtWholeCharacters)
{
    const QString wide = QString(100, QChar(0x4E2D)); // 3 bytes each
    const QString wider = QString::fromUcs4(U"\U0001F600").repeated(100);
    const QString narrow = QString(251, u'a');
    const QStringList names = TranslateNames({wide, wide, wide, wider, wider, 'b' + wider, narrow});
    EXPECT_EQ(QStringList({wide.left(83) + ".msi", wide.left(83) + "-2.msi", wide.left(83) + "-3.msi",
                           wider.left(100) + ".msi", wider.left(100) + "-2.msi",
                           'b' + wider.left(98) + ".msi", narrow.left(100) + ".msi"}),
              names);
    for (const QString& name : names)
        EXPECT_LE(name.toUtf8().size(), 255);
}

TEST_F(ZORNestTranslationProcessorTest, BadInputsFailTheirOwnJobsOnly)
{
    ZORNestTranslationResponse* const good = Add(Write("a.dxf", Dxf(Circle(0, 0, 1))));
    ZORNestTranslationResponse* const bad = Add(Write("b.dxf", "nonsense"));
    ZORNestTranslationResponse* const missing = Add(directory.filePath("c.dxf"));
    ZORNestTranslationResponse* const folder = Add(directory.path());
    ZORNestTranslationResponse* const unknown = Add(directory.filePath("a.dxf"), "paper");
    ZORNestTranslationInput input;
    input.SetPreTranslateProvider("dxf");
    input.SetInputFileType(ZORNestTranslationInput::FileType(3));
    ZORNestTranslationResponse* const type =
        processor->AddInput(input, ZORWorkResource(directory.filePath("a.dxf")));
    processor->Execute();
    for (const ZORNestTranslationResponse* response : processor->GetResponses())
        ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(1, GetFiles(good).size());
    EXPECT_EQ("line 1: group code expected", bad->GetWorkResponse()->GetFailureReason());
    EXPECT_EQ("cannot open file '" + directory.filePath("c.dxf") + "': No such file or directory",
              missing->GetWorkResponse()->GetFailureReason());
    EXPECT_EQ("cannot open file '" + directory.path() + "': it is a folder",
              folder->GetWorkResponse()->GetFailureReason());
    EXPECT_EQ("there is no provider 'paper'", unknown->GetWorkResponse()->GetFailureReason());
    EXPECT_EQ("cannot translate from file type 3 to file type 0",
              type->GetWorkResponse()->GetFailureReason());
    EXPECT_EQ(QStringList(), GetFiles(bad));
}

TEST_F(ZORNestTranslationProcessorTest, FailedTranslationsReportTheirLines)
{
    const QString path = Write("open.dxf", Dxf(Line(0, 0, 10, 0) + Line(0, 0, 10, 0)));
    const QString reason = QStringLiteral("no closed outline found: 1 curves have loose ends");
    for (const auto place : {ZORWorkProcessor::HelperProcesses, ZORWorkProcessor::Threads}) {
        processor->SetPlace(place);
        const WarningCatcher warnings;
        const ZORNestTranslationResponse* const response = Add(path);
        const ZORWorkResponse* const work = response->GetWorkResponse();
        const QSignalSpy spy(work, &ZORWorkResponse::StatusChanged);
        QStringList reported; // when the end is signaled
        const QObject receiver;
        QObject::connect(work, &ZORWorkResponse::StatusChanged, &receiver,
                         [&] { reported = response->GetReport(); });
        processor->Execute();
        ASSERT_TRUE(WaitForEnd(response));
        QList<int> statuses;
        for (const QList<QVariant>& arguments : spy)
            statuses.append(arguments[0].value<ZORWorkResponse::Status>());
        EXPECT_EQ(QList<int>({ZORWorkResponse::Queued, ZORWorkResponse::Running, ZORWorkResponse::Failed}),
                  statuses);
        EXPECT_EQ(reason, work->GetFailureReason());
        EXPECT_EQ(QStringList({"zor.worker: job 'open.dxf' failed: " + reason}), warnings.GetLines());
        EXPECT_EQ(QStringList({"units: 1 mm", "left out: 1 exact copies"}), response->GetReport());
        EXPECT_EQ(response->GetReport(), reported);
        EXPECT_TRUE(GetFiles(response).isEmpty());
        EXPECT_FALSE(QFile::exists(work->GetWorkDirectory()));
    }
}

TEST_F(ZORNestTranslationProcessorTest, SecondBatchLeavesTheFirstAlone)
{
    ZORNestTranslationResponse* const first = Add(Write("a.dxf", Dxf(Circle(0, 0, 1))));
    QSignalSpy spy(first->GetWorkResponse(), &ZORWorkResponse::StatusChanged);
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(first));
    const qsizetype count = spy.size();
    ZORNestTranslationResponse* const second = Add(directory.filePath("a.dxf"));
    processor->Execute();
    ASSERT_TRUE(WaitForEnd(second));
    EXPECT_EQ(count, spy.size());
    EXPECT_EQ(QList<ZORNestTranslationResponse*>({first, second}), processor->GetResponses());
}

TEST_F(ZORNestTranslationProcessorTest, CancelledTranslationsFail)
{
    QByteArray entities;
    for (int i = 0; i < 20000; ++i)
        entities += Circle(10 * i, 0, 1);
    ZORNestTranslationResponse* const response = Add(Write("a.dxf", Dxf(entities)));
    processor->Execute();
    processor->Cancel();
    ASSERT_TRUE(WaitForEnd(response));
    EXPECT_EQ(ZORWorkResponse::Failed, response->GetWorkResponse()->GetStatus());
    EXPECT_EQ("canceled", response->GetWorkResponse()->GetFailureReason());
}

TEST_F(ZORNestTranslationProcessorTest, NothingToDoIsFine)
{
    processor->Execute();
    EXPECT_TRUE(processor->GetResponses().isEmpty());
}

} // namespace
