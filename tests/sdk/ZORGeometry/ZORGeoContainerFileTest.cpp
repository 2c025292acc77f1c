#include "TestMeshes.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoDebugOptions.h>
#include <ZORGeometry/ZORGeoLine.h>
#include <ZORGeometry/ZORGeoPointOnCurve.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoTriangleEdgeCurve.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>
#include <QCborStreamWriter>
#include <QCryptographicHash>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <vector>

namespace {

constexpr qsizetype headerSize = 64;

class ZORGeoContainerFileTest : public testing::Test
{
protected:
    static QByteArray Save(const ZORGeoContainer& container)
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        container.Save(buffer);
        return buffer.data();
    }
    static void Load(ZORGeoContainer& container, const QByteArray& file)
    {
        QBuffer buffer;
        buffer.setData(file);
        buffer.open(QIODevice::ReadOnly);
        container.Load(buffer);
    }
    /// The message of the exception; empty when there was none.
    static QString Failure(ZORGeoContainer& container, const QByteArray& file)
    {
        try {
            Load(container, file);
        } catch (const ZORSysFileException& exception) {
            return exception.GetMessage();
        }
        return {};
    }
    template<class T>
    T* At(int index, ZORGeoContainer& container)
    {
        return qobject_cast<T*>(container.GetGeometryByIndex(index));
    }
    template<class T, class... Args>
    static T* Add(const QString& name, Args&&... args)
    {
        auto* geometry = new T(std::forward<Args>(args)...);
        geometry->setObjectName(name);
        geometry->Initialize();
        return geometry;
    }

    /// One geometry of every class, users before and after what they use.
    static void Fill(ZORGeoContainer& container)
    {
        Add<ZORGeoCartesianPoint>("P", &container, ZORMathPoint(0.1, -0.0, 5e-324));
        auto* const line =
            Add<ZORGeoLine>("L", &container, ZORMathPoint(0, 0, 0), ZORMathPoint(1.0 / 3, 1e60, 0));
        Add<ZORGeoPolyline>("\u00fcber", &container,
                            ZORMathSetOfPoints({{0, 0, 0}, {0, 0, 0}, {1, 2, 3}, {4, 5, 6.7}}), true);
        Add<ZORGeoPolyline>("none", &container, ZORMathSetOfPoints(), true);
        const TestMesh mesh = Cube();
        auto* const surface = Add<ZORGeoSurface>("S", &container, mesh.vertices, mesh.triangles);
        auto* const open = Add<ZORGeoSurface>(
            "Open", &container, mesh.vertices,
            QList<ZORGeoSurface::Corners>(mesh.triangles.begin(), mesh.triangles.begin() + 2));
        Add<ZORGeoPointOnCurve>("PC", line->GetLocation(0.25, nullptr));
        const ZORGeoLocationOnSurface a = surface->Project({0.3, 0.2, -1});
        const ZORGeoLocationOnSurface b = surface->Project({0.9, 0.7, -1});
        Add<ZORGeoPointOnSurface>("PS", a);
        Add<ZORGeoCurveOnSurface>("CS", QList<ZORGeoLocationOnSurface>{a, b}, true);
        open->CreateEdges();
    }

