#include "HostTest.h"

#include "support/StlTetrahedron.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORSystem/ZORSysInit.h>
#include <ZORSystem/ZORSysSettingsManager.h>
#include <ZORVisualization/ZORVisOptions.h>
#include <ZORVisualization/ZORVisRepGraphics.h>
#include <ZORVisualization/ZORVisSurfacePrimitive.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QTimer>

HostTest::HostTest()
    : m_settings(std::make_unique<QSettings>(m_directory.filePath("settings.ini"), QSettings::IniFormat))
    , m_environment(std::make_unique<ZORFeatEnvironment>())
{
    ZORSysInitialize();
    ZORSysSettingsManager::GetManager()->SetSource(m_settings.get());
    ZORFeatEnvironmentManager::GetManager()->SetCurrentEnvironment(m_environment.get());
}

HostTest::~HostTest()
{
    DeleteDeferred();
    ZORSysSettingsManager::GetManager()->SetSource(nullptr);
}

QString HostTest::WriteFile(const QString& fileName, const QByteArray& contents) const
{
    QFile file(GetPath(fileName));
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        ADD_FAILURE() << "cannot write " << file.fileName().toStdString();
    return file.fileName();
}

QString HostTest::WriteTetrahedron(const QString& fileName) const
{
    return WriteFile(fileName, MakeAsciiTetrahedron(100));
}

ZORGeoSurface* HostTest::AddBox(const QString& name)
{
    QList<ZORMathPoint> vertices;
    for (int i = 0; i < 8; ++i)
        vertices.append({i & 1 ? 100.0 : 0.0, i & 2 ? 60.0 : 0.0, i & 4 ? 30.0 : 0.0});
    const int quads[][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                            {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    QList<ZORGeoSurface::Corners> triangles;
    for (const auto& q : quads) {
        triangles.append({q[0], q[1], q[2]});
        triangles.append({q[0], q[2], q[3]});
    }
    auto* surface = new ZORGeoSurface(m_environment->GetContainer(), vertices, triangles);
    surface->setObjectName(name);
    surface->Initialize();
    ZORVisOptions options;
    options.SetColor(Qt::red);
    auto* object = new ZORVisVirtualObject(m_environment.get(), surface);
    object->SetRep(new ZORVisRepGraphics({new ZORVisSurfacePrimitive(surface)}, options));
    m_environment->AddVirtualObject(object);
    return surface;
}

void HostTest::DeleteDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void HostTest::PressInNextBox(QMessageBox::StandardButton button)
{
    QTimer::singleShot(0, qApp, [button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(nullptr, box);
        box->button(button)->click();
    });
}
