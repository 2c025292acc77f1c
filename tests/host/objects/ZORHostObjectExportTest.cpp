#include "objects/ZORHostObjectExport.h"

#include "HostTest.h"
#include "objects/ZORHostObjectProperties.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeature/ZORFeatStyles.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORSystem/ZORSysException.h>

#include <QFile>

namespace {

using Format = ZORHostObjectExport::Format;

class ZORHostObjectExportTest : public HostTest
{
protected:
    ZORFeatContainer* GetContainer() const { return GetEnvironment()->GetContainer(); }
    static QStringList NamesOf(const ZORGeoContainer& container)
    {
        QStringList names;
        for (int i = 0; i < container.GetNumGeometry(); ++i)
            names.append(container.GetGeometryByIndex(i)->objectName());
        return names;
    }
    /// The names of the objects in a container file.
    static QStringList NamesIn(const QString& fileName)
    {
        ZORFeatContainer container;
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        container.Load(file);
        return NamesOf(container);
    }
};

TEST_F(ZORHostObjectExportTest, AContainerHoldsTheChosenObjectsAndWhatTheyUse)
{
    ZORGeoSurface* const box = AddBox("part");
    AddBox("other");
    auto* const seed = new ZORGeoPointOnSurface(box->Project({50, 30, 40}));
    seed->Initialize();
    seed->setObjectName("seed");
    auto* const folder = new ZORFeatFolder(GetContainer()->GetFeatureRoot("ZORFeatRoot"));
    folder->Initialize();
    auto* const inner = new ZORFeatFolder(folder);
    inner->Initialize();
    (new ZORFeatFolder(folder))->Initialize();
    const QStringList before = NamesOf(*GetContainer());

    const QString file = GetPath("part.ZORCont");
    ZORHostObjectExport::Write({seed, inner}, file, Format::Container);
    EXPECT_EQ(QStringList({"part", "seed", "Root.1", "Folder.1", "Folder.2"}), NamesIn(file));
    EXPECT_EQ(before, NamesOf(*GetContainer())) << "the document stays as it is";
    ZORHostObjectExport::Write({box}, file, Format::Container);
    EXPECT_EQ(QStringList({"part"}), NamesIn(file));
}

TEST_F(ZORHostObjectExportTest, StlFilesHoldAllChosenSurfaces)
{
    ZORGeoSurface* const first = AddBox("first");
    ZORGeoSurface* const second = AddBox("second");
    for (const Format format : {Format::BinaryStl, Format::AsciiStl}) {
        ZORHostObjectExport::Write({first, second}, GetPath("boxes.stl"), format);
        QFile file(GetPath("boxes.stl"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        ZORFeatContainer container;
        int numTriangles = 0;
        for (const ZORGeoSurface* surface : ZORGeoStlLoader(&file).Load(&container, ZORSysValue::Millimeter))
            numTriangles += surface->GetNumTriangles();
        EXPECT_EQ(2 * first->GetNumTriangles(), numTriangles);
    }
}

TEST_F(ZORHostObjectExportTest, StlIsOfferedOnlyForSurfaces)
{
    auto* const point = new ZORGeoCartesianPoint(GetContainer(), {0, 0, 0});
    point->Initialize();
    EXPECT_EQ(QList<Format>{Format::Container}, ZORHostObjectExport::GetFormats({point}));
    EXPECT_EQ(3, ZORHostObjectExport::GetFormats({point, AddBox("part")}).size());
}

TEST_F(ZORHostObjectExportTest, AFailureLeavesTheFormerFile)
{
    ZORGeoSurface* const box = AddBox("part");
    EXPECT_THROW(ZORHostObjectExport::Write({box}, GetPath("missing/part.ZORCont"), Format::Container),
                 ZORSysException);
    EXPECT_THROW(ZORHostObjectExport::Write({box}, GetPath("missing/part.stl"), Format::BinaryStl),
                 ZORSysException);
}

TEST_F(ZORHostObjectExportTest, PropertiesSumUpSeveralObjects)
{
    ZORGeoSurface* const box = AddBox("part");
    auto* const point = new ZORGeoCartesianPoint(GetContainer(), {0, 0, 100});
    point->Initialize();
    QStringList values;
    for (const ZORHostProperty& property : ZORHostPropertiesOf({box, point}))
        values.append(property.name + u'=' + property.value);
    EXPECT_TRUE(values.contains("Objects=2")) << values.join(u'\n').toStdString();
    EXPECT_TRUE(values.contains("Surfaces=1"));
    EXPECT_TRUE(values.contains("Points=1"));
    EXPECT_TRUE(values.contains(QStringLiteral("Triangles=%1").arg(box->GetNumTriangles())));
    EXPECT_TRUE(values.contains("Area=" + QLocale().toString(box->GetArea(), 'f', 3) + " mm²"));
    EXPECT_EQ(100, ZORHostBoxOf({box, point}).GetUpperPoint().GetZ());
    EXPECT_TRUE(ZORHostBoxOf({}).IsEmpty());
    EXPECT_TRUE(ZORHostPropertiesOf({}).isEmpty());
}

TEST_F(ZORHostObjectExportTest, TypesAreNamedInWords)
{
    auto* const point = new ZORGeoCartesianPoint(GetContainer(), {0, 0, 0});
    point->Initialize();
    EXPECT_EQ(QString("Cartesian point"), ZORHostTypeName(point));
    EXPECT_EQ(QString("Root"), ZORHostTypeName(GetContainer()->GetFeatureRoot("ZORFeatRoot")));
}

} // namespace
