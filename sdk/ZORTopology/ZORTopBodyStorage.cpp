// How topological bodies are saved: their parts and their structure as it is, whichever way they were made.

#include "ZORTopBody_p.h"

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoObjectStorage.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

namespace {

struct NamedLists
{
    const char* key;
    const char* lengthsKey;
    ZORTopIndexLists ZORTopStructure::*lists;
};

constexpr NamedLists namedLists[] = {
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
    for (const NamedLists& named : namedLists) {
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
    for (const NamedLists& named : namedLists)
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
        const ZORTopBodyPrivate& data = *body.d_func();
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
            body->d_func()->tolerance = ReadTolerance(reader);
        return body.release();
    }
};

ZOR_GEO_REGISTER_STORAGE(ZORTopBody)
