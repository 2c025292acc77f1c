// How draping layers are saved: inputs as links, and the net as it was computed.

#include "ZORCompDrapingLayer_p.h"

#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

namespace {

using Node = ZORCompDrapingNode;
using Cell = ZORCompDrapingCell;

constexpr qsizetype placeNumbers = 3; // warp, weft, triangle
constexpr qsizetype weightNumbers = 2;
constexpr qsizetype cornerNumbers = 4;
constexpr qsizetype angleNumbers = 2; // shear, fibre angle

void WriteNodes(const QList<Node>& nodes, ZORGeoObjectWriter& writer)
{
    QList<qint32> places;
    QList<double> weights;
    QList<ZORMathPoint> points;
    for (const Node& node : nodes) {
        places << node.warp << node.weft << node.location.triangle;
        weights << node.location.weightB << node.location.weightC;
        points << node.location.point;
    }
    writer.WriteInts("nodes", places);
    writer.WriteDoubles("weights", weights);
    writer.WritePoints("points", points);
}

void WriteCells(const QList<Cell>& cells, ZORGeoObjectWriter& writer)
{
    QList<qint32> corners;
    QList<double> angles;
    for (const Cell& cell : cells) {
        corners << cell.nodes[0] << cell.nodes[1] << cell.nodes[2] << cell.nodes[3];
        angles << cell.shear << cell.fibreAngle;
    }
    writer.WriteInts("cells", corners);
    writer.WriteDoubles("angles", angles);
}

bool IsLocation(const ZORGeoLocationOnSurface& location)
{
    const int numTriangles = location.surface ? location.surface->GetNumTriangles() : location.triangle;
    return ZORGeoOnSurface::IsWithinTriangle(location) && location.triangle >= 0
           && location.triangle <= numTriangles && (location.triangle > 0 || !location.surface)
           && location.point.IsFinite();
}

QList<Node> ReadNodes(const ZORGeoObjectReader& reader, const ZORGeoSurface* surface)
{
    const QList<qint32>& places = reader.GetInts("nodes");
    const QList<double>& weights = reader.GetDoubles("weights");
    const QList<ZORMathPoint> points = reader.GetPoints("points");
    if (places.size() != placeNumbers * points.size() || weights.size() != weightNumbers * points.size())
        reader.Fail(ZORCompDrapingLayer::tr("its nodes are incomplete"));
    QList<Node> nodes;
    nodes.reserve(points.size());
    for (qsizetype i = 0; i < points.size(); ++i) {
        const ZORGeoLocationOnSurface location{surface, places[placeNumbers * i + 2],
                                               weights[weightNumbers * i], weights[weightNumbers * i + 1],
                                               points[i]};
        if (!IsLocation(location))
            reader.Fail(ZORCompDrapingLayer::tr("node %1 is not on its surface").arg(i));
        nodes.append({places[placeNumbers * i], places[placeNumbers * i + 1], location});
    }
    return nodes;
}

QList<Cell> ReadCells(const ZORGeoObjectReader& reader)
{
    const QList<qint32>& corners = reader.GetInts("cells");
    const QList<double>& angles = reader.GetDoubles("angles");
    const qsizetype count = corners.size() / cornerNumbers;
    if (corners.size() != cornerNumbers * count || angles.size() != angleNumbers * count)
        reader.Fail(ZORCompDrapingLayer::tr("its cells are incomplete"));
    QList<Cell> cells;
    cells.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        Cell cell;
        for (size_t k = 0; k < cell.nodes.size(); ++k)
            cell.nodes[k] = corners[cornerNumbers * i + qsizetype(k)];
        cell.shear = angles[angleNumbers * i];
        cell.fibreAngle = angles[angleNumbers * i + 1];
        if (!std::isfinite(cell.shear) || !std::isfinite(cell.fibreAngle))
            reader.Fail(ZORCompDrapingLayer::tr("the angles of cell %1 are not finite").arg(i));
        cells.append(cell);
    }
    return cells;
}

ZORCompDrapingNet ReadNet(const ZORGeoObjectReader& reader, const ZORGeoSurface* surface)
{
    const double step = reader.GetDouble("step");
    const double yarnAngle = reader.GetDouble("yarnAngle");
    if (!std::isfinite(step) || !std::isfinite(yarnAngle))
        reader.Fail(ZORCompDrapingLayer::tr("its net is not finite"));
    try {
        return ZORCompDrapingNet(step, yarnAngle, ReadNodes(reader, surface), ReadCells(reader));
    } catch (const ZORSysException& exception) {
        reader.Fail(exception.GetMessage());
    }
}

} // namespace

struct ZORCompDrapingLayerStorage
{
    static void Write(const ZORCompDrapingLayer& layer, ZORGeoObjectWriter& writer)
    {
        writer.WriteLink("strategy", layer.GetStrategy());
        writer.WriteLink("surface", layer.GetSurface());
        writer.WriteLink("seed", layer.GetSeed());
        writer.WriteLink("rosette", layer.GetRosette());
        const ZORMathVector direction = layer.GetDirection();
        writer.WriteDoubles("direction", {direction.GetX(), direction.GetY(), direction.GetZ()});

        const ZORCompDrapingNet& net = layer.GetNet();
        writer.WriteLink("drapedSurface", layer.d_ptr->drapedSurface.Get());
        writer.WriteDouble("step", net.GetStep());
        writer.WriteDouble("yarnAngle", net.GetYarnAngle());
        WriteNodes(net.GetNodes(), writer);
        WriteCells(net.GetCells(), writer);
    }

    static ZORCompDrapingLayer* Create(ZORGeoContainer*, const ZORGeoObjectReader& reader)
    {
        return new ZORCompDrapingLayer(reader.GetReference<ZORFeatObject>("parent"));
    }

    static void Complete(ZORCompDrapingLayer& layer, const ZORGeoObjectReader& reader)
    {
        const QList<double>& direction = reader.GetDoubles("direction");
        if (direction.size() != 3)
            reader.Fail(ZORCompDrapingLayer::tr("its direction is incomplete"));
        layer.SetDirection({direction[0], direction[1], direction[2]});
        layer.SetStrategy(reader.GetLink<ZORCompStrategy>("strategy"));
        layer.SetSurface(reader.GetLink<ZORGeoGeometry>("surface"));
        layer.SetSeed(reader.GetLink<ZORGeoGeometry>("seed"));
        layer.SetRosette(reader.GetLink<ZORCompRosette>("rosette"));

        const auto* surface = reader.GetLink<ZORGeoSurface>("drapedSurface");
        layer.d_ptr->net = ReadNet(reader, surface);
        layer.d_ptr->drapedSurface = ZORGeoReference<const ZORGeoSurface>(surface, &layer);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompDrapingLayer)