    /// A file around a document of the test's own.
    static QByteArray Seal(const QByteArray& document)
    {
        QByteArray file("\x89ZOR\r\n\x1a\n", 8);
        const auto put = [&file](auto value) {
            value = qToLittleEndian(value);
            file.append(reinterpret_cast<const char*>(&value), sizeof value);
        };
        put(quint32(1));
        put(quint32(0));
        put(quint64(document.size()));
        put(quint64(document.size()));
        file.append(QCryptographicHash::hash(file + document, QCryptographicHash::Blake2b_256));
        return file + document;
    }
    static QByteArray SealObjects(const std::function<void(QCborStreamWriter&)>& write, int count)
    {
        QByteArray document;
        QCborStreamWriter writer(&document);
        writer.startMap(2);
        writer.append(QLatin1String("format"));
        writer.append(QLatin1String("ZORCont"));
        writer.append(QLatin1String("objects"));
        writer.startArray(quint64(count));
        write(writer);
        writer.endArray();
        writer.endMap();
        return Seal(document);
    }
    /// Stands for an object of a file, with one reference.
    static void WriteObject(QCborStreamWriter& writer, const char* className, qint32 curve)
    {
        writer.startArray(5);
        writer.append(QLatin1String(className));
        writer.append(QLatin1String("name"));
        writer.startMap(1);
        writer.append(QLatin1String("curve"));
        writer.append(QCborTag(78));
        curve = qToLittleEndian(curve);
        writer.appendByteString(reinterpret_cast<const char*>(&curve), sizeof curve);
        writer.endMap();
        writer.startMap(quint64(0));
        writer.endMap();
        writer.startMap(quint64(0));
        writer.endMap();
        writer.endArray();
    }
};

TEST_F(ZORGeoContainerFileTest, SaveLoadSaveGivesTheSameBytes)
{
    ZORGeoContainer container;
    Fill(container);
    const QByteArray file = Save(container);
    ZORGeoContainer loaded;
    Load(loaded, file);
    EXPECT_EQ(file, Save(loaded));
    ASSERT_EQ(container.GetNumGeometry(), loaded.GetNumGeometry());
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        const ZORGeoGeometry* a = container.GetGeometryByIndex(i);
        const ZORGeoGeometry* b = loaded.GetGeometryByIndex(i);
        EXPECT_EQ(a->metaObject(), b->metaObject());
        EXPECT_EQ(a->objectName(), b->objectName());
        EXPECT_EQ(a->GetReferenceCount(), b->GetReferenceCount()) << i;
    }
}

TEST_F(ZORGeoContainerFileTest, KeepsExactNumbers)
{
    ZORGeoContainer container;
    Fill(container);
    ZORGeoContainer loaded;
    Load(loaded, Save(container));
    const ZORMathPoint point = At<ZORGeoPoint>(0, loaded)->GetMathPoint();
    EXPECT_EQ(0.1, point.GetX());
    EXPECT_TRUE(std::signbit(point.GetY()));
    EXPECT_EQ(5e-324, point.GetZ());
    EXPECT_EQ(ZORMathPoint(1.0 / 3, 1e60, 0), At<ZORGeoCurve>(1, loaded)->GetPoint(1));
    EXPECT_EQ(4, At<ZORGeoPolyline>(2, loaded)->GetNumPoints());
    EXPECT_EQ(0, At<ZORGeoPolyline>(3, loaded)->GetNumPoints());
    EXPECT_EQ(Cube().triangles, At<ZORGeoSurface>(4, loaded)->GetCornerArray());
    EXPECT_EQ(At<ZORGeoCurve>(1, loaded), At<ZORGeoPointOnCurve>(6, loaded)->GetCurve());
    EXPECT_EQ(0.25, At<ZORGeoPointOnCurve>(6, loaded)->GetLocationOnCurve().distance);
    const ZORGeoLocationOnSurface before = At<ZORGeoPointOnSurface>(7, container)->GetLocationOnSurface();
    const ZORGeoLocationOnSurface after = At<ZORGeoPointOnSurface>(7, loaded)->GetLocationOnSurface();
    EXPECT_EQ(before.triangle, after.triangle);
    EXPECT_EQ(before.weightB, after.weightB);
    EXPECT_EQ(before.weightC, after.weightC);
    EXPECT_EQ(before.point, after.point);
    EXPECT_TRUE(At<ZORGeoCurveOnSurface>(8, loaded)->IsClosed());
    EXPECT_EQ(4, At<ZORGeoTriangleEdgeCurve>(9, loaded)->GetEdges().size());
}

