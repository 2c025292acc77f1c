// Knows the document that is current in the application.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>

#include <QObject>

#include <memory>

class ZORFeatEnvironment;

/// Keeper of the current environment. The application sets it; commands and plug-ins ask for it.
/// Thread safety: main thread only.
class ZORFEATURE_EXPORT ZORFeatEnvironmentManager : public QObject
{
    Q_OBJECT

public:
    /// The one manager; lives as long as the process.
    static ZORFeatEnvironmentManager* GetManager();

    /// Null while no environment is current, as after the destruction of the current one.
    ZORFeatEnvironment* GetCurrentEnvironment() const;
    /// \param environment  not taken over; null for none
    void SetCurrentEnvironment(ZORFeatEnvironment* environment);

signals:
    /// The current environment has become another one.
    /// \param environment  null for none
    void CurrentEnvironmentChanged(ZORFeatEnvironment* environment);

private:
    friend class ZORFeatEnvironment;
    ZORFeatEnvironmentManager();
    ~ZORFeatEnvironmentManager() override;
    void ChangeTo(ZORFeatEnvironment* environment);

    class Private;
    const std::unique_ptr<Private> d;
};
