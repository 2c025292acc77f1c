// A geometry as a container file holds it.

#pragma once

#include <QByteArray>
#include <QCborMap>
#include <QCborValue>
#include <QList>
#include <QString>

#include <utility>
#include <variant>
#include <vector>

/// Class, name and content of one geometry. Other geometries are told by their number in the file, counted
/// from 0; -1 is none. Keys come once and in the order in which the class wrote them.
struct ZORGeoStoredObject
{
    // Doubles stand on their own: a QCborValue does not keep the payload of NaN.
    using Value = std::variant<QCborValue, double, QList<double>, QList<qint32>>;
    using Numbers = QList<qint32>;
    template<class T>
    using Table = std::vector<std::pair<QByteArray, T>>;

    template<class T>
    static const T* Find(const Table<T>& table, const char* key)
    {
        for (const auto& [present, value] : table) {
            if (present == key)
                return &value;
        }
        return nullptr;
    }

    QByteArray className;
    QString name;
    Table<Numbers> references; // must be there to make the geometry
    Table<Numbers> links;      // set once all geometries are made
    Table<Value> values;
};

/// The content of a container file.
struct ZORGeoStoredDocument
{
    std::vector<ZORGeoStoredObject> objects;
    /// How geometries look, by their number in the file, ascending; only those that do not look as usual.
    std::vector<std::pair<qint32, QCborMap>> styles;
};
