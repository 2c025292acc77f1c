// Feature around a surface of the container.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWireframeGlobal.h>

#include <memory>

class ZORGeoSurface;

/// Gives a surface a place in a feature tree.
///
/// Ownership.  The feature makes the body of its own and takes it out of the container again when it is
///             removed or destroyed. The surface stays what it is: the body holds a counted reference to it
///             but does not own it.
/// Lifetime.   When the surface is destroyed the feature stays, with the empty body; when somebody destroys the
///             body, without one.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORWIREFRAME_EXPORT ZORWFRawSurface : public ZORFeatGeometry
{
    Q_OBJECT

public:
    /// \param folder   the feature the surface lies in; null leaves it without a container
    /// \param surface  not owned; null makes a feature with the empty body
    ZORWFRawSurface(ZORFeatObject* folder, const ZORGeoSurface* surface);
    ~ZORWFRawSurface() override;

    /// Registers the body and then the feature, so that receivers of the container's signals meet the
    /// feature complete.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); the body then goes with the feature
    void Initialize() override;

    /// The body of the surface, from construction on.
    ZORTopBody* GetBody() const override;

private:
    friend struct ZORWFRawSurfaceStorage;
    struct Stored
    {
        ZORTopBody* body; // null: has been destroyed
    };
    /// The feature around a body that is there already.
    ZORWFRawSurface(ZORFeatObject* folder, const Stored& stored);

    class Private;
    std::unique_ptr<Private> d;
};
