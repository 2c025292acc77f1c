#include "ZORNestSolverItemType.h"

#include "solver/base/ZORNestSolverAngle.h"
#include "solver/geometry/ZORNestSolverOffset.h"
#include "solver/geometry/ZORNestSolverSimplify.h"

#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr size_t kMostRings = 256; // of an item: more would leave each of them few corners
constexpr int kMostIncrements = 720;

std::vector<double> GetMiddleAngles(const Item& item, const Job& job)
{
    if (!item.allowedAngles.empty())
        return item.allowedAngles;
    std::vector<double> angles{item.orientation};
    if (item.grain90 || job.grain90)
        angles.push_back(item.orientation + kQuarterTurn);
    if (item.grain180 || job.grain180)
        angles.push_back(item.orientation + 2 * kQuarterTurn);
    if (item.grain270 || job.grain270)
        angles.push_back(item.orientation + 3 * kQuarterTurn);
    return angles;
}

void AddClass(std::vector<PoseClass>& classes, const PoseClass& added)
{
    const bool known = std::any_of(classes.begin(), classes.end(), [&](const PoseClass& other) {
        return other.mirrored == added.mirrored && std::abs(other.angle - added.angle) < 1e-9;
    });
    if (!known)
        classes.push_back(added);
}

void AddAngles(std::vector<PoseClass>& classes, bool mirrored, double middle, double deviation,
               double increment)
{
    if (increment > 0 && deviation > 0) {
        const auto steps = static_cast<int>(std::min<double>(deviation / increment + 1e-9, kMostIncrements));
        for (int i = -steps; i <= steps; ++i)
            AddClass(classes, {mirrored, NormalizeAngle(middle + i * increment), 0});
    } else {
        AddClass(classes, {mirrored, NormalizeAngle(middle), std::min(deviation, std::numbers::pi)});
    }
}

/// \param loss  becomes Coarse where so few corners take more area
Polygon Simplify(const Polygon& polygon, double largestGrowth, const Interruption& isOver, OutlineLoss& loss)
{
    constexpr double kRounding = 1e-6;
    Polygon simple = SimplifyOutwards(polygon, largestGrowth, isOver, kMostShapeCorners);
    if (GetArea(simple) > GetArea(polygon) * (1 + largestGrowth + kRounding) && loss == OutlineLoss::None)
        loss = OutlineLoss::Coarse;
    return simple;
}

/// Fills the smallest holes where there are too many, or all that is not convex where pieces are.
/// \param loss  becomes Coarse where anything is filled
Polygon FillSmallHoles(Polygon polygon, OutlineLoss& loss)
{
    if (polygon.size() <= kMostRings)
        return polygon;
    if (loss == OutlineLoss::None)
        loss = OutlineLoss::Coarse;
    if (HasPieces(polygon))
        return {GetConvexHull(polygon)};
    std::vector<std::pair<double, size_t>> holes; // the area is negative
    for (size_t i = 1; i < polygon.size(); ++i)
        holes.push_back({GetSignedArea(polygon[i]), i});
    std::sort(holes.begin(), holes.end());
    Polygon filled{std::move(polygon[0])};
    for (size_t i = 0; i + 1 < kMostRings; ++i)
        filled.push_back(std::move(polygon[holes[i].second]));
    return filled;
}

/// Simplified before it grows as well, which is quicker than afterwards alone.
Polygon MakeBody(const Polygon& outer, double margin, const Interruption& isOver, OutlineLoss& loss)
{
    if (margin <= 0)
        return Inset(Simplify(outer, kLargestGrowth, isOver, loss));
    const Polygon simple = Simplify(outer, kLargestGrowth / 2, isOver, loss);
    if (isOver())
        return {};
    return Inset(Simplify(GrowPolygon(simple, margin), kLargestGrowth / 2, isOver, loss));
}

std::vector<Circle> Moved(std::vector<Circle> circles, Point by)
{
    for (Circle& circle : circles)
        circle.centre = circle.centre + by;
    return circles;
}

/// The body, moved so that its deepest point is the origin.
void SetBody(ItemType& type, const Polygon& body, size_t poles)
{
    const std::vector<Circle> circles = FindPoles(body, poles);
    type.reference = circles.front().centre;
    const Point back = Point{} - type.reference;
    type.body = Transform({false, 0, back}).Apply(body);
    type.base = MakeShape(type.body, Moved(circles, back));
    for (size_t i = 0; i < type.body.size(); ++i) {
        const Ring& ring = type.body[i];
        if (GetSignedArea(ring) >= 0)
            continue;
        type.holes.push_back(FindPoles({Ring(ring.rbegin(), ring.rend())}, 1).front());
        type.holeRings.push_back(i);
    }
    type.smallerSide = std::min(type.base.box.GetWidth(), type.base.box.GetHeight());
}

/// How the item keeps its distance from hazards, which are grown by all of it.
void AddBareShape(ItemType& type, const Polygon& body, size_t poles)
{
    const Point back = Point{} - type.reference;
    type.base.bare = {
        MakeShape(Transform({false, 0, back}).Apply(body), Moved(FindPoles(body, poles), back))};
}

