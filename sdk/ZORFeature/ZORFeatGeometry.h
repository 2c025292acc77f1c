// Feature with a shape.

#pragma once

#include <ZORFeature/ZORFeatObject.h>

class ZORTopBody;

/// Base of the features that have a body of their own. It is not itself a point, curve or surface: the
/// shape is reached through GetBody().
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatGeometry : public ZORFeatObject
{
    Q_OBJECT

public:
    explicit ZORFeatGeometry(ZORFeatObject* parent);
    ~ZORFeatGeometry() override;

    /// The shape; owned by the container. Null when there is none (yet), as here in the base.
    virtual ZORTopBody* GetBody() const;
    /// Returns what the feature has made and destroys with itself: the geometry of its body as far as it is its own,
    /// then the body. Owned by the container; null never. Geometry that the feature only uses is not listed.
    virtual QList<ZORGeoGeometry*> GetOwnedGeometry() const;

signals:
    /// GetBody() is another one now, or has changed in place: features computed from this one follow. Not
    /// emitted when somebody else destroys the body or what it is made of.
    void BodyChanged();

protected:
    /// Emits BodyChanged() whenever \a body changes in place. Derived classes call it once for each body.
    /// \param body  null is ignored
    void FollowBody(const ZORTopBody* body);
};
