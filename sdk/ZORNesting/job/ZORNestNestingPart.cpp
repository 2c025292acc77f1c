#include "ZORNestNestingPart_p.h"
#include "drawing/ZORNestArc_p.h"

#include <ZORNesting/ZORNestResult.h>
#include <ZORNesting/ZORNestResultReader.h>

#include <QBuffer>

#include <cmath>

namespace {

using Segment = ZORNestResultSegment;
using ZORNestSolver::Contour;

constexpr double kLargestCoordinate = 1e6; // mm: no part has a kilometre
constexpr double kLeastArea = Segment::joinTolerance * Segment::joinTolerance;

bool IsCut(const Segment& segment)
{
    switch (segment.GetLayer()) {
    case Segment::Automatic:
    case Segment::Nest:
    case Segment::Tabs:
    case Segment::AutoNibble:
    case Segment::AutoBridge:
        return segment.GetType() != Segment::Text;
    default:
        return false;
    }
}

void Append(Contour& contour, const Segment& segment, int sub)
{
    const Segment::SegmentType type = segment.GetType(sub);
    ZORNestSolver::Segment added;
    added.end = zor::nest::Flattened(segment.GetEndPoint(sub));
    added.isArc = zor::nest::IsArc(type);
    if (added.isArc) {
        added.counterClockwise = type == Segment::ArcCounterClockwise;
        added.centre = zor::nest::Flattened(segment.GetArcCenter(sub));
    }
    contour.segments.push_back(added);
}

/// The chains of what is cut.
std::vector<Contour> GetChains(const ZORNestResultShape& shape)
{
    std::vector<Contour> chains;
    for (const Segment& segment : shape.GetSegments()) {
        if (!IsCut(segment))
            continue;
        const ZORNestSolver::Point start = zor::nest::Flattened(segment.GetStartPoint());
        const int count = segment.GetNumSplineGeometry();
        if (count == 0 && segment.GetType() == Segment::Spline)
            continue;
        const bool isJoined =
            !chains.empty() && Length(chains.back().segments.back().end - start) <= Segment::joinTolerance;
        if (!isJoined) {
            chains.emplace_back();
            chains.back().start = start;
        }
        for (int sub = 0; sub < count; ++sub)
            Append(chains.back(), segment, sub);
        if (count == 0)
            Append(chains.back(), segment, -1);
    }
    return chains;
}

bool IsClosed(const Contour& contour)
{
    return Length(contour.segments.back().end - contour.start) <= Segment::joinTolerance
           && GetEnclosedArea(contour) > kLeastArea;
}

bool IsWithinReach(const ZORMathBoundingBox& box)
{
    const auto isNear = [](const ZORMathPoint& point) {
        return std::abs(point.GetX()) <= kLargestCoordinate && std::abs(point.GetY()) <= kLargestCoordinate;
    };
    return box.IsEmpty() || (isNear(box.GetLowerPoint()) && isNear(box.GetUpperPoint()));
}

/// Collects what the shapes of an item bound.
class PartMaker
{
public:
    explicit PartMaker(const ZORNestResultItem& item) { m_part.item = item; }
    ZORNestNestingPart Make();

private:
    enum Role { Outline, Hole, Island, Inner };

    Role GetRole(const ZORNestResultShape& shape) const;
    void Add(const ZORNestResultShape& shape, qsizetype index);
    void KeepIslands();
    void JoinOutlines();

