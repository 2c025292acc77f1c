// Container of a document: geometries and the trees of features above them.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>
#include <ZORGeometry/ZORGeoContainer.h>

#include <memory>

class ZORFeatGeometry;
class ZORFeatObject;
class ZORFeatRoot;
class ZORFeatStyles;

/// Container that also knows the roots of the feature trees. Features are geometries of the container
/// like all others, in the order of their registration; a feature comes after its parent.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatContainer : public ZORGeoContainer
{
    Q_OBJECT

public:
    explicit ZORFeatContainer(QObject* parent = nullptr);
    ~ZORFeatContainer() override;

    /// The root of exactly that class, created and registered when the container has none.
    ///
    /// Creates objects of registered classes that derive from ZORFeatRoot and have a
    /// Q_INVOKABLE constructor with the one argument ZORFeatContainer*.
    /// \return owned by the container; null for a null or unknown name and for any other class
    ZORFeatRoot* GetFeatureRoot(const char* className);

    /// All roots, in the order of their registration.
    QList<ZORFeatRoot*> GetFeatureRoots() const;

    /// How the objects of this container look. Never null; owned by the container.
    ZORFeatStyles* GetStyles() const;

    /// Returns the feature that made a geometry for itself (ZORFeatGeometry::GetOwnedGeometry()): people see it as a part
    /// of that feature. O(1), amortized.
    /// \return not owned; null for features, and for geometry that stands for itself
    ZORFeatGeometry* GetOwner(const ZORGeoGeometry* geometry) const;

signals:
    /// A feature of this container has another label.
    void FeatureLabelChanged(ZORFeatObject* feature);

protected:
    StoredStyles GetStoredStyles() const override;
    void TakeStoredStyles(const StoredStyles& styles) override;

private:
    friend class ZORFeatRoot;
    ZORFeatRoot* FindRoot(const QByteArray& className) const;
    void AddRoot(ZORFeatRoot* root);

    class Private;
    const std::unique_ptr<Private> d;
};
