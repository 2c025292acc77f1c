#include "ZORNestArcFit_p.h"

#include <algorithm>

namespace ZORNestArcFit {

namespace {

constexpr int kSamplesPerStretch = 8;
// An arc this much flatter than its chord is a line: it differs from one by less than the last place of its
// ends.
constexpr double kStraightness = 1e-12;

struct Biarc
{
    ZORNestPiece first;
    ZORNestPiece second;
};

ZORNestPlanePoint GetDirection(const Place& place)
{
    const double length = Length(place.derivative);
    if (!(length > 0) || !std::isfinite(length))
        return {};
    return (1 / length) * place.derivative;
}

// The biarc with tangents of equal lengths at both ends.
bool MakeBiarc(ZORNestPlanePoint p, ZORNestPlanePoint u, ZORNestPlanePoint q, ZORNestPlanePoint v,
               Biarc& biarc)
{
    const ZORNestPlanePoint chord = q - p;
    const ZORNestPlanePoint sum = u + v;
    const double square = Dot(chord, chord);
    const double projection = Dot(chord, sum);
    const double curvature = 2 * (1 - Dot(u, v));
    double length = 0;
    if (curvature > 1e-9) {
        const double root = projection * projection + curvature * square;
        // The form without cancellation of (sqrt(root) - projection) / curvature.
        length = projection > 0 ? square / (std::sqrt(root) + projection)
                                : (std::sqrt(root) - projection) / curvature;
    } else {
        if (!(projection > 0))
            return false;
        length = square / (2 * projection);
    }
    if (!(length > 0) || !std::isfinite(length))
        return false;
    const ZORNestPlanePoint joint = 0.5 * (p + q + length * (u - v));
    biarc.first = MakeTangentArc(p, u, joint);
    biarc.second = MakeTangentArc(q, ZORNestPlanePoint{-v.x, -v.y}, joint);
    biarc.second.Reverse();
    return true;
}

class Fitter
{
public:
    Fitter(const Curve& curve, double tolerance, QList<ZORNestPiece>& pieces)
        : m_curve(curve)
        , m_tolerance(tolerance)
        , m_pieces(pieces)
    {
    }

    bool FitStretch(double from, const Place& a, double to, const Place& b)
    {
        m_mostPieces = std::min<qsizetype>(kMaximumPieces, m_pieces.size() + kMaximumPiecesOfStretch);
        return Fit(from, a, to, b, 0);
    }
    bool IsTooLong() const { return m_isTooLong; }

private:
    bool Fit(double from, const Place& a, double to, const Place& b, int depth)
    {
        if (!IsFinite(a.point) || !IsFinite(b.point))
            return false;
        m_isTooLong = m_isTooLong || m_pieces.size() > m_mostPieces;
        if (m_isTooLong)
            return false;
        Place samples[kSamplesPerStretch];
        for (int i = 0; i < kSamplesPerStretch; ++i) {
            samples[i] = m_curve(from + (to - from) * (i + 1) / (kSamplesPerStretch + 1));
            if (!IsFinite(samples[i].point))
                return false;
        }
        if (depth == kMaximumDepth || TryBiarc(a, b, samples) || TryChord(a, b, samples)) {
            if (depth == kMaximumDepth)
                Append({a.point, b.point, {}, 0});
            return true;
        }
        const double middle = from + (to - from) / 2;
        const Place half = m_curve(middle);
        return Fit(from, a, middle, half, depth + 1) && Fit(middle, half, to, b, depth + 1);
    }

