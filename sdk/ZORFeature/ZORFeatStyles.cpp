#include "ZORFeatStyles.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatSketch.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QCborMap>
#include <QHash>
#include <QPointer>
#include <QSet>

#include <array>
#include <mutex>
#include <utility>

namespace {

// Blue, rose, purple, teal, violet, green, sky and yellow: of all orders, the one whose neighbors differ most for every
// kind of sight. None is orange, which is the color of what is selected.
constexpr std::array<QRgb, 8> kPalette = {0xff7f9fc4, 0xffd16a8a, 0xffb592cf, 0xff3fa08a,
                                          0xff8a6fc0, 0xff7fb069, 0xff5c86b8, 0xffc9b84a};
constexpr QRgb kPointColor = 0xffd05a2a;
constexpr QRgb kCurveColor = 0xff2f7fd0;
constexpr QRgb kCourseColor = 0xff2f9e6f;
constexpr double kCurveWidth = 2;
constexpr double kCourseWidth = 3;

bool HasPaletteColor(ZORFeatKind kind)
{
    return kind == ZORFeatKind::Surface || kind == ZORFeatKind::Layer;
}

ZORFeatStyle LineStyle(QRgb color, double width)
{
    ZORFeatStyle style;
    style.SetColor(QColor(color));
    style.SetLineWidth(width);
    return style;
}

ZORFeatStyle UsualStyle(ZORFeatKind kind, int paletteIndex)
{
    ZORFeatStyle style;
    switch (kind) {
    case ZORFeatKind::None:
        break;
    case ZORFeatKind::Point:
        style.SetColor(QColor(kPointColor));
        style.SetPointSymbol(ZORVisOptions::FullCircle);
        break;
    case ZORFeatKind::Curve:
        return LineStyle(kCurveColor, kCurveWidth);
    case ZORFeatKind::Course:
        return LineStyle(kCourseColor, kCourseWidth);
    case ZORFeatKind::Layer:
        style.SetDisplay(ZORVisOptions::WithEdges); // with its net
        [[fallthrough]];
    case ZORFeatKind::Surface:
        style.SetColor(QColor(kPalette[size_t(paletteIndex) % kPalette.size()]));
        break;
    }
    return style;
}

} // namespace

class ZORFeatStyles::Private
{
public:
    explicit Private(ZORFeatContainer* followed)
        : container(followed)
    {
    }

    bool Holds(const ZORGeoGeometry* object) const
    {
        return object && object->GetContainer() == container && object->IsInitialized();
    }
    void Add(ZORGeoGeometry* object);
    void Remove(const ZORGeoGeometry* object);
    int GetPaletteIndex(const ZORGeoGeometry* object) const;
    /// \return whether the object has another style now
    bool Set(const ZORGeoGeometry* object, const ZORFeatStyle& style, const ZORFeatStyle& usual);

    ZORFeatContainer* const container; // not owned; its owner
    // What differs from the usual style, whose color may still become another one.
    QHash<const ZORGeoGeometry*, QCborMap> values;
    // Those that were registered invisible and that nobody has made visible yet. No style was set for that, so files do not
    // keep it.
    QSet<const ZORGeoGeometry*> hidden;
    bool areNewVisible = true;
    int numShowing = 0; // scopes in which new objects are visible

private:
    void AssignIndices() const;

    mutable std::mutex m_mutex; // of the next three, which const functions bring up to date
    mutable QList<QPointer<const ZORGeoGeometry>> m_added;
    mutable QHash<const ZORGeoGeometry*, int> m_indices;
    mutable int m_nextIndex = 0;
};

void ZORFeatStyles::Private::Add(ZORGeoGeometry* object)
{
    m_added.append(object);
    if (!areNewVisible && numShowing == 0)
        hidden.insert(object);
}

// Called by the destructor of an object that somebody deletes, too: only its address is good.
void ZORFeatStyles::Private::Remove(const ZORGeoGeometry* object)
{
    values.remove(object);
    hidden.remove(object);
    m_indices.remove(object);
}

// Features are complete only after they were added, so that their parts cannot be left out at once.
void ZORFeatStyles::Private::AssignIndices() const
{
    const QList<QPointer<const ZORGeoGeometry>> added = std::exchange(m_added, {});
    if (m_indices.isEmpty())
        m_nextIndex = 0; // as in a new document
    for (const QPointer<const ZORGeoGeometry>& object : added) {
        if (!Holds(object) || container->GetOwner(object))
            continue;
        const ZORFeatKind kind = ZORFeatSketch::KindOf(object);
        const bool isFeature = qobject_cast<const ZORFeatObject*>(object);
        if (kind == (isFeature ? ZORFeatKind::Layer : ZORFeatKind::Surface))
            m_indices.insert(object, m_nextIndex++);
    }
}

int ZORFeatStyles::Private::GetPaletteIndex(const ZORGeoGeometry* object) const
{
    const std::lock_guard lock(m_mutex);
    AssignIndices();
    return m_indices.value(object);
}

bool ZORFeatStyles::Private::Set(const ZORGeoGeometry* object, const ZORFeatStyle& style,
                                 const ZORFeatStyle& usual)
{
    const QCborMap different = style.ToStored(usual);
    if (values.value(object) == different)
        return false;
    if (different.isEmpty())
        values.remove(object);
    else
        values.insert(object, different);
    return true;
}

