#include "OperationTest.h"

#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoPointOnSurface.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
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

QStringList OperationTest::SortByPosition(QList<Located> texts) const
{
    std::sort(texts.begin(), texts.end(), [this](const Located& a, const Located& b) {
        const QPoint p = a.widget->mapTo(dialog.data(), a.widget->rect().center());
        const QPoint q = b.widget->mapTo(dialog.data(), b.widget->rect().center());
        return std::pair(p.y(), p.x()) < std::pair(q.y(), q.x());
    });
    QStringList sorted;
    for (const Located& located : texts)
        sorted.append(located.text);
    return sorted;
}

QStringList OperationTest::GetCaptions() const
{
    QList<Located> captions;
    for (const QLabel* label : dialog->findChildren<QLabel*>())
        captions.append({label, label->text()});
    for (const QCheckBox* check : dialog->findChildren<QCheckBox*>())
        captions.append({check, check->text()});
    return SortByPosition(captions);
}

QStringList OperationTest::GetGeoTypes() const
{
    QList<Located> types;
    for (const auto* selector : dialog->findChildren<ZORTestGeometrySelector*>())
        types.append({selector, selector->property("geoType").toString()});
    return SortByPosition(types);
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
    return TraceCalls([this] { PressOk(); });
}

void OperationTest::ExpectRefused(const QString& message, SdkCalls calls)
{
    const QStringList made = TraceOk();
    EXPECT_EQ(QStringList(message), boxes.TakeErrors());
    EXPECT_TRUE(TakeNew().isEmpty()) << message.toStdString();
    EXPECT_TRUE(calls == SdkCalls::Any || made.isEmpty()) << made.join('\n').toStdString();
}

void OperationTest::ExpectClass(const QString& title, const QString& createdTypes) const
{
    EXPECT_EQ(title, dialog->windowTitle());
    EXPECT_EQ(title, GetClassInfo("label"));
    EXPECT_EQ(createdTypes, GetClassInfo("createdTypes")) << title.toStdString();
}

void OperationTest::ExpectMenuOpens(const char* action, const char* className)
{
    OpenConsole();
    ASSERT_NE(nullptr, TriggerMenu(action));
    EXPECT_STREQ(className, dialog->metaObject()->className());
}

QList<ZORGeoGeometry*> OperationTest::TakeNew()
{
    QList<ZORGeoGeometry*> added;
    for (; m_numKnown < GetContainer()->GetNumGeometry(); ++m_numKnown)
        added.append(GetContainer()->GetGeometryByIndex(m_numKnown));
    return added;
}

void OperationTest::SelectInList(const char* objectName, ZORGeoGeometry* geometry)
{
    auto* list = Field<ZORTestGeometrySelector>(objectName)->findChild<QListWidget*>("_List");
    auto* item = new QListWidgetItem(geometry->objectName(), list);
    item->setData(Qt::UserRole, QVariant::fromValue(geometry));
    item->setSelected(true);
}

void OperationTest::TypeInto(const char* objectName, const QString& text)
{
    Field<QLineEdit>(objectName)->setText(text);
}