    bool TryBiarc(const Place& a, const Place& b, const Place (&samples)[kSamplesPerStretch])
    {
        const ZORNestPlanePoint u = GetDirection(a);
        const ZORNestPlanePoint v = GetDirection(b);
        if (u == ZORNestPlanePoint() || v == ZORNestPlanePoint() || a.point == b.point)
            return false;
        // Stretches that turn little are the ones that the samples tell all about.
        ZORNestPlanePoint last = u;
        for (const Place& sample : samples) {
            const ZORNestPlanePoint direction = GetDirection(sample);
            if (direction == ZORNestPlanePoint() || Dot(direction, last) < 0.5 || Dot(direction, u) < -0.1)
                return false;
            last = direction;
        }
        Biarc biarc;
        if (Dot(v, last) < 0.5 || !MakeBiarc(a.point, u, b.point, v, biarc))
            return false;
        for (const Place& sample : samples) {
            if (std::min(GetDistance(biarc.first, sample.point), GetDistance(biarc.second, sample.point))
                > m_tolerance)
                return false;
        }
        Append(biarc.first);
        Append(biarc.second);
        return true;
    }

    // Where the curve stands still or is shorter than the tolerance.
    bool TryChord(const Place& a, const Place& b, const Place (&samples)[kSamplesPerStretch])
    {
        for (const Place& sample : samples) {
            if (Length(sample.point - a.point) > m_tolerance || Length(sample.point - b.point) > m_tolerance)
                return false;
        }
        Append({a.point, b.point, {}, 0});
        return true;
    }

    void Append(const ZORNestPiece& piece)
    {
        if (piece.start != piece.end)
            m_pieces.append(piece);
    }

    const Curve& m_curve;
    const double m_tolerance;
    QList<ZORNestPiece>& m_pieces;
    qsizetype m_mostPieces = 0; // after the stretch that is being fitted
    bool m_isTooLong = false;
};

} // namespace

Fitted Fit(const Curve& curve, const QList<double>& breaks, double tolerance)
{
    Fitted fitted;
    Fitter fitter(curve, tolerance, fitted.pieces);
    for (qsizetype i = 1; i < breaks.size(); ++i) {
        // Each side of a corner has its own tangent: taken just inside.
        const double from = breaks[i - 1];
        const double to = breaks[i];
        const double inside = (to - from) * 1e-9;
        Place a = curve(from);
        Place b = curve(to);
        a.derivative = curve(from + inside).derivative;
        b.derivative = curve(to - inside).derivative;
        if (!fitter.FitStretch(from, a, to, b))
            return {{}, fitter.IsTooLong()};
    }
    return fitted;
}

ZORNestPiece MakeTangentArc(ZORNestPlanePoint start, ZORNestPlanePoint tangent, ZORNestPlanePoint end)
{
    const ZORNestPlanePoint chord = end - start;
    const double side = Cross(tangent, chord);
    const double square = Dot(chord, chord);
    if (std::abs(side) <= kStraightness * std::sqrt(square) * Length(tangent) && Dot(tangent, chord) >= 0)
        return {start, end, {}, 0};
    const ZORNestPlanePoint normal = GetNormal(tangent);
    return {start, end, start + (square / (2 * side)) * normal, side > 0 ? 1 : -1};
}

ZORNestPiece MakeBulgeArc(ZORNestPlanePoint start, ZORNestPlanePoint end, double bulge)
{
    if (std::abs(bulge) < kStraightness || start == end)
        return {start, end, {}, 0};
    const ZORNestPlanePoint center =
        0.5 * (start + end) + ((1 - bulge * bulge) / (4 * bulge)) * GetNormal(end - start);
    return {start, end, center, bulge > 0 ? 1 : -1};
}

double GetDistance(const ZORNestPiece& piece, ZORNestPlanePoint point)
{
    if (piece.IsLine())
        return GetDistanceToSegment(point, piece.start, piece.end);
    const ZORNestPiece toPoint{piece.start, piece.center + (point - piece.center), piece.center, piece.turn};
    if (toPoint.GetSweep() <= piece.GetSweep())
        return std::abs(Length(point - piece.center) - piece.GetRadius());
    return std::min(Length(point - piece.start), Length(point - piece.end));
}

} // namespace ZORNestArcFit
