// Draping strategy.

#pragma once

#include <ZORComposites/ZORCompStrategyParameters.h>
#include <ZORFeature/ZORFeatObject.h>

#include <memory>

/// How layers are draped: draping layers refer to it and follow its changes. Lies below the composites root,
/// directly or in folders, and is shown by its label.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompStrategy : public ZORFeatObject
{
    Q_OBJECT

public:
    /// With the default parameters.
    /// \param parent  the composites root or a folder below; null leaves the strategy without a container
    explicit ZORCompStrategy(ZORFeatObject* parent);
    ~ZORCompStrategy() override;

    const ZORCompStrategyParameters& GetParameters() const;
    /// Takes all of them; layers draped by the strategy are draped anew.
    /// \throws ZORSysException as ZORCompStrategyParameters::Check(); nothing is changed then
    void SetParameters(const ZORCompStrategyParameters& parameters);

signals:
    /// They are others now.
    void ParametersChanged();

private:
    friend struct ZORCompStrategyStorage;

    class Private;
    const std::unique_ptr<Private> d;
};
