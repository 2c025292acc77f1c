// Sets of objects that actions work on.

#pragma once

#include <QList>

class ZORFeatContainer;
class ZORGeoGeometry;

/// Returns \a objects with everything that goes with them when they are deleted: the features below features, and what
/// features own. Each once. Cost: O(result).
QList<ZORGeoGeometry*> ZORHostObjectsWithParts(const QList<ZORGeoGeometry*>& objects);

/// Returns the objects by whose drawings the user sees \a objects and the features below them. Each once.
QList<ZORGeoGeometry*> ZORHostDrawnObjects(const QList<ZORGeoGeometry*>& objects);
/// Returns all objects of a container that have drawings.
QList<ZORGeoGeometry*> ZORHostDrawnObjects(const ZORFeatContainer& container);
