#include "ZORGeoStlNumber_p.h"

#include <QtGlobal>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace {

// Decimals of at most 19 digits with a small exponent, as nearly all numbers of STL files are. The double is
// the one nearest to the decimal, and so is the float made of it, unless the double lies half-way between two
// floats; then, and for anything else, false.
bool ReadPlainFloat(const char*& at, const char* end, float& value)
{
    static constexpr double kPowers[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                         1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    const char* c = at;
    const bool isNegative = c != end && *c == '-';
    c += isNegative ? 1 : 0;
    quint64 mantissa = 0;
    const char* const digits = c;
    for (; c != end && *c >= '0' && *c <= '9'; ++c)
        mantissa = 10 * mantissa + quint64(*c - '0');
    ptrdiff_t count = c - digits;
    int exponent = 0;
    if (c != end && *c == '.') {
        const char* const fraction = ++c;
        for (; c != end && *c >= '0' && *c <= '9'; ++c)
            mantissa = 10 * mantissa + quint64(*c - '0');
        exponent = int(fraction - c);
        count += c - fraction;
    }
    if (count == 0 || count > 19)
        return false;
    if (c != end && (*c == 'e' || *c == 'E')) {
        ++c;
        const bool isDown = c != end && *c == '-';
        c += c != end && (*c == '-' || *c == '+') ? 1 : 0;
        const char* const power = c;
        int shift = 0;
        for (; c != end && *c >= '0' && *c <= '9' && c - power < 4; ++c)
            shift = 10 * shift + (*c - '0');
        if (c == power)
            return false;
        exponent += isDown ? -shift : shift;
    }
    constexpr quint64 kLargestExact = quint64(1) << 53;
    if ((c != end && !ZorGeoIsBlank(*c)) || mantissa > kLargestExact || exponent < -22 || exponent > 22)
        return false;
    const double wide =
        exponent < 0 ? double(mantissa) / kPowers[-exponent] : double(mantissa) * kPowers[exponent];
    constexpr quint64 kBelow = (quint64(1) << 29) - 1; // bits that a float drops
    const bool isHalfWay = (std::bit_cast<quint64>(wide) & kBelow) == quint64(1) << 28;
    const bool isNormal = wide == 0 || (wide >= 1.2e-38 && wide <= 3.4e38);
    if (isHalfWay || !isNormal)
        return false;
    value = float(isNegative ? -wide : wide);
    at = c;
    return true;
}

// Whether a number beyond the range of doubles is too small for it, not too large.
bool IsSmall(std::string_view number)
{
    const size_t exponent = number.find_first_of("eE");
    if (exponent != number.npos)
        return number.substr(exponent + 1).starts_with('-');
    return number.find_first_of("123456789") > number.find('.');
}

} // namespace

bool ZorGeoReadFloat(const char*& at, const char* end, float& value)
{
    ZorGeoSkipBlanks(at, end);
    const char* begin = at;
    if (end - begin > 1 && *begin == '+' && begin[1] != '-')
        ++begin;
    if (ReadPlainFloat(begin, end, value)) {
        at = begin;
        return true;
    }
    auto [next, error] = std::from_chars(begin, end, value);
    if (error == std::errc::result_out_of_range) {
        // Too small becomes zero, too large infinite.
        double wide = 0;
        const std::errc wideError = std::from_chars(begin, end, wide).ec;
        const bool isSmall = wideError == std::errc() ? std::abs(wide) < 1 : IsSmall({begin, next});
        value = isSmall ? 0.0f : std::numeric_limits<float>::infinity();
        error = {};
    }
    if (error != std::errc() || (next != end && !ZorGeoIsBlank(*next)))
        return false;
    at = next;
    return true;
}
