#include "ZORNestDrawing_p.h"
#include "solver/base/ZORNestSolverAngle.h"

#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkContext.h>

#include <algorithm>
#include <array>

using ZORNestSolver::kFullTurn;

namespace {

constexpr int kMaximumDegree = ZORNestNurbs::kMaximumDegree;

ZORNestPlanePoint GetConicPoint(const ZORNestConic& conic, double parameter)
{
    return conic.center + std::cos(parameter) * conic.u + std::sin(parameter) * conic.v;
}

// Place and derivative by de Boor's algorithm in homogeneous coordinates; the derivative from its last step.
ZORNestArcFit::Place Evaluate(const ZORNestNurbs& nurbs, double parameter)
{
    const int degree = nurbs.degree;
    const auto first = nurbs.knots.cbegin() + degree;
    const auto last = nurbs.knots.cbegin() + nurbs.poles.size();
    const auto found = std::upper_bound(first, last, parameter);
    int span = int(found - nurbs.knots.cbegin()) - 1;
    while (span > degree && !(nurbs.knots[span] < nurbs.knots[span + 1]))
        --span;

    struct Pole
    {
        double x, y, w;
    };
    std::array<Pole, kMaximumDegree + 1> poles{};
    for (int i = 0; i <= degree; ++i) {
        const int index = span - degree + i;
        const double weight = nurbs.weights.isEmpty() ? 1 : nurbs.weights[index];
        poles[i] = {weight * nurbs.poles[index].x, weight * nurbs.poles[index].y, weight};
    }
    Pole slope{};
    for (int level = 1; level <= degree; ++level) {
        if (level == degree) {
            const double width = nurbs.knots[span + 1] - nurbs.knots[span];
            const double factor = width > 0 ? degree / width : 0;
            slope = {factor * (poles[degree].x - poles[degree - 1].x),
                     factor * (poles[degree].y - poles[degree - 1].y),
                     factor * (poles[degree].w - poles[degree - 1].w)};
        }
        for (int i = degree; i >= level; --i) {
            const double low = nurbs.knots[span - degree + i];
            const double high = nurbs.knots[span + 1 + i - level];
            const double a = high > low ? (parameter - low) / (high - low) : 0;
            const Pole& p = poles[i - 1];
            Pole& q = poles[i];
            q = {(1 - a) * p.x + a * q.x, (1 - a) * p.y + a * q.y, (1 - a) * p.w + a * q.w};
        }
    }
    const Pole& pole = poles[degree];
    const ZORNestPlanePoint point{pole.x / pole.w, pole.y / pole.w};
    return {point, {(slope.x - slope.w * point.x) / pole.w, (slope.y - slope.w * point.y) / pole.w}};
}

} // namespace

ZORNestDrawing::ZORNestDrawing(double tolerance, const ZORWorkContext& context)
    : m_tolerance(tolerance)
    , m_context(context)
{
}

void ZORNestDrawing::BeginChain(const ZORNestLook& look, const ZORNestPlaneMap& map)
{
    m_chain.curves.clear();
    m_look = look;
    m_map = map;
    m_isBad = false;
    m_isTooLong = false;
}

void ZORNestDrawing::CountCurve()
{
    if (++m_curves > kMaximumCurves) {
        throw ZORSysException(tr("drawing has more than %1 curves").arg(kMaximumCurves));
    }
    if (m_curves % 256 == 0)
        m_context.ThrowIfCanceled();
}

/// Counts a place on a curve. One that is out of range ends the fitting at once: the curve will be skipped.
ZORNestArcFit::Place ZORNestDrawing::CheckPlace(const ZORNestArcFit::Place& place)
{
    if (++m_samples > kMaximumSamples) {
        throw ZORSysException(tr("curves of the drawing need too many arcs for the tolerance"));
    }
    if (m_samples % 4096 == 0)
        m_context.ThrowIfCanceled();
    const bool isInside =
        std::abs(place.point.x) <= kMaximumCoordinate && std::abs(place.point.y) <= kMaximumCoordinate;
    return isInside ? place : ZORNestArcFit::Place{{NAN, NAN}, {}};
}

