// Node of a feature tree.

#pragma once

#include <ZORFeature/ZORFeatureGlobal.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <memory>

/// Base of all features: a geometry of the container that has a label, a parent and children.
///
/// Life.      Made with its parent (or, at the top of a tree, its container) and registered by
///            Initialize(), which makes it the last child of the parent. Owned by the container.
/// Removal.   Remove(), a plain delete and the end of the container all take the children with them.
///            Users of a removed feature are left with null references.
/// Cost.      Joining and leaving the tree are O(1); no function recurses, however deep the tree is.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatObject : public ZORGeoGeometry
{
    Q_OBJECT

public:
    /// \param parent  the feature this one will be a child of; null leaves it without a container, so that
    ///                it cannot be initialised
    explicit ZORFeatObject(ZORFeatObject* parent);
    /// A feature at the top of a tree.
    explicit ZORFeatObject(ZORGeoContainer* container);
    ~ZORFeatObject() override;

    /// Registers with the container and becomes the last child of the parent. A second call does nothing.
    /// \throws ZORSysException "the parent feature does not exist any more", "the parent feature is not
    ///         initialized", "geometry has no container"
    void Initialize() override;

    /// Null at the top of a tree.
    ZORFeatObject* GetParentFeature() const;
    /// The direct children in the order of their registration. O(children).
    QList<ZORFeatObject*> GetChildren() const;
    int GetNumChildren() const;
    /// All features below this one, depth first, each before its own children. O(result).
    QList<ZORFeatObject*> GetAllChildren() const;

    /// The features that this one is made from, some perhaps more than once, none null; here none.
    virtual QList<ZORFeatObject*> GetInputs() const;
    /// Whether this is \a other or made from it, at any distance. O(features that this one is made from).
    bool DependsOn(const ZORFeatObject* other) const;

    /// The name shown to people. An empty label brings back the default one.
    void SetLabel(const QString& label);
    /// The label that was set, else the object name ("Folder.1").
    QString GetLabel() const;

    /// Takes this feature and everything below it out of the container and destroys them, the deepest
    /// first, whatever their reference counts are. Derived classes clean up in their destructors: only
    /// the feature that was asked to go sees the call.
    ///
    /// A call for a feature that is already being removed does nothing.
    virtual void Remove();

signals:
    void LabelChanged(const QString& label);
    /// A direct child has come or gone.
    void ChildrenChanged();

private:
    void Link();
    void Unlink();
    void DestroyDescendants();

    friend struct ZORFeatObjectStorage;
    class Private;
    const std::unique_ptr<Private> d;
};
