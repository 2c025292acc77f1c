// Fourth corner of a cell of yarns on a surface.

#pragma once

#include <ZORGeometry/ZORGeoLocationOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathVector.h>

#include <array>
#include <vector>

/// Completes rhombic cells over a surface: exact, by neighbours only, so that no other sheet of the surface that
/// happens to be near is ever mistaken for the one that the cell lies on.
///
/// Places as far from A as from B are a plane. It holds the corner C, which is one step from both, so the wanted
/// corner D lies on the section of the surface with that plane through C: the section is followed from C on,
/// across the middle of A and B, until it is one step from A, and thus from B, again.
/// Vertices on the plane count as in front of it, so that a section always enters a triangle across one side and
/// leaves it across another.
class ZORCompSectionWalk
{
public:
    /// \param surface  not owned, outlives the walk
    explicit ZORCompSectionWalk(const ZORGeoSurface& surface);

    enum Outcome {
        Found,
        SurfaceEnds, // before it is a step away
        Folds,       // there is no such corner, or it makes a cell that is hardly open
    };
    /// O(triangles crossed).
    /// \param c     one step from a and b
    /// \param[out] d  the place found
    Outcome FindCorner(const ZORGeoLocationOnSurface& c, const ZORMathPoint& a, const ZORMathPoint& b,
                       double step, ZORGeoLocationOnSurface& d);

    /// Cells whose yarns are nearer to parallel than 5 degrees fold.
    static constexpr double kFoldedCosine = 0.99619469809174555; // of 5 degrees

private:
    using Weights = std::array<double, 3>;
    struct Segment
    {
        int triangle = 0; // 1 ... T
        Weights from{};
        Weights to{};
        ZORMathPoint fromPoint;
        ZORMathPoint toPoint;
        int corners[2] = {0, 0}; // of the side it leaves across, 0 ... 2
    };

    double HeightOf(int vertex) const { return Dot(m_vertices[vertex] - m_middle, m_normal); }
    static bool IsInFront(double height) { return height >= 0; }
    const ZORGeoSurface::Corners& CornersOf(int triangle) const { return m_corners[triangle - 1]; }
    int NeighborAcross(int triangle, int corner, int otherCorner) const;
    void SetEnd(Segment& segment, int corner, double height, int otherCorner, double otherHeight) const;
    void FindStarts(const ZORGeoLocationOnSurface& c);
    bool StartInside(const ZORGeoLocationOnSurface& c);
    void StartAtVertex(int triangle, int corner);
    void StartInFan(int triangle, int vertex);
    void AddStart(const Segment& segment);
    Outcome Follow(Segment segment, const ZORGeoLocationOnSurface& c, const ZORMathPoint& a,
                   const ZORMathPoint& b, ZORGeoLocationOnSurface& d) const;
    bool Advance(Segment& segment) const;
    Outcome Leave(const Segment& segment, const ZORMathPoint& c, const ZORMathPoint& a, const ZORMathPoint& b,
                  ZORGeoLocationOnSurface& d) const;

    const ZORGeoSurface& m_surface;
    const ZORMathPoint* const m_vertices;
    const ZORGeoSurface::Corners* const m_corners;
    ZORMathPoint m_middle; // of A and B, on the plane
    ZORMathVector m_normal;
    ZORMathVector m_heading; // from C to the middle, of length 1
    double m_step = 0;
    struct Start
    {
        double cosine; // with the heading
        Segment segment;
    };
    std::vector<Start> m_starts; // the best first
};
