#include "operations/ZORTestOptionalLength.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>

#include <QCheckBox>

#include <limits>

double ZORTestGetOptionalLength(const QCheckBox* box, const ZORCmnUnitSpinBox* field)
{
    return box->isChecked() ? field->GetInternalValue() : std::numeric_limits<double>::quiet_NaN();
}
