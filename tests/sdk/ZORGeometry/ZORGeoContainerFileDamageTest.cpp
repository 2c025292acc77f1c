// Tests that damaged container files are refused with the reason and change nothing.

#include "ContainerFileTest.h"

#include <QCborStreamWriter>
#include <QSignalSpy>
#include <QtEndian>

#include <functional>
#include <random>

namespace {

class ZORGeoContainerFileDamageTest : public ContainerFileTest
{
protected:
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
        return SealContainerFile(document);
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

TEST_F(ZORGeoContainerFileDamageTest, ReportsTruncationAtEveryLength)
{
    ZORGeoContainer container;
    Fill(container);
    const QByteArray file = SaveContainer(container);
    const QByteArray document = OpenContainerFile(file);
    for (qsizetype size = 0; size < file.size(); ++size)
        ASSERT_FALSE(LoadFailure(container, file.first(size)).isEmpty()) << size;
    for (qsizetype size = 0; size < document.size(); ++size)
        ASSERT_FALSE(LoadFailure(container, SealContainerFile(document.first(size))).isEmpty()) << size;
    EXPECT_FALSE(LoadFailure(container, file + '\0').isEmpty());
    EXPECT_FALSE(LoadFailure(container, SealContainerFile(document + '\0')).isEmpty());
    EXPECT_EQ(file, SaveContainer(container));
}

TEST_F(ZORGeoContainerFileDamageTest, ReportsTruncationOfALargeFileAtEveryThousandthByte)
{
    ZORGeoContainer container;
    const TestMesh mesh = JitteredSheet(60, 3);
    Add<ZORGeoSurface>("S", &container, mesh.vertices, mesh.triangles);
    const QByteArray file = SaveContainer(container);
    ASSERT_GT(file.size(), 50000);
    for (qsizetype size = 0; size < file.size(); size += 1000)
        ASSERT_FALSE(LoadFailure(container, file.first(size)).isEmpty()) << size;
    EXPECT_EQ(file, SaveContainer(container));
}

TEST_F(ZORGeoContainerFileDamageTest, ReportsEveryFlippedByte)
{
    ZORGeoContainer source;
    Fill(source);
    const QByteArray file = SaveContainer(source);
    ZORGeoContainer container;
    QSignalSpy added(&container, &ZORGeoContainer::GeometryAdded);
    std::mt19937 random(1);
    for (int i = 0; i < 10000; ++i) {
        QByteArray damaged = file;
        damaged[qsizetype(random() % size_t(file.size()))] ^= char(1 + random() % 255);
        ASSERT_FALSE(LoadFailure(container, damaged).isEmpty()) << i;
    }
    EXPECT_EQ(0, container.GetNumGeometry());
    EXPECT_EQ(0, added.count());
}

TEST_F(ZORGeoContainerFileDamageTest, SurvivesDamageBehindTheChecksum)
{
    ZORGeoContainer container;
    Fill(container);
    const int failed = LoadDamagedFiles(
        SaveContainer(container), [] { return std::make_unique<ZORGeoContainer>(); }, 10000, 2);
    EXPECT_GT(failed, 3000);
    EXPECT_LT(failed, 10000) << "some damage only changes values";
}

TEST_F(ZORGeoContainerFileDamageTest, NamesTheReason)
{
    ZORGeoContainer container;
    EXPECT_EQ(QString("the file is not a container file"), LoadFailure(container, ""));
    EXPECT_EQ(QString("the file is not a container file"), LoadFailure(container, "solid part"));
    const QByteArray file = SaveContainer(container);
    EXPECT_EQ(QString("container file is damaged: it ends within its header"),
              LoadFailure(container, file.first(40)));
    EXPECT_EQ(QString("container file is damaged: the checksum is wrong"),
              LoadFailure(container, QByteArray(file).replace(40, 1, "?")));
    EXPECT_EQ(QString("container file is of version 3, up to version 2 can be read"),
              LoadFailure(container, QByteArray(file).replace(8, 1, "\3")));
    EXPECT_EQ(QString("container file holds objects of unknown classes: Other, ZORGeoCurve"),
              LoadFailure(container, SealObjects(
                                         [](QCborStreamWriter& writer) {
                                             WriteObject(writer, "ZORGeoCurve", -1);
                                             WriteObject(writer, "Other", -1);
                                         },
                                         2)));
    EXPECT_EQ(
        QString("container file is damaged: object 0 (ZORGeoPointOnCurve): its references go in a circle"),
        LoadFailure(
            container,
            SealObjects([](QCborStreamWriter& writer) { WriteObject(writer, "ZORGeoPointOnCurve", 0); }, 1)));
    EXPECT_EQ(
        QString("container file is damaged: object 0 (ZORGeoPointOnCurve): value 'point' is missing or of "
                "the wrong kind"),
        LoadFailure(
            container,
            SealObjects([](QCborStreamWriter& writer) { WriteObject(writer, "ZORGeoPointOnCurve", -1); },
                        1)));
}

TEST_F(ZORGeoContainerFileDamageTest, LengthsThatLieAllocateNothing)
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
        EXPECT_TRUE(
            LoadFailure(container, SealContainerFile(document)).startsWith("container file is damaged"))
            << type;
    }
    QByteArray bomb = SaveContainer(container);
    const quint64 huge = qToLittleEndian(quint64(1) << 50);
    bomb.replace(16, 8, QByteArray(reinterpret_cast<const char*>(&huge), 8));
    EXPECT_TRUE(LoadFailure(container, ResealContainerFile(bomb)).contains("cannot hold a document"));
}

TEST_F(ZORGeoContainerFileDamageTest, DeepContentEndsWithAMessage)
{
    ZORGeoContainer container;
    const QByteArray document = OpenContainerFile(SaveContainer(container));
    ASSERT_TRUE(document.endsWith('\x80')) << "the empty list of objects";
    const QByteArray nested = QByteArray(1000000, '\x81') + '\0';
    const QByteArray object = QByteArray("\x81\x85\x61X\x61Y\xa0\xa0\xa1\x61k") + nested;
    EXPECT_TRUE(LoadFailure(container, SealContainerFile(document.chopped(1) + object))
                    .startsWith("container file is damaged"));
    EXPECT_TRUE(LoadFailure(container, SealContainerFile(nested)).startsWith("container file is damaged"));
}

} // namespace
