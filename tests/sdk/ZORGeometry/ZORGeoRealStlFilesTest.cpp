// Tests of ZORGeoStlLoader on real files.

#include "support/Printers.h"
#include "support/TestData.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>

#include <QFile>
#include <QHash>

#include <gtest/gtest.h>

namespace {

// The figures of a line "folder/file<TAB>form<TAB>key=value<TAB>..." of the table of expectations.
struct Expectation
{
    QString file;
    QHash<QString, qint64> figures;
};

QList<Expectation> ReadExpectations(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QList<Expectation> expectations;
    while (!file.atEnd()) {
        const QStringList fields = QString::fromUtf8(file.readLine()).trimmed().split('\t');
        Expectation expectation{fields.constFirst(), {}};
        for (const QString& field : fields)
            expectation.figures.insert(field.section('=', 0, 0), field.section('=', 1).toLongLong());
        expectations.append(expectation);
    }
    return expectations;
}

TEST(ZORGeoStlLoaderTest, EveryRealFileLoadsWithItsFacetsAndVertices)
{
    ZOR_REQUIRE_TEST_DATA(table, "meshes/expected.tsv");
    const QString folder = table.section('/', 0, -2) + '/';
    const QList<Expectation> expectations = ReadExpectations(table);
    ASSERT_GE(expectations.size(), 37);
    for (const auto& [name, figures] : expectations) {
        SCOPED_TRACE(name.toStdString());
        QFile file(folder + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ZORGeoContainer container;
        qint64 triangles = 0;
        qint64 vertices = 0;
        const auto surfaces = ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter);
        for (const ZORGeoSurface* surface : surfaces) {
            triangles += surface->GetNumTriangles();
            vertices += surface->GetVertexArray().size();
        }
        EXPECT_EQ(surfaces.size(), container.GetNumGeometry());
        EXPECT_EQ(figures.value("nf") - figures.value("degenerate"), triangles);
        const bool isCar = name.endsWith("simpleCar.stl"); // six solids that touch each other
        EXPECT_EQ(isCar ? 1760 : figures.value("nv"), vertices);
        EXPECT_EQ(isCar ? 6 : surfaces.size(), surfaces.size());
    }
}

} // namespace
