// What the commands ask of the objects of a container, and how they create some.

#pragma once

#include <QList>
#include <QPointer>
#include <QString>

class ZORFeatContainer;
class ZORFeatGeometry;
class ZORFeatObject;
class ZORFeatRoot;
class ZORGeoGeometry;

/// The name people know an object by: the label of a feature, else the object name.
QString ZORStdNameOf(const ZORGeoGeometry* object);

/// "wanted 1", or with the next number that no feature of the container is labelled with. O(objects).
QString ZORStdUniqueLabel(const ZORFeatContainer& container, const QString& wanted);

/// The same among the names of all objects, see ZORStdNameOf().
QString ZORStdUniqueName(const ZORFeatContainer& container, const QString& wanted);

/// Features that a command is creating: all of them or none. What has not been kept is removed at the end.
class ZORStdCreation
{
public:
    ZORStdCreation() = default;
    ~ZORStdCreation();
    Q_DISABLE_COPY_MOVE(ZORStdCreation)

    /// Labels and registers a feature. It is removed at the end, also when its registration throws.
    /// \param label  empty for the default one
    /// \throws ZORSysException as ZORFeatObject::Initialize()
    template<class Feature>
    Feature* Add(Feature* feature, const QString& label)
    {
        AddFeature(feature, label);
        return feature;
    }
    /// The root of a class, created when the container has none.
    ZORFeatRoot* AddRoot(ZORFeatContainer* container, const char* className);
    /// The feature that has the shape of an object: itself, or a new raw feature in \a folder around a point, a
    /// curve or a surface that is none.
    ZORFeatGeometry* AddFeatureOf(ZORGeoGeometry* object, ZORFeatObject* folder);

    void Keep() { m_features.clear(); }

private:
    void AddFeature(ZORFeatObject* feature, const QString& label);

    QList<QPointer<ZORFeatObject>> m_features;
};
