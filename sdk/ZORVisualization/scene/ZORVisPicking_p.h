// Finds what lies under a pixel.

#pragma once

#include "ZORVisFrame_p.h"

#include <ZORVisualization/ZORVisPickResult.h>

#include <QPointF>

#include <algorithm>
#include <memory>
#include <vector>

class ZORGeoSurface;
class ZORMathVector;
struct ZORVisLineData;
struct ZORVisMeshData;
struct ZORVisPointData;

/// Boxes around runs of points, to leave out most of the points of a set. A run shares its last point with
/// the next one, so that the segments of a polyline have a run each.
class ZORVisPointPicker
{
public:
    explicit ZORVisPointPicker(const QList<ZORMathPoint>& points);

    /// Calls \a visit(first, last) for the points of every run that may come within \a tolerance pixels.
    template<class Function>
    void ForEachRun(const ZORVisFrame& frame, const QPointF& pixel, double tolerance, Function visit) const
    {
        for (size_t run = 0; run < m_boxes.size(); ++run) {
            if (MayTouch(m_boxes[run], frame, pixel, tolerance)) {
                const auto first = qsizetype(run) * kRunLength;
                visit(first, std::min(first + kRunLength, m_numPoints - 1));
            }
        }
    }

    static bool MayTouch(const ZORMathBoundingBox& box, const ZORVisFrame& frame, const QPointF& pixel,
                         double tolerance);

private:
    static constexpr qsizetype kRunLength = 64; // even: no pair of points is divided

    std::vector<ZORMathBoundingBox> m_boxes;
    qsizetype m_numPoints;
};

/// Search tree over the triangles of a mesh, used where the surface with its own tree is gone or never was.
class ZORVisMeshPicker
{
public:
    explicit ZORVisMeshPicker(const ZORVisMeshData& mesh);
    ~ZORVisMeshPicker();

    /// \param[out] place  unchanged when nothing is hit
    /// \return 1 ... number of triangles, of the first one on the ray; 0 when nothing is hit
    static int Intersect(const ZORVisMeshData& mesh, const ZORMathPoint& origin,
                         const ZORMathVector& direction, ZORMathPoint& place);

private:
    std::unique_ptr<ZORGeoSurface> m_surface; // of the usable triangles only
    std::vector<int> m_numbers;               // of its triangles in the mesh, from 1
};

/// Collects what comes near a pixel and decides what is meant.
class ZORVisPicking
{
public:
    /// \param tolerance  for points and lines, pixels
    ZORVisPicking(const ZORVisFrame& frame, const QPointF& pixel, double tolerance);

    void Add(const ZORVisDrawObject& object);
    ZORVisPickResult GetResult() const;

private:
    enum Rank { Point, Line, Surface };
    struct Candidate
    {
        Rank rank = Surface;
        bool hides = true; // what lies behind it; edges only do not
        double pixels = 0; // distance on the screen
        double depth = 0;  // behind the target, millimetres
        ZORVisPickResult result;
    };
    void AddPoints(const ZORVisPointData& data);
    void AddLines(const ZORVisLineData& data);
    void AddSegment(const ZORMathPoint& from, const ZORMathPoint& to);
    void AddMesh(const ZORVisMeshData& mesh);
    void AddCandidate(Rank rank, const ZORMathPoint& point, int triangle);

    const ZORVisFrame& m_frame;
    const QPointF m_pixel;
    const double m_tolerance;
    const ZORVisDrawObject* m_object = nullptr; // not owned; being added
    bool m_isWireframe = false;                 // the item being added
    std::vector<Candidate> m_candidates;
};
