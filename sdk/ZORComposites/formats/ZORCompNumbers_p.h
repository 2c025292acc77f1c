// Numbers in the texts of source files.

#pragma once

#include <QString>

#include <numbers>
#include <optional>

/// The number that a text holds, blanks around it allowed.
/// \return nothing unless it is a finite number
std::optional<double> ZorCompParseNumber(QStringView text);
/// The shortest text that gives the very same number.
QString ZorCompFormatNumber(double number);

/// The only way from degrees to radians in source files, so that all of them give the same number.
constexpr double ZorCompToRadians(double degrees)
{
    return degrees * (std::numbers::pi / 180);
}
/// An angle as "-45" in degrees, or as "0.7 rad".
std::optional<double> ZorCompParseAngle(QStringView text);
/// In degrees if those give the very same number, else in radians.
QString ZorCompFormatAngle(double radians);
