#include "exchange/ZORTestUnitQuery.h"

#include <QCoreApplication>
#include <QInputDialog>

#include <algorithm>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORTestUnitQuery)
};

} // namespace

ZORSysValue::Unit ZORTestQueryUnit(QWidget* parent, ZORSysValue::Unit stored)
{
    const QList<ZORSysValue::Unit> units = ZORSysValue::GetMagnitudeUnits(ZORSysValue::Length);
    QStringList labels;
    for (const ZORSysValue::Unit unit : units)
        labels.append(ZORSysValue::GetUnitLabel(unit));
    const int current = std::max(int(units.indexOf(stored)), 0);
    const QString label =
        QInputDialog::getItem(parent, Texts::tr("Select Units"), Texts::tr("Units"), labels, current, false);
    return ZORSysValue::GetUnitFromLabel(label);
}
