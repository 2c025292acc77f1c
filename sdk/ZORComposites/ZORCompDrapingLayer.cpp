#include "ZORCompDrapingLayer.h"

#include <ZORComposites/ZORCompKinematicDraping.h>
#include <ZORComposites/ZORCompRosette.h>
#include <ZORComposites/ZORCompStrategy.h>
#include <ZORFeature/ZORFeatShapeOf.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoOnSurface.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORMathematics/ZORMathVector.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <cmath>
#include <mutex>

namespace {

using Node = ZORCompDrapingNode;
using Cell = ZORCompDrapingCell;

constexpr qsizetype kPlaceNumbers = 3; // warp, weft, triangle
constexpr qsizetype kWeightNumbers = 2;
constexpr qsizetype kCornerNumbers = 4;
constexpr qsizetype kAngleNumbers = 2; // shear, fibre angle

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
    if (places.size() != kPlaceNumbers * points.size() || weights.size() != kWeightNumbers * points.size())
        reader.Fail(ZORCompDrapingLayer::tr("its nodes are incomplete"));
    QList<Node> nodes;
    nodes.reserve(points.size());
    for (qsizetype i = 0; i < points.size(); ++i) {
        const ZORGeoLocationOnSurface location{surface, places[kPlaceNumbers * i + 2],
                                               weights[kWeightNumbers * i], weights[kWeightNumbers * i + 1],
                                               points[i]};
        if (!IsLocation(location))
            reader.Fail(ZORCompDrapingLayer::tr("node %1 is not on its surface").arg(i));
        nodes.append({places[kPlaceNumbers * i], places[kPlaceNumbers * i + 1], location});
    }
    return nodes;
}

