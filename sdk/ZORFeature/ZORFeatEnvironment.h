// One open document: its container of geometries and features, and what is drawn of it.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>
#include <ZORVisualization/ZORVisEnvironment.h>

#include <memory>

class ZORFeatContainer;

/// A document of the application. It is the visualization environment of its own container.
///
/// Ownership.  Owns the container. Created and deleted by the application; see
///             ZORFeatEnvironmentManager for the one that is current.
/// Destruction. First AboutToBeDestroyed() is emitted and the environment stops being the current one,
///             then its virtual objects are deleted, then the container with all geometries.
///
/// Thread safety: main thread only.
class ZORFEATURE_EXPORT ZORFeatEnvironment : public ZORVisEnvironment
{
    Q_OBJECT

public:
    explicit ZORFeatEnvironment(QObject* parent = nullptr);
    ~ZORFeatEnvironment() override;

    /// Never null; owned by the environment.
    ZORFeatContainer* GetContainer() const;

signals:
    /// Last moment at which the environment and all it holds are whole.
    void AboutToBeDestroyed();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
