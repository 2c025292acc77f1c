#include "ZORVisMeshArrays_p.h"
#include "ZORVisMeshData_p.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr float kCosCrease = 0.76604444F;     // 40 degrees
constexpr float kCosHalfCrease = 0.93969262F; // 20 degrees
constexpr size_t kLargestSmoothFan = 256;     // triangles at a vertex; more are shaded flat

struct Normal
{
    float x = 0;
    float y = 0;
    float z = 0;

    Normal GetUnit() const
    {
        const float length = std::sqrt(x * x + y * y + z * z);
        return length > 0 ? Normal{x / length, y / length, z / length} : Normal{};
    }
    Normal& operator+=(const Normal& n)
    {
        x += n.x;
        y += n.y;
        z += n.z;
        return *this;
    }
    friend bool operator==(const Normal&, const Normal&) = default;
};

float Dot(const Normal& a, const Normal& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

// Works through the vertices of a mesh; the corners of the kept triangles are numbered 3 t ... 3 t + 2.
class Builder
{
public:
    Builder(const ZORVisMeshData& mesh, const ZORMathPoint& origin, ZORVisMeshArrays& arrays)
        : m_mesh(mesh)
        , m_origin(origin)
        , m_arrays(arrays)
    {
    }

    void KeepFiniteTriangles();
    void BuildFlat();
    void BuildSmooth();

private:
    void FindCornersOfVertices();
    void AddVertex(int vertex, const uint32_t* corners, size_t count);
    void AddSplitVertex(int vertex, const uint32_t* corners, size_t count);
    uint32_t Append(int vertex, const Normal& normal);

    const ZORVisMeshData& m_mesh;
    const ZORMathPoint m_origin;
    ZORVisMeshArrays& m_arrays;
    std::vector<ZORVisMeshData::Corners> m_triangles;
    std::vector<Normal> m_normals;          // per triangle, as long as twice the area
    std::vector<uint32_t> m_firstCorner;    // per vertex, into the next
    std::vector<uint32_t> m_vertexCorners;  // corner numbers, by vertex
    std::vector<Normal> m_units;            // scratch of one vertex
    std::vector<Normal> m_emitted;          // scratch of one vertex
    std::vector<uint32_t> m_emittedNumbers; // scratch of one vertex
};

void Builder::KeepFiniteTriangles()
{
    const QList<ZORMathPoint>& vertices = m_mesh.vertices;
    m_triangles.reserve(size_t(m_mesh.corners.size()));
    m_normals.reserve(size_t(m_mesh.corners.size()));
    for (const ZORVisMeshData::Corners& corners : m_mesh.corners) {
        const ZORMathPoint& a = vertices[corners[0]];
        const ZORMathVector normal = Cross(vertices[corners[1]] - a, vertices[corners[2]] - a);
        if (!std::isfinite(normal.GetX() + normal.GetY() + normal.GetZ()))
            continue;
        m_triangles.push_back(corners);
        m_normals.push_back({float(normal.GetX()), float(normal.GetY()), float(normal.GetZ())});
    }
    m_arrays.corners.resize(3 * m_triangles.size());
}

void Builder::BuildFlat()
{
    for (size_t triangle = 0; triangle < m_triangles.size(); ++triangle) {
        const Normal normal = m_normals[triangle].GetUnit();
        for (size_t i = 0; i < 3; ++i)
            m_arrays.corners[3 * triangle + i] = Append(m_triangles[triangle][i], normal);
    }
}

void Builder::BuildSmooth()
{
    FindCornersOfVertices();
    const size_t numVertices = size_t(m_mesh.vertices.size());
    m_arrays.positions.reserve(3 * numVertices);
    m_arrays.normals.reserve(3 * numVertices);
    for (size_t vertex = 0; vertex < numVertices; ++vertex) {
        const uint32_t first = m_firstCorner[vertex];
        if (const uint32_t count = m_firstCorner[vertex + 1] - first; count > 0)
            AddVertex(int(vertex), m_vertexCorners.data() + first, count);
    }
}

void Builder::FindCornersOfVertices()
{
    m_firstCorner.assign(size_t(m_mesh.vertices.size()) + 1, 0);
    for (const ZORVisMeshData::Corners& corners : m_triangles) {
        for (const int vertex : corners)
            ++m_firstCorner[size_t(vertex) + 1];
    }
    for (size_t i = 1; i < m_firstCorner.size(); ++i)
        m_firstCorner[i] += m_firstCorner[i - 1];
    std::vector<uint32_t> next(m_firstCorner.begin(), m_firstCorner.end() - 1);
    m_vertexCorners.resize(3 * m_triangles.size());
    for (size_t corner = 0; corner < m_vertexCorners.size(); ++corner)
        m_vertexCorners[next[size_t(m_triangles[corner / 3][corner % 3])]++] = uint32_t(corner);
}

void Builder::AddVertex(int vertex, const uint32_t* corners, size_t count)
{
    m_units.clear();
    Normal sum;
    Normal reference;
    bool together = true; // any two normals are then within the crease angle of each other
    for (size_t i = 0; i < count; ++i) {
        const Normal& normal = m_normals[corners[i] / 3];
        const Normal unit = normal.GetUnit();
        m_units.push_back(unit);
        sum += normal;
        if (unit == Normal{})
            continue;
        if (reference == Normal{})
            reference = unit;
        together = together && Dot(unit, reference) > kCosHalfCrease;
    }
    if (!together) {
        AddSplitVertex(vertex, corners, count);
        return;
    }
    const uint32_t number = Append(vertex, sum.GetUnit());
    for (size_t i = 0; i < count; ++i)
        m_arrays.corners[corners[i]] = number;
}

// Every corner gets the mean of the triangles within the crease angle of its own one.
void Builder::AddSplitVertex(int vertex, const uint32_t* corners, size_t count)
{
    m_emitted.clear();
    m_emittedNumbers.clear();
    for (size_t i = 0; i < count; ++i) {
        Normal sum = m_normals[corners[i] / 3];
        if (count <= kLargestSmoothFan && !(m_units[i] == Normal{})) {
            sum = {};
            for (size_t j = 0; j < count; ++j) {
                if (Dot(m_units[i], m_units[j]) > kCosCrease)
                    sum += m_normals[corners[j] / 3];
            }
        }
        const auto same = std::find(m_emitted.begin(), m_emitted.end(), sum);
        if (same != m_emitted.end()) {
            m_arrays.corners[corners[i]] = m_emittedNumbers[size_t(same - m_emitted.begin())];
            continue;
        }
        const uint32_t number = Append(vertex, sum.GetUnit());
        m_arrays.corners[corners[i]] = number;
        if (count <= kLargestSmoothFan) {
            m_emitted.push_back(sum);
            m_emittedNumbers.push_back(number);
        }
    }
}

uint32_t Builder::Append(int vertex, const Normal& normal)
{
    const ZORMathVector position = m_mesh.vertices[vertex] - m_origin;
    const auto number = uint32_t(m_arrays.positions.size() / 3);
    m_arrays.positions.insert(m_arrays.positions.end(),
                              {float(position.GetX()), float(position.GetY()), float(position.GetZ())});
    m_arrays.normals.insert(m_arrays.normals.end(), {normal.x, normal.y, normal.z});
    return number;
}

} // namespace

ZORVisMeshArrays::ZORVisMeshArrays(const ZORVisMeshData& mesh, const ZORMathPoint& origin)
{
    Builder builder(mesh, origin, *this);
    builder.KeepFiniteTriangles();
    if (mesh.smooth)
        builder.BuildSmooth();
    else
        builder.BuildFlat();
}
