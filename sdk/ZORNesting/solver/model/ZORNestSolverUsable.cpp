#include "ZORNestSolverUsable.h"

#include <algorithm>
#include <cmath>

namespace ZORNestSolver {

namespace {

/// A roll ends where its outline does, so nothing of it is open to the right.
void MakeSheetOfRoll(SheetKind& kind)
{
    kind.length = Positive(GetBox(kind.outline).max.x);
    kind.cost = Positive(kind.cost * kind.length); // from now on that of the sheet
}

} // namespace

double Positive(double value)
{
    return value > 0 && std::isfinite(value) ? value : 0;
}

Job MakeUsable(const Job& job)
{
    Job usable = job;
    for (double* value : {&usable.separation, &usable.frameWidth, &usable.defectSeparation,
                          &usable.maxDeviation, &usable.deviationIncrement})
        *value = Positive(*value);
    usable.stackSize = std::max(1, job.stackSize);
    for (Item& item : usable.items) {
        item.quantity = std::max(0, item.quantity);
        item.maxDeviation = Positive(item.maxDeviation);
        item.deviationIncrement = Positive(item.deviationIncrement);
        item.orientation = std::isfinite(item.orientation) ? item.orientation : 0;
        std::erase_if(item.allowedAngles, [](double angle) { return !std::isfinite(angle); });
    }
    for (SheetKind& kind : usable.kinds) {
        for (double* value : {&kind.leftTrim, &kind.rightTrim, &kind.topTrim, &kind.bottomTrim, &kind.cost})
            *value = Positive(*value);
        kind.width = Positive(kind.width);
        if (kind.IsRoll() && !kind.outline.empty())
            MakeSheetOfRoll(kind);
    }
    return usable;
}

} // namespace ZORNestSolver
