#include "window/ZORHostWelcomeView.h"

#include "HostTest.h"
#include "docks/ZORHostLineQueue.h"
#include "plugins/ZORHostPluginManager.h"
#include "support/MessageBoxCatcher.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORGeometry/ZORGeoSurface.h>
#include <ZORVisualization/ZORVisVirtualObject.h>

#include <QApplication>
#include <QDir>
#include <QToolButton>

namespace {

class ZORHostWelcomeViewTest : public HostTest
{
protected:
    ZORHostWelcomeViewTest()
    {
        QDir().mkpath(GetPath("samples"));
        WriteTetrahedron("samples/a & b%1.stl");
        qputenv("ZOR_SAMPLES", QFile::encodeName(GetPath("samples")));
        window = std::make_unique<ZORHostMainWindow>(&plugins, &log);
        window->SetAsksToSave(false);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(WaitFor([this] { return window->isActiveWindow(); }));
    }
    ~ZORHostWelcomeViewTest() override
    {
        window.reset();
        qunsetenv("ZOR_SAMPLES");
    }
    ZORHostWelcomeView* Welcome() const { return window->findChild<ZORHostWelcomeView*>(); }
    QToolButton* Button(const QString& name) const
    {
        auto* const button = Welcome()->findChild<QToolButton*>("_Welcome" + name);
        EXPECT_NE(nullptr, button) << name.toStdString();
        return button;
    }

    MessageBoxCatcher boxes;
    ZORHostLineQueue log{100};
    ZORHostPluginManager plugins;
    std::unique_ptr<ZORHostMainWindow> window;
};

TEST_F(ZORHostWelcomeViewTest, CoversTheEmptyViewAndGoesWithTheFirstObject)
{
    EXPECT_TRUE(Welcome()->isVisible());
    EXPECT_EQ(window->GetView()->geometry(), Welcome()->geometry());
    EXPECT_FALSE(window->GetView()->size().isEmpty());
    auto* const box = AddBox("Box");
    EXPECT_FALSE(Welcome()->isVisible());
    delete GetEnvironment()->GetVirtualObjects().constFirst();
    delete box;
    EXPECT_TRUE(WaitFor([this] { return Welcome()->isVisible(); }));
}

TEST_F(ZORHostWelcomeViewTest, GoesForAVisualObjectOfAnEmptyDocument)
{
    auto* const object = new ZORVisVirtualObject(GetEnvironment(), nullptr);
    GetEnvironment()->AddVirtualObject(object);
    EXPECT_FALSE(Welcome()->isVisible());
    delete object;
    EXPECT_TRUE(WaitFor([this] { return Welcome()->isVisible(); }));
}

TEST_F(ZORHostWelcomeViewTest, HandsTheFocusToTheView)
{
    EXPECT_TRUE(Welcome()->isAncestorOf(QApplication::focusWidget()));
    AddBox("Box");
    EXPECT_TRUE(window->GetView()->hasFocus());
    GetEnvironment()->GetContainer()->Clear();
    while (GetEnvironment()->GetNumVirtualObjects() > 0)
        delete GetEnvironment()->GetVirtualObjects().constFirst();
    ASSERT_TRUE(WaitFor([this] { return Welcome()->isVisible(); }));
    EXPECT_TRUE(Welcome()->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(ZORHostWelcomeViewTest, ASampleOpensByKeyAndIsAmongTheRecentFilesLater)
{
    QToolButton* const sample = Button("_Sample_a & b%1");
    EXPECT_EQ("a && b%1.stl", sample->text());
    EXPECT_EQ("a & b%1.stl", sample->accessibleName());
    sample->setFocus();
    QTest::keyClick(sample, Qt::Key_Space);
    ASSERT_TRUE(WaitFor([this] { return GetEnvironment()->GetContainer()->GetNumGeometry() == 1; }));
    EXPECT_TRUE(WaitFor([this] { return !Welcome()->isVisible(); }));
    window->findChild<QAction*>("_NewAction")->trigger();
    ASSERT_TRUE(WaitFor([this] { return Welcome()->isVisible(); }));
    DeleteDeferred();
    EXPECT_EQ("1 a & b%1.stl", Button("_Recent_1")->accessibleName());
}

TEST_F(ZORHostWelcomeViewTest, OutlivesTheEnvironment)
{
    {
        ZORFeatEnvironment other;
        Welcome()->SetEnvironment(&other);
        auto* const object = new ZORVisVirtualObject(&other, nullptr);
        other.AddVirtualObject(object);
        EXPECT_FALSE(Welcome()->isVisible());
    }
    Welcome()->SetEnvironment(nullptr);
    EXPECT_TRUE(Welcome()->isVisible());
}

} // namespace
