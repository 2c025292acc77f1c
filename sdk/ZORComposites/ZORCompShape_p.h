// The body of a feature and the curve it may own.

#pragma once

#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORTopology/ZORTopBody.h>

#include <QPointer>

class ZORFeatGeometry;

/// Registers a body with its feature and takes it out of the container again when it is replaced or the feature
/// ends. The feature holds a reference to the body, which holds one to the curve.
class ZORCompShape
{
public:
    explicit ZORCompShape(ZORFeatGeometry* owner);
    ~ZORCompShape();
    Q_DISABLE_COPY_MOVE(ZORCompShape)

    /// Makes the body of \a curve and registers both if the owner is registered; the old ones go, and leave
    /// their names to the new ones.
    /// \param curve  taken over if \a isOwned; null: no body
    /// \return whether the owner is still there: receivers of the container's signals may have removed it
    bool Replace(const ZORGeoCurve* curve, bool isOwned);
    /// Takes over a curve and a body that are there already; either may be null.
    void Adopt(ZORGeoCurve* ownedCurve, ZORTopBody* body);
    /// Registers what is there.
    /// \return as Replace()
    bool Register();

    ZORTopBody* GetBody() const { return m_body; }
    ZORGeoCurve* GetOwnedCurve() const { return m_curve; }

private:
    void Destroy();

    ZORFeatGeometry* const m_owner; // not owned
    QPointer<ZORGeoCurve> m_curve;  // owned, by the container once it is registered
    QPointer<ZORTopBody> m_body;    // the same
};
