// The visual objects of a document.

#pragma once

#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QList>
#include <QObject>

#include <memory>

class ZORVisVirtualObject;

/// Lists visual objects and tells who draws them about changes. Owns what it lists.
/// Thread safety: reentrant; an object belongs to its thread.
class ZORVISUALIZATION_EXPORT ZORVisEnvironment : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE(<ZORVisualization / ZORVisVirtualObject.h>)

public:
    explicit ZORVisEnvironment(QObject* parent = nullptr);
    /// Deletes the listed objects, without signals of this environment.
    ~ZORVisEnvironment() override;

    /// Lists \a object and takes it over; whoever added it may still delete it. An object of another
    /// environment leaves that one. Null, or an object that is listed here already: nothing happens.
    void AddVirtualObject(ZORVisVirtualObject* object);

    /// The listed objects in the order in which they were added. O(n)
    QList<ZORVisVirtualObject*> GetVirtualObjects() const;
    int GetNumVirtualObjects() const;

signals:
    void ObjectAdded(ZORVisVirtualObject* object);
    /// \param object  no longer listed and, where it is being deleted, good for comparison only
    void ObjectRemoved(ZORVisVirtualObject* object);
    /// A listed object has got another representation.
    void ObjectChanged(ZORVisVirtualObject* object);

private:
    friend class ZORVisVirtualObject;
    void Remove(ZORVisVirtualObject* object);

    class Private;
    const std::unique_ptr<Private> d;
};
