#include "ZORGeoObjectReader.h"

#include "storage/ZORGeoStoredObject_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORSystem/ZORSysMemory.h>

#include <cstring>

ZORGeoObjectReader::ZORGeoObjectReader(const ZORGeoStoredObject& object, int number,
                                       const std::vector<ZORGeoGeometry*>& objects)
    : m_object(object)
    , m_number(number)
    , m_objects(objects)
{
}

bool ZORGeoObjectReader::Has(const char* key) const
{
    return ZORGeoStoredObject::Find(m_object.values, key);
}

QCborValue ZORGeoObjectReader::GetValue(const char* key) const
{
    const auto* const value = ZORGeoStoredObject::Find(m_object.values, key);
    if (const auto* const number = value ? std::get_if<double>(value) : nullptr)
        return QCborValue(*number);
    const auto* const plain = value ? std::get_if<QCborValue>(value) : nullptr;
    if (!plain)
        Fail(ZORGeoContainer::tr("value '%1' is missing or of the wrong kind").arg(QLatin1String(key)));
    return *plain;
}

bool ZORGeoObjectReader::GetBool(const char* key) const
{
    const QCborValue value = GetValue(key);
    if (!value.isBool())
        Fail(ZORGeoContainer::tr("value '%1' is no truth value").arg(QLatin1String(key)));
    return value.toBool();
}

qint64 ZORGeoObjectReader::GetInt(const char* key) const
{
    const QCborValue value = GetValue(key);
    if (!value.isInteger())
        Fail(ZORGeoContainer::tr("value '%1' is no integer").arg(QLatin1String(key)));
    return value.toInteger();
}

double ZORGeoObjectReader::GetDouble(const char* key) const
{
    const auto* const value = ZORGeoStoredObject::Find(m_object.values, key);
    if (const auto* const number = value ? std::get_if<double>(value) : nullptr)
        return *number;
    Fail(value ? ZORGeoContainer::tr("value '%1' is no number").arg(QLatin1String(key))
               : ZORGeoContainer::tr("value '%1' is missing or of the wrong kind").arg(QLatin1String(key)));
}

QString ZORGeoObjectReader::GetString(const char* key) const
{
    const QCborValue value = GetValue(key);
    if (!value.isString())
        Fail(ZORGeoContainer::tr("value '%1' is no text").arg(QLatin1String(key)));
    return value.toString();
}

ZORMathPoint ZORGeoObjectReader::GetPoint(const char* key) const
{
    const QList<double>& numbers = GetDoubles(key);
    if (numbers.size() != 3)
        Fail(ZORGeoContainer::tr("value '%1' is no point").arg(QLatin1String(key)));
    return {numbers[0], numbers[1], numbers[2]};
}

QList<ZORMathPoint> ZORGeoObjectReader::GetPoints(const char* key) const
{
    const QList<double>& numbers = GetDoubles(key);
    if (numbers.size() % 3 != 0)
        Fail(ZORGeoContainer::tr("value '%1' ends within a point").arg(QLatin1String(key)));
    auto points = ZORSysMemory::MakeList<ZORMathPoint>(numbers.size() / 3);
    if (!points.isEmpty())
        std::memcpy(static_cast<void*>(points.data()), numbers.constData(),
                    size_t(numbers.size()) * sizeof(double));
    return points;
}

const QList<double>& ZORGeoObjectReader::GetDoubles(const char* key) const
{
    const auto* const value = ZORGeoStoredObject::Find(m_object.values, key);
    const auto* const numbers = value ? std::get_if<QList<double>>(value) : nullptr;
    if (!numbers)
        Fail(ZORGeoContainer::tr("value '%1' is missing or of the wrong kind").arg(QLatin1String(key)));
    return *numbers;
}

const QList<qint32>& ZORGeoObjectReader::GetInts(const char* key) const
{
    const auto* const value = ZORGeoStoredObject::Find(m_object.values, key);
    const auto* const numbers = value ? std::get_if<QList<qint32>>(value) : nullptr;
    if (!numbers)
        Fail(ZORGeoContainer::tr("value '%1' is missing or of the wrong kind").arg(QLatin1String(key)));
    return *numbers;
}

bool ZORGeoObjectReader::IsReferenceEarlier(const char* key) const
{
    const auto* const numbers = ZORGeoStoredObject::Find(m_object.references, key);
    return numbers && numbers->size() == 1 && numbers->constFirst() < m_number;
}

void ZORGeoObjectReader::Fail(const QString& reason) const
{
    throw ZORSysFileException(
        ZORGeoContainer::tr("container file is damaged: object %1 (%2): %3")
            .arg(QString::number(m_number), QString::fromUtf8(m_object.className), reason));
}

QList<ZORGeoGeometry*> ZORGeoObjectReader::GetAll(Kind kind, const char* key) const
{
    const auto* const numbers =
        ZORGeoStoredObject::Find(kind == References ? m_object.references : m_object.links, key);
    if (!numbers)
        Fail(ZORGeoContainer::tr("reference '%1' is missing").arg(QLatin1String(key)));
    QList<ZORGeoGeometry*> geometries;
    geometries.reserve(numbers->size());
    for (const qint32 number : *numbers)
        geometries.append(number < 0 ? nullptr : m_objects[size_t(number)]);
    return geometries;
}

ZORGeoGeometry* ZORGeoObjectReader::GetSingle(Kind kind, const char* key) const
{
    const QList<ZORGeoGeometry*> all = GetAll(kind, key);
    if (all.size() != 1)
        Fail(ZORGeoContainer::tr("reference '%1' is not a single one").arg(QLatin1String(key)));
    return all.constFirst();
}

void ZORGeoObjectReader::FailClass(const char* key) const
{
    Fail(ZORGeoContainer::tr("reference '%1' names an object of the wrong class").arg(QLatin1String(key)));
}
