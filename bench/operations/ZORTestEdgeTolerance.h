// The edge tolerance of the topology dialogs in its field and in the settings.

#pragma once

class QDoubleSpinBox;
class ZORTestEnvironment;

/// Shows the tolerance that is stored under "Debug" and \a group, in degrees; 45 when none is.
void ZorTestShowEdgeTolerance(const ZORTestEnvironment* environment, const char* group,
                              QDoubleSpinBox* spinBox);

/// Stores the tolerance of the field under "Debug" and \a group, in radians.
/// \return radians
double ZorTestStoreEdgeTolerance(const ZORTestEnvironment* environment, const char* group,
                                 const QDoubleSpinBox* spinBox);