bool HasHazards(const Job& job)
{
    return std::any_of(job.kinds.begin(), job.kinds.end(),
                       [](const SheetKind& kind) { return !kind.defects.empty() || !kind.outline.empty(); });
}

/// Returns an area that the item has at least, with its arcs as they are: the largest contour less all others. The
/// area of the search is too large for a proof, since its polygon contains the outline.
/// \param outer  the polygon of the item with all its holes
double GetLeastArea(const Item& item, const Polygon& outer)
{
    const bool hasArcs = std::any_of(item.contours.begin(), item.contours.end(), HasArcs);
    if (!hasArcs && outer.size() > 1) // not the convex hull: exact, islands in holes included
        return GetArea(outer);
    double largest = 0;
    double sum = 0;
    for (const Contour& contour : item.contours) {
        const double area = GetEnclosedArea(contour);
        // A contour that crosses itself is measured with chords or by its hull, which may err to either side.
        if (area != std::abs(GetSignedArea(contour)))
            return 0;
        largest = std::max(largest, area);
        sum += area;
    }
    return std::clamp(2 * largest - sum, 0.0, GetArea(outer));
}

/// Adds what depends on the exact outline and the allowed rotations.
void Finish(ItemType& type, const Item& item, const Job& job)
{
    type.area = GetArea(type.outer);
    type.silhouette = Silhouette(item.contours);
    type.classes = GetPoseClasses(item, job);
    for (const PoseClass& poseClass : type.classes) {
        type.shapes.emplace_back();
        type.Turn(poseClass.mirrored, poseClass.angle, type.shapes.back());
    }
}

} // namespace

std::vector<PoseClass> GetPoseClasses(const Item& item, const Job& job)
{
    const double deviation = item.maxDeviation > 0 ? item.maxDeviation : std::max(job.maxDeviation, 0.0);
    const double increment = item.deviationIncrement > 0 ? item.deviationIncrement : job.deviationIncrement;
    std::vector<PoseClass> classes;
    // Flipping mirrors the grain as well: turned back by as much, it lies along the sheet again.
    const double sign = item.allowedAngles.empty() ? -1 : 1;
    for (const double angle : GetMiddleAngles(item, job)) {
        AddAngles(classes, item.mirrored, angle, deviation, increment);
        if (item.flippable && !job.singleSided)
            AddAngles(classes, !item.mirrored, sign * angle, deviation, increment);
    }
    return classes;
}

Pose ItemType::GetPose(bool mirrored, double angle) const
{
    Pose pose{mirrored, angle, {}};
    pose.position = Point{} - Transform(pose).Apply(reference);
    return pose;
}

Pose ItemType::GetPose(size_t poseClass, double angle, Point position) const
{
    Pose pose = GetPose(classes[poseClass].mirrored, angle);
    pose.position = pose.position + position;
    return pose;
}

bool PoseClass::Allows(const Pose& pose) const
{
    constexpr double kNoise = 1e-9; // radians
    const double turn = std::remainder(pose.angle - angle, kFullTurn);
    return mirrored == pose.mirrored && std::abs(turn) <= deviation + kNoise;
}

size_t ItemType::FindClass(const Pose& pose) const
{
    const auto holds = [&pose](const PoseClass& poseClass) { return poseClass.Allows(pose); };
    const auto found = std::find_if(classes.begin(), classes.end(), holds);
    return found == classes.end() ? 0 : static_cast<size_t>(found - classes.begin());
}

void ItemType::Turn(bool mirrored, double angle, Shape& turned) const
{
    TurnShape(base, mirrored, angle, turned);
    turned.extent = GetExactBox(GetPose(mirrored, angle)).Grown(margin);
}

Box ItemType::GetExactBox(const Pose& pose) const
{
    return silhouette.GetBox(pose.mirrored, pose.angle).Moved(pose.position);
}

ItemType PrepareItem(const Item& item, const Job& job, std::string& reason, const Interruption& isOver)
{
    ItemType type;
    const Polygon whole = MakeOuterPolygon(item.contours, reason, isOver, &type.loss);
    if (whole.empty() || isOver())
        return type;
    const Polygon outer = FillSmallHoles(whole, type.loss);
    type.margin = job.separation / 2;
    const Polygon body = MakeBody(outer, type.margin, isOver, type.loss);
    if (isOver())
        return type;
    SetBody(type, body, kMostPoles);
    if (type.margin > 0 && HasHazards(job) && !isOver())
        AddBareShape(type, MakeBody(outer, 0, isOver, type.loss), kMostPoles);
    if (isOver())
        return type;
    type.outer = outer;
    Finish(type, item, job);
    type.leastArea = isOver() ? 0 : GetLeastArea(item, whole);
    return type;
}

ItemType PrepareHull(const Item& item, const Job& job, std::string& reason)
{
    ItemType type;
    type.outer = MakeOuterHull(item.contours, reason, &type.loss);
    if (type.outer.empty())
        return type;
    type.margin = job.separation / 2;
    const Polygon& hull = type.outer;
    SetBody(type, Inset(type.margin > 0 ? GrowPolygon(hull, type.margin) : hull), 1);
    if (type.margin > 0 && HasHazards(job))
        AddBareShape(type, Inset(hull), 1);
    Finish(type, item, job);
    return type;
}

} // namespace ZORNestSolver
