// What a class reads of a geometry from a container file.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORGeometry/ZORGeometryGlobal.h>

#include <QList>
#include <QString>

#include <vector>

class QCborValue;
class ZORMathPoint;
struct ZORGeoStoredObject;

/// The content of one geometry, under the keys that ZORGeoObjectWriter wrote it with.
///
/// The content may come from anywhere: every function checks that the key is there and of the kind asked for,
/// and the class checks what it means.
/// \throws ZORSysFileException from every function but Has(): "container file is damaged: object %1 (%2): %3"
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORGEOMETRY_EXPORT ZORGeoObjectReader
{
public:
    /// \param number   of the object, counted from 0
    /// \param objects  those made so far, by number; null for the others; must outlive the reader
    ZORGeoObjectReader(const ZORGeoStoredObject& object, int number,
                       const std::vector<ZORGeoGeometry*>& objects);
    Q_DISABLE_COPY_MOVE(ZORGeoObjectReader)

    /// Whether there is a value of that key: one that later versions of a class added may lack.
    bool Has(const char* key) const;
    bool GetBool(const char* key) const;
    qint64 GetInt(const char* key) const;
    /// May be infinite or not a number.
    double GetDouble(const char* key) const;
    QString GetString(const char* key) const;
    QCborValue GetValue(const char* key) const;
    /// The coordinates may be infinite or not a number, here and in GetPoints().
    ZORMathPoint GetPoint(const char* key) const;
    QList<ZORMathPoint> GetPoints(const char* key) const;
    const QList<double>& GetDoubles(const char* key) const;
    const QList<qint32>& GetInts(const char* key) const;

    /// The geometry referred to; null where null was written. Not registered yet, as a rule.
    template<class T>
    T* GetReference(const char* key) const
    {
        return Cast<T>(key, GetSingle(References, key));
    }
    template<class T>
    QList<T*> GetReferences(const char* key) const
    {
        return CastAll<T>(key, References);
    }
    /// Links can be read by Complete() only.
    template<class T>
    T* GetLink(const char* key) const
    {
        return Cast<T>(key, GetSingle(Links, key));
    }
    template<class T>
    QList<T*> GetLinks(const char* key) const
    {
        return CastAll<T>(key, Links);
    }
    /// Whether what a single reference names comes before this geometry, so that it is registered first.
    bool IsReferenceEarlier(const char* key) const;

    /// \param reason  what is wrong with the content, a lower-case sentence
    [[noreturn]] void Fail(const QString& reason) const;

private:
    enum Kind { References, Links };
    QList<ZORGeoGeometry*> GetAll(Kind kind, const char* key) const;
    ZORGeoGeometry* GetSingle(Kind kind, const char* key) const;
    [[noreturn]] void FailClass(const char* key) const;

    template<class T>
    T* Cast(const char* key, ZORGeoGeometry* geometry) const
    {
        T* const cast = qobject_cast<T*>(geometry);
        if (geometry && !cast)
            FailClass(key);
        return cast;
    }
    template<class T>
    QList<T*> CastAll(const char* key, Kind kind) const
    {
        QList<T*> result;
        for (ZORGeoGeometry* geometry : GetAll(kind, key))
            result.append(Cast<T>(key, geometry));
        return result;
    }

    const ZORGeoStoredObject& m_object;
    const int m_number;
    const std::vector<ZORGeoGeometry*>& m_objects;
};
