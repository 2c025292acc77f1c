#include "ZORTopBody.h"

#include "ZORTopBody_p.h"
#include "ZORTopCurveDivision_p.h"
#include "ZORTopSurfaceDivision_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORTopology/ZORTopBody.h>

#include <numbers>

ZOR_GEO_REGISTER_TYPE(ZORTopBody)

namespace {

ZORTopStructure Divide(const ZORGeoGeometry* geometry, double tolerance)
{
    if (!(tolerance >= 0))
        throw ZORSysException(
            ZORTopBody::tr("edge tolerance %1 is not an angle of 0 or more").arg(tolerance));
    if (!geometry)
        return {};
    if (const auto* point = qobject_cast<const ZORGeoPoint*>(geometry)) {
        ZORTopStructure structure;
        structure.vertices.push_back({point->GetMathPoint(), 0});
        structure.Complete();
        return structure;
    }
    if (const auto* curve = qobject_cast<const ZORGeoCurve*>(geometry))
        return ZorTopDivideCurve(*curve, tolerance);
    if (const auto* surface = qobject_cast<const ZORGeoSurface*>(geometry))
        return ZorTopDivideSurface(*surface, tolerance);
    throw ZORSysException(ZORTopBody::tr("a body needs a point, a curve or a surface"));
}

} // namespace

ZORTopBody::ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry)
    : ZORTopBody(container, geometry, std::numbers::pi)
{
}

ZORTopBody::ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry, double tolerance)
    : ZORGeoGeometry(container)
    , d(std::make_unique<ZORTopBodyPrivate>())
{
    ZOR_TRACE_CALL(container, geometry, tolerance);
    d->structure = Divide(geometry, tolerance);
    d->tolerance = tolerance;
    if (geometry)
        AddPart(geometry);
}

ZORTopBody::ZORTopBody(ZORGeoContainer* container, ZORTopStructure structure,
                       const QList<const ZORGeoGeometry*>& parts)
    : ZORGeoGeometry(container)
    , d(std::make_unique<ZORTopBodyPrivate>())
{
    d->structure = std::move(structure);
    d->parts.reserve(size_t(parts.size()));
    for (const ZORGeoGeometry* part : parts)
        AddPart(part);
}

ZORTopBody::~ZORTopBody() = default;

void ZORTopBody::AddPart(const ZORGeoGeometry* part)
{
    d->parts.emplace_back(part, this);
    // Surfaces never change, and bodies of them are the ones that are expensive to divide.
    if (!qobject_cast<const ZORGeoSurface*>(part))
        FollowShape(part);
}

void ZORTopBody::UpdateShape()
{
    if (d->IsComplete())
        d->Update();
}

void ZORTopBodyPrivate::Update()
{
    if (parts.size() == 1) {
        structure = Divide(GetPart(0), tolerance);
        return;
    }
    for (ZORTopStructure::Vertex& vertex : structure.vertices) {
        if (const auto* point = qobject_cast<const ZORGeoPoint*>(GetPart(vertex.part)))
            vertex.point = point->GetMathPoint();
    }
    ZORTopIndexLists pointsOfEdge;
    for (int edge = 0; edge < structure.GetNumEdges(); ++edge) {
        AddPointsOfEdge(edge, pointsOfEdge);
        pointsOfEdge.Close();
    }
    structure.pointsOfEdge = std::move(pointsOfEdge);
}

void ZORTopBodyPrivate::AddPointsOfEdge(int edge, ZORTopIndexLists& pointsOfEdge)
{
    const auto* const curve = qobject_cast<const ZORGeoCurve*>(GetPart(structure.partOfEdge[size_t(edge)]));
    if (!curve) {
        for (const int point : structure.pointsOfEdge.Get(edge))
            pointsOfEdge.Add(point);
        return;
    }
    const int count = curve->GetNumPoints();
    for (int point = 0; point < count; ++point)
        pointsOfEdge.Add(point);
    const std::span<const int> ends = structure.verticesOfEdge.Get(edge);
    if (!ends.empty() && count > 0) {
        structure.vertices[size_t(ends.back())].point = curve->GetPoint(count - 1);
        structure.vertices[size_t(ends.front())].point = curve->GetPoint(0);
    }
}

int ZORTopBody::GetDimension() const
{
    if (!d->IsComplete())
        return EmptyDimension;
    if (d->structure.GetNumFaces() > 0)
        return 2;
    if (d->structure.GetNumEdges() > 0)
        return 1;
    return d->structure.GetNumVertices() > 0 ? 0 : EmptyDimension;
}

const ZORGeoGeometry* ZORTopBody::GetGeometry() const
{
    return d->parts.size() == 1 ? d->GetPart(0) : nullptr;
}