TEST_F(ZORGeoContainerFileTest, KeepsWhatHasLostItsSupport)
{
    ZORGeoContainer container;
    Fill(container);
    delete container.GetGeometryByIndex(5);
    delete container.GetGeometryByIndex(4);
    delete container.GetGeometryByIndex(1);
    const QByteArray file = Save(container);
    ZORGeoContainer loaded;
    Load(loaded, file);
    EXPECT_EQ(file, Save(loaded));
    EXPECT_FALSE(At<ZORGeoPointOnCurve>(3, loaded)->GetCurve());
    EXPECT_EQ(At<ZORGeoCurve>(5, container)->GetLength(), At<ZORGeoCurve>(5, loaded)->GetLength());
    EXPECT_EQ(4, At<ZORGeoTriangleEdgeCurve>(6, loaded)->GetEdges().size());
}

TEST_F(ZORGeoContainerFileTest, RoundTripsAnEmptyContainer)
{
    const QByteArray file = Save(ZORGeoContainer());
    ZORGeoContainer loaded;
    Load(loaded, file);
    EXPECT_EQ(0, loaded.GetNumGeometry());
    EXPECT_EQ(file, Save(loaded));
}

TEST_F(ZORGeoContainerFileTest, AddsToWhatIsThereAndMakesNamesUnique)
{
    ZORGeoContainer source;
    Add<ZORGeoCartesianPoint>("A", &source, ZORMathPoint());
    Add<ZORGeoCartesianPoint>("A.2", &source, ZORMathPoint());
    Add<ZORGeoCartesianPoint>("A", &source, ZORMathPoint());
    Add<ZORGeoCartesianPoint>("B", &source, ZORMathPoint())->setObjectName({});
    const QByteArray file = Save(source);

    ZORGeoContainer container;
    Add<ZORGeoCartesianPoint>("A", &container, ZORMathPoint());
    Load(container, file);
    QStringList names;
    for (int i = 0; i < container.GetNumGeometry(); ++i)
        names.append(container.GetGeometryByIndex(i)->objectName());
    EXPECT_EQ(QStringList({"A", "A.3", "A.2", "A.3", ""}), names) << "equal names of the file stay equal";

    ZORGeoContainer empty;
    Load(empty, file);
    EXPECT_EQ(file, Save(empty));
}

TEST_F(ZORGeoContainerFileTest, ReportsTruncationAtEveryLength)
{
    ZORGeoContainer source;
    Fill(source);
    const QByteArray file = Save(source);
    ZORGeoContainer container;
    Fill(container);
    const QByteArray before = Save(container);
    for (qsizetype size = 0; size < file.size(); ++size)
        ASSERT_FALSE(Failure(container, file.first(size)).isEmpty()) << size;
    EXPECT_FALSE(Failure(container, file + '\0').isEmpty());
    EXPECT_EQ(before, Save(container));
}

TEST_F(ZORGeoContainerFileTest, ReportsEveryFlippedByte)
{
    ZORGeoContainer source;
    Fill(source);
    const QByteArray file = Save(source);
    ZORGeoContainer container;
    QSignalSpy added(&container, &ZORGeoContainer::GeometryAdded);
    std::mt19937 random(1);
    for (int i = 0; i < 10000; ++i) {
        QByteArray damaged = file;
        damaged[qsizetype(random() % size_t(file.size()))] ^= char(1 + random() % 255);
        ASSERT_FALSE(Failure(container, damaged).isEmpty()) << i;
    }
    EXPECT_EQ(0, container.GetNumGeometry());
    EXPECT_EQ(0, added.count());
}

