#include "RandomUserChecks.h"

#include "RandomUserWatch.h"
#include "support/ContainerFiles.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORGeometry/ZORGeoGeometry.h>

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>

namespace {

void CheckDocument(const ZORFeatEnvironment* environment)
{
    ZORFeatContainer loaded;
    const testing::AssertionResult result = RoundTrips(*environment->GetContainer(), loaded);
    if (!result)
        RandomUserWatch::Fail(
            QStringLiteral("document does not survive a file: %1").arg(QLatin1String(result.message())));
}

/// The names in the container whose classes the console shows at present.
QStringList GetNames(const ZORGeoContainer* container, const QComboBox* types)
{
    const auto* filter = types->currentData().value<const QMetaObject*>();
    QStringList names;
    for (int i = 0; i < container->GetNumGeometry(); ++i) {
        const ZORGeoGeometry* geometry = container->GetGeometryByIndex(i);
        if (!filter || geometry->metaObject()->inherits(filter))
            names.append(geometry->objectName());
    }
    return names;
}

void CheckConsole(const QWidget* console, const ZORGeoContainer* container)
{
    auto* refresh = console->findChild<QPushButton*>("_ContRefreshBtn");
    const auto* table = console->findChild<QTableView*>("_ContTable");
    const auto* types = console->findChild<QComboBox*>("_ContTypeCombo");
    if (!refresh || !table || !types)
        RandomUserWatch::Fail(QStringLiteral("console without its container page"));
    refresh->click();
    QStringList rows;
    for (int row = 0; row < table->model()->rowCount(); ++row)
        rows.append(table->model()->index(row, 0).data().toString());
    if (rows != GetNames(container, types))
        RandomUserWatch::Fail(QStringLiteral("rows of the console are not the geometries of the document"));
}

} // namespace

void CheckDuringRandomUser()
{
    if (QApplication::overrideCursor())
        RandomUserWatch::Fail(QStringLiteral("wait cursor left"));
    const ZORFeatEnvironment* environment = ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment();
    if (!environment)
        RandomUserWatch::Fail(QStringLiteral("no document"));
    CheckDocument(environment);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (window->inherits("ZORTestMainDialog"))
            CheckConsole(window, environment->GetContainer());
    }
}

void CheckAfterRandomUser()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (QApplication::overrideCursor())
        RandomUserWatch::Fail(QStringLiteral("wait cursor left after the end"));
    if (ZORFeatEnvironmentManager::GetManager()->GetCurrentEnvironment())
        RandomUserWatch::Fail(QStringLiteral("document left after the end"));
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows) {
        if (!window->inherits("QTipLabel")) { // Qt keeps one tool tip
            RandomUserWatch::Fail(QStringLiteral("window left after the end: %1")
                                      .arg(QLatin1String(window->metaObject()->className())));
        }
    }
}
