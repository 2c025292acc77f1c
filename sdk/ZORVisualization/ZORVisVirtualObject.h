// Something to be seen in an environment.

#pragma once

#include <ZORVisualization/ZORVisualizationGlobal.h>

#include <QObject>

#include <functional>
#include <memory>

class ZORGeoGeometry;
class ZORVisEnvironment;
class ZORVisRep;

/// Carries a representation and knows what it stands for.
///
/// An object is seen from ZORVisEnvironment::AddVirtualObject() on. The environment deletes at its end what
/// is still listed; deleting an object earlier takes it out of its environment, which emits ObjectRemoved.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORVISUALIZATION_EXPORT ZORVisVirtualObject : public QObject
{
    Q_OBJECT

public:
    /// Creates a representation for the object to take over; may return null. Must not throw.
    using RepMaker = std::function<ZORVisRep*()>;

    /// Does not add the object to \a environment.
    /// \param environment  where the object is meant to be seen; may be null
    /// \param owner        what the object stands for, or null: an association, no parent; the object
    /// outlives it
    ZORVisVirtualObject(const ZORVisEnvironment* environment, QObject* owner);
    ~ZORVisVirtualObject() override;

    /// Replaces the representation; the former one is deleted.
    /// \param rep  taken over; null for none; the present one again: no change
    void SetRep(ZORVisRep* rep);
    /// Replaces the representation whenever a geometry changes in place; the present one stays until then. A
    /// second call ends what the first one started.
    /// \param geometry  not owned, may be destroyed before the object; null: none
    /// \param make      is called only while \a geometry exists
    void FollowGeometry(const ZORGeoGeometry* geometry, const RepMaker& make);
    /// The geometry that the representation follows; null when there is none or it has died.
    const ZORGeoGeometry* GetFollowedGeometry() const;
    /// Null when there is none. Owned by the object.
    ZORVisRep* GetRep() const;

    /// Null when there is none or it has died.
    QObject* GetOwner() const;
    /// The environment that lists the object, or null.
    ZORVisEnvironment* GetEnvironment() const;

private:
    friend class ZORVisEnvironment;
    class Private;
    const std::unique_ptr<Private> d;
};
