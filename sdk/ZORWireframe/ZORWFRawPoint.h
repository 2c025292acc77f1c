// Feature that is a point given by its coordinates.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWireframeGlobal.h>

#include <memory>

class ZORGeoCartesianPoint;

/// A point of a feature tree. It is no ZORGeoPoint itself: the shape is a body of dimension 0 around a
/// cartesian point.
///
/// Ownership.  The feature makes the point and the body of its own, registers them with its container, and
///             takes them out again when it is removed or destroyed, whatever their reference counts are. It
///             holds a reference to the body, which holds one to the point: nobody can remove them as unused
///             while the feature is there.
/// Lifetime.   When somebody destroys the body or the point all the same, the feature stays, without a
///             body or with an empty one.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORWIREFRAME_EXPORT ZORWFRawPoint : public ZORFeatGeometry
{
    Q_OBJECT

public:
    /// \param folder  the feature the point lies in; null leaves it without a container
    /// \param point   millimetres
    /// \throws ZORSysException "point is not finite"
    ZORWFRawPoint(ZORFeatObject* folder, const ZORMathPoint& point);
    ~ZORWFRawPoint() override;

    /// Registers the point, its body and then the feature, so that receivers of the container's signals meet
    /// the feature complete.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); point and body then go with the feature
    void Initialize() override;

    /// Of dimension 0, from construction on; null once somebody has destroyed it.
    ZORTopBody* GetBody() const override;
    QList<ZORGeoGeometry*> GetOwnedGeometry() const override;

private:
    friend struct ZORWFRawPointStorage;
    /// The feature around a point and a body that are there already; null for what has been destroyed.
    ZORWFRawPoint(ZORFeatObject* folder, ZORGeoCartesianPoint* point, ZORTopBody* body);

    class Private;
    std::unique_ptr<Private> d;
};
