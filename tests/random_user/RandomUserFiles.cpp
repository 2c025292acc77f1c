#include "RandomUserFiles.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultWriter.h>

#include <QFile>

#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace {

constexpr int kLongestName = 255; // bytes, on the usual file systems

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString GetLongName(const QString& suffix)
{
    return QString(kLongestName - suffix.size(), u'n') + suffix;
}

const char* const kTetrahedron = R"(solid tetrahedron
facet normal 0 0 0
outer loop
vertex 0 0 0
vertex 0 100 0
vertex 100 0 0
endloop
endfacet
facet normal 0 0 0
outer loop
vertex 0 0 0
vertex 100 0 0
vertex 0 0 100
endloop
endfacet
facet normal 0 0 0
outer loop
vertex 0 0 0
vertex 0 0 100
vertex 0 100 0
endloop
endfacet
facet normal 0 0 0
outer loop
vertex 100 0 0
vertex 0 100 0
vertex 0 0 100
endloop
endfacet
endsolid tetrahedron
)";

} // namespace

RandomUserFiles::RandomUserFiles(const QString& folder)
    : m_folder(folder)
{
    m_folder.mkpath(QStringLiteral("out"));
    m_folder.mkpath(QStringLiteral("folder.stl"));
    m_folder.mkpath(QStringLiteral("folder.msi"));
    Write(QStringLiteral("tetrahedron.stl"), kTetrahedron);
    CopySamples();
    AddContainerFile();
    AddParts();
    AddOddFiles();
    AddPipesAndDevices();
    AddLibraries();
}

QStringList RandomUserFiles::GetNamesToRead() const
{
    QStringList names =
        m_folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    names.append(QStringLiteral("missing.stl"));
    return names;
}

QStringList RandomUserFiles::GetNamesToWrite()
{
    return {QStringLiteral("saved.ZORCont"),     QStringLiteral("saved"),
            QStringLiteral("second.ZORCont"),    QStringLiteral("saved.png"),
            QStringLiteral("saved.msi"),         QStringLiteral("saved.stl"),
            QStringLiteral("empty.stl"),         QStringLiteral("folder.stl"),
            QStringLiteral("missing/saved.stl"), GetLongName(QStringLiteral(".x")),
            QStringLiteral("out/saved.msi"),     QStringLiteral("pipe.msi"),
            QStringLiteral("full.ZORCont")};
}

QStringList RandomUserFiles::GetFolderNames()
{
    return {QStringLiteral("out"), QStringLiteral("folder.stl"), QStringLiteral("missing"),
            QStringLiteral("empty.stl")};
}

void RandomUserFiles::Write(const QString& name, const QByteArray& contents) const
{
    QFile file(m_folder.filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(contents);
}

void RandomUserFiles::CopySamples() const
{
    const QDir samples(QStringLiteral(ZOR_TEST_SAMPLES));
    const QStringList names =
        samples.entryList({"*.stl", "*.xml", "*.dxf", "*.svg"}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        Write(name, ReadFile(samples.filePath(name)));
        AddDamaged(name);
    }
}

void RandomUserFiles::AddDamaged(const QString& name) const
{
    const QByteArray good = ReadFile(m_folder.filePath(name));
    Write(QStringLiteral("cut-") + name, good.left(good.size() * 2 / 3));
    QByteArray changed = good;
    for (qsizetype i = 7; i < changed.size(); i += 1 + changed.size() / 5)
        changed[i] = char(changed[i] ^ 0x15);
    Write(QStringLiteral("changed-") + name, changed);
}

void RandomUserFiles::AddContainerFile() const
{
    ZORGeoContainer container;
    auto* surface = new ZORGeoSurface(&container, {{0, 0, 0}, {100, 0, 0}, {0, 100, 0}, {100, 100, 20}},
                                      {{0, 1, 2}, {1, 3, 2}});
    surface->Initialize();
    const ZORMathSetOfPoints points = {{10, 10, 5}, {40, 20, 8}, {80, 60, 9}};
    auto* curve = new ZORGeoPolyline(&container, points, true);
    curve->Initialize();
    const QString name = QStringLiteral("document.ZORCont");
    QFile file(m_folder.filePath(name));
    if (file.open(QIODevice::WriteOnly))
        container.Save(file);
    file.close();
    AddDamaged(name);
}

void RandomUserFiles::AddParts() const
{
    using Segment = ZORNestResultSegment;
    constexpr double kWidth = 300;
    for (const double length : {100.0, 450.0, 5000.0}) {
        const ZORMathPoint corners[] = {{0, 0, 0}, {length, 0, 0}, {length / 2, kWidth, 0}, {0, kWidth, 0}};
        QList<Segment> outline;
        for (int i = 0; i < 4; ++i) {
            outline.append(Segment::CreateLine(corners[i], corners[(i + 1) % 4]));
            outline.last().SetLayer(Segment::Nest);
        }
        const QString name = QStringLiteral("part-%1").arg(length);
        ZORNestResultItem item(name);
        item.AddShape(ZORNestResultShape(outline));
        ZORNestResult result(ZORNestResult::Translation);
        result.AddItem(item);
        ZORNestResultWriter(m_folder.filePath(name + ".msi")).Write(result);
        AddDamaged(name + ".msi");
    }
}

void RandomUserFiles::AddOddFiles() const
{
    Write(QStringLiteral("empty.stl"), {});
    Write(QStringLiteral("empty.msi"), {});
    Write(QStringLiteral("empty.ZORCont"), {});
    Write(QStringLiteral("notes.xml"), "no angle brackets here\n");
    Write(QStringLiteral("greedy.stl"), QByteArray(80, ' ') + QByteArray("\xff\xff\xff\xff", 4));
    Write(GetLongName(QStringLiteral(".stl")), kTetrahedron);
    QFile::link(QStringLiteral("loop.stl"), m_folder.filePath(QStringLiteral("loop.stl")));
}

void RandomUserFiles::AddPipesAndDevices() const
{
    constexpr mode_t kReadWrite = S_IRUSR | S_IWUSR;
    const auto path = [this](const char* name) {
        return QFile::encodeName(m_folder.filePath(QLatin1String(name)));
    };
    for (const char* pipe : {"pipe.stl", "pipe.ZORCont", "pipe.msi", "pipe.xml", "pipe.so"})
        ::mkfifo(path(pipe).constData(), kReadWrite);
    // Devices need privileges; without them the names do not exist, which is odd enough.
    const dev_t zero = makedev(1, 5);
    const dev_t full = makedev(1, 7);
    ::mknod(path("zero.stl").constData(), S_IFCHR | kReadWrite, zero);
    ::mknod(path("zero.msi").constData(), S_IFCHR | kReadWrite, zero);
    ::mknod(path("full.ZORCont").constData(), S_IFCHR | kReadWrite, full);
}

void RandomUserFiles::AddLibraries() const
{
    const QByteArray library = ReadFile(QStringLiteral(ZOR_STANDARD_COMMANDS));
    Write(QStringLiteral("half.so"), library.left(library.size() / 2));
    QFile::link(QStringLiteral(ZOR_STANDARD_COMMANDS), m_folder.filePath(QStringLiteral("commands.so")));
    QFile::link(QStringLiteral(ZOR_TESTING), m_folder.filePath(QStringLiteral("bench.so")));
}
