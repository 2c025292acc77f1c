// Material of plies.

#pragma once

#include <ZORComposites/ZORCompAttributed.h>
#include <ZORComposites/ZORCompMaterialProperties.h>
#include <ZORFeature/ZORFeatObject.h>

#include <memory>

class ZORCompMaterialLibrary;

/// A material of the library; its name is its label.
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORCOMPOSITES_EXPORT ZORCompMaterial : public ZORFeatObject, public ZORCompAttributed
{
    Q_OBJECT

public:
    /// A material of which nothing is known.
    /// \param library  null leaves the material without a container
    explicit ZORCompMaterial(ZORCompMaterialLibrary* library);
    ~ZORCompMaterial() override;

    const ZORCompMaterialProperties& GetProperties() const;
    /// Replaces all of them.
    /// \throws ZORSysException as ZORCompMaterialProperties::Check(); nothing is changed then
    void SetProperties(const ZORCompMaterialProperties& properties);

signals:
    void PropertiesChanged();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
