#include "ZORNestSolverProblem.h"

namespace ZORNestSolver {

Box GetRoom(const Box& window, const Shape& shape)
{
    Box room{window.min - shape.extent.min, window.max - shape.extent.max};
    const auto close = [](double& low, double& high) { // an exact fit, but for rounding
        if (low > high && low - high <= kFitTolerance)
            low = high = (low + high) / 2;
    };
    close(room.min.x, room.max.x);
    close(room.min.y, room.max.y);
    return room;
}

std::vector<AngleRange> FindFittingAngles(const ItemType& type, uint32_t poseClass, const Box& window)
{
    const PoseClass& allowed = type.classes[poseClass];
    return type.silhouette.FindFitting(allowed.mirrored, allowed.angle, allowed.deviation,
                                       window.GetWidth() - 2 * type.margin,
                                       window.GetHeight() - 2 * type.margin);
}

std::optional<Stand> FindFitting(const ItemType& type, const Box& window)
{
    for (uint32_t c = 0; c < type.classes.size(); ++c) {
        const PoseClass& allowed = type.classes[c];
        const Box room = GetRoom(window, type.shapes[c]);
        if (!room.IsEmpty())
            return Stand{room.min, allowed.angle, c, 0};
        if (!allowed.IsContinuous())
            continue;
        const std::vector<AngleRange> ranges = FindFittingAngles(type, c, window);
        if (ranges.empty())
            continue;
        double angle = ranges.front().from; // the one nearest to the middle
        for (const AngleRange& range : ranges)
            for (const double end : {range.from, range.to})
                if (std::abs(end - allowed.angle) < std::abs(angle - allowed.angle))
                    angle = end;
        Shape turned;
        type.Turn(allowed.mirrored, angle, turned);
        return Stand{GetRoom(window, turned).min, angle, c, 0};
    }
    return std::nullopt;
}

bool FitsAtMiddle(const ItemType& type, const Box& window)
{
    return std::any_of(type.shapes.begin(), type.shapes.end(),
                       [&window](const Shape& shape) { return !GetRoom(window, shape).IsEmpty(); });
}

} // namespace ZORNestSolver
