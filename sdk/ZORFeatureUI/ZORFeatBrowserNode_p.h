// Items of the feature browser.

#pragma once

#include "ZORFeatBrowserIcons_p.h"

#include <QString>

#include <vector>

class ZORGeoGeometry;

/// A geometry, or the group of a kind of geometry.
struct ZORFeatBrowserNode
{
    ZORFeatBrowserNode* parent = nullptr; // not owned
    ZORGeoGeometry* geometry = nullptr;   // not owned; null for groups and when it is gone
    int depth = 0;                        // 0 for the invisible root
    int row = 0;                          // among the parent's children, once the views know the node
    ZORFeatBrowserKind kind = ZORFeatBrowserKind::Other;
    bool isGroup = false;
    bool isKnown = false; // to the views
    bool isDead = false;  // the geometry is gone, or the group has become empty
    bool isDirty = false; // in the list of the model
    bool isWatched = false;
    bool isWatchedOwner = false;
    bool isOwned = false; // by the feature of the parent
    bool isDestroyed = false;
    quint64 eyeVersion = 0; // of the model when the eye was computed; 0: never
    ZORFeatBrowserEye eye = ZORFeatBrowserEye::None;
    std::vector<ZORFeatBrowserNode*> children; // owned
    std::vector<ZORFeatBrowserNode*> pending;  // owned; children the views do not know yet

    static ZORFeatBrowserKind KindOf(const ZORGeoGeometry* geometry);
    /// Takes dead nodes out of a list and returns them; both keep their order.
    static std::vector<ZORFeatBrowserNode*> TakeDead(std::vector<ZORFeatBrowserNode*>& nodes);
    /// Counts the separate runs of dead children.
    int CountDeadRuns() const;
    /// Sets the rows of the children from this one on.
    void Renumber(int firstRow);
    /// Returns the label or name of the geometry; of a group, its kind and number. The geometry is not gone.
    QString GetText() const;
    /// Returns \a name, class and number of references as plain text; empty for groups.
    QString GetToolTip(const QString& name) const;
};
