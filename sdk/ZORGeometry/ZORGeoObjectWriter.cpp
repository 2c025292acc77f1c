#include "ZORGeoObjectWriter.h"

#include "storage/ZORGeoStoredObject_p.h"

#include <ZORGeometry/ZORGeoContainer.h>
#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORSystem/ZORSysException.h>

#include <cstring>
#include <type_traits>

static_assert(sizeof(ZORMathPoint) == 3 * sizeof(double) && std::is_trivially_copyable_v<ZORMathPoint>,
              "points are written as they lie in memory");

namespace {

template<class T>
void Append(ZORGeoStoredObject::Table<T>& table, const char* key, T value)
{
    Q_ASSERT(!ZORGeoStoredObject::Find(table, key));
    table.emplace_back(key, std::move(value));
}

} // namespace

ZORGeoObjectWriter::ZORGeoObjectWriter(ZORGeoStoredObject& object,
                                       const QHash<const ZORGeoGeometry*, int>& numbers,
                                       const ZORGeoGeometry& geometry)
    : m_object(object)
    , m_numbers(numbers)
    , m_geometry(geometry)
{
}

void ZORGeoObjectWriter::WriteBool(const char* key, bool value)
{
    WriteValue(key, value);
}

void ZORGeoObjectWriter::WriteInt(const char* key, qint64 value)
{
    WriteValue(key, value);
}

void ZORGeoObjectWriter::WriteDouble(const char* key, double value)
{
    Append<ZORGeoStoredObject::Value>(m_object.values, key, value);
}

void ZORGeoObjectWriter::WriteString(const char* key, const QString& value)
{
    WriteValue(key, value);
}

void ZORGeoObjectWriter::WriteValue(const char* key, const QCborValue& value)
{
    Append<ZORGeoStoredObject::Value>(m_object.values, key, value);
}

void ZORGeoObjectWriter::WritePoint(const char* key, const ZORMathPoint& point)
{
    WriteDoubles(key, {point.GetX(), point.GetY(), point.GetZ()});
}

void ZORGeoObjectWriter::WritePoints(const char* key, const QList<ZORMathPoint>& points)
{
    QList<double> coordinates(3 * points.size());
    if (!points.isEmpty())
        std::memcpy(coordinates.data(), points.constData(), size_t(points.size()) * sizeof(ZORMathPoint));
    WriteDoubles(key, coordinates);
}

void ZORGeoObjectWriter::WriteDoubles(const char* key, const QList<double>& values)
{
    Append<ZORGeoStoredObject::Value>(m_object.values, key, values);
}

void ZORGeoObjectWriter::WriteInts(const char* key, const QList<qint32>& values)
{
    Append<ZORGeoStoredObject::Value>(m_object.values, key, values);
}

void ZORGeoObjectWriter::WriteReference(const char* key, const ZORGeoGeometry* geometry)
{
    WriteReferences(key, {geometry});
}

void ZORGeoObjectWriter::WriteReferences(const char* key, const QList<const ZORGeoGeometry*>& geometries)
{
    Append(m_object.references, key, NumbersOf(geometries));
}

void ZORGeoObjectWriter::WriteLink(const char* key, const ZORGeoGeometry* geometry)
{
    WriteLinks(key, {geometry});
}

void ZORGeoObjectWriter::WriteLinks(const char* key, const QList<const ZORGeoGeometry*>& geometries)
{
    Append(m_object.links, key, NumbersOf(geometries));
}

QList<qint32> ZORGeoObjectWriter::NumbersOf(const QList<const ZORGeoGeometry*>& geometries) const
{
    QList<qint32> numbers;
    numbers.reserve(geometries.size());
    for (const ZORGeoGeometry* geometry : geometries) {
        const int number = geometry ? m_numbers.value(geometry, -1) : -1;
        if (geometry && number < 0) {
            throw ZORSysException(ZORGeoContainer::tr("'%1' uses '%2', which is not in the container")
                                      .arg(m_geometry.objectName(), geometry->objectName()));
        }
        numbers.append(number);
    }
    return numbers;
}
