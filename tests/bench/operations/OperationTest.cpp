#include "OperationTest.h"

#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysApiTrace.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaClassInfo>

#include <algorithm>

ZORFeatFolder* OperationTest::AddFolder(const QString& name)
{
    auto* folder = new ZORFeatFolder(GetContainer()->GetFeatureRoot("ZORFeatRoot"));
    folder->setObjectName(name);
    folder->Initialize();
    TakeNew();
    return folder;
}

ZORGeoSurface* OperationTest::AddSquare(const QString& name, double size)
{
    const QList<ZORMathPoint> corners{{0, 0, 0}, {size, 0, 0}, {size, size, 0}, {0, size, 0}};
    auto* surface = new ZORGeoSurface(GetContainer(), corners, {{0, 1, 2}, {0, 2, 3}});
    surface->setObjectName(name);
    surface->Initialize();
    TakeNew();
    return surface;
}

ZORGeoSurface* OperationTest::AddCube(const QString& name)
{
    QList<ZORMathPoint> corners;
    for (int i = 0; i < 8; ++i)
        corners.append(ZORMathPoint(i & 1, (i >> 1) & 1, (i >> 2) & 1));
    auto* surface = new ZORGeoSurface(GetContainer(), corners,
                                      {{0, 2, 3},
                                       {0, 3, 1},
                                       {4, 5, 7},
                                       {4, 7, 6},
                                       {0, 1, 5},
                                       {0, 5, 4},
                                       {2, 6, 7},
                                       {2, 7, 3},
                                       {0, 4, 6},
                                       {0, 6, 2},
                                       {1, 3, 7},
                                       {1, 7, 5}});
    surface->setObjectName(name);
    surface->Initialize();
    TakeNew();
    return surface;
}

ZORGeoPointOnSurface* OperationTest::AddPointOn(ZORGeoSurface* surface, const QString& name,
                                                const ZORMathPoint& point)
{
    auto* geometry = new ZORGeoPointOnSurface(surface->Project(point));
    geometry->setObjectName(name);
    geometry->Initialize();
    TakeNew();
    return geometry;
}

QString OperationTest::GetClassInfo(const char* key) const
{
    const QMetaObject* metaObject = dialog->metaObject();
    const int index = metaObject->indexOfClassInfo(key);
    return index < 0 ? QString() : QString::fromUtf8(metaObject->classInfo(index).value());
}

QStringList OperationTest::GetCaptions() const
{
    struct Caption
    {
        QPoint place;
        QString text;
    };
    QList<Caption> captions;
    const auto add = [&](const QWidget* widget, const QString& text) {
        captions.append({widget->mapTo(dialog.data(), widget->rect().center()), text});
    };
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        add(label, label->text());
    for (const QCheckBox* check : dialog->findChildren<QCheckBox*>())
        add(check, check->text());
    std::sort(captions.begin(), captions.end(), [](const Caption& a, const Caption& b) {
        return std::pair(a.place.y(), a.place.x()) < std::pair(b.place.y(), b.place.x());
    });
    QStringList texts;
    for (const Caption& caption : captions)
        texts.append(caption.text);
    return texts;
}

QStringList OperationTest::GetGeoTypes() const
{
    QStringList types;
    for (const auto* selector : dialog->findChildren<ZORTestGeometrySelector*>())
        types.append(selector->property("geoType").toString());
    return types;
}

QStringList OperationTest::GetCandidates(const char* objectName) const
{
    const auto* combo = Field<ZORTestGeometrySelector>(objectName)->findChild<QComboBox*>("_Combo");
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts.append(combo->itemText(i));
    return texts;
}

QStringList OperationTest::TraceOk()
{
    QStringList lines;
    ZORSysApiTrace* const trace = ZORSysApiTrace::GetInstance();
    const auto connection = QObject::connect(trace, &ZORSysApiTrace::CallTraced, [&](const QByteArray& line) {
        lines.append(QString::fromUtf8(line));
    });
    trace->SetEnabled(true);
    PressOk();
    trace->SetEnabled(false);
    QObject::disconnect(connection);
    return lines;
}

QList<ZORGeoGeometry*> OperationTest::TakeNew()
{
    QList<ZORGeoGeometry*> added;
    for (; m_numKnown < GetContainer()->GetNumGeometry(); ++m_numKnown)
        added.append(GetContainer()->GetGeometryByIndex(m_numKnown));
    return added;
}

void OperationTest::TypeInto(const char* objectName, const QString& text)
{
    Field<QLineEdit>(objectName)->setText(text);
}