TEST_F(ZORGeoContainerFileTest, SurvivesDamageBehindTheChecksum)
{
    const QByteArray document = [] {
        QByteArray bytes;
        QCborStreamWriter writer(&bytes);
        const auto numbers = [&writer](QCborTag tag, const auto& list) {
            writer.append(tag);
            writer.appendByteString(reinterpret_cast<const char*>(list.data()),
                                    qsizetype(list.size() * sizeof(list[0])));
        };
        const auto head = [&writer](const char* type, quint64 references) {
            writer.startArray(5);
            writer.append(QLatin1String(type));
            writer.append(QLatin1String("name"));
            writer.startMap(references);
        };
        const auto values = [&writer](quint64 count) {
            writer.startMap(quint64(0));
            writer.endMap();
            writer.startMap(count);
        };
        writer.startMap(2);
        writer.append(QLatin1String("format"));
        writer.append(QLatin1String("ZORCont"));
        writer.append(QLatin1String("objects"));
        writer.startArray(2);
        head("ZORGeoSurface", 0);
        writer.endMap();
        values(2);
        writer.append(QLatin1String("vertices"));
        numbers(QCborTag(86), std::vector<double>{0, 0, 0, 1, 0, 0, 0, 1, 0});
        writer.append(QLatin1String("triangles"));
        numbers(QCborTag(78), std::vector<qint32>{0, 1, 2});
        writer.endMap();
        writer.endArray();
        head("ZORGeoPointOnSurface", 1);
        writer.append(QLatin1String("surface"));
        numbers(QCborTag(78), std::vector<qint32>{0});
        writer.endMap();
        values(3);
        writer.append(QLatin1String("triangles"));
        numbers(QCborTag(78), std::vector<qint32>{1});
        writer.append(QLatin1String("weights"));
        numbers(QCborTag(86), std::vector<double>{0.25, 0.5});
        writer.append(QLatin1String("points"));
        numbers(QCborTag(86), std::vector<double>{0.25, 0.5, 0});
        writer.endMap();
        writer.endArray();
        writer.endArray();
        writer.endMap();
        return bytes;
    }();
    ZORGeoContainer whole;
    Load(whole, Seal(document));
    ASSERT_EQ(2, whole.GetNumGeometry());

    std::mt19937 random(2);
    int failed = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray damaged = document;
        for (int flips = 1 + int(random() % 3); flips > 0; --flips)
            damaged[qsizetype(random() % size_t(damaged.size()))] = char(random());
        ZORGeoContainer container;
        if (!Failure(container, Seal(damaged)).isEmpty()) {
            ++failed;
            ASSERT_EQ(0, container.GetNumGeometry()) << i;
        }
    }
    EXPECT_GT(failed, 5000);
    for (qsizetype size = 0; size < document.size(); ++size)
        ASSERT_FALSE(Failure(whole, Seal(document.first(size))).isEmpty()) << size;
    EXPECT_EQ(2, whole.GetNumGeometry());
}

TEST_F(ZORGeoContainerFileTest, NamesTheReason)
{
    ZORGeoContainer container;
    EXPECT_EQ(QString("the file is not a container file"), Failure(container, ""));
    EXPECT_EQ(QString("the file is not a container file"), Failure(container, "solid part"));
    const QByteArray file = Save(container);
    EXPECT_EQ(QString("container file is damaged: it ends within its header"),
              Failure(container, file.first(40)));
    EXPECT_EQ(QString("container file is damaged: the checksum is wrong"),
              Failure(container, QByteArray(file).replace(40, 1, "?")));
    EXPECT_EQ(QString("container file is of version 2, up to version 1 can be read"),
              Failure(container, QByteArray(file).replace(8, 1, "\2")));
    EXPECT_EQ(QString("container file holds objects of unknown classes: Other, ZORGeoCurve"),
              Failure(container, SealObjects(
                                     [](QCborStreamWriter& writer) {
                                         WriteObject(writer, "ZORGeoCurve", -1);
                                         WriteObject(writer, "Other", -1);
                                     },
                                     2)));
    EXPECT_EQ(
        QString("container file is damaged: object 0 (ZORGeoPointOnCurve): its references go in a circle"),
        Failure(
            container,
            SealObjects([](QCborStreamWriter& writer) { WriteObject(writer, "ZORGeoPointOnCurve", 0); }, 1)));
    EXPECT_EQ(
        QString("container file is damaged: object 0 (ZORGeoPointOnCurve): value 'point' is missing or of "
                "the wrong kind"),
        Failure(container,
                SealObjects([](QCborStreamWriter& writer) { WriteObject(writer, "ZORGeoPointOnCurve", -1); },
                            1)));
}

