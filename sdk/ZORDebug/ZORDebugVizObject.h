// One drawing of the debug visualization.

#pragma once

#include <ZORDebug/ZORDebugGlobal.h>

#include <QString>

#include <memory>

class ZORVisRep;

/// What one call of ZORDebugVizContainer has recorded. Never changes.
/// Thread safety: reentrant; objects may be shared read-only.
class ZORDEBUG_EXPORT ZORDebugVizObject
{
public:
    /// \param rep    taken over; null when there is nothing to draw
    /// \param label  may be empty
    ZORDebugVizObject(std::unique_ptr<ZORVisRep> rep, const QString& label);
    ~ZORDebugVizObject();
    Q_DISABLE_COPY_MOVE(ZORDebugVizObject)

    /// The drawing, its label included. Owned by the object. Null when nothing was drawable: no finite
    /// point, a single point as a polyline, an empty text.
    ZORVisRep* GetRep() const;
    const QString& GetLabel() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};
