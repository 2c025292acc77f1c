// Kinds of objects, as users distinguish them.

#pragma once

#include <QFlags>
#include <QString>

class ZORGeoGeometry;

/// What an object is for the user: the kind of its shape, and Feature for what has none or several.
enum class ZORHostObjectKind : unsigned {
    Point = 0x01,
    Curve = 0x02, ///< also features whose shape is a curve, such as projections and courses
    Surface = 0x04,
    Body = 0x08,    ///< a body that does not belong to a feature, or of several geometries
    Feature = 0x10, ///< folders, layups, materials, layers ...
    Other = 0x20,
};
Q_DECLARE_FLAGS(ZORHostObjectKinds, ZORHostObjectKind)
Q_DECLARE_OPERATORS_FOR_FLAGS(ZORHostObjectKinds)

constexpr ZORHostObjectKinds kZORHostAllObjectKinds = ZORHostObjectKinds::fromInt(0x3F);

/// Returns the kind of \a object; Other for null. Cost: O(1).
ZORHostObjectKind ZORHostObjectKindOf(const ZORGeoGeometry* object);
/// Returns the name of a kind for people, in the plural: "Points", "Curves" ...
QString ZORHostObjectKindName(ZORHostObjectKind kind);
