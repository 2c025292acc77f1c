// What the views of an environment show.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QObject>

#include <memory>

class ZORVisEnvironment;
class ZORVisScenePrivate;

/// Follows an environment and keeps ready what is needed to draw it. One scene serves any number of
/// renderers.
///
/// Objects are drawn in the order in which they were added; one whose representation changes keeps its place.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORVISUALIZATION_EXPORT ZORVisScene : public QObject
{
    Q_OBJECT

public:
    /// \param environment  may be null and may die before the scene, which is empty then
    explicit ZORVisScene(ZORVisEnvironment* environment, QObject* parent = nullptr);
    ~ZORVisScene() override;

    ZORVisEnvironment* GetEnvironment() const;
    /// Box around everything; empty when there is nothing. O(number of objects) after a change
    ZORMathBoundingBox GetBoundingBox() const;

signals:
    /// The scene has to be drawn again. Comes once, from the event loop, for all changes since the last one.
    void Changed();

private:
    friend class ZORVisRenderer;
    const std::unique_ptr<ZORVisScenePrivate> d;
};
