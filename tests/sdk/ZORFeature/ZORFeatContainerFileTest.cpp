#include "support/ContainerFiles.h"
#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoCartesianPoint.h>
#include <ZORSystem/ZORSysFileException.h>
#include <ZORTopology/ZORTopBody.h>

#include <gtest/gtest.h>

namespace {

void Fill(ZORFeatContainer& container)
{
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
    auto* const folder = new ZORFeatFolder(root);
    folder->SetLabel("skin");
    folder->Initialize();
    (new ZORFeatFolder(folder))->Initialize();
    (new ZORFeatFolder(root))->Initialize();
    auto* const point = new ZORGeoCartesianPoint(&container, {1, 2, 3});
    (new ZORTopBody(&container, point))->Initialize(); // the body comes before its point
    point->Initialize();
    (new ZORTopBody(&container, nullptr))->Initialize();
}

TEST(ZORFeatContainerFileTest, RoundTripsTheTreeWithLabelsAndBodies)
{
    ZORFeatContainer container;
    Fill(container);
    ZORFeatContainer loaded;
    ASSERT_TRUE(RoundTrips(container, loaded));
    ASSERT_EQ(1, loaded.GetFeatureRoots().size());
    const QList<ZORFeatObject*> children = loaded.GetFeatureRoots().constFirst()->GetChildren();
    ASSERT_EQ(2, children.size());
    EXPECT_EQ(QString("skin"), children[0]->GetLabel());
    EXPECT_EQ(QString("Folder.1"), children[0]->objectName());
    EXPECT_EQ(1, children[0]->GetNumChildren());
    EXPECT_EQ(children[1]->objectName(), children[1]->GetLabel()) << "no label was set";
    const auto* body = qobject_cast<ZORTopBody*>(loaded.GetGeometryByIndex(4));
    ASSERT_TRUE(body);
    EXPECT_EQ(0, body->GetDimension());
    EXPECT_EQ(loaded.GetGeometryByIndex(5), body->GetGeometry());
    EXPECT_EQ(1, body->GetGeometry()->GetReferenceCount());
}

TEST(ZORFeatContainerFileTest, ALoadedRootJoinsThePresentOne)
{
    ZORFeatContainer container;
    Fill(container);
    const QByteArray file = SaveContainer(container);
    ZORFeatRoot* const root = container.GetFeatureRoots().constFirst();
    root->SetLabel("mine");
    const int before = container.GetNumGeometry();
    LoadContainer(container, file);
    EXPECT_EQ(2 * before - 1, container.GetNumGeometry());
    EXPECT_EQ(QList<ZORFeatRoot*>{root}, container.GetFeatureRoots());
    EXPECT_EQ(QString("mine"), root->GetLabel());
    ASSERT_EQ(4, root->GetNumChildren());
    EXPECT_EQ(QString("skin"), root->GetChildren().at(2)->GetLabel());
    EXPECT_NE(root->GetChildren().at(0)->objectName(), root->GetChildren().at(2)->objectName());
}

TEST(ZORFeatContainerFileTest, OnlyFeatureContainersTakeRoots)
{
    ZORFeatContainer container;
    Fill(container);
    ZORGeoContainer plain;
    EXPECT_THROW(LoadContainer(plain, SaveContainer(container)), ZORSysFileException);
    EXPECT_EQ(0, plain.GetNumGeometry());
}

TEST(ZORFeatContainerFileTest, RoundTripsADeepTree)
{
    ZORFeatContainer container;
    ZORFeatObject* parent = container.GetFeatureRoot("ZORFeatRoot");
    for (int i = 0; i < 20000; ++i) {
        auto* const folder = new ZORFeatFolder(parent);
        folder->Initialize();
        parent = folder;
    }
    ZORFeatContainer loaded;
    EXPECT_TRUE(RoundTrips(container, loaded));
    EXPECT_EQ(20000, loaded.GetFeatureRoots().constFirst()->GetAllChildren().size());
}

TEST(ZORFeatContainerFileTest, ANewLabelIsReportedAsAChange)
{
    ZORFeatContainer container;
    ZORFeatRoot* root = nullptr;
    EXPECT_TRUE(ReportsChange(container, [&] { root = container.GetFeatureRoot("ZORFeatRoot"); }));
    EXPECT_TRUE(ReportsChange(container, [&] { root->SetLabel("skin"); }));
    EXPECT_TRUE(ReportsNoChange(container, [&] { root->SetLabel("skin"); }));
    EXPECT_TRUE(ReportsChange(container, [&] { root->SetLabel(root->objectName()); }));
    EXPECT_TRUE(ReportsChange(container, [&] { root->SetLabel({}); })) << "follows the name again";
}

} // namespace
