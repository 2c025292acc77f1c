// Physical magnitudes and their units.

#pragma once

#include <ZORSystem/ZORSystemGlobal.h>

#include <QList>
#include <QString>

/// Units of the values that users type and files hold. Inside, the SDK works in millimetres and
/// radians.
///
/// Thread safety: thread-safe.
class ZORSYSTEM_EXPORT ZORSysValue
{
public:
    enum Magnitude : int {
        Length = 1,
        Angle = 2,
    };

    /// The codes are stored in settings and files: never renumber them.
    enum Unit : int {
        Millimeter = 0,
        Centimeter = 1,
        Meter = 2,
        Inch = 3,
        Foot = 4,
        Radian = 5,
        Degree = 6,
    };

    /// The units of a magnitude in the order in which they are offered; the first is the usual one.
    /// Empty for a value outside the enumeration.
    static QList<Unit> GetMagnitudeUnits(Magnitude magnitude);
    /// Short name: "mm", "cm", "m", "in", "ft", "rad", "deg"; empty for a value outside the enumeration.
    static QString GetUnitLabel(Unit unit);
    /// The unit of a label, compared exactly; Millimeter for an unknown label.
    static Unit GetUnitFromLabel(const QString& label);
    /// How many internal units (millimetres, radians) one \a unit is; 1 outside the enumeration.
    static double GetUnitFactor(Unit unit);
};
