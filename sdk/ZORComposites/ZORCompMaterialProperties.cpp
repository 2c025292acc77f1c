#include "ZORCompMaterialProperties.h"

#include <ZORSystem/ZORSysApiTrace.h>
#include <ZORSystem/ZORSysException.h>

#include <cmath>

using Properties = ZORCompMaterialProperties;

const ZORCompMaterialProperties::Number ZORCompMaterialProperties::Numbers[NumNumbers] = {
    {"thickness", &Properties::thickness},
    {"density", &Properties::density},
    {"E1", &Properties::E1},
    {"E2", &Properties::E2},
    {"G12", &Properties::G12},
    {"G23", &Properties::G23},
    {"v12", &Properties::v12},
    {"permeability_1", &Properties::permeability1},
    {"permeability_2", &Properties::permeability2},
    {"permeability_3", &Properties::permeability3},
    {"rollWidth", &Properties::rollWidth},
};

namespace {

void CheckNumber(const Properties::Number& number, double value)
{
    if (std::isnan(value))
        return;
    const QLatin1String name(number.name);
    if (std::isinf(value))
        throw ZORSysException(
            ZORCompMaterialProperties::tr("material property '%1' is not finite").arg(name));
    if (number.member == &Properties::v12)
        return;
    const bool mayBeZero = number.member == &Properties::permeability1
                           || number.member == &Properties::permeability2
                           || number.member == &Properties::permeability3;
    if (mayBeZero && value < 0)
        throw ZORSysException(
            ZORCompMaterialProperties::tr("material property '%1' is %2, but must not be negative")
                .arg(name, QString::number(value)));
    if (!mayBeZero && value <= 0)
        throw ZORSysException(
            ZORCompMaterialProperties::tr("material property '%1' is %2, but must be positive")
                .arg(name, QString::number(value)));
}

} // namespace

bool operator==(const ZORCompMaterialProperties& a, const ZORCompMaterialProperties& b)
{
    if (a.type != b.type)
        return false;
    for (const Properties::Number& number : Properties::Numbers) {
        const double left = a.*number.member;
        const double right = b.*number.member;
        if (left != right && !(std::isnan(left) && std::isnan(right)))
            return false;
    }
    return true;
}

void ZorTraceAppend(QByteArray& out, const ZORCompMaterialProperties& properties)
{
    out += '(';
    ZorTraceAppend(out, properties.type);
    for (const Properties::Number& number : Properties::Numbers) {
        out += ", ";
        ZorTraceAppend(out, properties.*number.member);
    }
    out += ')';
}

void ZORCompMaterialProperties::Check() const
{
    for (const Number& number : Numbers)
        CheckNumber(number, this->*number.member);
}
