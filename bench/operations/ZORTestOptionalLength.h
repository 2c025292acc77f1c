// A length that a check box can switch off.

#pragma once

class QCheckBox;
class ZORCmnUnitSpinBox;

/// Returns the length of a field in millimeters; NaN, which means unbounded, when its box is not checked.
double ZORTestGetOptionalLength(const QCheckBox* box, const ZORCmnUnitSpinBox* field);