QList<const ZORGeoGeometry*> ZORTopBody::GetGeometries() const
{
    if (!d->IsComplete())
        return {};
    return {d->parts.begin(), d->parts.end()};
}

int ZORTopBody::GetNumVertices() const
{
    return d->IsComplete() ? d->structure.GetNumVertices() : 0;
}

int ZORTopBody::GetNumEdges() const
{
    return d->IsComplete() ? d->structure.GetNumEdges() : 0;
}

int ZORTopBody::GetNumFaces() const
{
    return d->IsComplete() ? d->structure.GetNumFaces() : 0;
}

ZORTopVertex ZORTopBody::GetVertex(int index) const
{
    Q_ASSERT(index >= 0 && index < GetNumVertices());
    return {d.get(), index};
}

ZORTopEdge ZORTopBody::GetEdge(int index) const
{
    Q_ASSERT(index >= 0 && index < GetNumEdges());
    return {d.get(), index};
}

ZORTopFace ZORTopBody::GetFace(int index) const
{
    Q_ASSERT(index >= 0 && index < GetNumFaces());
    return {d.get(), index};
}

namespace {

struct NamedLists
{
    const char* key;
    const char* lengthsKey;
    ZORTopIndexLists ZORTopStructure::*lists;
};

constexpr NamedLists kNamedLists[] = {
    {"edgePoints", "edgePointsLengths", &ZORTopStructure::pointsOfEdge},
    {"edgeSides", "edgeSidesLengths", &ZORTopStructure::sidesOfEdge},
    {"edgeVertices", "edgeVerticesLengths", &ZORTopStructure::verticesOfEdge},
    {"edgeFaces", "edgeFacesLengths", &ZORTopStructure::facesOfEdge},
    {"faceTriangles", "faceTrianglesLengths", &ZORTopStructure::trianglesOfFace},
};

void WriteStructure(const ZORTopStructure& structure, ZORGeoObjectWriter& writer)
{
    QList<ZORMathPoint> points;
    QList<qint32> parts;
    for (const ZORTopStructure::Vertex& vertex : structure.vertices) {
        points.append(vertex.point);
        parts.append(vertex.part);
    }
    writer.WritePoints("vertexPoints", points);
    writer.WriteInts("vertexParts", parts);
    writer.WriteInts("edgeParts", {structure.partOfEdge.begin(), structure.partOfEdge.end()});
    for (const NamedLists& named : kNamedLists) {
        const ZORTopIndexLists& lists = structure.*named.lists;
        QList<qint32> lengths;
        QList<qint32> values;
        for (int i = 0; i < lists.GetCount(); ++i) {
            const std::span<const int> list = lists.Get(i);
            lengths.append(qint32(list.size()));
            values.append(QList<qint32>(list.begin(), list.end()));
        }
        writer.WriteInts(named.lengthsKey, lengths);
        writer.WriteInts(named.key, values);
    }
}

ZORTopIndexLists ReadLists(const ZORGeoObjectReader& reader, const NamedLists& named)
{
    const QList<qint32>& lengths = reader.GetInts(named.lengthsKey);
    const QList<qint32>& values = reader.GetInts(named.key);
    ZORTopIndexLists lists;
    qsizetype next = 0;
    for (const qint32 length : lengths) {
        if (length < 0 || length > values.size() - next)
            reader.Fail(ZORTopBody::tr("list '%1' is shorter than told").arg(QLatin1String(named.key)));
        for (const qsizetype end = next + length; next < end; ++next)
            lists.Add(values[next]);
        lists.Close();
    }
    if (next != values.size())
        reader.Fail(ZORTopBody::tr("list '%1' is longer than told").arg(QLatin1String(named.key)));
    return lists;
}

bool AreWithin(std::span<const int> values, int first, qsizetype count)
{
    return std::all_of(values.begin(), values.end(),
                       [=](int value) { return value >= first && value - first < count; });
}

/// Tells whether every index of a structure that was read is one of something there is.
class StructureCheck
{
public:
    StructureCheck(const ZORTopStructure& structure, const QList<const ZORGeoGeometry*>& parts)
        : m_structure(structure)
        , m_parts(parts)
    {
    }

