// The body of a feature and the curve it may own.

#pragma once

#include <ZORFeature/ZORFeatShape.h>

class ZORFeatGeometry;
class ZORGeoCurve;

/// Makes the body of a feature around a curve and replaces it by others. The feature holds a reference to the
/// body, which holds one to the curve. It emits BodyChanged() when the body changes in place.
class ZORCompShape
{
public:
    /// Whether the shape takes a curve over.
    enum class Ownership { Taken, Left };

    explicit ZORCompShape(ZORFeatGeometry* owner);
    ~ZORCompShape();
    Q_DISABLE_COPY_MOVE(ZORCompShape)

    /// Makes the body of \a curve and registers both if the owner is registered; the old ones go, and leave
    /// their names to the new ones.
    /// \param curve  null: no body
    /// \return whether the owner is still there: receivers of the container's signals may have removed it
    bool Replace(const ZORGeoCurve* curve, Ownership ownership);
    /// Takes over a curve and a body of a container file, which are registered with everything else of it; either
    /// may be null.
    void Adopt(ZORGeoCurve* ownedCurve, ZORTopBody* body);
    /// Registers what is there, unless that was taken over.
    /// \return as Replace()
    bool Register();

    ZORTopBody* GetBody() const { return m_shape.GetBody(); }
    ZORGeoCurve* GetOwnedCurve() const;

private:
    ZORFeatGeometry* const m_owner; // not owned
    ZORFeatShape m_shape;
    bool m_isAdopted = false;
};
