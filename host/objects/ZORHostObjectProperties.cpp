#include "objects/ZORHostObjectProperties.h"

#include "objects/ZORHostObjectSet.h"
#include "view/ZORHostDisplayName.h"
#include "view/ZORHostObjectKind.h"

#include <ZORFeature/ZORFeatComputedGeometry.h>
#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoCurve.h>
#include <ZORGeometry/ZORGeoHolders.h>
#include <ZORGeometry/ZORGeoPoint.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathBoundingBox.h>
#include <ZORTopology/ZORTopBody.h>

#include <QCoreApplication>
#include <QLocale>
#include <QRegularExpression>

#include <map>

namespace {

struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(ZORHostObjectProperties)
};

QString ToText(double value)
{
    return QLocale().toString(value, 'f', 3);
}

QString ToText(const ZORMathPoint& point)
{
    return Texts::tr("%1, %2, %3 mm").arg(ToText(point.GetX()), ToText(point.GetY()), ToText(point.GetZ()));
}

/// What the objects are made of, in sum.
struct Measures
{
    int numPoints = 0;
    int numCurves = 0;
    int numSurfaces = 0;
    qint64 numCurvePoints = 0;
    qint64 numTriangles = 0;
    qint64 numVertices = 0;
    double length = 0;
    double area = 0;
    ZORMathPoint position; // of the last point
    ZORMathBoundingBox box;

    void Add(const ZORGeoGeometry* shape)
    {
        if (const auto* point = qobject_cast<const ZORGeoPoint*>(shape)) {
            ++numPoints;
            position = point->GetMathPoint();
            box.Add(position);
        } else if (const auto* curve = qobject_cast<const ZORGeoCurve*>(shape)) {
            ++numCurves;
            numCurvePoints += curve->GetNumPoints();
            length += curve->GetLength();
            box.Add(curve->GetBoundingBox());
        } else if (const auto* surface = qobject_cast<const ZORGeoSurface*>(shape)) {
            ++numSurfaces;
            numTriangles += surface->GetNumTriangles();
            numVertices += surface->GetVertexArray().size();
            area += surface->GetArea();
            box.Add(surface->GetBoundingBox());
        }
    }
};

/// Returns the points, curves and surfaces by which people see an object.
QList<const ZORGeoGeometry*> ShapesOf(const ZORGeoGeometry* drawn)
{
    const auto* const feature = qobject_cast<const ZORFeatGeometry*>(drawn);
    if (!feature)
        return {drawn};
    return feature->GetBody() ? feature->GetBody()->GetGeometries() : QList<const ZORGeoGeometry*>();
}

void AddMeasures(QList<ZORHostProperty>& values, const Measures& sum)
{
    const QLocale locale;
    if (sum.numPoints == 1 && sum.numCurves + sum.numSurfaces == 0) {
        values.append({Texts::tr("Position"), ToText(sum.position)});
        return;
    }
    if (sum.numCurves > 0) {
        values.append({Texts::tr("Points of curves"), locale.toString(sum.numCurvePoints)});
        values.append({Texts::tr("Length"), Texts::tr("%1 mm").arg(ToText(sum.length))});
    }
    if (sum.numSurfaces > 0) {
        values.append({Texts::tr("Triangles"), locale.toString(sum.numTriangles)});
        values.append({Texts::tr("Vertices"), locale.toString(sum.numVertices)});
        values.append({Texts::tr("Area"), Texts::tr("%1 mm²").arg(ToText(sum.area))});
    }
    if (sum.box.IsEmpty())
        return;
    const ZORMathPoint lower = sum.box.GetLowerPoint();
    const ZORMathPoint upper = sum.box.GetUpperPoint();
    values.append(
        {Texts::tr("Size"), Texts::tr("%1 × %2 × %3 mm")
                                .arg(ToText(upper.GetX() - lower.GetX()), ToText(upper.GetY() - lower.GetY()),
                                     ToText(upper.GetZ() - lower.GetZ()))});
    values.append({Texts::tr("Lower corner"), ToText(lower)});
    values.append({Texts::tr("Upper corner"), ToText(upper)});
}

