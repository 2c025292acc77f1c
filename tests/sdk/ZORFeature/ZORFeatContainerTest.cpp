#include "support/Printers.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatRoot.h>
#include <ZORGeometry/ZORGeoTypeRegistration.h>
#include <ZORSystem/ZORSysException.h>

#include <QPointer>

#include <gtest/gtest.h>

#include <memory>

/// Root of a module above this one.
class OtherRoot : public ZORFeatRoot
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit OtherRoot(ZORFeatContainer* container)
        : ZORFeatRoot(container)
    {
    }
};

/// A root that GetFeatureRoot() cannot make.
class SealedRoot : public ZORFeatRoot
{
    Q_OBJECT

public:
    SealedRoot(ZORFeatContainer* container, int)
        : ZORFeatRoot(container)
    {
    }
};

class UnregisteredRoot : public ZORFeatRoot
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit UnregisteredRoot(ZORFeatContainer* container)
        : ZORFeatRoot(container)
    {
    }
};

ZOR_GEO_REGISTER_TYPE(OtherRoot)
ZOR_GEO_REGISTER_TYPE(SealedRoot)

namespace {

TEST(ZORFeatContainerTest, CreatesARootOnceAndThenReturnsIt)
{
    ZORFeatContainer container;
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
    ASSERT_TRUE(root);
    EXPECT_STREQ(root->metaObject()->className(), "ZORFeatRoot");
    EXPECT_EQ(root->GetContainer(), &container);
    EXPECT_EQ(container.GetFeatureRoot("ZORFeatRoot"), root);
    ASSERT_EQ(container.GetNumGeometry(), 1);
    EXPECT_EQ(container.GetGeometryByIndex(0), root);
}

TEST(ZORFeatContainerTest, KeepsTheRootsOfDifferentClassesApart)
{
    ZORFeatContainer container;
    ZORFeatRoot* const other = container.GetFeatureRoot("OtherRoot");
    ASSERT_TRUE(qobject_cast<OtherRoot*>(other));
    ZORFeatRoot* const root = container.GetFeatureRoot("ZORFeatRoot");
    EXPECT_NE(root, other) << "a derived root is no substitute";
    EXPECT_EQ(container.GetFeatureRoots(), QList<ZORFeatRoot*>({other, root}));
}

TEST(ZORFeatContainerTest, HasNoRootOfOtherClasses)
{
    ZORFeatContainer container;
    for (const char* className : {"", "NoSuchClass", "ZORGeoSurface", "ZORFeatFolder", "ZORFeatObject",
                                  "QObject", "zorfeatroot", "SealedRoot", "UnregisteredRoot"}) {
        EXPECT_EQ(container.GetFeatureRoot(className), nullptr) << className;
    }
    EXPECT_EQ(container.GetFeatureRoot(nullptr), nullptr);
    EXPECT_EQ(container.GetNumGeometry(), 0);
}

TEST(ZORFeatContainerTest, FindsARootThatSomebodyElseRegistered)
{
    ZORFeatContainer container;
    auto* const sealed = new SealedRoot(&container, 0);
    sealed->Initialize();
    sealed->Initialize();
    EXPECT_EQ(container.GetFeatureRoot("SealedRoot"), sealed);
    EXPECT_EQ(container.GetFeatureRoots().size(), 1);
}

TEST(ZORFeatContainerTest, RefusesASecondRootOfAClass)
{
    ZORFeatContainer container;
    container.GetFeatureRoot("OtherRoot");
    const auto second = std::make_unique<OtherRoot>(&container);
    try {
        second->Initialize();
        ADD_FAILURE() << "no exception";
    } catch (const ZORSysException& exception) {
        EXPECT_EQ(exception.GetMessage(),
                  QStringLiteral("the container already has a root of class OtherRoot"));
    }
    EXPECT_EQ(container.GetNumGeometry(), 1);
}

TEST(ZORFeatContainerTest, CreatesARemovedRootAnew)
{
    ZORFeatContainer container;
    const QPointer<ZORFeatRoot> first = container.GetFeatureRoot("ZORFeatRoot");
    first->Remove();
    EXPECT_FALSE(first);
    EXPECT_TRUE(container.GetFeatureRoots().isEmpty());
    EXPECT_TRUE(container.GetFeatureRoot("ZORFeatRoot"));
    EXPECT_EQ(container.GetFeatureRoots().size(), 1);
    EXPECT_EQ(container.GetNumGeometry(), 1);
}

TEST(ZORFeatContainerTest, OffersItsRootClassesAmongTheRegisteredTypes)
{
    const ZORFeatContainer container;
    const QList<const QMetaObject*> types = container.GetRegisteredTypes();
    for (const char* className : {"ZORGeoGeometry", "ZORTopBody", "ZORFeatObject", "ZORFeatFolder",
                                  "ZORFeatRoot", "ZORFeatGeometry", "OtherRoot", "SealedRoot"}) {
        const auto isClass = [className](const QMetaObject* type) {
            return qstrcmp(type->className(), className) == 0;
        };
        EXPECT_EQ(std::count_if(types.begin(), types.end(), isClass), 1) << className;
    }
}

} // namespace

#include "ZORFeatContainerTest.moc"
