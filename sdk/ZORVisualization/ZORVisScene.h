// What the views of an environment show.

#pragma once

#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QList>
#include <QObject>

#include <memory>

class QColor;
class ZORVisEnvironment;
class ZORVisRep;
class ZORVisScenePrivate;

/// Follows an environment and keeps ready what is needed to draw it. One scene serves any number of
/// renderers.
///
/// Drawings.   A scene may show more than its environment: drawings, one for each owner. They do not belong to the
///             environment, which does not change with them, and hold no reference to their owners.
/// Highlights. Drawings and objects of an owner can be highlighted. They keep their shading, and get the color of the
///             highlight mixed into their own; lines and points get it whole.
/// Order.      Objects and drawings are drawn in the order in which they were added; one whose representation changes
///             keeps its place.
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

    enum class Highlight { None, Hovered, Selected };

    /// Shows a drawing for an owner, in the place of the one it had.
    /// \param owner  not owned; the drawing goes when it is destroyed. Null is ignored
    /// \param rep    null takes the drawing away
    void SetDrawing(QObject* owner, std::unique_ptr<ZORVisRep> rep);
    /// Takes the drawing of an owner away, if there is one; its highlight stays set.
    void RemoveDrawing(const QObject* owner);
    bool HasDrawing(const QObject* owner) const;
    int GetNumDrawings() const;
    /// Box around the drawing of an owner and what the environment shows for it; empty when there is nothing.
    ZORMathBoundingBox GetBoundingBoxOf(const QObject* owner) const;

    /// Highlights the drawing of an owner and what the environment shows for it, now or later. O(log n) and as fast for
    /// large ones.
    /// \param owner  not owned; null is ignored
    void SetHighlight(QObject* owner, Highlight highlight);
    Highlight GetHighlight(const QObject* owner) const;
    /// Colors of highlights; invalid ones are left out. Orange and yellow at first.
    void SetHighlightColors(const QColor& selected, const QColor& hovered);

    /// Hides what the environment shows for an owner in this scene, or shows it again; drawings, which whoever set them
    /// can remove, are not hidden. What is hidden is neither drawn nor picked.
    /// \param owner  not owned; null is ignored
    void SetHidden(QObject* owner, bool isHidden);
    bool IsHidden(const QObject* owner) const;

signals:
    /// The scene has to be drawn again. Comes once, from the event loop, for all changes since the last one.
    void Changed();

private:
    friend class ZORVisRenderer;
    const std::unique_ptr<ZORVisScenePrivate> d;
};
