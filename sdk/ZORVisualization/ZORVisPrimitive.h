// Base of what a representation is made of.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <memory>

struct ZORVisPrimitiveData;

/// Something to draw: lines, point symbols, a text, triangles. A primitive keeps all that its drawing
/// needs, so that it survives the geometry it was made from; it never changes.
///
/// Thread safety: reentrant; objects may be shared read-only.
class ZORVISUALIZATION_EXPORT ZORVisPrimitive
{
public:
    virtual ~ZORVisPrimitive();
    Q_DISABLE_COPY_MOVE(ZORVisPrimitive)

    /// Box around the finite points; empty when there is none. A text counts as its position.
    ZORMathBoundingBox GetBoundingBox() const;

    /// The drawing data, shared with the representations made of this primitive; for the module itself.
    const std::shared_ptr<const ZORVisPrimitiveData>& GetData() const { return m_data; }

protected:
    explicit ZORVisPrimitive(std::shared_ptr<const ZORVisPrimitiveData> data);

private:
    std::shared_ptr<const ZORVisPrimitiveData> m_data;
};
