// Shows the objects of a document in a scene.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>

#include <QObject>

#include <memory>

class ZORFeatEnvironment;
class ZORGeoGeometry;
class ZORVisScene;

/// Draws the visible objects of a document in their styles, and follows all changes of both.
///
/// What is drawn.  Points, curves and surfaces, and features by what they have made for themselves; a layer by its
///                 surface and its yarns. What belongs to a feature is not drawn by itself, and a body or a feature
///                 around existing geometry is seen by that geometry (GetDrawn()). A geometry is not drawn while an
///                 object of the environment stands for it, since it would be drawn twice.
/// Traces.         The drawings are drawings of the scene (ZORVisScene::SetDrawing()): they add no objects to the
///                 environment, hold no references to geometry, and leave no lines in the trace of calls.
/// Time.           Changes are drawn from the event loop in slices of some milliseconds, in the order in which they
///                 came; the arrays of large objects are computed in threads. Former drawings stay until then.
///
/// Thread safety: main thread only.
class ZORFEATURE_EXPORT ZORFeatPresentation : public QObject
{
    Q_OBJECT

public:
    /// \param environment  not owned; may die first, the scene then shows nothing of it
    /// \param scene        not owned; may die first
    ZORFeatPresentation(ZORFeatEnvironment* environment, ZORVisScene* scene, QObject* parent = nullptr);
    /// Takes the drawings out of the scene. Waits for threads that compute large ones, usually for less than a second.
    ~ZORFeatPresentation() override;

    /// Whether the scene shows all changes so far.
    bool IsUpToDate() const;

    /// Returns the object by whose drawing people see an object: the feature that an object belongs to, the geometry of
    /// a body or of a feature around existing geometry, or the object itself. Its style counts.
    /// \param object  null and objects of other containers are fine
    /// \return null where there is nothing to see; not owned
    ZORGeoGeometry* GetDrawn(const ZORGeoGeometry* object) const;

signals:
    /// The scene shows all changes so far, and did not before.
    void UpToDate();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
