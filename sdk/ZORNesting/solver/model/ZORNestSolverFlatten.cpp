#include "ZORNestSolverFlatten.h"

#include "solver/base/ZORNestSolverAngle.h"

namespace ZORNestSolver {

namespace {

constexpr double kLargestSagitta = 0.05;
constexpr double kRelativeSagitta = 2e-4;
constexpr double kMostCorners = 65536; // of all arcs of a part: the search could not cope with more

/// The polygon around an arc and the one in it: tangents meet in the corners and touch the arc in the contacts, one
/// more of them, from the start to the end of the sweep.
struct Steps
{
    Ring contacts;
    Ring corners;
};

/// Divides a part of an arc evenly.
void AddSteps(const Arc& arc, double from, double to, double largestStep, Steps& steps)
{
    const double angle = std::abs(arc.sweep) * (to - from);
    const double count = std::max(1.0, std::ceil(angle / largestStep));
    const double beyond = 1 / std::cos(angle / count / 2) - 1;
    for (double i = 0; i < count; ++i) {
        const Point middle = arc.Evaluate(from + (to - from) * (i + 0.5) / count);
        steps.corners.push_back(middle + (middle - arc.center) * beyond);
        steps.contacts.push_back(
            i + 1 == count && to == 1 ? arc.reached : arc.Evaluate(from + (to - from) * (i + 1) / count));
    }
}

/// Divides the arc at its extreme points along the axes, which become contacts, and evenly in between.
Steps Divide(const Arc& arc, const Fineness& fineness)
{
    Steps steps;
    steps.contacts.push_back(arc.start);
    if (arc.IsChord())
        return steps;
    const double largestStep = std::min(fineness.GetLargestStep(arc.radius), kQuarterTurn);
    const double side = arc.sweep > 0 ? 1 : -1;
    double from = 0;
    const double first = std::floor(side * arc.startAngle / kQuarterTurn + 1e-9) + 1;
    for (double i = first; i < first + 5; ++i) {
        const double to = std::min(1.0, (i * kQuarterTurn - side * arc.startAngle) / std::abs(arc.sweep));
        if (to > 1 - 1e-9)
            break;
        AddSteps(arc, from, to, largestStep, steps);
        from = to;
    }
    AddSteps(arc, from, 1, largestStep, steps);
    return steps;
}

/// Checks whether tangents reach farther beyond an arc than they may.
bool IsCoarse(const Arc& arc, const Fineness& fineness)
{
    constexpr double kRounding = 1e-6;
    const double step = std::min({fineness.GetLargestStep(arc.radius), kQuarterTurn, std::abs(arc.sweep)});
    const double sine = std::sin(step / 4);
    return arc.radius * 2 * sine * sine / std::cos(step / 2) > fineness.sagitta * (1 + kRounding);
}

template<class Function>
void ForEachArc(const std::vector<Contour>& contours, Function function)
{
    for (const Contour& contour : contours) {
        ForEachSegment(contour, [&](Point, const Segment&, const std::optional<Arc>& arc) {
            if (arc && !arc->IsChord())
                function(*arc);
        });
    }
}

} // namespace

double Fineness::GetLargestStep(double radius) const
{
    const double ratio = std::min(sagitta / radius, 0.25);
    const double step = 2 * std::atan(std::sqrt(ratio * (2 + ratio))); // of tangents that far outside
    return std::max(step, kFullTurn / Arc::kMostStepsPerTurn) * coarsening;
}

Box GetOutlineBox(const std::vector<Contour>& contours)
{
    Box box;
    const auto add = [&box](const Box& other) { box.Add(other); };
    for (const Contour& contour : contours) {
        box.Add(contour.start);
        ForEachSegment(contour, [&](Point, const Segment& segment, const std::optional<Arc>& arc) {
            box.Add(segment.end);
            if (arc)
                add(arc->GetBox());
        });
    }
    return box;
}

Fineness ChooseFineness(const std::vector<Contour>& contours, double diameter)
{
    Fineness fineness;
    fineness.sagitta = std::min(kLargestSagitta, kRelativeSagitta * diameter);
    double corners = 0;
    ForEachArc(contours,
               [&](const Arc& arc) { corners += std::abs(arc.sweep) / fineness.GetLargestStep(arc.radius); });
    fineness.coarsening = std::max(1.0, corners / kMostCorners);
    ForEachArc(contours,
               [&](const Arc& arc) { fineness.isCoarse = fineness.isCoarse || IsCoarse(arc, fineness); });
    return fineness;
}

Ring Flatten(const Contour& contour, ArcSide side, const Fineness& fineness)
{
    const bool materialLeft = (GetSignedArea(contour) > 0) == (side == ArcSide::Outer);
    Ring ring{contour.start};
    ForEachSegment(contour, [&](Point, const Segment& segment, const std::optional<Arc>& arc) {
        if (arc) {
            const Steps steps = Divide(*arc, fineness);
            const bool bulges = side != ArcSide::Chords && (arc->sweep > 0) == materialLeft;
            const Ring& points = bulges ? steps.corners : steps.contacts;
            ring.insert(ring.end(), points.begin(), points.end());
            ring.push_back(arc->reached);
        }
        ring.push_back(segment.end);
    });
    return RemoveIdlePoints(ring, 0);
}

Polygon GetCaps(const std::vector<Contour>& contours, const Fineness& fineness)
{
    Polygon caps;
    for (const Contour& contour : contours) {
        ForEachSegment(contour, [&](Point, const Segment&, const std::optional<Arc>& arc) {
            if (!arc || arc->IsChord())
                return;
            const Steps steps = Divide(*arc, fineness);
            for (size_t i = 0; i < steps.corners.size(); ++i) {
                Ring cap{steps.contacts[i], steps.corners[i], steps.contacts[i + 1]};
                if (GetSignedArea(cap) < 0)
                    std::reverse(cap.begin(), cap.end());
                caps.push_back(std::move(cap));
            }
        });
    }
    return caps;
}

} // namespace ZORNestSolver