QList<Cell> ReadCells(const ZORGeoObjectReader& reader)
{
    const QList<qint32>& corners = reader.GetInts("cells");
    const QList<double>& angles = reader.GetDoubles("angles");
    const qsizetype count = corners.size() / kCornerNumbers;
    if (corners.size() != kCornerNumbers * count || angles.size() != kAngleNumbers * count)
        reader.Fail(ZORCompDrapingLayer::tr("its cells are incomplete"));
    QList<Cell> cells;
    cells.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        Cell cell;
        for (size_t k = 0; k < cell.nodes.size(); ++k)
            cell.nodes[k] = corners[kCornerNumbers * i + qsizetype(k)];
        cell.shear = angles[kAngleNumbers * i];
        cell.fibreAngle = angles[kAngleNumbers * i + 1];
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

class ZORCompDrapingLayer::Private
{
public:
    ZORGeoReference<ZORCompStrategy> strategy;
    ZORGeoReference<ZORGeoGeometry> surface;
    ZORGeoReference<ZORGeoGeometry> seed;
    ZORGeoReference<ZORCompRosette> rosette;
    ZORMathVector direction{1, 0, 0};

    /// Returns the net, detached from its surface once that has been destroyed: by the first of the threads that ask
    /// then, so that none of them gets a net that still changes.
    const ZORCompDrapingNet& GetNet() const
    {
        if (!drapedSurface) {
            const std::lock_guard lock(detaching);
            net.DetachFromSurface();
        }
        return net;
    }

    mutable std::mutex detaching;
    mutable ZORCompDrapingNet net;
    ZORGeoReference<const ZORGeoSurface> drapedSurface; // which the net is on
};

ZOR_GEO_REGISTER_TYPE(ZORCompDrapingLayer)

using Layer = ZORCompDrapingLayer;

namespace {

ZORGeoLocationOnSurface LocationOf(const ZORGeoGeometry* seed, const ZORGeoSurface* surface)
{
    const auto* point = ZORFeatShapeOf<ZORGeoPoint>(seed);
    if (!point)
        throw ZORSysException(ZORCompDrapingLayer::tr("the seed is no point"));
    const ZORGeoLocationOnSurface location = ZORGeoOnSurface::Locate(*point, *surface);
    if (location.IsNull())
        throw ZORSysException(ZORCompDrapingLayer::tr("the seed cannot be projected onto the surface"));
    return location;
}

// The cells as pairs of triangles, cut along their shorter diagonals.
std::unique_ptr<ZORGeoSurface> MakeSurface(ZORGeoContainer* container, const ZORCompDrapingNet& net)
{
    QList<ZORMathPoint> vertices;
    vertices.reserve(net.GetNodes().size());
    for (const ZORCompDrapingNode& node : net.GetNodes())
        vertices.append(node.location.point);
    QList<ZORGeoSurface::Corners> triangles;
    triangles.reserve(2 * net.GetCells().size());
    for (const ZORCompDrapingCell& cell : net.GetCells()) {
        const auto [a, b, c, d] = cell.nodes;
        if (vertices[a].DistanceTo(vertices[c]) <= vertices[b].DistanceTo(vertices[d]))
            triangles << ZORGeoSurface::Corners{a, b, c} << ZORGeoSurface::Corners{a, c, d};
        else
            triangles << ZORGeoSurface::Corners{a, b, d} << ZORGeoSurface::Corners{b, c, d};
    }
    return std::make_unique<ZORGeoSurface>(container, vertices, triangles);
}

} // namespace

Layer::ZORCompDrapingLayer(ZORFeatObject* parent)
    : ZORFeatComputedGeometry(parent)
    , d(std::make_unique<Private>())
{
    ZOR_TRACE_CALL(parent);
}

Layer::~ZORCompDrapingLayer() = default;

QList<ZORFeatObject*> Layer::GetInputs() const
{
    QList<ZORFeatObject*> features{GetStrategy(), qobject_cast<ZORFeatObject*>(GetSurface()),
                                   qobject_cast<ZORFeatObject*>(GetSeed()), GetRosette()};
    features.removeAll(nullptr);
    return features;
}

void Layer::SetStrategy(ZORCompStrategy* strategy)
{
    ZOR_TRACE_CALL(strategy);
    if (strategy)
        connect(strategy, &ZORCompStrategy::ParametersChanged, this, &Layer::OnInputChanged,
                Qt::UniqueConnection);
    SetInput(d->strategy, strategy);
}

void Layer::SetSurface(ZORGeoGeometry* surface)
{
    ZOR_TRACE_CALL(surface);
    SetGeometry(d->surface, surface);
}

void Layer::SetSeed(ZORGeoGeometry* seed)
{
    ZOR_TRACE_CALL(seed);
    SetGeometry(d->seed, seed);
}

void Layer::SetGeometry(ZORGeoReference<ZORGeoGeometry>& input, ZORGeoGeometry* geometry)
{
    if (input.Get() == geometry)
        return;
    auto* const feature = qobject_cast<ZORFeatObject*>(geometry);
    CheckInput(feature);
    auto* const before = qobject_cast<ZORFeatObject*>(input.Get());
    input = ZORGeoReference<ZORGeoGeometry>(geometry, this);
    ReportChange();
    Unfollow(before);
    Follow(feature);
    Update();
}

void Layer::SetRosette(ZORCompRosette* rosette)
{
    ZOR_TRACE_CALL(rosette);
    SetInput(d->rosette, rosette);
}

void Layer::SetDirection(const ZORMathVector& direction)
{
    ZOR_TRACE_CALL(direction);
    if (d->direction == direction)
        return;
    d->direction = direction;
    ReportChange();
    if (!d->rosette)
        Update();
}

ZORCompStrategy* Layer::GetStrategy() const
{
    return d->strategy;
}

ZORGeoGeometry* Layer::GetSurface() const
{
    return d->surface;
}

ZORGeoGeometry* Layer::GetSeed() const
{
    return d->seed;
}

ZORCompRosette* Layer::GetRosette() const
{
    return d->rosette;
}

ZORMathVector Layer::GetDirection() const
{
    return d->direction;
}

const ZORCompDrapingNet& Layer::GetNet() const
{
    return d->GetNet();
}

double Layer::GetShear(int cell) const
{
    return d->GetNet().GetCells()[cell].shear;
}

double Layer::GetFibreAngle(int cell) const
{
    return d->GetNet().GetCells()[cell].fibreAngle;
}

double Layer::GetMaximumShear() const
{
    return d->GetNet().GetMaximumShear();
}

QList<int> Layer::GetLockedCells() const
{
    return d->strategy ? d->GetNet().GetLockedCells(d->strategy->GetParameters().lockingAngle) : QList<int>();
}

bool Layer::IsComplete() const
{
    return d->strategy && ZORFeatShapeOf(d->surface) && ZORFeatShapeOf(d->seed);
}

ZORFeatShape Layer::Compute() const
{
    const auto* surface = ZORFeatShapeOf<ZORGeoSurface>(GetSurface());
    if (!surface)
        throw ZORSysException(ZORCompDrapingLayer::tr("the surface of the layer is no surface"));
    const ZORGeoLocationOnSurface seed = LocationOf(GetSeed(), surface);
    const ZORMathVector direction = GetRosette() ? GetRosette()->GetXAxis() : GetDirection();
    const ZORCompKinematicDraping draping(surface, GetStrategy()->GetParameters());
    const ZORCompDrapingNet net = draping.Run(seed, direction);

    std::unique_ptr<ZORGeoSurface> shape = MakeSurface(GetContainer(), net);
    auto body = std::make_unique<ZORTopBody>(GetContainer(), shape.get());
    d->net = net;
    d->drapedSurface = ZORGeoReference<const ZORGeoSurface>(surface, this);
    ZORGeoSurface* const geometry = shape.release();
    return {body.release(), {geometry}};
}

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
        writer.WriteLink("drapedSurface", layer.d->drapedSurface.Get());
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
        layer.d->net = ReadNet(reader, surface);
        layer.d->drapedSurface = ZORGeoReference<const ZORGeoSurface>(surface, &layer);
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORCompDrapingLayer)