TEST_F(ZORGeoContainerFileTest, LengthsThatLieAllocateNothing)
{
    ZORGeoContainer container;
    for (const int type : {0x5b, 0x7b, 0x9b, 0xbb}) { // bytes, text, array, map of 64-bit length
        QByteArray document("\xa2\x66"
                            "format"
                            "\x67"
                            "ZORCont"
                            "\x67"
                            "objects"
                            "\x81\x85");
        document.append(char(type)).append("\x7f\xff\xff\xff\xff\xff\xff\xff", 8);
        EXPECT_TRUE(Failure(container, Seal(document)).startsWith("container file is damaged")) << type;
    }
    QByteArray bomb = Save(container);
    const quint64 huge = qToLittleEndian(quint64(1) << 50);
    bomb.replace(16, 8, QByteArray(reinterpret_cast<const char*>(&huge), 8));
    bomb.replace(
        32, 32,
        QCryptographicHash::hash(bomb.first(32) + bomb.sliced(headerSize), QCryptographicHash::Blake2b_256));
    EXPECT_TRUE(Failure(container, bomb).contains("cannot hold a document"));
}

TEST_F(ZORGeoContainerFileTest, LoadsWhatCompressesExtremelyWell)
{
    ZORGeoContainer container;
    Add<ZORGeoPolyline>("flat", &container, ZORMathSetOfPoints(QList<ZORMathPoint>(1000000)), true);
    const QByteArray file = Save(container);
    ZORGeoContainer loaded;
    Load(loaded, file);
    EXPECT_EQ(1000000, At<ZORGeoCurve>(0, loaded)->GetNumPoints());
}

TEST_F(ZORGeoContainerFileTest, RefusesToSaveWhatItCouldNotLoad)
{
    class Unsaved : public ZORGeoCurve
    {
    public:
        explicit Unsaved(ZORGeoContainer* container)
            : ZORGeoCurve(container, {})
        {
        }
    };
    ZORGeoContainer container;
    Add<Unsaved>("U", &container);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_THROW(container.Save(buffer), ZORSysFileException);
    EXPECT_TRUE(buffer.data().isEmpty());
}

TEST_F(ZORGeoContainerFileTest, ReportsDevicesThatCannotBeUsed)
{
    ZORGeoContainer container;
    QBuffer closed;
    EXPECT_THROW(container.Save(closed), ZORSysFileException);
    EXPECT_THROW(container.Load(closed), ZORSysFileException);
    QFile full("/dev/full");
    if (full.open(QIODevice::WriteOnly)) {
        EXPECT_THROW(container.Save(full), ZORSysFileException);
    }
}

TEST_F(ZORGeoContainerFileTest, DumpsWhatItLoads)
{
    const QTemporaryDir directory;
    ZORGeoDebugOptions& options = *ZORGeoDebugOptions::GetInstance();
    options.SetContainerLoadDumpEnabled(true);
    options.SetContainerLoadDumpFile(directory.filePath("dump.txt"));
    ZORGeoContainer container;
    Fill(container);
    ZORGeoContainer loaded;
    Load(loaded, Save(container));
    QFile dump(directory.filePath("dump.txt"));
    ASSERT_TRUE(dump.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(dump.readAll());
    EXPECT_TRUE(text.startsWith("Objects: 10\n0 ZORGeoCartesianPoint \"P\"\n    point = [0.1"))
        << text.toStdString();
    EXPECT_TRUE(text.contains("curve -> [1]"));
    EXPECT_TRUE(text.endsWith("Outcome: all objects are made\n"));

    options.SetContainerLoadDumpFile(directory.path());
    EXPECT_NO_THROW(Load(loaded, Save(container))) << "a dump that cannot be written is no reason to fail";
    EXPECT_EQ(20, loaded.GetNumGeometry());
    options.SetContainerLoadDumpEnabled(false);
    options.SetContainerLoadDumpFile({});
}

} // namespace
