#include "ZORGeoTriangle_p.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Below this squared sine of the angle at A the products of the region tests cancel too much.
constexpr double kThinSquaredSine = 1e-4;

ZORGeoTrianglePlace Place(const ZORMathPoint& p, const ZORMathPoint& point, double weightB, double weightC)
{
    const ZORMathVector d = p - point;
    return {point, weightB, weightC, Dot(d, d)};
}

ZORGeoTrianglePlace OnSide(const ZORMathPoint& p, const ZORMathPoint& from, const ZORMathPoint& to, double t,
                           double weightB, double weightC)
{
    return Place(p, t == 1 ? to : from + t * (to - from), weightB, weightC);
}

double ClosestOnSegment(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b)
{
    const ZORMathVector ab = b - a;
    const double squared = Dot(ab, ab);
    return squared > 0 ? std::clamp(Dot(p - a, ab) / squared, 0.0, 1.0) : 0.0;
}

// The best of the three sides and, where p lies above it, the face.
ZORGeoTrianglePlace ClosestOnThinTriangle(const ZORMathPoint& p, const ZORMathPoint& a, const ZORMathPoint& b,
                                          const ZORMathPoint& c)
{
    const double ab = ClosestOnSegment(p, a, b);
    const double bc = ClosestOnSegment(p, b, c);
    const double ca = ClosestOnSegment(p, c, a);
    ZORGeoTrianglePlace nearest = OnSide(p, a, b, ab, ab, 0);
    if (const auto place = OnSide(p, b, c, bc, 1 - bc, bc); place.squaredDistance < nearest.squaredDistance)
        nearest = place;
    if (const auto place = OnSide(p, c, a, ca, 0, 1 - ca); place.squaredDistance < nearest.squaredDistance)
        nearest = place;

    const ZORMathVector normal = Cross(b - a, c - a);
    const double squared = Dot(normal, normal);
    const double longest = std::max({Dot(b - a, b - a), Dot(c - b, c - b), Dot(a - c, a - c)});
    if (squared <= 1e-18 * longest * longest)
        return nearest;
    const double weightB = Dot(normal, Cross(p - a, c - a)) / squared;
    const double weightC = Dot(normal, Cross(b - a, p - a)) / squared;
    if (weightB > 0 && weightC > 0 && weightB + weightC < 1) {
        const auto place = Place(p, a + weightB * (b - a) + weightC * (c - a), weightB, weightC);
        if (place.squaredDistance < nearest.squaredDistance)
            nearest = place;
    }
    return nearest;
}

} // namespace

ZORGeoTrianglePlace ZorGeoClosestOnTriangle(const ZORMathPoint& p, const ZORMathPoint& a,
                                            const ZORMathPoint& b, const ZORMathPoint& c)
{
    const ZORMathVector ab = b - a;
    const ZORMathVector ac = c - a;
    const double abab = Dot(ab, ab);
    const double acac = Dot(ac, ac);
    const double abac = Dot(ab, ac);
    if (!(abab * acac - abac * abac > kThinSquaredSine * abab * acac))
        return ClosestOnThinTriangle(p, a, b, c);

    const ZORMathVector ap = p - a;
    const double d1 = Dot(ab, ap);
    const double d2 = Dot(ac, ap);
    if (d1 <= 0 && d2 <= 0)
        return Place(p, a, 0, 0);

    const double d3 = d1 - abab; // ab . bp
    const double d4 = d2 - abac; // ac . bp
    if (d3 >= 0 && d4 <= d3)
        return Place(p, b, 1, 0);

    const double areaC = d1 * d4 - d3 * d2;
    if (areaC <= 0 && d1 >= 0 && d3 <= 0) {
        const double t = d1 / abab;
        return OnSide(p, a, b, t, t, 0);
    }

    const double d5 = d1 - abac; // ab . cp
    const double d6 = d2 - acac; // ac . cp
    if (d6 >= 0 && d5 <= d6)
        return Place(p, c, 0, 1);

    const double areaB = d5 * d2 - d1 * d6;
    if (areaB <= 0 && d2 >= 0 && d6 <= 0) {
        const double t = d2 / acac;
        return OnSide(p, a, c, t, 0, t);
    }

    const double areaA = d3 * d6 - d5 * d4;
    if (areaA <= 0 && d4 - d3 >= 0 && d5 - d6 >= 0) {
        const double t = (d4 - d3) / ((d4 - d3) + (d5 - d6));
        return OnSide(p, b, c, t, 1 - t, t);
    }

    const double area = areaA + areaB + areaC;
    const double weightB = areaB / area;
    const double weightC = areaC / area;
    return Place(p, a + weightB * ab + weightC * ac, weightB, weightC);
}

ZORGeoRay::ZORGeoRay(const ZORMathPoint& origin, const ZORMathVector& direction)
    : m_origin{origin.GetX(), origin.GetY(), origin.GetZ()}
    , m_direction{direction.GetX(), direction.GetY(), direction.GetZ()}
{
    m_z = int(std::max_element(m_direction, m_direction + 3,
                               [](double a, double b) { return std::abs(a) < std::abs(b); })
              - m_direction);
    m_x = (m_z + 1) % 3;
    m_y = (m_z + 2) % 3;
    m_shear[0] = m_direction[m_x] / m_direction[m_z];
    m_shear[1] = m_direction[m_y] / m_direction[m_z];
    m_shear[2] = 1 / m_direction[m_z];
}

bool ZORGeoRay::Intersect(const ZORMathPoint& a, const ZORMathPoint& b, const ZORMathPoint& c, Hit& hit) const
{
    const auto relative = [this](const ZORMathPoint& p, double(&out)[3]) {
        const double d[3] = {p.GetX() - m_origin[0], p.GetY() - m_origin[1], p.GetZ() - m_origin[2]};
        out[2] = m_shear[2] * d[m_z];
        out[0] = d[m_x] - m_shear[0] * d[m_z];
        out[1] = d[m_y] - m_shear[1] * d[m_z];
    };
    double ra[3];
    double rb[3];
    double rc[3];
    relative(a, ra);
    relative(b, rb);
    relative(c, rc);
    const double u = rc[0] * rb[1] - rc[1] * rb[0];
    const double v = ra[0] * rc[1] - ra[1] * rc[0];
    const double w = rb[0] * ra[1] - rb[1] * ra[0];
    if ((u < 0 || v < 0 || w < 0) && (u > 0 || v > 0 || w > 0))
        return false;
    const double determinant = u + v + w;
    if (determinant == 0)
        return false;
    const double parameter = (u * ra[2] + v * rb[2] + w * rc[2]) / determinant;
    if (!(parameter >= 0 && std::isfinite(parameter)))
        return false;
    hit = {parameter, v / determinant, w / determinant};
    return true;
}