/// Returns the distance that a curve of that size may keep from its arcs: nobody sees a hundred-millionth of it.
double ZORNestDrawing::GetTolerance(double size) const
{
    constexpr double kInvisible = 1e-8;
    return std::max(m_tolerance, kInvisible * std::min(size, kMaximumCoordinate));
}

void ZORNestDrawing::Append(QList<ZORNestPiece> pieces, CurveForm form)
{
    CountCurve();
    for (ZORNestPiece& piece : pieces) {
        const ZORNestPlaneBox box = piece.GetBox();
        const bool isInside = box.min.x >= -kMaximumCoordinate && box.min.y >= -kMaximumCoordinate
                              && box.max.x <= kMaximumCoordinate && box.max.y <= kMaximumCoordinate;
        if (!isInside || !(piece.IsLine() || piece.GetRadius() > 0))
            m_isBad = true;
    }
    m_chain.curves.append({std::move(pieces), form == CurveForm::Spline, m_look});
}

void ZORNestDrawing::AddLine(ZORNestPlanePoint start, ZORNestPlanePoint end)
{
    AddBulge(start, end, 0);
}

void ZORNestDrawing::AddBulge(ZORNestPlanePoint start, ZORNestPlanePoint end, double bulge)
{
    if (start == end)
        return;
    const ZORNestPiece piece = ZORNestArcFit::MakeBulgeArc(start, end, bulge);
    const ZORNestPlanePoint mappedStart = m_map.Map(start);
    const ZORNestPlanePoint mappedEnd = m_map.Map(end);
    if (piece.IsLine()) {
        if (mappedStart != mappedEnd)
            Append({{mappedStart, mappedEnd, {}, 0}}, CurveForm::Simple);
        return;
    }
    const ZORNestPlanePoint u = start - piece.center;
    const double sweep = 4 * std::atan(bulge);
    AddConic({piece.center, u, GetNormal(u), 0, sweep}, &start, &end);
}

void ZORNestDrawing::AddConic(const ZORNestConic& conic, const ZORNestPlanePoint* start,
                              const ZORNestPlanePoint* end)
{
    const ZORNestConic mapped{m_map.Map(conic.center), m_map.MapVector(conic.u), m_map.MapVector(conic.v),
                              conic.from, conic.to};
    const bool isClosed = std::abs(mapped.to - mapped.from) >= kFullTurn * (1 - 1e-14);
    const ZORNestPlanePoint first = start ? m_map.Map(*start) : GetConicPoint(mapped, mapped.from);
    const ZORNestPlanePoint last = end        ? m_map.Map(*end)
                                   : isClosed ? first
                                              : GetConicPoint(mapped, mapped.to);
    if (ZORNestPlaneMap{mapped.u, mapped.v, {}}.IsSimilarity()) {
        const bool isLeft = (Cross(mapped.u, mapped.v) > 0) == (mapped.to > mapped.from);
        if (first != last || isClosed)
            Append({{first, last, mapped.center, isLeft ? 1 : -1}}, CurveForm::Simple);
        return;
    }
    // By quarters: an ellipse is a smooth curve, but its samples have to see both of its ends.
    QList<double> breaks;
    const int quarters = int(std::ceil(std::abs(mapped.to - mapped.from) / (kFullTurn / 4)));
    for (int i = 0; i <= quarters; ++i)
        breaks.append(mapped.from + (mapped.to - mapped.from) * i / std::max(1, quarters));
    const double direction = mapped.to > mapped.from ? 1 : -1;
    const auto curve = [&](double t) {
        return CheckPlace(
            {GetConicPoint(mapped, t), direction * (std::cos(t) * mapped.v - std::sin(t) * mapped.u)});
    };
    const double size =
        std::min(1.0, std::abs(mapped.to - mapped.from)) * (Length(mapped.u) + Length(mapped.v));
    ZORNestArcFit::Fitted fitted = ZORNestArcFit::Fit(curve, breaks, GetTolerance(size));
    if (!fitted.pieces.isEmpty()) {
        fitted.pieces.first().start = first;
        fitted.pieces.last().end = last;
    }
    AppendFitted(fitted);
}

