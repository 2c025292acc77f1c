// Readers under limits of memory.

#include "support/MemoryLimit.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

constexpr qint64 kMega = 1'000'000;
enum Outcome { Loaded = 1, Refused, Damaged, WrongMessage };

void AppendFacet(QByteArray& stl, double x, double y)
{
    const float numbers[12] = {0,
                               0,
                               1,
                               float(x),
                               float(y),
                               float(std::sin(x)),
                               float(x + 1),
                               float(y),
                               float(std::sin(x + 1)),
                               float(x),
                               float(y + 1),
                               float(std::sin(x))};
    for (const float number : numbers) {
        const float little = qToLittleEndian(number);
        stl.append(reinterpret_cast<const char*>(&little), sizeof little);
    }
    stl.append(2, '\0');
}

/// A binary file of size x size separate triangles.
QByteArray MakeStl(int size)
{
    QByteArray stl(80, '\0');
    const quint32 count = qToLittleEndian(quint32(size * size));
    stl.append(reinterpret_cast<const char*>(&count), sizeof count);
    for (int i = 0; i < size; ++i) {
        for (int j = 0; j < size; ++j)
            AppendFacet(stl, 2 * i, 2 * j);
    }
    return stl;
}

class ZORGeoMemoryLimitTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ZOR_REQUIRE_MEMORY_LIMITS();
        Write("part.stl", MakeStl(260));
        QFile stl(GetPath("part.stl"));
        ASSERT_TRUE(stl.open(QIODevice::ReadOnly));
        ZORGeoContainer container;
        ZORGeoStlLoader(&stl).Load(&container, ZORSysValue::Millimeter);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        container.Save(buffer);
        Write("part.ZORCont", buffer.data());
    }
    QString GetPath(const QString& name) const { return m_folder.filePath(name); }
    void Write(const QString& name, const QByteArray& content) const
    {
        QFile file(GetPath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(content.size(), file.write(content));
    }

    using Load = std::function<void(QFile&, ZORGeoContainer&)>;
    /// Loads a file into a container that has one surface already.
    Outcome LoadWithMemory(qint64 room, const QString& name, const Load& load) const
    {
        const int outcome = RunWithMemory(room, [&]() -> int {
            ZORGeoContainer container;
            QFile file(GetPath(name));
            file.open(QIODevice::ReadOnly);
            try {
                load(file, container);
                return container.GetNumGeometry() == 1 ? Loaded : Damaged;
            } catch (const ZORSysFileException& exception) {
                const QString expected =
                    QStringLiteral("not enough memory to read '%1' (needs about ").arg(GetPath(name));
                if (!exception.GetMessage().startsWith(expected))
                    return WrongMessage;
                return container.GetNumGeometry() == 0 ? Refused : Damaged;
            }
        });
        return Outcome(outcome);
    }

    /// At every limit the file is loaded or refused, and what is enough once stays enough.
    void CheckAtEveryLimit(const QString& name, const Load& load) const
    {
        int numRefused = 0;
        for (qint64 room = kMega; room <= 40 * kMega; room += kMega) {
            const Outcome outcome = LoadWithMemory(room, name, load);
            ASSERT_TRUE(outcome == Loaded || outcome == Refused)
                << "outcome " << outcome << " with " << room << " bytes";
            numRefused += outcome == Refused ? 1 : 0;
        }
        EXPECT_GT(numRefused, 2);
        EXPECT_EQ(Loaded, LoadWithMemory(400 * kMega, name, load));
    }

private:
    QTemporaryDir m_folder;
};

TEST_F(ZORGeoMemoryLimitTest, StlFilesAreLoadedOrRefusedAndTheContainerStaysAsItWas)
{
    CheckAtEveryLimit("part.stl", [](QFile& file, ZORGeoContainer& container) {
        ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter);
    });
}

TEST_F(ZORGeoMemoryLimitTest, ContainerFilesAreLoadedOrRefusedAndTheContainerStaysAsItWas)
{
    CheckAtEveryLimit("part.ZORCont", [](QFile& file, ZORGeoContainer& container) { container.Load(file); });
}

} // namespace
