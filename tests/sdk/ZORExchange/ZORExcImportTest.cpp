// Tests of reading files into containers.

#include "ExchangeTest.h"
#include "support/MessageOf.h"

#include <ZORExchange/ZORExcImport.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysException.h>

#include <QDir>

#include <cmath>
#include <numbers>
#include <thread>

namespace {

class ZORExcImportTest : public ExchangeTest
{
protected:
    /// Imports a file with its first half in another thread.
    QList<ZORGeoGeometry*> Import(const QString& path)
    {
        ZORExcImport import(path);
        std::thread([&] { EXPECT_TRUE(import.Prepare()); }).join();
        const QList<ZORGeoGeometry*> added = import.Commit(&m_container);
        m_losses = import.GetLosses();
        return added;
    }
    /// The names of what was added.
    QStringList ImportNames(const QString& path)
    {
        QStringList names;
        for (const ZORGeoGeometry* geometry : Import(path))
            names.append(geometry->objectName());
        return names;
    }
    QByteArray SaveContainer() const
    {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        m_container.Save(buffer);
        return buffer.data();
    }
    QString FailureOf(const QString& path)
    {
        const QByteArray before = SaveContainer();
        const QString message = MessageOf([&] {
            ZORExcImport import(path);
            import.Prepare();
            import.Commit(&m_container);
        });
        EXPECT_EQ(before, SaveContainer());
        return message;
    }