void ZORNestDrawing::AppendFitted(const ZORNestArcFit::Fitted& fitted)
{
    m_isTooLong = m_isTooLong || fitted.isTooLong;
    if (fitted.pieces.isEmpty())
        m_isBad = true;
    else
        Append(fitted.pieces, fitted.pieces.size() > 1 ? CurveForm::Spline : CurveForm::Simple);
}

void ZORNestDrawing::AddBezier(const QList<ZORNestPlanePoint>& poles)
{
    const int degree = int(poles.size()) - 1;
    AddNurbs({degree, QList<double>(degree + 1, 0) + QList<double>(degree + 1, 1), poles, {}});
}

void ZORNestDrawing::AddNurbs(const ZORNestNurbs& nurbs)
{
    ZORNestNurbs mapped = nurbs;
    for (ZORNestPlanePoint& pole : mapped.poles)
        pole = m_map.Map(pole);
    if (mapped.degree == 1 && mapped.weights.isEmpty()) {
        for (qsizetype i = 1; i < mapped.poles.size(); ++i) {
            if (mapped.poles[i - 1] != mapped.poles[i])
                Append({{mapped.poles[i - 1], mapped.poles[i], {}, 0}}, CurveForm::Simple);
        }
        return;
    }
    QList<double> breaks;
    for (qsizetype i = mapped.degree; i <= mapped.poles.size(); ++i) {
        if (breaks.isEmpty() || mapped.knots[i] > breaks.constLast())
            breaks.append(mapped.knots[i]);
    }
    if (std::all_of(mapped.poles.cbegin(), mapped.poles.cend(),
                    [&](ZORNestPlanePoint pole) { return pole == mapped.poles.constFirst(); })) {
        return; // no length: leaves the chain as it is
    }
    ZORNestPlaneBox box;
    for (const ZORNestPlanePoint pole : std::as_const(mapped.poles))
        box.Add(pole);
    const double size = Length(ZORNestPlanePoint{box.GetWidth(), box.GetHeight()});
    const auto curve = [&](double t) { return CheckPlace(Evaluate(mapped, t)); };
    AppendFitted(ZORNestArcFit::Fit(curve, breaks, GetTolerance(size)));
}

bool ZORNestDrawing::EndChain(const QString& what)
{
    if (m_isBad || m_chain.curves.isEmpty()) {
        Skip(m_isTooLong ? tr("curve that needs too many arcs") : what);
        return false;
    }
    m_chains.append(std::move(m_chain));
    m_chain = {};
    return true;
}

void ZORNestDrawing::AddText(ZORNestDrawnText text, const ZORNestPlaneMap& map)
{
    CountCurve();
    const ZORNestPlanePoint along = map.MapVector({std::cos(text.angle), std::sin(text.angle)});
    const ZORNestPlanePoint up =
        map.MapVector(ZORNestPlanePoint{-std::sin(text.angle), std::cos(text.angle)});
    text.start = map.Map(text.start);
    text.end = map.Map(text.end);
    // Mirrored texts stay readable: they run the other way through the place of their mirror image.
    const double way = map.GetDeterminant() < 0 ? -1 : 1;
    if (way < 0) {
        const int column = text.justification % 3;
        text.justification += 2 - 2 * column;
    }
    text.angle = std::atan2(way * along.y, way * along.x);
    text.width *= Length(along) / std::max(Length(up), 1e-300);
    text.height *= Length(up);
    const bool isFine = IsFinite(text.start) && IsFinite(text.end) && std::isfinite(text.height)
                        && std::isfinite(text.width) && std::isfinite(text.tilt) && std::isfinite(text.angle);
    if (!isFine || text.text.isEmpty())
        Skip(QStringLiteral("TEXT"));
    else
        m_texts.append(text);
}

QStringList ZORNestDrawing::GetReport() const
{
    QStringList lines;
    for (auto it = m_skipped.cbegin(); it != m_skipped.cend(); ++it) {
        lines.append(tr("skipped: %1 (%2 times)").arg(it.key(), QString::number(it.value())));
    }
    return lines;
}
