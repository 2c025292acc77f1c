#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatFolder.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoReference.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>
#include <QRandomGenerator>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <memory>

namespace {

using Features = QList<ZORFeatObject*>;

class ZORFeatObjectTest : public testing::Test
{
public:
    ZORFeatFolder* AddFolder(ZORFeatObject* parent)
    {
        auto* const folder = new ZORFeatFolder(parent);
        folder->Initialize();
        return folder;
    }

    static QString MessageOfInitialize(ZORFeatObject& feature)
    {
        try {
            feature.Initialize();
        } catch (const ZORSysException& exception) {
            return exception.GetMessage();
        }
        return QStringLiteral("no exception");
    }

    /// Object names of the geometries that the container announces to be removed.
    void RecordRemovals()
    {
        QObject::connect(container.get(), &ZORGeoContainer::GeometryAboutToBeRemoved,
                         [this](const ZORGeoGeometry* geometry) { removed.append(geometry->objectName()); });
    }

    std::unique_ptr<ZORFeatContainer> container = std::make_unique<ZORFeatContainer>();
    ZORFeatRoot* const root = container->GetFeatureRoot("ZORFeatRoot");
    QStringList removed;
};

TEST_F(ZORFeatObjectTest, JoinsTheTreeAndTheContainerWhenInitialized)
{
    auto* const folder = new ZORFeatFolder(root);
    EXPECT_EQ(folder->GetParentFeature(), root);
    EXPECT_EQ(folder->GetContainer(), container.get());
    EXPECT_TRUE(root->GetChildren().isEmpty());
    EXPECT_EQ(container->GetNumGeometry(), 1);
    folder->Initialize();
    folder->Initialize();
    EXPECT_EQ(root->GetChildren(), Features({folder}));
    EXPECT_EQ(folder->GetParentFeature(), root);
    ASSERT_EQ(container->GetNumGeometry(), 2);
    EXPECT_EQ(container->GetGeometryByIndex(1), folder);
}

TEST_F(ZORFeatObjectTest, StandsInTheTreeWhenTheContainerAnnouncesIt)
{
    Features children;
    QObject::connect(container.get(), &ZORGeoContainer::GeometryAdded,
                     [&] { children = root->GetChildren(); });
    ZORFeatFolder* const folder = AddFolder(root);
    EXPECT_EQ(children, Features({folder}));
}

TEST_F(ZORFeatObjectTest, TakesChildrenFromReceiversOfItsAnnouncement)
{
    const auto connection =
        QObject::connect(container.get(), &ZORGeoContainer::GeometryAdded, [&](ZORGeoGeometry* geometry) {
            auto* const feature = qobject_cast<ZORFeatObject*>(geometry);
            if (feature->GetParentFeature() == root)
                AddFolder(feature);
        });
    const ZORFeatFolder* const folder = AddFolder(root);
    QObject::disconnect(connection);
    EXPECT_EQ(folder->GetNumChildren(), 1);
    EXPECT_EQ(container->GetNumGeometry(), 3);
}

TEST_F(ZORFeatObjectTest, MayBeRemovedByReceiversOfItsAnnouncement)
{
    QObject::connect(container.get(), &ZORGeoContainer::GeometryAdded,
                     [](ZORGeoGeometry* geometry) { qobject_cast<ZORFeatObject*>(geometry)->Remove(); });
    QSignalSpy changes(root, &ZORFeatObject::ChildrenChanged);
    (new ZORFeatFolder(root))->Initialize();
    EXPECT_TRUE(root->GetChildren().isEmpty());
    EXPECT_EQ(container->GetNumGeometry(), 1);
}

TEST_F(ZORFeatObjectTest, RefusesToBeInitializedWithoutAParentThatIsThere)
{
    ZORFeatFolder orphan(static_cast<ZORFeatObject*>(nullptr));
    EXPECT_EQ(MessageOfInitialize(orphan), QStringLiteral("geometry has no container"));

    ZORFeatFolder* const parent = AddFolder(root);
    ZORFeatFolder late(parent);
    parent->Remove();
    EXPECT_EQ(late.GetParentFeature(), nullptr);
    EXPECT_EQ(MessageOfInitialize(late), QStringLiteral("the parent feature does not exist any more"));

    ZORFeatFolder waiting(root);
    ZORFeatFolder early(&waiting);
    EXPECT_EQ(MessageOfInitialize(early), QStringLiteral("the parent feature is not initialized"));
    EXPECT_TRUE(root->GetChildren().isEmpty());
    EXPECT_EQ(container->GetNumGeometry(), 1);
}

TEST_F(ZORFeatObjectTest, ListsChildrenInOrderAndAllChildrenDepthFirst)
{
    ZORFeatFolder* const a = AddFolder(root);
    ZORFeatFolder* const b = AddFolder(root);
    ZORFeatFolder* const a1 = AddFolder(a);
    ZORFeatFolder* const b1 = AddFolder(b);
    ZORFeatFolder* const a2 = AddFolder(a);
    ZORFeatFolder* const a1x = AddFolder(a1);
    EXPECT_EQ(root->GetChildren(), Features({a, b}));
    EXPECT_EQ(a->GetChildren(), Features({a1, a2}));
    EXPECT_EQ(a->GetNumChildren(), 2);
    EXPECT_EQ(root->GetAllChildren(), Features({a, a1, a1x, a2, b, b1}));
    EXPECT_EQ(a->GetAllChildren(), Features({a1, a1x, a2}));
    EXPECT_TRUE(b1->GetAllChildren().isEmpty());
}

TEST_F(ZORFeatObjectTest, ShowsItsObjectNameUntilItIsGivenALabel)
{
    ZORFeatFolder* const folder = AddFolder(root);
    EXPECT_EQ(folder->GetLabel(), QStringLiteral("Folder.1"));
    EXPECT_EQ(AddFolder(root)->GetLabel(), QStringLiteral("Folder.2"));
    EXPECT_EQ(root->GetLabel(), QStringLiteral("Root.1"));
    folder->SetLabel(QStringLiteral("Skin"));
    EXPECT_EQ(folder->GetLabel(), QStringLiteral("Skin"));
    EXPECT_EQ(folder->objectName(), QStringLiteral("Folder.1"));
    folder->SetLabel(QString());
    EXPECT_EQ(folder->GetLabel(), QStringLiteral("Folder.1"));
}

TEST_F(ZORFeatObjectTest, TellsAChangedLabelOnceAndByTheContainerToo)
{
    ZORFeatFolder* const folder = AddFolder(root);
    QSignalSpy own(folder, &ZORFeatObject::LabelChanged);
    QSignalSpy all(container.get(), &ZORFeatContainer::FeatureLabelChanged);
    folder->SetLabel(QStringLiteral("Skin"));
    folder->SetLabel(QStringLiteral("Skin"));
    ASSERT_EQ(own.size(), 1);
    EXPECT_EQ(own[0][0].toString(), QStringLiteral("Skin"));
    ASSERT_EQ(all.size(), 1);
    EXPECT_EQ(all[0][0].value<ZORFeatObject*>(), folder);
}

TEST_F(ZORFeatObjectTest, MayBeRemovedByTheReceiverOfItsLabel)
{
    const QPointer<ZORFeatFolder> folder = AddFolder(root);
    QObject::connect(folder, &ZORFeatObject::LabelChanged, [&] { folder->Remove(); });
    folder->SetLabel(QStringLiteral("gone"));
    EXPECT_FALSE(folder);
    EXPECT_TRUE(root->GetChildren().isEmpty());
}

TEST_F(ZORFeatObjectTest, TellsWhenChildrenComeAndGo)
{
    QSignalSpy changes(root, &ZORFeatObject::ChildrenChanged);
    ZORFeatFolder* const folder = AddFolder(root);
    EXPECT_EQ(changes.size(), 1);
    ZORFeatFolder* const inner = AddFolder(folder);
    EXPECT_EQ(changes.size(), 1) << "only direct children count";
    inner->Remove();
    EXPECT_EQ(changes.size(), 1);
    folder->Remove();
    EXPECT_EQ(changes.size(), 2);
}

TEST_F(ZORFeatObjectTest, TakesItsTreeWithItWhenRemovedDeepestFirst)
{
    ZORFeatFolder* const a = AddFolder(root);
    const QPointer<ZORFeatFolder> a1 = AddFolder(a);
    const QPointer<ZORFeatFolder> a1x = AddFolder(a1);
    const QPointer<ZORFeatFolder> a2 = AddFolder(a);
    ZORFeatFolder* const b = AddFolder(root);
    RecordRemovals();
    a->Remove();
    EXPECT_EQ(removed, QStringList({QStringLiteral("Folder.4"), QStringLiteral("Folder.3"),
                                    QStringLiteral("Folder.2"), QStringLiteral("Folder.1")}));
    EXPECT_FALSE(a1 || a1x || a2);
    EXPECT_EQ(root->GetAllChildren(), Features({b}));
    EXPECT_EQ(container->GetNumGeometry(), 2);
}

TEST_F(ZORFeatObjectTest, IsStillItselfWhenTheContainerAnnouncesItsRemoval)
{
    ZORFeatFolder* const folder = AddFolder(root);
    AddFolder(folder);
    int folders = 0;
    QObject::connect(container.get(), &ZORGeoContainer::GeometryAboutToBeRemoved,
                     [&](ZORGeoGeometry* geometry) {
                         const auto* feature = qobject_cast<ZORFeatFolder*>(geometry);
                         folders += feature && feature->GetParentFeature();
                     });
    folder->Remove();
    EXPECT_EQ(folders, 2);
}

TEST_F(ZORFeatObjectTest, IsRemovedWhateverItsReferencesAndLeavesThemNull)
{
    ZORFeatFolder* const folder = AddFolder(root);
    const ZORGeoReference<ZORFeatObject> outer(folder, root);
    const ZORGeoReference<const ZORGeoGeometry> inner(AddFolder(folder), root);
    EXPECT_EQ(folder->GetReferenceCount(), 1);
    folder->RemoveNoReferences();
    ASSERT_TRUE(outer.Get()) << "a geometry in use stays";
    folder->Remove();
    EXPECT_EQ(outer.Get(), nullptr);
    EXPECT_EQ(inner.Get(), nullptr);
}

TEST_F(ZORFeatObjectTest, TakesItsTreeWithItWhenDeletedByOtherMeans)
{
    ZORFeatFolder* const deleted = AddFolder(root);
    AddFolder(AddFolder(deleted));
    ZORFeatFolder* const unreferenced = AddFolder(root);
    AddFolder(AddFolder(unreferenced));
    delete deleted;
    EXPECT_EQ(container->GetNumGeometry(), 4);
    unreferenced->RemoveNoReferences();
    EXPECT_EQ(container->GetNumGeometry(), 1);
    EXPECT_TRUE(root->GetChildren().isEmpty());
}

TEST_F(ZORFeatObjectTest, LeavesTheTreeInEveryOrder)
{
    QRandomGenerator random(20240611);
    Features all{root};
    for (int i = 0; i < 300; ++i)
        all.append(AddFolder(all[random.bounded(int(all.size()))]));
    const auto check = [&] {
        Features reached = root->GetAllChildren();
        EXPECT_EQ(reached.size() + 1, container->GetNumGeometry());
        for (const ZORFeatObject* feature : reached) {
            const Features siblings = feature->GetParentFeature()->GetChildren();
            EXPECT_TRUE(siblings.contains(feature));
            EXPECT_EQ(siblings.size(), feature->GetParentFeature()->GetNumChildren());
        }
    };
    check();
    while (root->GetNumChildren() > 0) {
        const Features left = root->GetAllChildren();
        left[random.bounded(int(left.size()))]->Remove();
        check();
    }
    EXPECT_EQ(container->GetNumGeometry(), 1);
}

TEST_F(ZORFeatObjectTest, MayBeNestedDeeplyAndRemovedAtOnce)
{
    constexpr int kDepth = 100'000;
    ZORFeatObject* parent = root;
    for (int i = 0; i < kDepth; ++i)
        parent = AddFolder(parent);
    EXPECT_EQ(root->GetAllChildren().size(), kDepth);
    EXPECT_EQ(root->GetAllChildren().constLast(), parent);
    root->Remove();
    EXPECT_EQ(container->GetNumGeometry(), 0);
}

TEST_F(ZORFeatObjectTest, MayBeNestedDeeplyWhenTheContainerEnds)
{
    ZORFeatObject* parent = root;
    for (int i = 0; i < 100'000; ++i)
        parent = AddFolder(parent);
    const QPointer<ZORFeatObject> last = parent;
    container.reset();
    EXPECT_FALSE(last);
}

TEST_F(ZORFeatObjectTest, MayHaveManyChildrenThatAreRemovedOneByOne)
{
    Features folders;
    for (int i = 0; i < 100'000; ++i)
        folders.append(AddFolder(root));
    for (qsizetype i = 1; i < folders.size(); i += 2)
        folders[i]->Remove();
    EXPECT_EQ(root->GetNumChildren(), folders.size() / 2);
    for (qsizetype i = folders.size() - 2; i >= 0; i -= 2)
        folders[i]->Remove();
    EXPECT_EQ(root->GetNumChildren(), 0);
}

TEST_F(ZORFeatObjectTest, MayBeRemovedAgainByReceiversOfItsRemoval)
{
    ZORFeatFolder* const folder = AddFolder(root);
    ZORFeatFolder* const inner = AddFolder(folder);
    ZORFeatFolder* const other = AddFolder(root);
    const QPointer<ZORFeatFolder> otherGuard = other;
    QObject::connect(container.get(), &ZORGeoContainer::GeometryAboutToBeRemoved,
                     [&](const ZORGeoGeometry* geometry) {
                         if (geometry != inner)
                             return;
                         inner->Remove();
                         folder->Remove();
                         other->Remove();
                     });
    folder->Remove();
    EXPECT_FALSE(otherGuard);
    EXPECT_EQ(container->GetNumGeometry(), 1);
    EXPECT_TRUE(root->GetAllChildren().isEmpty());
}

TEST_F(ZORFeatObjectTest, TakesChildrenWithItThatAreAddedDuringItsRemoval)
{
    ZORFeatFolder* const folder = AddFolder(root);
    ZORFeatFolder* const inner = AddFolder(folder);
    bool added = false;
    QObject::connect(container.get(), &ZORGeoContainer::GeometryAboutToBeRemoved,
                     [&](const ZORGeoGeometry* geometry) {
                         if (geometry == inner && !std::exchange(added, true))
                             AddFolder(AddFolder(folder));
                     });
    folder->Remove();
    EXPECT_TRUE(added);
    EXPECT_EQ(container->GetNumGeometry(), 1);
    EXPECT_TRUE(root->GetAllChildren().isEmpty());
}

TEST_F(ZORFeatObjectTest, SurvivesReceiversThatDeleteWhatIsBeingRemoved)
{
    for (const bool deleteOuter : {false, true}) {
        ZORFeatFolder* const folder = AddFolder(root);
        ZORFeatFolder* const middle = AddFolder(folder);
        ZORFeatFolder* const inner = AddFolder(middle);
        AddFolder(middle);
        const auto connection = QObject::connect(container.get(), &ZORGeoContainer::GeometryAboutToBeRemoved,
                                                 [&](const ZORGeoGeometry* geometry) {
                                                     if (geometry == inner)
                                                         delete (deleteOuter ? folder : middle);
                                                 });
        folder->Remove();
        QObject::disconnect(connection);
        EXPECT_EQ(container->GetNumGeometry(), 1) << deleteOuter;
        EXPECT_TRUE(root->GetAllChildren().isEmpty()) << deleteOuter;
    }
}

} // namespace
