// How the objects of a document look.

#pragma once

#include <ZORFeature/ZORFeatStyle.h>

#include <QCborMap>
#include <QColor>
#include <QList>
#include <QObject>

#include <functional>
#include <memory>
#include <utility>

class ZORFeatContainer;
class ZORGeoGeometry;

/// The styles of the objects of a container: those that were set, and the usual one of its kind for every other. They
/// belong to the document: container files keep the styles that were set, setting one is a change of the document
/// (ContentChanged()), and a style goes with its object.
///
/// Surfaces and layers usually have the colors of a palette in the order of their creation. People who see few colors
/// can also tell its neighbors apart, and all of its colors stand out from light and dark backgrounds.
///
/// Thread safety: thread of the container; objects may be shared read-only.
class ZORFEATURE_EXPORT ZORFeatStyles : public QObject
{
    Q_OBJECT

public:
    /// As ZORFeatContainer makes its own.
    explicit ZORFeatStyles(ZORFeatContainer* container);
    ~ZORFeatStyles() override;

    /// Returns the style of an object, the usual one of its kind where none was set. O(1), amortized.
    /// \param object  null, or of another container: the style of something of no kind
    ZORFeatStyle Get(const ZORGeoGeometry* object) const;
    /// Returns the style that the object has while none is set.
    ZORFeatStyle GetUsual(const ZORGeoGeometry* object) const;
    /// Whether a style was set that differs from the usual one.
    bool IsSet(const ZORGeoGeometry* object) const;

    /// Gives objects a style; the usual one removes what was set. Null, objects of other containers and those that have
    /// the style already are left out.
    void Set(const QList<ZORGeoGeometry*>& objects, const ZORFeatStyle& style);
    /// Changes the visibility of objects and keeps the rest of their styles.
    void SetVisible(const QList<ZORGeoGeometry*>& objects, bool isVisible);
    /// Gives objects their usual styles back.
    void Reset(const QList<ZORGeoGeometry*>& objects);

    /// Whether objects that are registered from now on are visible; true at first. Applications that show objects
    /// themselves set it to false, and open ZORFeatShowNew where objects are to be seen at once. Files do not keep what
    /// this made invisible: it is no style that anybody set.
    void SetNewVisible(bool isVisible);
    bool AreNewVisible() const;

    /// The colors of the palette, in their order.
    static QList<QColor> GetPalette();

signals:
    /// An object has another style; after ContentChanged() of the container.
    void Changed(ZORGeoGeometry* object);

private:
    friend class ZORFeatContainer;
    friend class ZORFeatShowNew;
    QList<std::pair<ZORGeoGeometry*, QCborMap>> GetStored() const;
    void TakeStored(const QList<std::pair<ZORGeoGeometry*, QCborMap>>& styles);
    void Change(const QList<ZORGeoGeometry*>& objects,
                const std::function<ZORFeatStyle(const ZORGeoGeometry*)>& makeStyle);

    class Private;
    const std::unique_ptr<Private> d;
};

/// While it lives, objects that are registered are visible: for what people open, import or create by commands.
/// Thread safety: reentrant; an object belongs to its thread.
class ZORFEATURE_EXPORT ZORFeatShowNew
{
public:
    /// \param container  null and one that dies first are fine
    explicit ZORFeatShowNew(ZORFeatContainer* container);
    ~ZORFeatShowNew();
    Q_DISABLE_COPY_MOVE(ZORFeatShowNew)

private:
    class Private;
    const std::unique_ptr<Private> d;
};
