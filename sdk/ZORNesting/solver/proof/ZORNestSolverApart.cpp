#include "ZORNestSolverApart.h"

#include "ZORNestSolverExactApart.h"

#include <optional>

namespace ZORNestSolver {

namespace {

using Exact::Shape;

/// Checks whether a piece of a polygon may lie in a region, of which its edges do not run deep inside: then a piece
/// with a corner outside does not.
bool MayHoldPiece(const Shape& region, const Polygon& polygon)
{
    const Box box = region.GetBox().Grown(kApartTolerance);
    const auto isOutside = [&](Point p) {
        return !box.Contains(p)
               || (!region.IsInside(p) && region.GetDistanceToPieces(p) > 2 * kApartTolerance);
    };
    return std::any_of(polygon.begin(), polygon.end(), [&](const Ring& ring) {
        return std::none_of(ring.begin(), ring.end(), isOutside) && GetSignedArea(ring) > 0;
    });
}

/// Measures the distances between polygons, whose shapes are made when they are needed first.
class DistanceTest
{
public:
    DistanceTest(const std::vector<Polygon>& polygons, double distance)
        : m_polygons(polygons)
        , m_distance(distance)
        , m_shapes(polygons.size())
    {
    }
    bool AreApart(size_t a, size_t b)
    {
        Shape& first = GetShape(a);
        Shape& second = GetShape(b);
        if (!Exact::AreApart(first, second, m_distance))
            return false;
        return m_distance > kApartTolerance || (!HoldsPiece(first, b) && !HoldsPiece(second, a));
    }

private:
    Shape& GetShape(size_t i)
    {
        if (!m_shapes[i])
            m_shapes[i].emplace(m_polygons[i]);
        return *m_shapes[i];
    }
    /// Where no edges run deep, only points inside show that a piece lies in the other polygon.
    bool HoldsPiece(const Shape& region, size_t i)
    {
        Shape& shape = GetShape(i);
        if (!MayHoldPiece(region, m_polygons[i]))
            return false;
        if (shape.GetProbes().empty())
            shape.FindProbes();
        return !Exact::AreApart(region, shape, m_distance);
    }

    const std::vector<Polygon>& m_polygons;
    double m_distance;
    std::vector<std::optional<Shape>> m_shapes;
};

/// Calls a function with the places of two polygons whose boxes come that near, until it returns false; a
/// sweep along x. Returns whether it never did.
template<class Function>
bool ForEachNearPair(const std::vector<Polygon>& polygons, double distance, Function function)
{
    std::vector<std::pair<Box, size_t>> sorted;
    for (size_t i = 0; i < polygons.size(); ++i)
        sorted.push_back({GetBox(polygons[i]).Grown(distance / 2), i});
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& a, const auto& b) { return a.first.min.x < b.first.min.x; });
    for (size_t a = 0; a < sorted.size(); ++a)
        for (size_t b = a + 1; b < sorted.size() && sorted[b].first.min.x <= sorted[a].first.max.x; ++b)
            if (sorted[a].first.Overlaps(sorted[b].first) && !function(sorted[a].second, sorted[b].second))
                return false;
    return true;
}

} // namespace

bool AreApart(const Polygon& a, const Polygon& b, double distance)
{
    const std::vector<Polygon> both{a, b};
    return !GetBox(a).Grown(distance).Overlaps(GetBox(b)) || DistanceTest(both, distance).AreApart(0, 1);
}

bool AreAllApart(const std::vector<Polygon>& polygons, double distance)
{
    DistanceTest test(polygons, distance);
    return ForEachNearPair(polygons, distance, [&test](size_t i, size_t j) { return test.AreApart(i, j); });
}

std::vector<size_t> FindAllApart(const std::vector<Polygon>& polygons, double distance)
{
    DistanceTest test(polygons, distance);
    std::vector<std::pair<size_t, size_t>> tooNear; // the later one first
    ForEachNearPair(polygons, distance, [&](size_t i, size_t j) {
        if (!test.AreApart(i, j))
            tooNear.push_back({std::max(i, j), std::min(i, j)});
        return true;
    });
    std::vector<bool> isTaken(polygons.size(), true);
    std::sort(tooNear.begin(), tooNear.end());
    for (const auto& [later, earlier] : tooNear)
        if (isTaken[earlier])
            isTaken[later] = false;
    std::vector<size_t> taken;
    for (size_t i = 0; i < polygons.size(); ++i)
        if (isTaken[i])
            taken.push_back(i);
    return taken;
}

} // namespace ZORNestSolver
