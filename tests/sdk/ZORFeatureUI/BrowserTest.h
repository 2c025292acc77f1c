// A browser of features with an environment.

#pragma once

#include "support/ContainerContent.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORFeatureUI/ZORFeatBrowserWidget.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORGeometry/ZORGeoPolyline.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORTopology/ZORTopBody.h>

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>
#include <QTreeView>

#include <gtest/gtest.h>

#include <memory>

using Geometries = QList<ZORGeoGeometry*>;
constexpr auto kTested = QAbstractItemModelTester::FailureReportingMode::Fatal;

class BrowserTest : public testing::Test
{
public:
    BrowserTest()
    {
        browser.resize(300, 200);
        browser.SetEnvironment(environment.get());
        browser.show();
        tester = std::make_unique<QAbstractItemModelTester>(model, kTested);
    }
    ZORFeatContainer* Container() const { return environment->GetContainer(); }
    ZORFeatRoot* Root() const { return Container()->GetFeatureRoot("ZORFeatRoot"); }
    ZORGeoGeometry* AddPoint() { return Register(new ZORGeoCartesianPoint(Container(), {0, 0, 0})); }
    ZORGeoGeometry* AddCurve() { return Register(new ZORGeoPolyline(Container(), {}, true)); }
    ZORGeoGeometry* AddSurface() { return Register(new ZORGeoSurface(Container(), {}, {})); }
    ZORGeoGeometry* AddBody() { return Register(new ZORTopBody(Container(), nullptr)); }
    ZORFeatFolder* AddFolder(ZORFeatObject* parent) { return Register(new ZORFeatFolder(parent)); }

    /// All items below \a parent, "a(b c(d))".
    QString Items(const QModelIndex& parent = {}) const
    {
        QStringList items;
        for (int row = 0; row < model->rowCount(parent); ++row) {
            const QModelIndex index = model->index(row, 0, parent);
            const QString below = Items(index);
            items += index.data().toString()
                     + (below.isEmpty() ? below : QLatin1Char('[') + below + QLatin1Char(']'));
        }
        return items.join(QLatin1Char(' '));
    }
    /// Items() once the browser has taken over all changes.
    QString ItemsNow() const
    {
        QCoreApplication::processEvents();
        return Items();
    }
    QModelIndex IndexOf(const QString& text) const
    {
        QCoreApplication::processEvents();
        return model
            ->match(model->index(0, 0), Qt::DisplayRole, text, 1, Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
    QModelIndex IndexOf(const char* text) const { return IndexOf(QString::fromLatin1(text)); }

    std::unique_ptr<ZORFeatEnvironment> environment = std::make_unique<ZORFeatEnvironment>();
    ZORFeatBrowserWidget browser;
    QTreeView* const view = browser.findChild<QTreeView*>();
    QAbstractItemModel* const model = view->model();
    std::unique_ptr<QAbstractItemModelTester> tester;
    QSignalSpy activated{&browser, &ZORFeatBrowserWidget::GeometryActivated};
    QSignalSpy selected{&browser, &ZORFeatBrowserWidget::SelectionChanged};
};

#define EXPECT_ITEMS(expected) EXPECT_EQ(ItemsNow(), QStringLiteral(expected))
