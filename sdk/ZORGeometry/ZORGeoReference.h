// Counted reference to a geometry.

#pragma once

#include <ZORGeometry/ZORGeoGeometry.h>

#include <QPointer>

#include <utility>

/// Holds one reference of a geometry for as long as it lives, and becomes null when the geometry dies.
///
/// The referenced type may be constant: ZORGeoReference<const ZORGeoSurface>. Copies count one each.
///
/// Thread safety: thread of the container; objects may be shared read-only.
template<class T>
class ZORGeoReference
{
public:
    ZORGeoReference() = default;
    /// \param geometry  the geometry to reference, not owned; null for none
    /// \param user      the object that uses it, not owned; must outlive the reference; may be null
    explicit ZORGeoReference(T* geometry, const QObject* user = nullptr)
        : m_geometry(geometry)
        , m_user(user)
    {
        if (geometry)
            geometry->AddReference(user);
    }
    ZORGeoReference(const ZORGeoReference& other)
        : ZORGeoReference(other.Get(), other.m_user)
    {
    }
    ZORGeoReference(ZORGeoReference&& other) noexcept
        : m_geometry(std::exchange(other.m_geometry, nullptr))
        , m_user(other.m_user)
    {
    }
    ZORGeoReference& operator=(ZORGeoReference other) noexcept
    {
        m_geometry.swap(other.m_geometry);
        std::swap(m_user, other.m_user);
        return *this;
    }
    ~ZORGeoReference() { Reset(); }

    /// Gives the reference back; null afterwards.
    void Reset()
    {
        if (T* geometry = m_geometry) {
            m_geometry.clear();
            geometry->RemoveReference(m_user);
        }
    }

    /// The geometry; null when there never was one or it has been destroyed.
    T* Get() const { return m_geometry; }
    operator T*() const { return m_geometry; }
    T* operator->() const { return m_geometry; }

private:
    QPointer<T> m_geometry;
    const QObject* m_user = nullptr; // not owned
};