    bool IsValid() const
    {
        const int edges = m_structure.GetNumEdges();
        if (int(m_structure.partOfEdge.size()) != edges || m_structure.pointsOfEdge.GetCount() != edges
            || m_structure.sidesOfEdge.GetCount() != edges || m_structure.facesOfEdge.GetCount() != edges)
            return false;
        for (const ZORTopStructure::Vertex& vertex : m_structure.vertices) {
            if (!vertex.point.IsFinite() || vertex.part < -1 || vertex.part >= m_parts.size())
                return false;
        }
        for (int edge = 0; edge < edges; ++edge) {
            if (!IsEdgeValid(edge))
                return false;
        }
        return AreFacesValid();
    }

private:
    bool IsEdgeValid(int edge) const
    {
        const std::span<const int> vertices = m_structure.verticesOfEdge.Get(edge);
        if (vertices.size() > 2 || !AreWithin(vertices, 0, m_structure.GetNumVertices())
            || !AreWithin(m_structure.facesOfEdge.Get(edge), 0, m_structure.GetNumFaces()))
            return false;
        const int part = m_structure.partOfEdge[size_t(edge)];
        if (part < 0 || part >= m_parts.size())
            return false;
        const std::span<const int> points = m_structure.pointsOfEdge.Get(edge);
        const std::span<const int> sides = m_structure.sidesOfEdge.Get(edge);
        if (const auto* curve = qobject_cast<const ZORGeoCurve*>(m_parts[part]))
            return sides.empty() && AreWithin(points, 0, curve->GetNumPoints());
        const auto* const surface = qobject_cast<const ZORGeoSurface*>(m_parts[part]);
        return surface && sides.size() + 1 == points.size()
               && AreWithin(points, 0, surface->GetVertexArray().size()) && AreSidesValid(*surface, sides);
    }

    static bool AreSidesValid(const ZORGeoSurface& surface, std::span<const int> sides)
    {
        return std::all_of(sides.begin(), sides.end(), [&surface](int side) {
            return side >= 4 && side / 4 <= surface.GetNumTriangles() && side % 4 < 3;
        });
    }

    bool AreFacesValid() const
    {
        if (m_structure.GetNumFaces() == 0)
            return true;
        const auto* const surface = qobject_cast<const ZORGeoSurface*>(m_parts.value(0));
        if (!surface)
            return false;
        for (int face = 0; face < m_structure.GetNumFaces(); ++face) {
            if (!AreWithin(m_structure.trianglesOfFace.Get(face), 1, surface->GetNumTriangles()))
                return false;
        }
        return true;
    }

    const ZORTopStructure& m_structure;
    const QList<const ZORGeoGeometry*>& m_parts;
};

ZORTopStructure ReadStructure(const ZORGeoObjectReader& reader, const QList<const ZORGeoGeometry*>& parts)
{
    ZORTopStructure structure;
    const QList<ZORMathPoint> points = reader.GetPoints("vertexPoints");
    const QList<qint32>& partOfVertex = reader.GetInts("vertexParts");
    if (points.size() != partOfVertex.size())
        reader.Fail(ZORTopBody::tr("its lists are of different lengths"));
    for (qsizetype i = 0; i < points.size(); ++i)
        structure.vertices.push_back({points[i], partOfVertex[i]});
    const QList<qint32>& partOfEdge = reader.GetInts("edgeParts");
    structure.partOfEdge.assign(partOfEdge.begin(), partOfEdge.end());
    for (const NamedLists& named : kNamedLists)
        structure.*named.lists = ReadLists(reader, named);
    if (!StructureCheck(structure, parts).IsValid())
        reader.Fail(ZORTopBody::tr("its structure does not fit its geometry"));
    structure.Complete();
    return structure;
}

double ReadTolerance(const ZORGeoObjectReader& reader)
{
    const double tolerance = reader.GetDouble("tolerance");
    if (!(tolerance >= 0))
        reader.Fail(ZORTopBody::tr("edge tolerance %1 is not an angle of 0 or more").arg(tolerance));
    return tolerance;
}

} // namespace

struct ZORTopBodyStorage
{
    /// The structure of a body that has lost geometry means nothing any more.
    static void Write(const ZORTopBody& body, ZORGeoObjectWriter& writer)
    {
        const ZORTopBodyPrivate& data = *body.d;
        writer.WriteReferences("parts", {data.parts.begin(), data.parts.end()});
        if (data.IsComplete())
            WriteStructure(data.structure, writer);
        if (data.tolerance != ZORTopBodyPrivate().tolerance)
            writer.WriteDouble("tolerance", data.tolerance);
    }
    static ZORTopBody* Create(ZORGeoContainer* container, const ZORGeoObjectReader& reader)
    {
        const QList<const ZORGeoGeometry*> parts = reader.GetReferences<const ZORGeoGeometry>("parts");
        const bool isComplete = !parts.contains(nullptr);
        auto body = std::unique_ptr<ZORTopBody>(
            new ZORTopBody(container, isComplete ? ReadStructure(reader, parts) : ZORTopStructure(), parts));
        if (reader.Has("tolerance"))
            body->d->tolerance = ReadTolerance(reader);
        return body.release();
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORTopBody)
