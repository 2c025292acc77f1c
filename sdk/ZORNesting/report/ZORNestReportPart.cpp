#include "ZORNestReportPart_p.h"

using ZORNestSolver::Contour;
using ZORNestSolver::Item;

std::vector<ZORNestReportPart> ZORNestMeasureParts(const ZORNestSolver::Job& job)
{
    std::vector<ZORNestReportPart> parts;
    for (const Item& item : job.items) {
        ZORNestReportPart part;
        double largest = 0;
        for (Contour contour : item.contours) {
            contour.segments.push_back({contour.start, false, true, {}}); // closed, if it was not
            const double area = GetEnclosedArea(contour);
            largest = std::max(largest, area);
            part.area -= area;
            part.cutLength += GetLength(contour);
            part.contours.push_back(std::move(contour));
        }
        part.area += 2 * largest;
        parts.push_back(std::move(part));
    }
    return parts;
}
