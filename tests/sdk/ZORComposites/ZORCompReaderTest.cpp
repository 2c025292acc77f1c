#include "ReaderTest.h"
#include "support/OpenWatch.h"

#include <ZORComposites/ZORCompFormat.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompReadProcessor.h>
#include <ZORComposites/ZORCompReader.h>
#include <ZORComposites/ZORCompWriter.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include <csignal>
#include <fcntl.h>
#include <limits>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

using ZORCompReaderTest = ReaderTest;

TEST_F(ZORCompReaderTest, FormatsComeWithTheirFilters)
{
    EXPECT_EQ((QList<QByteArray>{kJsonId, kXmlId}), ZORCompReader::GetSupportedFormats());
    EXPECT_EQ(QList<QString>{"CompoST Layup (*.json)"}, ZORCompReader::GetFormatFileExtensions(kJsonId));
    EXPECT_EQ(QList<QString>{"Layup XML (*.xml)"}, ZORCompReader::GetFormatFileExtensions(kXmlId));
    EXPECT_EQ(QList<QByteArray>{kXmlId}, ZORCompWriter::GetSupportedFormats());
    EXPECT_EQ(QList<QString>{"Layup XML (*.xml)"}, ZORCompWriter::GetFormatFileExtensions(kXmlId));
}

TEST_F(ZORCompReaderTest, UnknownFormatsAreRefused)
{
    const QString unknown = "composites format 'x' is unknown";
    EXPECT_EQ(unknown, MessageOf([] { ZORCompReader::GetFormatFileExtensions("x"); }));
    EXPECT_EQ(unknown, MessageOf([] { ZORCompReader("file", "x"); }));
    EXPECT_EQ(unknown, MessageOf([] { ZORCompWriter("file", "x"); }));
    EXPECT_EQ(QString("composites format 'compost-json' cannot be written"),
              MessageOf([] { ZORCompWriter("file", kJsonId); }));
}

TEST_F(ZORCompReaderTest, NullsAreRefused)
{
    EXPECT_EQ(QString("composites root is null"), MessageOf([] { ZORCompReadProcessor(nullptr, false); }));
    EXPECT_EQ(QString("read processor is null"),
              MessageOf([] { ZORCompReader("file", kXmlId).Read(nullptr); }));
    EXPECT_EQ(QString("composites root is null"),
              MessageOf([] { ZORCompWriter("file", kXmlId).Write(nullptr); }));
}

TEST_F(ZORCompReaderTest, MissingFilesFoldersAndPlacesThatCannotBeWrittenAreTold)
{
    const QString missing = folder.filePath("missing");
    EXPECT_THROW(Read(missing, kXmlId), ZORSysFileOpenException);
    EXPECT_THROW(Read(folder.path(), kJsonId), ZORSysFileOpenException);
    EXPECT_THROW(ZORCompWriter(missing + "/x.xml", kXmlId).Write(root), ZORSysFileOpenException);
    EXPECT_THROW(ZORCompWriter(folder.path(), kXmlId).Write(root), ZORSysFileException);
}

// A format of another library: one layup named after the content.
class NameFormat : public ZORCompFormat
{
public:
    QByteArray GetId() const override { return "name"; }
    QList<QString> GetFileFilters() const override { return {"Name (*.name)", "Name (*.nm)"}; }
    ZORCompDocument Parse(const QByteArray& content, ZORCompReadReport& report) const override
    {
        report.Warn("only a name");
        ZORCompDocument document;
        document.layups.append({QString::fromUtf8(content), document.layups.size() > 0 ? 0 : -1, {}, {}});
        return document;
    }
};

TEST_F(ZORCompReaderTest, FormatsOfOtherLibrariesComeAndGo)
{
    const NameFormat format;
    {
        const ZORCompFormatRegistration registration(format);
        EXPECT_EQ((QList<QByteArray>{kJsonId, kXmlId, "name"}), ZORCompReader::GetSupportedFormats());
        EXPECT_EQ((QList<QString>{"Name (*.name)", "Name (*.nm)"}),
                  ZORCompReader::GetFormatFileExtensions("name"));
        EXPECT_EQ(QList<QByteArray>{kXmlId}, ZORCompWriter::GetSupportedFormats());
        EXPECT_EQ(QStringList{"only a name"}, ReadContent("Wing", "name").warnings);
        EXPECT_EQ(QString("Wing"), GetLayup()->GetLabel());
        {
            const ZORCompFormatRegistration second(format);
            EXPECT_EQ(3, ZORCompReader::GetSupportedFormats().size());
        }
        EXPECT_EQ(3, ZORCompReader::GetSupportedFormats().size());
    }
    EXPECT_EQ(2, ZORCompReader::GetSupportedFormats().size());
    EXPECT_EQ(QString("composites format 'name' is unknown"),
              MessageOf([] { ZORCompReader::GetFormatFileExtensions("name"); }));
}

