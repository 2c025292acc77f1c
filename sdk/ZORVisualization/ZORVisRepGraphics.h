// Representation made of primitives.

#pragma once

#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisRep.h>

#include <QList>

#include <memory>

class ZORVisPrimitive;

/// Primitives drawn with one set of options.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisRepGraphics final : public ZORVisRep
{
public:
    /// \param primitives  taken over and deleted with the representation, each once; null entries are ignored
    ZORVisRepGraphics(const QList<const ZORVisPrimitive*>& primitives, const ZORVisOptions& options);
    ~ZORVisRepGraphics() override;

    /// The primitives in their order; owned by the representation.
    const QList<const ZORVisPrimitive*>& GetPrimitives() const;
    const ZORVisOptions& GetOptions() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
