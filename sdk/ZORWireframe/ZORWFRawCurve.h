// Feature around a curve of the container.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWireframeGlobal.h>

#include <memory>

class ZORGeoCurve;

/// Gives a curve a place in a feature tree.
///
/// Ownership.  The feature makes the body of its own and takes it out of the container again when it is
///             removed or destroyed. The curve stays what it is: the body holds a counted reference to it
///             but does not own it.
/// Changes.    When the curve changes in place the body follows, and BodyChanged() is emitted.
/// Lifetime.   When the curve is destroyed the feature stays, with the empty body; when somebody destroys the
///             body, without one.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORWIREFRAME_EXPORT ZORWFRawCurve : public ZORFeatGeometry
{
    Q_OBJECT

public:
    /// \param folder  the feature the curve lies in; null leaves it without a container
    /// \param curve   not owned; null makes a feature with the empty body
    ZORWFRawCurve(ZORFeatObject* folder, const ZORGeoCurve* curve);
    ~ZORWFRawCurve() override;

    /// Registers the body and then the feature, so that receivers of the container's signals meet the
    /// feature complete.
    /// \throws ZORSysException as ZORFeatObject::Initialize(); the body then goes with the feature
    void Initialize() override;

    /// The body of the curve, from construction on.
    ZORTopBody* GetBody() const override;

private:
    friend struct ZORWFRawCurveStorage;
    struct Stored
    {
        ZORTopBody* body; // null: has been destroyed
    };
    /// The feature around a body that is there already.
    ZORWFRawCurve(ZORFeatObject* folder, const Stored& stored);

    class Private;
    std::unique_ptr<Private> d;
};
