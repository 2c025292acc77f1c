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

    /// Returns a representation of the same primitives with other options. Shares them: O(number of primitives), and
    /// scenes keep what they have made of them.
    std::unique_ptr<ZORVisRepGraphics> WithOptions(const ZORVisOptions& options) const;

    /// The primitives in their order; owned by the representations that share them.
    const QList<const ZORVisPrimitive*>& GetPrimitives() const;
    const ZORVisOptions& GetOptions() const;

private:
    class Primitives;
    ZORVisRepGraphics(const ZORVisOptions& options, std::shared_ptr<const Primitives> primitives);

    class Private;
    const std::unique_ptr<Private> d;
};
