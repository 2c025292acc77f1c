#include "NestingTest.h"

#include <ZORNesting/ZORNestResultItem.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kFlatness = 0.01;   // of arcs
constexpr double kAllowance = 0.025; // arcs are chords here, on both sides

using Chains = QList<ZORMathSetOfPoints>;

Chains GetOutlines(const ZORNestResultItem& item)
{
    Chains chains;
    for (const ZORNestResultShape* shape : item.GetShapes()) {
        ZORMathSetOfPoints chain;
        for (const ZORNestResultSegment& segment : shape->GetSegments()) {
            if (segment.GetLayer() == ZORNestResultSegment::Nest)
                chain.append(segment.GetPoints(kFlatness));
        }
        if (!chain.isEmpty())
            chains.append(chain);
    }
    return chains;
}

double GetDistance(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b)
{
    const ZORMathVector along = b - a;
    const double square = Dot(along, along);
    const double t = square > 0 ? std::clamp(Dot(p - a, along) / square, 0.0, 1.0) : 0;
    return p.DistanceTo(a + t * along);
}

double Side(const ZORMathPoint& a, const ZORMathPoint& b, const ZORMathPoint& p)
{
    return (b.GetX() - a.GetX()) * (p.GetY() - a.GetY()) - (b.GetY() - a.GetY()) * (p.GetX() - a.GetX());
}

double GetDistance(const ZORMathPoint& a, const ZORMathPoint& b, const ZORMathPoint& c, const ZORMathPoint& d)
{
    if (Side(a, b, c) * Side(a, b, d) < 0 && Side(c, d, a) * Side(c, d, b) < 0)
        return -1; // they cross
    return std::min(std::min(GetDistance(a, c, d), GetDistance(b, c, d)),
                    std::min(GetDistance(c, a, b), GetDistance(d, a, b)));
}

/// Even-odd, so that holes are outside.
bool IsInside(const ZORMathPoint& point, const Chains& chains)
{
    bool isInside = false;
    for (const ZORMathSetOfPoints& chain : chains) {
        for (qsizetype i = 0; i + 1 < chain.size(); ++i) {
            const ZORMathPoint& a = chain[i];
            const ZORMathPoint& b = chain[i + 1];
            if ((a.GetY() > point.GetY()) != (b.GetY() > point.GetY())
                && point.GetX()
                       < a.GetX() + (point.GetY() - a.GetY()) / (b.GetY() - a.GetY()) * (b.GetX() - a.GetX()))
                isInside = !isInside;
        }
    }
    return isInside;
}

/// The least distance of two edges, as far as it is less than \a enough.
double GetDistance(const Chains& first, const Chains& second, double enough)
{
    double least = enough;
    for (const ZORMathSetOfPoints& a : first) {
        for (const ZORMathSetOfPoints& b : second) {
            for (qsizetype i = 0; i + 1 < a.size(); ++i) {
                for (qsizetype j = 0; j + 1 < b.size(); ++j) {
                    const double length = a[i].DistanceTo(a[i + 1]) + b[j].DistanceTo(b[j + 1]);
                    if (a[i].DistanceTo(b[j]) - length > least)
                        continue;
                    least = std::min(least, GetDistance(a[i], a[i + 1], b[j], b[j + 1]));
                }
            }
        }
    }
    return least;
}

} // namespace

QStringList NestingTest::GetNames(const ZORNestNestingResponse* response)
{
    QStringList names;
    for (const ZORNestResult& sheet : ReadSheets(response)) {
        for (const ZORNestResultItem* item : sheet.GetItems())
            names.append(item->GetName());
    }
    names.sort();
    return names;
}

QStringList NestingTest::FindFaults(const ZORNestResult& sheet, double separation, double frame)
{
    QStringList faults;
    QList<Chains> outlines;
    for (const ZORNestResultItem* item : sheet.GetItems())
        outlines.append(GetOutlines(*item));
    const ZORMathPoint lower = sheet.GetSheet().GetLowerPoint();
    const ZORMathPoint upper = sheet.GetSheet().GetUpperPoint();
    const double edge = frame - kAllowance;
    for (qsizetype i = 0; i < outlines.size(); ++i) {
        for (const ZORMathSetOfPoints& chain : outlines[i]) {
            const bool isWithin = std::all_of(chain.begin(), chain.end(), [&](const ZORMathPoint& p) {
                return p.GetX() >= lower.GetX() + edge && p.GetY() >= lower.GetY() + edge
                       && p.GetX() <= upper.GetX() - edge && p.GetY() <= upper.GetY() - edge;
            });
            if (!isWithin)
                faults.append(QStringLiteral("item %1 is not within the sheet").arg(i));
        }
        for (qsizetype j = 0; j < i; ++j) {
            const double distance = GetDistance(outlines[i], outlines[j], separation + 1);
            if (distance < separation - kAllowance)
                faults.append(QStringLiteral("items %1 and %2 are %3 apart")
                                  .arg(QString::number(j), QString::number(i), QString::number(distance)));
            if (IsInside(outlines[i][0][0], outlines[j]) || IsInside(outlines[j][0][0], outlines[i]))
                faults.append(
                    QStringLiteral("items %1 and %2 overlap").arg(QString::number(j), QString::number(i)));
        }
    }
    return faults;
}
