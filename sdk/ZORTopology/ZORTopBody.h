// Topological body: the part of space that a geometry occupies.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>
#include <ZORTopology/ZORTopologyGlobal.h>

#include <memory>

class ZORTopBodyPrivate;

/// A body of dimension 0 (point), 1 (curve) or 2 (surface), or the empty body (-1).
///
/// Ownership.  Owned by its container from Initialize() on. Holds a counted reference to the geometry
///             it describes from construction on; the geometry is listed with the body as its user.
/// Lifetime.   When the geometry is destroyed all the same, the body becomes the empty body.
class ZORTOPOLOGY_EXPORT ZORTopBody : public ZORGeoGeometry
{
    Q_OBJECT

public:
    /// The dimension of the empty body.
    static constexpr int EmptyDimension = -1;

    /// \param container  owner of the body from Initialize() on
    /// \param geometry   a point, a curve or a surface; null makes the empty body
    /// \throws ZORSysException "a body needs a point, a curve or a surface" for other geometries
    ZORTopBody(ZORGeoContainer* container, const ZORGeoGeometry* geometry);
    ~ZORTopBody() override;

    /// 0 for a point, 1 for a curve, 2 for a surface, EmptyDimension for the empty body.
    virtual int GetDimension() const;

    /// What the body describes; null for the empty body. Not owned by the body.
    const ZORGeoGeometry* GetGeometry() const;

private:
    Q_DECLARE_PRIVATE(ZORTopBody)
    const std::unique_ptr<ZORTopBodyPrivate> d_ptr;
};
