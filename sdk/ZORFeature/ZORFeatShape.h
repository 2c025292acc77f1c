// A body with the geometry it is made of.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>

#include <QList>

#include <memory>

class ZORGeoGeometry;
class ZORTopBody;

/// What a feature makes and owns: a body, and the geometry that was made for it. Destroys what is left of them
/// when it ends, whatever their reference counts are.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatShape
{
public:
    ZORFeatShape();
    /// \param geometry  of the body, in the order in which it is to be registered; taken over, as is the body
    ZORFeatShape(ZORTopBody* body, const QList<ZORGeoGeometry*>& geometry);
    ZORFeatShape(ZORFeatShape&& other) noexcept;
    ZORFeatShape& operator=(ZORFeatShape&& other) noexcept;
    Q_DISABLE_COPY(ZORFeatShape)
    ~ZORFeatShape();

    /// Null for an empty shape, and once somebody has destroyed it.
    ZORTopBody* GetBody() const;
    /// What is left of the geometry.
    QList<ZORGeoGeometry*> GetGeometry() const;

    /// Registers the geometry, then the body; what is registered already stays so. Receivers of the
    /// container's signals may destroy any of it.
    void Initialize();
    /// Destroys the body, then the geometry. Receivers of the container's signals find none of it here any more.
    void Destroy();

    /// Gives way to another shape: destroys everything, and hands the names on to what is of the same class in
    /// the same place of the other.
    void HandOver(const ZORFeatShape& successor);

private:
    class Private;
    std::unique_ptr<Private> d;
};
