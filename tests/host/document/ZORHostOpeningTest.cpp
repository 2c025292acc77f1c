// Tests of reading files in a thread while the event loop goes on.

#include "document/ZORHostOpening.h"

#include "HostTest.h"
#include "support/ContainerBytes.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QDir>
#include <QFile>
#include <QTimer>
#include <QtEndian>

#include <cstring>

namespace {

using Mode = ZORHostOpening::Mode;

class ZORHostOpeningTest : public HostTest
{
protected:
    ZORHostOpeningTest()
    {
        QObject::connect(&opening, &ZORHostOpening::Started,
                         [this](const QString& file) { Note("started", file); });
        QObject::connect(&opening, &ZORHostOpening::Opened,
                         [this](const ZORHostOpenedFile& file) { NoteRead("opened", file); });
        QObject::connect(&opening, &ZORHostOpening::Imported,
                         [this](const ZORHostOpenedFile& file) { NoteRead("imported", file); });
        QObject::connect(&opening, &ZORHostOpening::Canceled,
                         [this](const QString& file) { Note("canceled", file); });
        QObject::connect(&opening, &ZORHostOpening::Failed,
                         [this](const QString& file, const QString& message) {
                             Note("failed", file);
                             errors.append(message);
                         });
        QObject::connect(&opening, &ZORHostOpening::Idle, [this] { events.append("idle"); });
    }
    void Note(const QString& event, const QString& file)
    {
        events.append(event + ' ' + QFileInfo(file).fileName());
    }
    void NoteRead(const QString& event, const ZORHostOpenedFile& file)
    {
        Note(event, file.fileName);
        files.append(file);
    }
    /// A binary STL file of a strip with some triangles.
    QString WriteStrip(const QString& name, int numTriangles) const
    {
        QByteArray bytes(84 + qsizetype(50) * numTriangles, '\0');
        qToLittleEndian(quint32(numTriangles), bytes.data() + 80);
        for (int i = 0; i < numTriangles; ++i) {
            const float corners[9] = {float(i), 0, 0, float(i + 1), 0, 0, float(i), 1, float(i % 7)};
            std::memcpy(bytes.data() + 84 + qsizetype(50) * i + 12, corners, sizeof corners);
        }
        return WriteFile(name, bytes);
    }
    bool Read(const QString& file, Mode mode)
    {
        opening.Enqueue(file, mode);
        return opening.Wait();
    }
    ZORFeatContainer& GetContainer() const { return *GetEnvironment()->GetContainer(); }

