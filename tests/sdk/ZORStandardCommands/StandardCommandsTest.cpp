#include "StandardCommandsTest.h"

#include <ZORCommonUI/ZORCmnUnitSpinBox.h>
#include <ZORComposites/ZORCompMaterial.h>
#include <ZORComposites/ZORCompMaterialLibrary.h>
#include <ZORComposites/ZORCompRoot.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoCurveOnSurface.h>
#include <ZORGeometry/ZORGeoCurveOnSurfaceProcessor.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORMathematics/ZORMathSetOfPoints.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORSystem/ZORSysInit.h>
#include <ZORTopology/ZORTopBody.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QTableView>

StandardCommandsTest::StandardCommandsTest()
    : library(QStringLiteral(ZOR_STANDARD_COMMANDS))
{
    ZORSysInitialize();
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(environment.get());
    EXPECT_TRUE(library.load()) << library.errorString().toStdString();
}

StandardCommandsTest::~StandardCommandsTest()
{
    ProcessEvents();
    EXPECT_TRUE(library.unload());
    EXPECT_FALSE(IsMapped());
    ProcessEvents();
}

QAction* StandardCommandsTest::GetAction(const char* id)
{
    return ZORCmdController::GetController()->GetAction(id);
}

bool StandardCommandsTest::IsMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("libZORStandardCommands");
}

void StandardCommandsTest::Open(const char* id)
{
    QAction* const action = GetAction(id);
    ASSERT_NE(action, nullptr) << id;
    action->trigger();
    ASSERT_FALSE(frame.content.isNull()) << id;
}

void StandardCommandsTest::Edit(QObject* object)
{
    ASSERT_TRUE(ZORCmdController::GetController()->Edit(object));
    ASSERT_FALSE(frame.content.isNull());
}

QString StandardCommandsTest::Accept()
{
    try {
        frame.command->Accept();
    } catch (const ZORSysException& exception) {
        return exception.GetMessage();
    }
    ProcessEvents();
    EXPECT_TRUE(frame.command.isNull()) << "the command has finished";
    return {};
}

void StandardCommandsTest::Cancel()
{
    frame.command->Reject();
    ProcessEvents();
}

void StandardCommandsTest::ProcessEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void StandardCommandsTest::Choose(const char* combo, const QString& text) const
{
    auto* const box = Find<QComboBox>(combo);
    const int index = box->findText(text);
    ASSERT_GE(index, 0) << combo << " has no " << text.toStdString();
    box->setCurrentIndex(index);
}

QStringList StandardCommandsTest::GetEntries(const char* combo) const
{
    const auto* const box = Find<QComboBox>(combo);
    QStringList entries;
    for (int i = 0; i < box->count(); ++i)
        entries.append(box->itemText(i));
    return entries;
}

QString StandardCommandsTest::GetEntry(const char* combo) const
{
    return Find<QComboBox>(combo)->currentText();
}

void StandardCommandsTest::Enter(const char* lineEdit, const QString& text) const
{
    Find<QLineEdit>(lineEdit)->setText(text);
}

void StandardCommandsTest::SetNumber(const char* spin, double value) const
{
    Find<ZORCmnUnitSpinBox>(spin)->setValue(value);
}

void StandardCommandsTest::SetTriple(const QString& name, double x, double y, double z) const
{
    SetNumber((name + "XSpin").toLatin1(), x);
    SetNumber((name + "YSpin").toLatin1(), y);
    SetNumber((name + "ZSpin").toLatin1(), z);
}

void StandardCommandsTest::Click(const char* button) const
{
    auto* const widget = Find<QAbstractButton>(button);
    ASSERT_TRUE(widget->isEnabled()) << button;
    widget->click();
}

void StandardCommandsTest::SetCell(const char* table, int row, int column, const QVariant& value) const
{
    QAbstractItemModel* const model = Find<QTableView>(table)->model();
    ASSERT_LT(row, model->rowCount());
    model->setData(model->index(row, column), value);
}

ZORGeoSurface* StandardCommandsTest::AddSquare(const QString& name)
{
    const QList<ZORMathPoint> corners{{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 100, 0}};
    auto* const surface =
        new ZORGeoSurface(container, corners, QList<ZORGeoSurface::Corners>{{0, 1, 2}, {0, 2, 3}});
    surface->setObjectName(name);
    surface->Initialize();
    return surface;
}

ZORWFRawSurface* StandardCommandsTest::AddSurface(const QString& label)
{
    auto* const feature =
        new ZORWFRawSurface(container->GetFeatureRoot("ZORFeatRoot"), AddSquare(label + " geometry"));
    feature->SetLabel(label);
    feature->Initialize();
    return feature;
}

ZORWFRawPoint* StandardCommandsTest::AddPoint(const QString& label, const ZORMathPoint& point)
{
    auto* const feature = new ZORWFRawPoint(container->GetFeatureRoot("ZORFeatRoot"), point);
    feature->SetLabel(label);
    feature->Initialize();
    return feature;
}

ZORWFRawCurve* StandardCommandsTest::AddLine(const QString& label, const ZORMathPoint& from,
                                             const ZORMathPoint& to)
{
    auto* const line = new ZORGeoPolyline(container, ZORMathSetOfPoints{from, to}, true);
    line->Initialize();
    auto* const feature = new ZORWFRawCurve(container->GetFeatureRoot("ZORFeatRoot"), line);
    feature->SetLabel(label);
    feature->Initialize();
    return feature;
}

ZORWFRawCurve* StandardCommandsTest::AddLineOn(const ZORWFRawSurface* surface, const QString& label,
                                               const ZORMathPoint& from, const ZORMathPoint& to)
{
    const auto* const shape = qobject_cast<const ZORGeoSurface*>(surface->GetBody()->GetGeometry());
    const QList<ZORGeoLocationOnSurface> locations =
        ZORGeoCurveOnSurfaceProcessor(shape, 0, 0)
            .ComputePointToPoint(shape->Project(from), shape->Project(to))
            .GetLocations();
    auto* const line = new ZORGeoCurveOnSurface(locations, false);
    line->Initialize();
    auto* const feature = new ZORWFRawCurve(container->GetFeatureRoot("ZORFeatRoot"), line);
    feature->SetLabel(label);
    feature->Initialize();
    return feature;
}

ZORCompMaterialLibrary* StandardCommandsTest::GetLibrary() const
{
    return ZORCompMaterialLibrary::Of(qobject_cast<ZORCompRoot*>(container->GetFeatureRoot("ZORCompRoot")));
}

ZORCompMaterial* StandardCommandsTest::AddMaterial(const QString& name, double thickness)
{
    auto* const material = new ZORCompMaterial(GetLibrary());
    material->SetLabel(name);
    ZORCompMaterialProperties properties;
    properties.thickness = thickness;
    material->SetProperties(properties);
    material->Initialize();
    return material;
}
