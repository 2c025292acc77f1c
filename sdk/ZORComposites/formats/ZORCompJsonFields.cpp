#include "ZORCompJsonFields_p.h"
#include "ZORCompNumbers_p.h"

#include <ZORSystem/ZORSysException.h>

#include <cmath>

namespace {

constexpr double kLargestIdentifier = 9007199254740992.0; // 2^53

bool IsControl(QChar unit)
{
    return unit.unicode() < 0x20 || unit.unicode() >= 0xfffe;
}

// What labels and XML can hold.
QString Clean(const QString& text)
{
    QString clean = text.isValidUtf16() ? text : QString::fromUtf8(text.toUtf8());
    for (QChar& unit : clean) {
        if (IsControl(unit))
            unit = QLatin1Char(' ');
    }
    return clean.trimmed();
}

} // namespace

ZORCompJsonFields::ZORCompJsonFields(const QJsonValue& value, const QString& path)
    : m_fields(value.toObject())
    , m_path(path)
{
    if (!value.isObject())
        Fail(path, tr("this is no object"));
}

QString ZORCompJsonFields::PathOf(const QString& name) const
{
    return m_path.isEmpty() ? name : m_path + QLatin1Char('.') + name;
}

void ZORCompJsonFields::Fail(const QString& path, const QString& reason)
{
    throw ZORSysException(path.isEmpty() ? reason : tr("%1: %2").arg(path, reason));
}

QString ZORCompJsonFields::TakeText(const QString& name)
{
    if (!Has(name))
        return {};
    const QJsonValue value = m_fields.value(name);
    if (!value.isString())
        Fail(PathOf(name), tr("this is no text"));
    const QString text = Clean(value.toString());
    if (text == value.toString().trimmed())
        m_fields.remove(name);
    return text;
}

std::optional<double> ZORCompJsonFields::TakeNumber(const QString& name)
{
    if (!Has(name))
        return std::nullopt;
    const QJsonValue value = m_fields.value(name);
    std::optional<double> number;
    if (value.isDouble())
        number = value.toDouble();
    else if (value.isString() && value.toString().trimmed().isEmpty())
        return std::nullopt;
    else if (value.isString())
        number = ZorCompParseNumber(value.toString());
    if (!number || !std::isfinite(*number))
        Fail(PathOf(name), tr("this is no number"));
    m_fields.remove(name);
    return number;
}

bool ZORCompJsonFields::TakeBool(const QString& name, bool byDefault)
{
    if (!Has(name))
        return byDefault;
    const QJsonValue value = Take(name);
    if (!value.isBool())
        Fail(PathOf(name), tr("this is neither true nor false"));
    return value.toBool();
}

QJsonArray ZORCompJsonFields::TakeArray(const QString& name)
{
    if (!Has(name))
        return {};
    const QJsonValue value = Take(name);
    if (!value.isArray())
        Fail(PathOf(name), tr("this is no list"));
    return value.toArray();
}

QJsonValue ZORCompJsonFields::Take(const QString& name)
{
    return m_fields.take(name);
}

std::optional<qint64> ZORCompJsonFields::GetIdentifier(const QString& name) const
{
    return ToIdentifier(m_fields.value(name));
}

std::optional<qint64> ZORCompJsonFields::ToIdentifier(const QJsonValue& value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    if (number != std::floor(number) || std::abs(number) > kLargestIdentifier)
        return std::nullopt;
    return qint64(number);
}

QString ZORCompJsonFields::GetType() const
{
    const QString type = m_fields.value(QStringLiteral("_serialized_type")).toString();
    return type.mid(type.lastIndexOf(QLatin1Char('.')) + 1);
}