ZORFeatStyles::ZORFeatStyles(ZORFeatContainer* container)
    : QObject(container)
    , d(std::make_unique<Private>(container))
{
    connect(container, &ZORGeoContainer::GeometryAdded, this,
            [this](ZORGeoGeometry* object) { d->Add(object); });
    connect(container, &ZORGeoContainer::GeometryAboutToBeRemoved, this,
            [this](ZORGeoGeometry* object) { d->Remove(object); });
}

ZORFeatStyles::~ZORFeatStyles() = default;

ZORFeatStyle ZORFeatStyles::Get(const ZORGeoGeometry* object) const
{
    const auto values = d->values.constFind(object);
    const ZORFeatStyle usual = GetUsual(object);
    return values == d->values.cend() ? usual : ZORFeatStyle::FromStored(*values, usual);
}

ZORFeatStyle ZORFeatStyles::GetUsual(const ZORGeoGeometry* object) const
{
    if (!d->Holds(object))
        return UsualStyle(ZORFeatKind::None, 0);
    const ZORFeatKind kind = ZORFeatSketch::KindOf(object);
    ZORFeatStyle style = UsualStyle(kind, HasPaletteColor(kind) ? d->GetPaletteIndex(object) : 0);
    if (d->hidden.contains(object))
        style.SetVisible(false);
    return style;
}

bool ZORFeatStyles::IsSet(const ZORGeoGeometry* object) const
{
    return d->values.contains(object);
}

void ZORFeatStyles::Change(const QList<ZORGeoGeometry*>& objects,
                           const std::function<ZORFeatStyle(const ZORGeoGeometry*)>& makeStyle)
{
    QList<QPointer<ZORGeoGeometry>> changed;
    for (ZORGeoGeometry* object : objects) {
        if (!d->Holds(object))
            continue;
        const ZORFeatStyle style = makeStyle(object);
        const bool isUncovered = style.IsVisible() && d->hidden.remove(object);
        if (d->Set(object, style, GetUsual(object)) || isUncovered)
            changed.append(object);
    }
    if (!changed.isEmpty())
        emit d->container->ContentChanged();
    // Receivers may remove objects, and the container with this one.
    const QPointer<ZORFeatStyles> self(this);
    for (const QPointer<ZORGeoGeometry>& object : std::as_const(changed)) {
        if (self && object)
            emit Changed(object);
    }
}

void ZORFeatStyles::Set(const QList<ZORGeoGeometry*>& objects, const ZORFeatStyle& style)
{
    ZOR_TRACE_CALL(objects, style);
    Change(objects, [&style](const ZORGeoGeometry*) { return style; });
}

void ZORFeatStyles::SetVisible(const QList<ZORGeoGeometry*>& objects, bool isVisible)
{
    ZOR_TRACE_CALL(objects, isVisible);
    Change(objects, [this, isVisible](const ZORGeoGeometry* object) {
        ZORFeatStyle style = Get(object);
        style.SetVisible(isVisible);
        return style;
    });
}

void ZORFeatStyles::Reset(const QList<ZORGeoGeometry*>& objects)
{
    ZOR_TRACE_CALL(objects);
    Change(objects, [this](const ZORGeoGeometry* object) { return GetUsual(object); });
}

void ZORFeatStyles::SetNewVisible(bool isVisible)
{
    d->areNewVisible = isVisible;
}

bool ZORFeatStyles::AreNewVisible() const
{
    return d->areNewVisible;
}

QList<QColor> ZORFeatStyles::GetPalette()
{
    QList<QColor> colors;
    for (const QRgb color : kPalette)
        colors.append(QColor(color));
    return colors;
}

// What belongs to a feature is shown as the feature is.
QList<std::pair<ZORGeoGeometry*, QCborMap>> ZORFeatStyles::GetStored() const
{
    QList<std::pair<ZORGeoGeometry*, QCborMap>> stored;
    for (auto entry = d->values.cbegin(); entry != d->values.cend(); ++entry) {
        auto* const object = const_cast<ZORGeoGeometry*>(entry.key());
        if (ZORFeatSketch::KindOf(object) != ZORFeatKind::None && !d->container->GetOwner(object))
            stored.append({object, entry.value()});
    }
    return stored;
}

void ZORFeatStyles::TakeStored(const QList<std::pair<ZORGeoGeometry*, QCborMap>>& styles)
{
    QHash<const ZORGeoGeometry*, QCborMap> values;
    QList<ZORGeoGeometry*> objects;
    for (const auto& [object, stored] : styles) {
        values.insert(object, stored);
        objects.append(object);
    }
    Change(objects, [this, &values](const ZORGeoGeometry* object) {
        return ZORFeatStyle::FromStored(values.value(object), GetUsual(object));
    });
}

class ZORFeatShowNew::Private
{
public:
    QPointer<ZORFeatStyles> styles;
};

ZORFeatShowNew::ZORFeatShowNew(ZORFeatContainer* container)
    : d(new Private{container ? container->GetStyles() : nullptr})
{
    if (d->styles)
        ++d->styles->d->numShowing;
}

ZORFeatShowNew::~ZORFeatShowNew()
{
    if (d->styles)
        --d->styles->d->numShowing;
}