    ZORNestNestingPart m_part;
    std::vector<Contour> m_outlines;
    std::vector<std::pair<qsizetype, Contour>> m_holes; // with the index of the shape
};

const ZORNestResultShape* GetFather(const ZORNestResultItem& item, const ZORNestResultShape& shape)
{
    const QList<const ZORNestResultShape*> shapes = item.GetShapes();
    const qint16 father = shape.GetRawShapeFather();
    return father >= 0 && father < shapes.size() && shapes[father] != &shape ? shapes[father] : nullptr;
}

PartMaker::Role PartMaker::GetRole(const ZORNestResultShape& shape) const
{
    const ZORNestResultShape* const father = GetFather(m_part.item, shape);
    if (shape.GetShapeHole() != 0)
        return Hole;
    if (!father)
        return Outline;
    return father->GetShapeHole() != 0 ? Island : Inner;
}

void PartMaker::Add(const ZORNestResultShape& shape, qsizetype index)
{
    if (!IsWithinReach(shape.GetBoundingBox())) {
        m_part.failure = ZORNestNestingPart::tr("reaches beyond 1 km");
        return;
    }
    const Role role = GetRole(shape);
    for (const Contour& chain : GetChains(shape)) {
        m_part.cut.contours.push_back(chain);
        m_part.cut.cutLength += GetLength(chain);
        if (!IsClosed(chain))
            continue;
        const double area = GetEnclosedArea(chain);
        if (role == Outline)
            m_outlines.push_back(chain);
        if (role == Hole)
            m_holes.emplace_back(index, chain);
        m_part.cut.area += role == Hole ? -area : role == Inner ? 0 : area;
    }
}

/// Holes with islands are taken as filled.
void PartMaker::KeepIslands()
{
    const QList<const ZORNestResultShape*> shapes = m_part.item.GetShapes();
    for (const ZORNestResultShape* shape : shapes) {
        if (GetRole(*shape) != Island)
            continue;
        std::erase_if(m_holes, [&](const auto& hole) { return hole.first == shape->GetRawShapeFather(); });
    }
}

void PartMaker::JoinOutlines()
{
    if (m_outlines.size() < 2)
        return;
    ZORNestSolver::Polygon all;
    for (const Contour& outline : m_outlines) {
        std::string reason;
        for (const ZORNestSolver::Ring& ring : ZORNestSolver::MakeOuterPolygon({outline}, reason))
            all.push_back(ring);
    }
    m_part.remark =
        ZORNestNestingPart::tr("consists of %1 outlines, which are nested as one within their hull")
            .arg(m_outlines.size());
    m_outlines = {ZORNestSolver::MakeContour(GetConvexHull(all))};
}

ZORNestNestingPart PartMaker::Make()
{
    const QList<const ZORNestResultShape*> shapes = m_part.item.GetShapes();
    for (qsizetype i = 0; i < shapes.size() && m_part.failure.isEmpty(); ++i)
        Add(*shapes[i], i);
    if (!m_part.failure.isEmpty())
        return m_part;
    // A file whose only closed outlines call themselves holes still has a part.
    if (m_outlines.empty() && !m_holes.empty()) {
        m_outlines.push_back(m_holes.front().second);
        m_holes.erase(m_holes.begin());
    }
    if (m_outlines.empty()) {
        m_part.failure = ZORNestNestingPart::tr("has no closed outline");
        return m_part;
    }
    m_part.cut.area = std::abs(m_part.cut.area);
    KeepIslands();
    JoinOutlines();
    m_part.contours = m_outlines;
    for (const auto& [index, contour] : m_holes)
        m_part.contours.push_back(contour);
    return m_part;
}

} // namespace

QList<ZORNestNestingPart> ZORNestReadParts(const QString& name, const QByteArray& contents)
{
    QByteArray bytes = contents;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    ZORNestResultReader reader(&buffer);
    const ZORNestResult result = reader.Read(nullptr);
    QList<ZORNestNestingPart> parts;
    for (const ZORNestResultItem* item : result.GetItems())
        parts.append(PartMaker(*item).Make());
    if (parts.isEmpty()) {
        ZORNestNestingPart none;
        none.item = ZORNestResultItem(name);
        none.failure = result.IsValid() ? ZORNestNestingPart::tr("file holds no part") : reader.GetFailure();
        parts.append(none);
    }
    return parts;
}
