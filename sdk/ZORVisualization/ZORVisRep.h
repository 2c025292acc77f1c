// Base of the representations.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <memory>
#include <vector>

struct ZORVisRepItem;

/// What a visual object looks like. A representation never changes after its construction.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisRep
{
public:
    using Items = std::vector<std::shared_ptr<const ZORVisRepItem>>;

    virtual ~ZORVisRep();
    Q_DISABLE_COPY_MOVE(ZORVisRep)

    /// Box around all primitives; empty when nothing has a finite point.
    ZORMathBoundingBox GetBoundingBox() const;

    /// Computes ahead what pictures need, so that the first one takes less time. For large representations: may take a
    /// second per 10 million triangles, and may run in any thread.
    void Prepare() const;

    /// The drawing data, one item per set of options, in drawing order; for the module itself.
    const Items& GetItems() const;

protected:
    explicit ZORVisRep(Items items);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