    ZORFeatContainer m_container;
    QStringList m_losses;
};

QByteArray Solid(const QByteArray& name)
{
    QByteArray text = MakeAsciiTetrahedron(1);
    text.replace(0, text.indexOf('\n'), "solid " + name);
    return text;
}

TEST_F(ZORExcImportTest, SurfacesAreNamedAfterTheirFile)
{
    const QString path = WriteFile("a%1&b.part.stl", MakeAsciiTetrahedron(1));
    EXPECT_EQ(QStringList("a%1&b.part"), ImportNames(path));
    EXPECT_EQ(QStringList("a%1&b.part.2"), ImportNames(path));
    const QString two = WriteFile("two.stl", Solid("left") + Solid("right") + Solid(""));
    EXPECT_EQ(QStringList({"two/left", "two/right", "two"}), ImportNames(two));
    EXPECT_TRUE(m_losses.isEmpty());
}

TEST_F(ZORExcImportTest, LengthsHaveTheUnitThatWasSet)
{
    ZORExcImport import(WriteFile("t.stl", MakeAsciiTetrahedron(1)));
    EXPECT_EQ("unit is no unit of length", MessageOf([&] { import.SetUnit(ZORSysValue::Radian); }));
    import.SetUnit(ZORSysValue::Inch);
    EXPECT_TRUE(import.Prepare());
    const auto* const inches = qobject_cast<ZORGeoSurface*>(import.Commit(&m_container).value(0));
    const auto* const plain =
        qobject_cast<ZORGeoSurface*>(Import(WriteFile("t.stl", MakeAsciiTetrahedron(1))).value(0));
    ASSERT_TRUE(inches && plain);
    EXPECT_NEAR(25.4 * 25.4 * plain->GetArea(), inches->GetArea(), 1e-9);
}

TEST_F(ZORExcImportTest, ContoursBecomePolylinesInSpace)
{
    const QList<ZORGeoGeometry*> added = Import(WriteFile("plies.xml", MakeContours()));
    ASSERT_EQ(1, added.size());
    EXPECT_EQ("plies", added[0]->objectName());
    const auto* const polyline = qobject_cast<ZORGeoPolyline*>(added[0]);
    ASSERT_TRUE(polyline);
    EXPECT_NEAR(25.4 + 25.4 * std::sqrt(2.0), polyline->GetLength(), 1e-9)
        << "heights are kept, and are inches too";
    EXPECT_EQ(QStringList("1 curve(s) with less than two points skipped"), m_losses);
}

TEST_F(ZORExcImportTest, ResultsBecomeTheirOutlines)
{
    using Segment = ZORNestResultSegment;
    ZORNestResult result(ZORNestResult::Nesting);
    ZORNestResultItem item("rib");
    item.AddShape(ZORNestResultShape(
        {Segment::CreateLine({0, 0, 0}, {4, 0, 0}), Segment::CreateLine({4, 0, 0}, {4, 3, 0}),
         Segment::CreateLine({4, 3, 0}, {0, 0, 0}), Segment::CreateText({1, 1, 0}, {2, 1, 0}, "rib")}));
    item.AddShape(ZORNestResultShape({Segment::CreateCircle(Segment::ArcClockwise, {3, 1, 0}, {2.5, 1, 0})}));
    result.AddItem(item);
    EXPECT_EQ(QStringList({"sheet/rib", "sheet/rib.2"}),
              ImportNames(WriteFile("sheet.msi", MakeResult(result))));
    EXPECT_EQ(QStringList("1 text(s) skipped"), m_losses);
    const auto* const outline = qobject_cast<ZORGeoPolyline*>(m_container.GetGeometryByIndex(0));
    const auto* const hole = qobject_cast<ZORGeoPolyline*>(m_container.GetGeometryByIndex(1));
    ASSERT_TRUE(outline && hole);
    EXPECT_EQ(12, outline->GetLength());
    EXPECT_NEAR(std::numbers::pi, hole->GetLength(), 0.05);
}

TEST_F(ZORExcImportTest, LayupsKeepTheirNamesOrGetThatOfTheFile)
{
    EXPECT_FALSE(Import(WriteFile("wing.xml", MakeLayupXml())).isEmpty());
    EXPECT_FALSE(Import(WriteFile("tail.json", MakeLayupJson())).isEmpty());
    QStringList labels;
    for (int i = 0; i < m_container.GetNumGeometry(); ++i) {
        if (const auto* const layup = qobject_cast<ZORCompLayup*>(m_container.GetGeometryByIndex(i)))
            labels.append(layup->GetLabel());
    }
    EXPECT_EQ(QStringList({"wing", "Skin"}), labels);
}

TEST_F(ZORExcImportTest, ContainersKeepTheirNames)
{
    EXPECT_EQ(QStringList({"edge", "edge"}), ImportNames(WriteFile("x.stl", MakeContainer(2))));
}

TEST_F(ZORExcImportTest, NothingKnownGetsOneMessageWithItsName)
{
    const QByteArray noise = QByteArray("\x7f"
                                        "ELF\2\1\1\0\0",
                                        9)
                             + QByteArray(3000, '\xfd');
    for (const QByteArray& content : {QByteArray("hello"), QByteArray("<html/>"), QByteArray("{}"),
                                      QByteArray("\xff\xfe"
                                                 "a\0b\0",
                                                 6),
                                      noise}) {
        const QString path = WriteFile("what.ever", content);
        EXPECT_EQ(QStringLiteral(
                      "cannot read '%1': it is not a container, STL, contour, layup or nesting result file")
                      .arg(QDir::toNativeSeparators(path)),
                  FailureOf(path))
            << content.left(20).toStdString();
    }
    const QString empty = WriteFile("empty.stl", {});
    EXPECT_EQ(QStringLiteral("cannot read '%1': the file is empty").arg(empty), FailureOf(empty));
}

TEST_F(ZORExcImportTest, EveryFailureNamesTheFile)
{
    const QString missing = WriteFile("x", "x") + "/missing.stl";
    EXPECT_TRUE(FailureOf(missing).contains(missing));
    QByteArray damaged = MakeContainer();
    damaged.back() = char(damaged.back() ^ 1);
    for (const QByteArray& content :
         {damaged, MakeContours().chopped(9), MakeLayupXml().chopped(3), MakeLayupJson().chopped(1),
          Solid("x").replace("vertex", "vertex nan")}) {
        const QString path = WriteFile("bad", content);
        EXPECT_TRUE(FailureOf(path).startsWith(QStringLiteral("cannot read '%1': ").arg(path)))
            << FailureOf(path).toStdString();
    }
}

TEST_F(ZORExcImportTest, WhatWasLeftOutIsReported)
{
    const QByteArray text = MakeAsciiTetrahedron(1);
    Import(WriteFile("cut.stl", text.first(text.lastIndexOf("vertex"))));
    ASSERT_EQ(1, m_losses.size());
    EXPECT_TRUE(m_losses[0].startsWith("3 of 4 facets used; left out: 1")) << m_losses[0].toStdString();
}

TEST_F(ZORExcImportTest, CanceledAtAnyReportNothingCanBeCommitted)
{
    const QList<QByteArray> contents = {MakeContainer(50), MakeAsciiTetrahedron(1), MakeContours(),
                                        MakeLayupXml(), MakeResult(ZORNestResult(ZORNestResult::Nesting))};
    for (const QByteArray& content : contents) {
        const QString path = WriteFile("file", content);
        int numReports = 0;
        double last = 0;
        EXPECT_TRUE(ZORExcImport(path).Prepare([&](double part) {
            ++numReports;
            EXPECT_LE(last, part);
            EXPECT_LE(part, 1);
            last = part;
            return true;
        }));
        EXPECT_EQ(1, last);
        for (int i = 0; i < numReports; ++i) {
            ZORExcImport import(path);
            int left = i;
            EXPECT_FALSE(import.Prepare([&](double) { return left-- > 0; }));
            EXPECT_EQ("nothing was prepared", MessageOf([&] { import.Commit(&m_container); }));
        }
    }
    EXPECT_EQ(0, m_container.GetNumGeometry());
}

TEST_F(ZORExcImportTest, CommitsOnceAndOnlyIntoAContainer)
{
    ZORExcImport import(WriteFile("t.stl", MakeAsciiTetrahedron(1)));
    EXPECT_EQ("nothing was prepared", MessageOf([&] { import.Commit(&m_container); }));
    EXPECT_TRUE(import.Prepare());
    EXPECT_EQ("container is null", MessageOf([&] { import.Commit(nullptr); }));
    EXPECT_EQ(1, import.Commit(&m_container).size());
    EXPECT_EQ("nothing was prepared", MessageOf([&] { import.Commit(&m_container); }));
}

} // namespace
