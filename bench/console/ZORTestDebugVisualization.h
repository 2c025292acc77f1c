// What the SDK's debug visualization has collected, as one visual object.

#pragma once

#include <QPointer>

class ZORFeatEnvironment;
class ZORVisVirtualObject;

/// Shows the SDK's debug points, lines, polylines and triangles in an environment.
class ZORTestDebugVisualization
{
public:
    /// \param environment  not owned
    explicit ZORTestDebugVisualization(ZORFeatEnvironment* environment);
    ~ZORTestDebugVisualization();
    Q_DISABLE_COPY_MOVE(ZORTestDebugVisualization)

    /// Shows what the debug container holds now, in place of what was shown; nothing when it has nothing
    /// to draw.
    void Show();
    void Hide();

private:
    ZORVisVirtualObject* Create() const;

    ZORFeatEnvironment* m_environment; // not owned
    QPointer<ZORVisVirtualObject> m_object;
};
