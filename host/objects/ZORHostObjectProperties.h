// Values of objects for people.

#pragma once

#include <QList>
#include <QString>

class ZORGeoGeometry;
class ZORMathBoundingBox;

/// A value with its name.
struct ZORHostProperty
{
    QString name;
    QString value;
};

/// Returns the type of an object in words, as its class says: "Curve on surface", "Draping layer".
QString ZORHostTypeName(const ZORGeoGeometry* object);

/// Returns the values of one object, or of several what they have in common and in sum: kind, counts, box, length, area,
/// and what uses them. Cost: O(points + triangles + objects of the container).
/// \param objects  of one container
QList<ZORHostProperty> ZORHostPropertiesOf(const QList<ZORGeoGeometry*>& objects);

/// Returns the box around what is drawn for the objects; empty where nothing is.
ZORMathBoundingBox ZORHostBoxOf(const QList<ZORGeoGeometry*>& objects);
