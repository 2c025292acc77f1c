// What a class writes of a geometry into a container file.

#pragma once

#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QHash>
#include <QList>
#include <QString>

class QCborValue;
class ZORGeoGeometry;
class ZORMathPoint;
struct ZORGeoStoredObject;

/// Collects the content of one geometry under keys of its class's choice. A key is used once among values,
/// and once among references and links.
///
/// References.  What a geometry needs to be made, such as the surface of a curve on it; they must not go in
///              circles. Links are set when all geometries are made, and may. Both may be null.
/// Exactness.   Numbers keep all their bits.
/// \throws ZORSysException from every reference and link to a geometry that the container does not hold:
///         "'%1' uses '%2', which is not in the container"
///
/// Thread safety: reentrant; one thread at a time per object.
class ZORGEOMETRY_EXPORT ZORGeoObjectWriter
{
public:
    /// \param object    receives the content; both must outlive the writer
    /// \param numbers   place in the container of every geometry of it
    /// \param geometry  the one that is written
    ZORGeoObjectWriter(ZORGeoStoredObject& object, const QHash<const ZORGeoGeometry*, int>& numbers,
                       const ZORGeoGeometry& geometry);
    Q_DISABLE_COPY_MOVE(ZORGeoObjectWriter)

    void WriteBool(const char* key, bool value);
    void WriteInt(const char* key, qint64 value);
    void WriteDouble(const char* key, double value);
    void WriteString(const char* key, const QString& value);
    /// Anything structured: maps, lists and plain values within each other, at most a few levels deep.
    void WriteValue(const char* key, const QCborValue& value);
    void WritePoint(const char* key, const ZORMathPoint& point);
    /// Bulk numbers, 24 bytes a point.
    void WritePoints(const char* key, const QList<ZORMathPoint>& points);
    /// Bulk numbers, 8 bytes each.
    void WriteDoubles(const char* key, const QList<double>& values);
    /// Bulk numbers, 4 bytes each.
    void WriteInts(const char* key, const QList<qint32>& values);

    void WriteReference(const char* key, const ZORGeoGeometry* geometry);
    void WriteReferences(const char* key, const QList<const ZORGeoGeometry*>& geometries);
    void WriteLink(const char* key, const ZORGeoGeometry* geometry);
    void WriteLinks(const char* key, const QList<const ZORGeoGeometry*>& geometries);

private:
    QList<qint32> NumbersOf(const QList<const ZORGeoGeometry*>& geometries) const;

    ZORGeoStoredObject& m_object;
    const QHash<const ZORGeoGeometry*, int>& m_numbers;
    const ZORGeoGeometry& m_geometry;
};
