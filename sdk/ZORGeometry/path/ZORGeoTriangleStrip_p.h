// A strip of neighbouring triangles and the shortest way through it.

#pragma once

#include "walk/ZORGeoMeshJoin_p.h"
#include "walk/ZORGeoPlaneVector_p.h"

#include <vector>

/// Triangles between two places, each the neighbour of the one before, and the taut way through them.
///
/// The triangles are unfolded into the plane one after the other; the sides between them are gates. The way
/// turns only at ends of gates: the funnel algorithm (D. Lee, F. Preparata: Euclidean shortest paths in the
/// presence of rectilinear barriers, Networks 14, 1984) finds where in time linear in the gates as a rule.
class ZORGeoTriangleStrip
{
public:
    /// \param mesh   not owned, outlives the strip
    /// \param sides  the sides to leave by, as 4 * triangle + side from 0; the last with side 3
    ZORGeoTriangleStrip(const ZORGeoMesh& mesh, const ZORGeoMeshPlace& start, const ZORGeoMeshPlace& end,
                        const std::vector<quint32>& sides);

    /// A place where the way touches an end of a gate.
    struct Turn
    {
        int gate;    // counted from 0
        bool isLeft; // which end
    };

    double GetLength() const { return m_length; }
    const std::vector<Turn>& GetTurns() const { return m_turns; }

    /// Leads the strip round the other side of the vertex at a turn if the surface there spans less than pi. The
    /// way stays as it was until Tauten(). Turns of lower gates remain valid.
    /// \return false when it is not shorter there, when there is a border, or where a flip of a higher gate is
    ///         in the way
    bool Flip(const Turn& turn);
    /// Finds the shortest way.
    void Tauten();
    /// The way; zero-length segments are left out.
    /// \param isReversed  true: from the end to the start
    ZORGeoMeshPath GetPath(bool isReversed) const;

private:
    using Point = ZORGeoPlaneVector;
    struct Gate
    {
        int leftVertex;
        int rightVertex;
        Point left;
        Point right;
        double u = 0; // where the way passes, from right to left
    };

    void Shrink();
    void RemoveLoops();
    void Unfold();
    void RunFunnel();
    void PassGates(int first, int last, const Point& from, const Point& to);
    void MeasureLength();
    int TriangleAt(size_t index) const { return int(m_sides[index] / 4); }
    ZORGeoMeshPlace PlaceAtGate(size_t gate) const;
    ZORMathPoint PointAtGate(size_t gate) const { return PlaceAtGate(gate).point; }
    double GetOuterAngle(size_t index, int vertex, int strippedSide, const ZORMathPoint& passed) const;

    const ZORGeoMesh* m_mesh; // not owned
    ZORGeoMeshPlace m_start;
    ZORGeoMeshPlace m_end;
    std::vector<quint32> m_sides;
    size_t m_flipped = 0; // from here on the sides are no more those of the gates
    std::vector<Gate> m_gates;
    Point m_startPoint; // in the plane
    Point m_endPoint;
    std::vector<Turn> m_turns;
    double m_length = 0;
};
