// The calls into the geometry module as the trace of the SDK shows them.

#include "TestMeshes.h"
#include "support/Printers.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoStlLoader.h>
#include <ZORGeometry/ZORGeoStlWriter.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysFileException.h>

#include <QBuffer>

#include <gtest/gtest.h>

namespace {

class ZORGeoApiTraceTest : public testing::Test
{
protected:
    ZORGeoApiTraceTest()
    {
        container.setObjectName("container");
        ZORSysApiTrace* trace = ZORSysApiTrace::GetInstance();
        trace->SetEnabled(true);
        QObject::connect(trace, &ZORSysApiTrace::CallTraced, &container,
                         [this](const QByteArray& line) { lines.append(QString::fromUtf8(line)); });
    }
    ~ZORGeoApiTraceTest() override { ZORSysApiTrace::GetInstance()->SetEnabled(false); }

    QStringList lines;
    ZORGeoContainer container;
};

TEST_F(ZORGeoApiTraceTest, ShowsCurveCallsWithTheirValues)
{
    auto* polyline = new ZORGeoPolyline(&container, {{0, 0, 0}, {2, 0, 0}}, true);
    polyline->Initialize();
    const ZORGeoLocationOnCurve start = polyline->GetLocation(0.5, nullptr);
    ZORGeoLocationOnCurve foot;
    polyline->Project({1, 2, 3}, foot);
    polyline->RemoveNoReferences();
    EXPECT_EQ(QStringList({"ZORGeoPolyline::ZORGeoPolyline(<container>, [2], true)",
                           "ZORGeoGeometry::Initialize()", "ZORGeoCurve::GetLocation(0.5, null)",
                           "ZORGeoCurve::Project((1, 2, 3))", "ZORGeoGeometry::RemoveNoReferences()"}),
              lines);
    EXPECT_EQ(0.5, start.distance);
}

TEST_F(ZORGeoApiTraceTest, ShowsSurfaceCallsAndHidesTheNestedOnes)
{
    const auto cube = Cube().Make(&container);
    cube->Project({1, 2, 3});
    cube->IntersectRay({0, 0, 5}, {0, 0, -1});
    EXPECT_EQ(QStringList({"ZORGeoSurface::ZORGeoSurface(<container>, [8], [12])",
                           "ZORGeoSurface::Project((1, 2, 3))",
                           "ZORGeoSurface::IntersectRay((0, 0, 5), (0, 0, -1))"}),
              lines);
}

TEST_F(ZORGeoApiTraceTest, ShowsExceptions)
{
    QBuffer buffer;
    buffer.setData("text");
    buffer.open(QIODevice::ReadOnly);
    EXPECT_THROW(ZORGeoStlLoader(&buffer).Load(&container, ZORSysValue::Inch), ZORSysFileException);
    QString fileName = "part.stl";
    EXPECT_THROW(ZORGeoStlWriter(fileName, nullptr, ZORGeoStlWriter::Ascii).Write(ZORSysValue::Foot),
                 ZORSysException);
    EXPECT_EQ(
        QStringList({"ZORGeoStlLoader::ZORGeoStlLoader(<>)",
                     "ZORGeoStlLoader::Load(<container>, 3) ! the STL content has no usable facet (0 of 0 "
                     "facets used)",
                     "ZORGeoStlWriter::ZORGeoStlWriter(\"part.stl\", null, 0)",
                     "ZORGeoStlWriter::Write(4) ! surface is null"}),
        lines);
}

} // namespace
