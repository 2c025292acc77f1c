// Combo box of objects of a container.

#pragma once

#include <QComboBox>
#include <QPointer>

#include <functional>

class ZORFeatContainer;
class ZORGeoGeometry;

/// Lists objects by their names, features before other geometry, and follows the container: what comes, goes or is
/// renamed while the dialog is open shows, and the selection stays where it can.
class ZORStdObjectCombo final : public QComboBox
{
    Q_OBJECT

public:
    /// Whether an object is offered.
    using Filter = std::function<bool(const ZORGeoGeometry& object)>;
    enum Shape { Points = 1, Curves = 2, Surfaces = 4 };
    Q_DECLARE_FLAGS(Shapes, Shape)

    /// Features with such a body, and geometry of such a class that no feature has as its own.
    static Filter ShapeFilter(Shapes shapes);
    /// Objects of the class \a T and those derived from it.
    template<class T>
    static Filter ClassFilter()
    {
        return [](const ZORGeoGeometry& object) { return qobject_cast<const T*>(&object) != nullptr; };
    }

    /// \param container  not owned
    /// \param noneText   of the entry for no object, which is selected at first; null: there is no such entry, the
    ///                   first object is selected, and nothing once the selected one has gone
    ZORStdObjectCombo(ZORFeatContainer* container, const Filter& filter, const QString& noneText,
                      QWidget* parent);
    ~ZORStdObjectCombo() override;

    void SetFilter(const Filter& filter);

    /// Null for none, also when it has been destroyed since.
    ZORGeoGeometry* GetObject() const;
    template<class T>
    T* Get() const
    {
        return qobject_cast<T*>(GetObject());
    }
    /// \param object  null for none, as is one that is not listed
    void Select(ZORGeoGeometry* object);
    /// The listed object that stands for another one: itself, or a feature with the same shape. Null for none.
    /// O(entries).
    ZORGeoGeometry* Find(const ZORGeoGeometry* object) const;
    /// Selects the next object that comes, unless the user selects another one before.
    void SelectNext();

signals:
    /// GetObject() is another one.
    void ObjectChanged();

private:
    void OnAdded(ZORGeoGeometry* object);
    void ScheduleRefresh();
    void Refresh();
    void OnIndexChanged();
    QList<ZORGeoGeometry*> FindObjects();

    const QPointer<ZORFeatContainer> m_container; // not owned
    Filter m_filter;
    const QString m_noneText;
    QPointer<ZORGeoGeometry> m_object;          // selected; not owned
    const ZORGeoGeometry* m_reported = nullptr; // by the last ObjectChanged(); may be destroyed
    bool m_wasChosen = false;
    bool m_selectsNext = false;
    bool m_isScheduled = false;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZORStdObjectCombo::Shapes)