TEST_F(ZORCompReaderTest, DocumentsOfFormatsAreChecked)
{
    ZORCompReadProcessor processor(root, false);
    ZORCompDocument document;
    document.layups.append({"L", 3, {}, {}});
    EXPECT_EQ(QString("layup 0: there is no rosette 3"),
              MessageOf([&] { processor.Add(document, "f", {}); }));
    document.layups.first().rosette = -1;
    ZORCompDocument::Component ply;
    ply.kind = ZORCompDocument::Component::Ply;
    document.layups.first().sequences = {ply};
    EXPECT_EQ(QString("layup 0: a layup has no plies of its own"),
              MessageOf([&] { processor.Add(document, "f", {}); }));
    ZORCompDocument::Component sequence;
    ply.boundaries = {-1};
    sequence.components = {ply};
    document.layups.first().sequences = {sequence};
    EXPECT_EQ(QString("layup 0: there is no contour 0"),
              MessageOf([&] { processor.Add(document, "f", {}); }));
    ply.boundaries.clear();
    ply.angle = std::numeric_limits<double>::infinity();
    document.layups.first().sequences.first().components = {ply};
    EXPECT_EQ(QString("layup 0: the angle is not finite"),
              MessageOf([&] { processor.Add(document, "f", {}); }));
    processor.Finalize();
    EXPECT_EQ(0, root->GetNumChildren());
}

TEST_F(ZORCompReaderTest, NothingIsMadeBeforeFinalizeAndOnlyOnce)
{
    const QString path = WriteFile("a.xml", File(0.2));
    ZORCompReadProcessor processor(root, false);
    ZORCompReader(path, kXmlId).Read(&processor);
    EXPECT_EQ(0, root->GetNumChildren());
    processor.Finalize();
    EXPECT_EQ(1, CountLayups());
    processor.Finalize();
    EXPECT_EQ(1, CountLayups());
    EXPECT_EQ(1, processor.GetReport().numPlies);
}

TEST_F(ZORCompReaderTest, AProcessorWithoutReplacingAlwaysAddsButSharesEqualMaterials)
{
    const QString path = WriteFile("a.xml", File(0.2));
    Read(path, kXmlId);
    EXPECT_EQ(0, Read(path, kXmlId).numMaterials);
    EXPECT_EQ(2, CountLayups());
    EXPECT_EQ(1, ZORCompMaterialLibrary::Find(root)->GetMaterials().size());
    const ZORCompReadReport report = ReadContent(File(0.3), kXmlId);
    EXPECT_EQ(QStringList{"another material is named 'Twill', this one becomes 'Twill.2'"}, report.warnings);
    ASSERT_EQ(2, ZORCompMaterialLibrary::Find(root)->GetMaterials().size());
    EXPECT_EQ(0.3, ZORCompMaterialLibrary::Find(root)->FindMaterial("Twill.2")->GetProperties().thickness);
}

TEST_F(ZORCompReaderTest, PercentSignsInNamesReachTheReportAndTheLog)
{
    static QStringList infos;
    const QtMessageHandler former =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
            if (type == QtInfoMsg)
                infos.append(text);
        });
    const auto restore = qScopeGuard([former] { qInstallMessageHandler(former); });
    const QString path = WriteFile("a%1b%2.json", R"({"allComposite": [{"_serialized_type": "X.Sequence",
        "c%1d%2": {"x": 1}, "subComponents": [{"_serialized_type": "X.Ply"}]}]})");
    const ZORCompReadReport report = Read(path, kJsonId);
    EXPECT_EQ(QStringList("'" + path + "': kept as attributes: Sequence.c%1d%2 (1)"), infos);
    EXPECT_TRUE(report.ToString().contains("kept as attributes: Sequence.c%1d%2 (1)"))
        << report.ToString().toStdString();
}