    ZORHostOpening opening{nullptr};
    QStringList events;
    QStringList errors;
    QList<ZORHostOpenedFile> files;
};

TEST_F(ZORHostOpeningTest, FilesAreReadOneAfterTheOtherFromTheEventLoop)
{
    opening.Enqueue(WriteTetrahedron("first.stl"), Mode::Open);
    opening.Enqueue(
        WriteFile("cut.stl",
                  "solid a\nfacet\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendfacet\nfacet\nvertex 1"),
        Mode::Import);
    EXPECT_TRUE(events.isEmpty());
    EXPECT_TRUE(opening.IsBusy());
    EXPECT_TRUE(opening.Wait());
    EXPECT_EQ(
        QStringList({"started first.stl", "opened first.stl", "started cut.stl", "imported cut.stl", "idle"}),
        events);
    EXPECT_FALSE(opening.IsBusy());
    ASSERT_EQ(2, files.size());
    EXPECT_EQ(QStringList("first"), files[0].names);
    EXPECT_EQ(ZORExcFileKind::Kind::Stl, files[0].kind);
    EXPECT_EQ(QFileInfo(files[0].fileName).size(), files[0].size);
    EXPECT_TRUE(files[0].losses.isEmpty());
    EXPECT_EQ(QStringList("cut"), files[1].names);
    EXPECT_EQ(1, files[1].losses.size());
    EXPECT_EQ(2, GetContainer().GetNumGeometry());
}

TEST_F(ZORHostOpeningTest, AFailureNamesTheFileAndTheNextOneIsRead)
{
    opening.Enqueue(GetPath("missing.stl"), Mode::Import);
    opening.Enqueue(WriteFile("text.stl", "no STL"), Mode::Import);
    opening.Enqueue(WriteTetrahedron("good.stl"), Mode::Import);
    EXPECT_FALSE(opening.Wait());
    EXPECT_EQ(QStringList({"started missing.stl", "failed missing.stl", "started text.stl", "failed text.stl",
                           "started good.stl", "imported good.stl", "idle"}),
              events);
    EXPECT_TRUE(
        errors[0].startsWith("Cannot open file '" + QDir::toNativeSeparators(GetPath("missing.stl"))));
    EXPECT_TRUE(errors[1].startsWith("Cannot read '" + QDir::toNativeSeparators(GetPath("text.stl"))));
    opening.Enqueue(WriteTetrahedron("good.stl"), Mode::Import);
    EXPECT_TRUE(opening.Wait()) << "the failures of the former queue are over";
}

TEST_F(ZORHostOpeningTest, CanceledAtAnyMomentTheContainerIsUnchanged)
{
    AddBox("Box");
    const QByteArray before = SaveContainer(GetContainer());
    const QString file = WriteStrip("strip.stl", 400'000);
    int numCanceled = 0;
    for (const double moment : {0.0, 0.1, 0.4, 0.7, 0.95}) {
        QObject context;
        if (moment == 0)
            QObject::connect(&opening, &ZORHostOpening::Started, &context, [this] { opening.CancelFile(); });
        QObject::connect(&opening, &ZORHostOpening::ProgressChanged, &context,
                         [this, moment](double progress) {
                             if (progress >= moment)
                                 opening.CancelFile();
                         });
        events.clear();
        opening.Enqueue(file, Mode::Import);
        if (opening.Wait()) {
            EXPECT_EQ(2, GetContainer().GetNumGeometry());
            delete GetContainer().GetGeometryByIndex(1);
        } else {
            ++numCanceled;
            EXPECT_EQ(QStringList({"started strip.stl", "canceled strip.stl", "idle"}), events);
        }
        EXPECT_EQ(before, SaveContainer(GetContainer()));
    }
    EXPECT_LE(1, numCanceled);
}

TEST_F(ZORHostOpeningTest, CancelAllGivesUpTheWholeQueue)
{
    const QString file = WriteStrip("strip.stl", 100'000);
    for (int i = 0; i < 3; ++i)
        opening.Enqueue(file, Mode::Import);
    QObject::connect(&opening, &ZORHostOpening::Started, &opening, &ZORHostOpening::CancelAll);
    EXPECT_FALSE(opening.Wait());
    EXPECT_EQ(3, events.count("canceled strip.stl"));
    EXPECT_EQ(1, events.count("idle"));
    EXPECT_EQ(0, GetContainer().GetNumGeometry());

    events.clear();
    opening.Enqueue(file, Mode::Import);
    opening.CancelAll(); // before it has begun
    EXPECT_EQ(QStringList({"canceled strip.stl", "idle"}), events);
    EXPECT_FALSE(opening.Wait());
}

TEST_F(ZORHostOpeningTest, TheEventLoopRunsWhileAFileIsRead)
{
    QTimer heart;
    int beats = 0;
    QObject::connect(&heart, &QTimer::timeout, [&] { beats += opening.GetFile().isEmpty() ? 0 : 1; });
    heart.start(0);
    opening.Enqueue(WriteStrip("strip.stl", 200'000), Mode::Import);
    EXPECT_TRUE(opening.Wait());
    EXPECT_LE(2, beats);
}

TEST_F(ZORHostOpeningTest, FilesThatChangeMeanwhileAreReadOrRefused)
{
    const auto change = [](int how, const QString& path) {
        QFile file(path);
        if (how == 0)
            file.remove();
        else if (how == 1)
            file.resize(file.size() / 2);
        else if (how == 2)
            file.resize(0);
        else if (file.open(QIODevice::Append))
            file.write(QByteArray(1'000'000, 'x'));
    };
    for (int how = 0; how < 4; ++how) {
        const QString path = WriteStrip("strip.stl", 300'000);
        QObject context;
        QObject::connect(&opening, &ZORHostOpening::ProgressChanged, &context, [&] { change(how, path); });
        const int before = GetContainer().GetNumGeometry();
        errors.clear();
        const bool isRead = Read(path, Mode::Import);
        EXPECT_EQ(isRead, errors.isEmpty());
        EXPECT_EQ(before + (isRead ? 1 : 0), GetContainer().GetNumGeometry());
    }
}

TEST_F(ZORHostOpeningTest, TheCommitterAddsTheContents)
{
    int numCalls = 0;
    opening.SetCommitter(
        [&](const QString& file, ZORExcFileKind::Kind kind, Mode mode, const ZORHostOpening::Add& add) {
            ++numCalls;
            EXPECT_EQ(GetPath("t.stl"), file);
            EXPECT_EQ(ZORExcFileKind::Kind::Stl, kind);
            EXPECT_EQ(Mode::Open, mode);
            EXPECT_EQ(0, GetContainer().GetNumGeometry());
            add();
            EXPECT_EQ(1, GetContainer().GetNumGeometry());
        });
    EXPECT_TRUE(Read(WriteTetrahedron("t.stl"), Mode::Open));
    EXPECT_EQ(1, numCalls);
    opening.SetCommitter([](const QString&, ZORExcFileKind::Kind, Mode, const ZORHostOpening::Add&) {
        throw std::bad_alloc();
    });
    EXPECT_FALSE(Read(WriteTetrahedron("t.stl"), Mode::Open));
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("Not enough memory to read '")) << errors[0].toStdString();
}

TEST_F(ZORHostOpeningTest, WithoutADocumentFilesAreRefused)
{
    QObject::connect(&opening, &ZORHostOpening::Started,
                     [] { ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(nullptr); });
    EXPECT_FALSE(Read(WriteTetrahedron("t.stl"), Mode::Open));
    ASSERT_EQ(1, errors.size());
    EXPECT_TRUE(errors[0].startsWith("There is no document to read '")) << errors[0].toStdString();
    EXPECT_EQ(0, GetContainer().GetNumGeometry());
}

TEST_F(ZORHostOpeningTest, DestroyedWhileReadingItWaitsForTheThread)
{
    auto other = std::make_unique<ZORHostOpening>(nullptr);
    other->Enqueue(WriteStrip("strip.stl", 300'000), Mode::Import);
    QObject::connect(
        other.get(), &ZORHostOpening::Started, qApp, [&] { other.reset(); }, Qt::QueuedConnection);
    EXPECT_TRUE(WaitFor([&] { return !other; }));
    EXPECT_EQ(0, GetContainer().GetNumGeometry());
}

} // namespace
