#include "ZORNestSolverItemType.h"

#include "ZORNestSolverOffset.h"
#include "ZORNestSolverSimplify.h"

#include <numbers>

namespace ZORNestSolver {

namespace {

constexpr double LargestGrowth = 0.001;
constexpr int MostIncrements = 720;

std::vector<double> GetMiddleAngles(const Item& item, const Job& job)
{
    if (!item.allowedAngles.empty())
        return item.allowedAngles;
    constexpr double quarter = std::numbers::pi / 2;
    std::vector<double> angles{item.orientation};
    if (item.grain90 || job.grain90)
        angles.push_back(item.orientation + quarter);
    if (item.grain180 || job.grain180)
        angles.push_back(item.orientation + 2 * quarter);
    if (item.grain270 || job.grain270)
        angles.push_back(item.orientation + 3 * quarter);
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
        const auto steps = static_cast<int>(std::min<double>(deviation / increment + 1e-9, MostIncrements));
        for (int i = -steps; i <= steps; ++i)
            AddClass(classes, {mirrored, NormalizeAngle(middle + i * increment), 0});
    } else {
        AddClass(classes, {mirrored, NormalizeAngle(middle), std::min(deviation, std::numbers::pi)});
    }
}

/// Simplified before it grows as well, which is quicker than afterwards alone.
Polygon MakeBody(const Polygon& outer, double separation)
{
    if (separation <= 0)
        return SimplifyOutwards(outer, LargestGrowth);
    return SimplifyOutwards(GrowPolygon(SimplifyOutwards(outer, LargestGrowth / 2), separation / 2),
                            LargestGrowth / 2);
}

/// The body, moved so that its deepest point is the origin.
void SetBody(ItemType& type, const Polygon& body)
{
    const std::vector<Circle> poles = FindPoles(body);
    type.reference = poles.front().centre;
    type.body = Transform({false, 0, Point{} - type.reference}).Apply(body);
    std::vector<Circle> moved = poles;
    for (Circle& circle : moved)
        circle.centre = circle.centre - type.reference;
    type.base = MakeShape(type.body, moved);
    for (size_t hole = 1; hole < type.body.size(); ++hole)
        type.holes.push_back(FindPoles({Ring(type.body[hole].rbegin(), type.body[hole].rend())}, 1).front());
    type.smallerSide = std::min(type.base.box.GetWidth(), type.base.box.GetHeight());
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

Pose ItemType::GetPose(size_t poseClass, double angle, Point position) const
{
    Pose pose{classes[poseClass].mirrored, angle, {}};
    pose.position = position - Transform(pose).Apply(reference);
    return pose;
}

size_t ItemType::FindClass(const Pose& pose) const
{
    constexpr double noise = 1e-9;
    const auto holds = [&pose](const PoseClass& poseClass) {
        const double turn = std::remainder(pose.angle - poseClass.angle, 2 * std::numbers::pi);
        return poseClass.mirrored == pose.mirrored && std::abs(turn) <= poseClass.deviation + noise;
    };
    const auto found = std::find_if(classes.begin(), classes.end(), holds);
    return found == classes.end() ? 0 : static_cast<size_t>(found - classes.begin());
}

ItemType PrepareItem(const Item& item, const Job& job, std::string& reason)
{
    ItemType type;
    type.outer = MakeOuterPolygon(item.contours, reason);
    if (type.outer.empty())
        return type;
    type.area = GetArea(type.outer);
    SetBody(type, MakeBody(type.outer, job.separation));
    type.classes = GetPoseClasses(item, job);
    for (const PoseClass& poseClass : type.classes) {
        type.shapes.emplace_back();
        TurnShape(type.base, poseClass.mirrored, poseClass.angle, type.shapes.back());
    }
    return type;
}

} // namespace ZORNestSolver