void AddFeature(QList<ZORHostProperty>& values, const ZORFeatObject& feature)
{
    if (const ZORFeatObject* parent = feature.GetParentFeature())
        values.append({Texts::tr("Part of"), ZORHostDisplayName(parent)});
    if (const auto below = feature.GetAllChildren().size(); below > 0)
        values.append({Texts::tr("Objects below"), QLocale().toString(below)});
    for (const ZORFeatObject* input : feature.GetInputs())
        values.append({Texts::tr("Made from"), ZORHostDisplayName(input)});
    const auto* const computed = qobject_cast<const ZORFeatComputedGeometry*>(&feature);
    if (computed && !computed->GetFailure().isEmpty())
        values.append({Texts::tr("Failure"), computed->GetFailure()});
}

void AddHolders(QList<ZORHostProperty>& values, const ZORGeoGeometry& object)
{
    const auto* const container = qobject_cast<const ZORFeatContainer*>(object.GetContainer());
    if (!container)
        return;
    const ZORGeoHolders holders(*container);
    const ZORGeoGeometry* before = nullptr;
    for (const ZORGeoGeometry* holder : holders.GetHolders(object)) {
        const ZORGeoGeometry* const owner = container->GetOwner(holder);
        const ZORGeoGeometry* const named = owner ? owner : holder;
        if (named != before)
            values.append({Texts::tr("Used by"), ZORHostDisplayName(named)});
        before = named;
    }
    if (const int others = holders.GetNumOtherReferences(object); others > 0)
        values.append({Texts::tr("Uses by commands and windows"), QLocale().toString(others)});
}

void AddKinds(QList<ZORHostProperty>& values, const QList<ZORGeoGeometry*>& objects)
{
    std::map<ZORHostObjectKind, int> counts;
    for (const ZORGeoGeometry* object : objects)
        ++counts[ZORHostObjectKindOf(object)];
    values.append({Texts::tr("Objects"), QLocale().toString(objects.size())});
    for (const auto& [kind, count] : counts)
        values.append({ZORHostObjectKindName(kind), QLocale().toString(count)});
}

} // namespace

QString ZORHostTypeName(const ZORGeoGeometry* object)
{
    static const QRegularExpression kPrefix(QStringLiteral("^ZOR(Geo|Top|Feat|WF|Comp|TP|Nest)?(?=[A-Z])"));
    static const QRegularExpression kWordStart(QStringLiteral("(?<=[a-z])(?=[A-Z])"));
    QString words = QString::fromLatin1(object->metaObject()->className()).remove(kPrefix);
    words.replace(kWordStart, QStringLiteral(" "));
    return words.left(1) + words.mid(1).toLower();
}

QList<ZORHostProperty> ZORHostPropertiesOf(const QList<ZORGeoGeometry*>& objects)
{
    QList<ZORHostProperty> values;
    if (objects.isEmpty())
        return values;
    const ZORGeoGeometry& first = *objects.first();
    const auto* const feature = qobject_cast<const ZORFeatObject*>(&first);
    if (objects.size() > 1) {
        AddKinds(values, objects);
    } else {
        values.append({Texts::tr("Name"), ZORHostDisplayName(&first)});
        values.append({Texts::tr("Type"), ZORHostTypeName(&first)});
        if (feature)
            AddFeature(values, *feature);
    }
    Measures sum;
    for (const ZORGeoGeometry* drawn : ZORHostDrawnObjects(objects)) {
        for (const ZORGeoGeometry* shape : ShapesOf(drawn))
            sum.Add(shape);
    }
    AddMeasures(values, sum);
    if (objects.size() == 1)
        AddHolders(values, first);
    return values;
}

ZORMathBoundingBox ZORHostBoxOf(const QList<ZORGeoGeometry*>& objects)
{
    ZORMathBoundingBox box;
    for (const ZORGeoGeometry* drawn : ZORHostDrawnObjects(objects)) {
        for (const ZORGeoGeometry* shape : ShapesOf(drawn)) {
            if (const auto* point = qobject_cast<const ZORGeoPoint*>(shape))
                box.Add(point->GetMathPoint());
            else if (const auto* curve = qobject_cast<const ZORGeoCurve*>(shape))
                box.Add(curve->GetBoundingBox());
            else if (const auto* surface = qobject_cast<const ZORGeoSurface*>(shape))
                box.Add(surface->GetBoundingBox());
        }
    }
    return box;
}
