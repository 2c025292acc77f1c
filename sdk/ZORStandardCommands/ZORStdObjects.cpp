#include "ZORStdObjects.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatGeometry.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathPoint.h>
#include <ZORTopology/ZORTopBody.h>
#include <ZORWireframe/ZORWFRawCurve.h>
#include <ZORWireframe/ZORWFRawPoint.h>
#include <ZORWireframe/ZORWFRawSurface.h>

#include <QSet>

QString ZORStdNameOf(const ZORGeoGeometry* object)
{
    const auto* const feature = qobject_cast<const ZORFeatObject*>(object);
    return feature ? feature->GetLabel() : object->objectName();
}

namespace {

QString MakeUnique(const QSet<QString>& taken, const QString& wanted)
{
    for (int number = 1;; ++number) {
        QString name = QString::fromLatin1("%1 %2").arg(wanted, QString::number(number));
        if (!taken.contains(name))
            return name;
    }
}

} // namespace

QString ZORStdUniqueLabel(const ZORFeatContainer& container, const QString& wanted)
{
    QSet<QString> labels;
    for (int i = 0; i < container.GetNumGeometry(); ++i) {
        if (const auto* feature = qobject_cast<const ZORFeatObject*>(container.GetGeometryByIndex(i)))
            labels.insert(feature->GetLabel());
    }
    return MakeUnique(labels, wanted);
}

QString ZORStdUniqueName(const ZORFeatContainer& container, const QString& wanted)
{
    QSet<QString> names;
    for (int i = 0; i < container.GetNumGeometry(); ++i)
        names.insert(ZORStdNameOf(container.GetGeometryByIndex(i)));
    return MakeUnique(names, wanted);
}

ZORStdCreation::~ZORStdCreation()
{
    // The latest first: they may use those before them.
    for (auto feature = m_features.rbegin(); feature != m_features.rend(); ++feature) {
        if (*feature && (*feature)->IsInitialized())
            (*feature)->Remove();
        else
            delete feature->data();
    }
}

void ZORStdCreation::AddFeature(ZORFeatObject* feature, const QString& label)
{
    m_features.append(feature);
    feature->SetLabel(label);
    feature->Initialize();
}

ZORFeatRoot* ZORStdCreation::AddRoot(ZORFeatContainer* container, const char* className)
{
    for (ZORFeatRoot* root : container->GetFeatureRoots()) {
        if (qstrcmp(root->metaObject()->className(), className) == 0)
            return root;
    }
    ZORFeatRoot* const root = container->GetFeatureRoot(className);
    m_features.append(root);
    return root;
}

ZORFeatGeometry* ZORStdCreation::AddFeatureOf(ZORGeoGeometry* object, ZORFeatObject* folder)
{
    if (auto* feature = qobject_cast<ZORFeatGeometry*>(object))
        return feature;
    const QString label = ZORStdNameOf(object);
    if (const auto* point = qobject_cast<const ZORGeoPoint*>(object))
        return Add(new ZORWFRawPoint(folder, point->GetMathPoint()), label);
    if (const auto* curve = qobject_cast<const ZORGeoCurve*>(object))
        return Add(new ZORWFRawCurve(folder, curve), label);
    return Add(new ZORWFRawSurface(folder, qobject_cast<const ZORGeoSurface*>(object)), label);
}