TEST_F(ZORCompReaderTest, AReplacingProcessorTakesAwayWhatTheSameFileMade)
{
    Read(WriteFile("other.xml", File(0.2)), kXmlId, true);
    const QString path = WriteFile("a.xml", File(0.2));
    Read(path, kXmlId, true);
    EXPECT_EQ(2, CountLayups());
    WriteFile("a.xml", File(0.3));
    Read(path, kXmlId, true);
    EXPECT_EQ(2, CountLayups());
    ASSERT_EQ(1, ZORCompMaterialLibrary::Find(root)->GetMaterials().size());
    EXPECT_EQ(0.3, ZORCompMaterialLibrary::Find(root)->FindMaterial("Twill")->GetProperties().thickness);
}

TEST_F(ZORCompReaderTest, ARootThatIsGoneIsTold)
{
    const QString path = WriteFile("a.xml", File(0.2));
    ZORCompReadProcessor processor(root, false);
    ZORCompReader(path, kXmlId).Read(&processor);
    root->Remove();
    EXPECT_EQ(QString("the composites root does not exist any more"),
              MessageOf([&] { processor.Finalize(); }));
    EXPECT_EQ(0, container.GetNumGeometry());
}

TEST_F(ZORCompReaderTest, WhoeverRemovesWhatIsBeingReadLeavesTheRootAsBefore)
{
    const QString path = WriteFile("a.xml", File(0.2));
    const int numBefore = container.GetNumGeometry();
    QObject context;
    QObject::connect(&container, &ZORGeoContainer::GeometryAdded, &context, [](ZORGeoGeometry* geometry) {
        if (auto* sequence = qobject_cast<ZORCompSequence*>(geometry))
            sequence->Remove();
    });
    EXPECT_EQ(QString("'%1' was removed while it was being read").arg(path),
              MessageOf([&] { Read(path, kXmlId); }));
    EXPECT_EQ(numBefore, container.GetNumGeometry());
}

// Files cannot grow beyond a limit while it lives.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_handler(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    const sighandler_t m_handler;
};

TEST_F(ZORCompReaderTest, AFileThatCannotBeWrittenToItsEndStaysAsItWas)
{
    Read(WriteFile("a.xml", File(0.2)), kXmlId);
    const QString path = WriteFile("b.xml", "before");
    {
        const FileSizeLimit limit(100);
        EXPECT_THROW(ZORCompWriter(path, kXmlId).Write(root), ZORSysFileException);
    }
    EXPECT_EQ(QByteArray("before"), ReadFile(path));
    EXPECT_EQ(QStringList({"a.xml", "b.xml"}), QDir(folder.path()).entryList(QDir::Files | QDir::Hidden));
}

TEST_F(ZORCompReaderTest, WhatIsNotARegularFileIsNeitherWrittenToNorReplaced)
{
    Read(WriteFile("a.xml", File(0.2)), kXmlId);
    const QString path = folder.filePath("pipe");
    ASSERT_EQ(0, mkfifo(QFile::encodeName(path).constData(), 0600));
    EXPECT_EQ("cannot open file '" + path + "': it is not a regular file",
              MessageOf([&] { ZORCompWriter(path, kXmlId).Write(root); }));
    EXPECT_TRUE(QFileInfo::exists(path));
    EXPECT_FALSE(QFileInfo(path).isFile());
}

TEST_F(ZORCompReaderTest, NothingThatAFileNamesIsOpened)
{
    const QString outside = WriteFile("outside.xml", File(1));
    const OpenWatch watch(outside);
    const QByteArray uri = "SYSTEM '" + QFile::encodeName(outside) + "'";
    for (const QByteArray& declaration :
         {"<!DOCTYPE layups " + uri + ">", "<!DOCTYPE layups [<!ENTITY e " + uri + ">]>",
          "<!DOCTYPE layups [<!ENTITY % e " + uri + "> %e;]>",
          "<?xml-stylesheet type='text/css' href='" + QFile::encodeName(outside) + "'?>"}) {
        const QByteArray use = declaration.contains("ENTITY e") ? "&e;" : "";
        const QString path =
            WriteFile("inside.xml", declaration + File(2).replace("</layups>", use + "</layups>"));
        MessageOf([&] { Read(path, kXmlId); });
    }
    EXPECT_FALSE(watch.WasOpened());
    QFile file(outside);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(watch.WasOpened()) << "the watch sees what is opened";
}

} // namespace
