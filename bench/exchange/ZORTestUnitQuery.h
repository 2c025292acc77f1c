// Question for the unit of a file.

#pragma once

#include <ZORSystem/ZORSysValue.h>

class QWidget;

/// Asks in which length unit the coordinates of a file are.
/// \param parent  of the question; may be null
/// \param stored  unit that is pre-selected; the first one offered where it is no length unit
/// \return the chosen unit; Cancel gives the pre-selected one
ZORSysValue::Unit ZORTestQueryUnit(QWidget* parent, ZORSysValue::Unit stored);
