#include "ZORNestArc_p.h"
#include "ZORNestShapeMeasures_p.h"

#include <cmath>

namespace {

using Segment = ZORNestResultSegment;
using ZORNestSolver::GetAngleMinusSine;

/// A number with the moment of what it measures about a fixed point; sums up.
struct Amount
{
    double size = 0;
    double momentX = 0;
    double momentY = 0;

    void Add(double amount, double x, double y)
    {
        size += amount;
        momentX += amount * x;
        momentY += amount * y;
    }
    void Add(const Amount& other, double factor)
    {
        size += factor * other.size;
        momentX += factor * other.momentX;
        momentY += factor * other.momentY;
    }
};

/// Distance of the centre of mass of a circle's segment from its chord, in radii, for half the angle.
double SegmentCentroid(double half)
{
    const double square = half * half;
    if (std::abs(half) < 0.025)
        return square * (0.2 - 13.0 / 1050 * square);
    const double sine = std::sin(half);
    return 4 * sine * sine * sine / (3 * GetAngleMinusSine(2 * half)) - std::cos(half);
}

class Measuring
{
public:
    void AddLine(const ZORMathPoint& start, const ZORMathPoint& end);
    void AddArc(const ZORNestArc& arc);
    ZORNestShapeMeasures GetMeasures();

private:
    void BeginPart(const ZORMathPoint& start, const ZORMathPoint& end);
    void MeasureLine(const ZORMathPoint& start, const ZORMathPoint& end);
    void EndChain();
    double X(const ZORMathPoint& point) const { return point.GetX() - m_origin.GetX(); }
    double Y(const ZORMathPoint& point) const { return point.GetY() - m_origin.GetY(); }

    bool m_isEmpty = true;
    ZORMathPoint m_origin; // moments are taken about it: the start of the outline
    ZORMathPoint m_chainStart;
    ZORMathPoint m_chainEnd;
    Amount m_chainArea;
    Amount m_area;
    Amount m_length;
};

void Measuring::BeginPart(const ZORMathPoint& start, const ZORMathPoint& end)
{
    if (m_isEmpty) {
        m_origin = m_chainStart = start;
        m_isEmpty = false;
    } else if (m_chainEnd.DistanceTo(start) > Segment::joinTolerance) {
        EndChain();
        m_chainStart = start;
    }
    m_chainEnd = end;
}

void Measuring::AddLine(const ZORMathPoint& start, const ZORMathPoint& end)
{
    BeginPart(start, end);
    MeasureLine(start, end);
}

void Measuring::MeasureLine(const ZORMathPoint& start, const ZORMathPoint& end)
{
    const double x = (X(start) + X(end)) / 2;
    const double y = (Y(start) + Y(end)) / 2;
    m_length.Add(std::hypot(X(end) - X(start), Y(end) - Y(start)), x, y);
    // The triangle with the origin of the moments.
    m_chainArea.Add((X(start) * Y(end) - Y(start) * X(end)) / 2, x * 2 / 3, y * 2 / 3);
}

void Measuring::AddArc(const ZORNestArc& arc)
{
    BeginPart(arc.start, arc.end);
    const ZORMathPoint last = arc.GetEndOnCircle();
    const double radius = arc.flat.radius;
    const double half = arc.flat.sweep / 2;
    const double middle = arc.flat.startAngle + half;
    const double chordX = (X(arc.start) + X(last)) / 2;
    const double chordY = (Y(arc.start) + Y(last)) / 2;

    if (!arc.flat.IsChord()) {
        const double towards = radius * (std::sin(half) / half - std::cos(half));
        m_length.Add(radius * std::abs(arc.flat.sweep), chordX + towards * std::cos(middle),
                     chordY + towards * std::sin(middle));
    }
    // The triangle over the chord, and the segment of the circle between chord and arc.
    m_chainArea.Add((X(arc.start) * Y(last) - Y(arc.start) * X(last)) / 2, chordX * 2 / 3, chordY * 2 / 3);
    if (!arc.flat.IsChord()) {
        const double outwards = radius * SegmentCentroid(half);
        m_chainArea.Add(radius * radius / 2 * GetAngleMinusSine(arc.flat.sweep),
                        chordX + outwards * std::cos(middle), chordY + outwards * std::sin(middle));
    }
    if (arc.HasTail())
        MeasureLine(last, arc.end);
}

void Measuring::EndChain()
{
    if (m_chainStart.DistanceTo(m_chainEnd) <= Segment::joinTolerance)
        m_area.Add(m_chainArea, m_chainArea.size < 0 ? -1 : 1);
    m_chainArea = {};
}

ZORNestShapeMeasures Measuring::GetMeasures()
{
    EndChain();
    ZORNestShapeMeasures measures;
    measures.area = m_area.size;
    measures.perimeter = m_length.size;
    // What rounding leaves of the area of a chain that runs back on itself is no area.
    const bool hasArea = m_area.size > 1e-12 * m_length.size * m_length.size;
    const Amount& amount = hasArea ? m_area : m_length;
    if (amount.size > 0) {
        measures.centerOfMass = {m_origin.GetX() + amount.momentX / amount.size,
                                 m_origin.GetY() + amount.momentY / amount.size, 0};
    }
    return measures;
}

void AddArcTo(ZORMathBoundingBox& box, const ZORNestArc& arc)
{
    box.Add(arc.start);
    box.Add(arc.end);
    const ZORNestSolver::Box drawn = arc.flat.GetBox();
    for (const ZORNestSolver::Point& corner : {drawn.min, drawn.max})
        box.Add(ZORMathPoint(corner.x, corner.y, arc.start.GetZ()));
}

/// \param sub  a part of a spline, or -1 for the whole
/// \param measuring  null for what is not of the outline
void AddPart(const Segment& segment, int sub, ZORMathBoundingBox& box, Measuring* measuring)
{
    const Segment::SegmentType type = segment.GetType(sub);
    const ZORMathPoint start = segment.GetStartPoint(sub);
    const ZORMathPoint end = segment.GetEndPoint(sub);
    if (zor::nest::IsArc(type)) {
        const ZORNestArc arc(type, start, end, segment.GetArcCenter(sub));
        AddArcTo(box, arc);
        if (measuring)
            measuring->AddArc(arc);
        return;
    }
    box.Add(start);
    box.Add(end);
    if (measuring)
        measuring->AddLine(start, end);
}

bool IsOfOutline(const Segment& segment)
{
    const Segment::SegmentType type = segment.GetType();
    return (type == Segment::Line || type == Segment::Spline || zor::nest::IsArc(type))
           && segment.GetLayer() != Segment::LeadIn && segment.GetLayer() != Segment::LeadOut;
}

} // namespace

ZORNestShapeMeasures ZORNestShapeMeasures::Of(const QList<ZORNestResultSegment>& segments)
{
    Measuring measuring;
    ZORMathBoundingBox box;
    for (const Segment& segment : segments) {
        Measuring* const ofOutline = IsOfOutline(segment) ? &measuring : nullptr;
        if (segment.GetType() != Segment::Spline)
            AddPart(segment, -1, box, ofOutline);
        for (int i = 0; i < segment.GetNumSplineGeometry(); ++i)
            AddPart(segment, i, box, ofOutline);
    }
    ZORNestShapeMeasures measures = measuring.GetMeasures();
    measures.box = box;
    if (measures.perimeter == 0.0)
        measures.centerOfMass = {box.GetCenter().GetX(), box.GetCenter().GetY(), 0};
    return measures;
}
