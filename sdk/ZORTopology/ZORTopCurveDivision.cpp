#include "ZORTopCurveDivision_p.h"
#include "ZORTopTurn_p.h"

#include <ZORGeometry/ZORGeoCurve.h>

namespace {

class CurveDivision
{
public:
    CurveDivision(const ZORGeoCurve& curve, double tolerance)
        : m_curve(curve)
        , m_turn(tolerance)
    {
    }

    ZORTopStructure Run()
    {
        if (m_curve.GetNumPoints() > 0) {
            FindPlaces();
            FindCorners();
            AddVertices();
            AddEdges();
        }
        m_structure.Complete();
        return std::move(m_structure);
    }

private:
    double Distance(int a, int b) const { return (m_curve.GetPoint(b) - m_curve.GetPoint(a)).GetLength(); }

    // The points that repeat none before them.
    void FindPlaces()
    {
        const double repeated = 1e-9 * m_curve.GetLength();
        m_places = {0};
        for (int i = 1; i < m_curve.GetNumPoints(); ++i) {
            if (Distance(m_places.back(), i) > repeated)
                m_places.push_back(i);
        }
        m_isClosed = m_places.size() > 2 && Distance(m_places.front(), m_places.back()) <= repeated;
        if (m_isClosed)
            m_places.pop_back(); // the same place as the first one
    }

    void FindCorners()
    {
        const size_t count = m_places.size();
        if (count < 2 && !m_isClosed) {
            m_corners = {0};
            return;
        }
        const auto direction = [&](size_t from) {
            const int start = m_places[from];
            const int end = m_places[(from + 1) % count];
            return (m_curve.GetPoint(end) - m_curve.GetPoint(start)).GetNormalized();
        };
        ZORMathVector before = direction(count - 1); // of use in a closed curve only
        for (size_t i = 0; i < count; ++i) {
            const ZORMathVector after = direction(i);
            const bool isEnd = !m_isClosed && (i == 0 || i == count - 1);
            if (isEnd || !m_turn.IsSmooth(before, after))
                m_corners.push_back(m_places[i]);
            before = after;
        }
    }

    void AddVertices()
    {
        for (const int corner : m_corners)
            m_structure.vertices.push_back({m_curve.GetPoint(corner)});
    }

    void AddEdges()
    {
        const int last = m_curve.GetNumPoints() - 1;
        const int numCorners = int(m_corners.size());
        if (m_isClosed && numCorners == 0) {
            AddPoints(0, last - 1);
            AddPoints(0, 0);
            CloseEdge({});
        }
        for (int i = 0; i + 1 < numCorners; ++i) {
            const bool isLast = !m_isClosed && i + 2 == numCorners; // includes points that repeat the end
            AddEdge(m_corners[size_t(i)], isLast ? last : m_corners[size_t(i) + 1], {i, i + 1});
        }
        if (m_isClosed && numCorners > 0) {
            // The first point stands for the last one, which may differ from it by rounding.
            AddPoints(m_corners.back(), last - 1);
            AddPoints(0, m_corners.front());
            CloseEdge(numCorners == 1 ? std::vector<int>{0} : std::vector<int>{numCorners - 1, 0});
        }
    }

    void AddEdge(int first, int last, const std::vector<int>& vertices)
    {
        AddPoints(first, last);
        CloseEdge(vertices);
    }

    void AddPoints(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            m_structure.pointsOfEdge.Add(i);
    }

    void CloseEdge(const std::vector<int>& vertices)
    {
        for (const int vertex : vertices)
            m_structure.verticesOfEdge.Add(vertex);
        m_structure.verticesOfEdge.Close();
        m_structure.pointsOfEdge.Close();
        m_structure.sidesOfEdge.Close();
        m_structure.facesOfEdge.Close();
        m_structure.partOfEdge.push_back(0);
    }

    const ZORGeoCurve& m_curve;
    const ZORTopTurn m_turn;
    std::vector<int> m_places;  // indices of points
    std::vector<int> m_corners; // likewise, those that become vertices
    bool m_isClosed = false;
    ZORTopStructure m_structure;
};

} // namespace

ZORTopStructure ZorTopDivideCurve(const ZORGeoCurve& curve, double tolerance)
{
    return CurveDivision(curve, tolerance).Run();
}
