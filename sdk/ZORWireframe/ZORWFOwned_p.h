// Geometries that a raw feature owns.

#pragma once

#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORTopology/ZORTopBody.h>

#include <QPointer>

#include <memory>

/// Destroys a geometry with the feature that made it, unless somebody else has destroyed it before.
template<class Geometry>
class ZORWFOwned
{
public:
    explicit ZORWFOwned(std::unique_ptr<Geometry> geometry)
        : m_geometry(geometry.release())
    {
    }
    ~ZORWFOwned() { delete m_geometry; }
    Q_DISABLE_COPY_MOVE(ZORWFOwned)

    /// Registers the geometry with its container.
    void Initialize()
    {
        if (m_geometry)
            m_geometry->Initialize();
    }
    /// Returns null once the geometry is destroyed.
    Geometry* Get() const { return m_geometry; }

private:
    const QPointer<Geometry> m_geometry;
};

/// The body of a raw feature, which holds a counted reference to it: nobody can remove it as unused.
class ZORWFOwnedBody : public ZORWFOwned<ZORTopBody>
{
public:
    /// \param body  null: somebody has destroyed it before the feature was stored
    ZORWFOwnedBody(const ZORFeatGeometry& feature, std::unique_ptr<ZORTopBody> body)
        : ZORWFOwned(std::move(body))
    {
        // The reference ends with the body.
        if (Get())
            Get()->AddReference(&feature);
    }
};
