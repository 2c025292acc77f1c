// Walks through the program on a real screen with mouse and keyboard, in both palettes.

#include "ScreenWalk.h"
#include "base/ZORHostTheme.h"
#include "view/ZORHostView3D.h"
#include "window/ZORHostMainWindow.h"

#include <ZORFeature/ZORFeatContainer.h>
#include <ZORFeature/ZORFeatEnvironment.h>
#include <ZORFeature/ZORFeatEnvironmentManager.h>
#include <ZORFeature/ZORFeatRoot.h>

#include <QHash>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <cmath>

namespace {

/// The axes in the lower left corner, which turn with the scene.
constexpr int kTriadSize = 130;

class HostWalkTest : public ScreenWalk, public testing::WithParamInterface<ZORHostOptions::Theme>
{
protected:
    void Walk(const std::function<void()>& walk) { Run(GetParam(), walk); }

    /// Opens a sample with the mouse and waits until the view shows it.
    void OpenSample()
    {
        view = Ask([this] { return GetWindow()->GetView(); });
        place = GetPlace(view);
        highlight = Ask([this] { return view->palette().color(QPalette::Highlight); });
        Ask([this] { // the welcome covers the view while the document is empty
            GetWindow()->findChild<QWidget*>("_WelcomeView")->hide();
            view->setFocus();
            return true;
        });
        empty = WaitForPicture(
            place, [this](const QImage& now) { return IsFramed(now); }, "the focus frame");
        ClickMenu({"File", "Open Samples", "wing_skin.stl"});
        MoveTo(GetBeside()); // what is under the pointer is highlighted
        const auto showsObject = [this](const QImage& now) {
            return IsFramed(now) && CountObject(now) > 20'000;
        };
        sample = WaitForPicture(place, showsObject, "the sample");
        Keep(sample, GetName("sample"));
    }
    QString GetName(const char* what) const
    {
        return QLatin1String(what) + u'-' + ZORHostTheme::ToName(GetParam());
    }
    /// A place in the view beside every object.
    QPoint GetBeside() const { return place.topRight() + QPoint(-10, 10); }
    /// The view without its focus frame.
    QRect GetInside() const { return QRect(QPoint(0, 0), place.size()).adjusted(1, 1, -1, -1); }
    bool IsFramed(const QImage& picture) const
    {
        return CountColor(picture, highlight, QRect(0, 0, place.width(), 1)) == place.width();
    }
    bool IsObject(const QImage& picture, int x, int y) const
    {
        return GetInside().contains(x, y) && (x > kTriadSize || y < place.height() - kTriadSize)
               && picture.pixel(x, y) != empty.pixel(x, y);
    }
    int CountObject(const QImage& picture) const
    {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                count += IsObject(picture, x, y);
        }
        return count;
    }
    QRect GetObjectBox(const QImage& picture) const
    {
        QRect box;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (IsObject(picture, x, y))
                    box |= QRect(x, y, 1, 1);
            }
        }
        return box;
    }
    /// A pixel well inside the object, near the middle of the view.
    QPoint FindObject() const
    {
        const QPoint middle = GetInside().center();
        for (int distance = 0; distance < middle.x(); distance += 4) {
            for (const int x : {middle.x() - distance, middle.x() + distance}) {
                if (IsObject(sample, x, middle.y()) && IsObject(sample, x + 8, middle.y())
                    && IsObject(sample, x - 8, middle.y()))
                    return {x, middle.y()};
            }
        }
        ADD_FAILURE() << "the object does not cover the middle of the view";
        return middle;
    }
    /// How many pixels of the object in the sample, outside of \a but, have each of the colors they have in
    /// \a picture.
    QHash<QRgb, int> CountShades(const QImage& picture, const QRect& but) const
    {
        QHash<QRgb, int> shades;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (IsObject(sample, x, y) && !but.contains(x, y))
                    ++shades[picture.pixel(x, y)];
            }
        }
        return shades;
    }
    /// What a highlight may do: it colors the whole object, leaves it shaded, and leaves the background alone.
    /// \param mark  region in which something is drawn over the scene
    void ExpectHighlight(const QImage& picture, const QRect& mark, const char* what) const
    {
        int object = 0, colored = 0, spilled = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const bool isChanged = picture.pixel(x, y) != sample.pixel(x, y);
                object += IsObject(sample, x, y);
                colored += IsObject(sample, x, y) && isChanged;
                spilled += !IsObject(sample, x, y) && isChanged && !mark.contains(x, y);
            }
        }
        EXPECT_EQ(0, spilled) << what << ": pixels of the background have changed";
        EXPECT_GT(colored, object * 99 / 100) << what << ": some of the object is as before";
        const QHash<QRgb, int> before = CountShades(sample, mark);
        const QHash<QRgb, int> now = CountShades(picture, mark);
        EXPECT_GT(now.size(), before.size() / 2) << what << ": shades are lost";
        EXPECT_LE(*std::max_element(now.cbegin(), now.cend()),
                  2 * *std::max_element(before.cbegin(), before.cend()))
            << what << ": one color floods the object";
    }
    /// What holds whatever the view shows: objects and background cover it, and nothing has the highlight color.
    void ExpectScene(const QImage& picture, const char* what) const
    {
        const int pixels = picture.width() * picture.height();
        const int object = CountObject(picture);
        EXPECT_GT(object, pixels / 100) << what;
        EXPECT_LT(object, pixels * 95 / 100) << what;
        EXPECT_EQ(0, CountColor(picture, highlight, GetInside())) << what;
    }
    /// Waits until the view shows the object of the sample in another place or form, and no mark.
    QImage WaitForOther(const char* what) const
    {
        const QRect before = GetObjectBox(sample);
        const auto isOther = [&](const QImage& seen) {
            return GetObjectBox(seen) != before && CountColor(seen, highlight, GetInside()) == 0;
        };
        const QImage now = WaitForPicture(place, isOther, what);
        ExpectScene(now, what);
        return now;
    }
    void WaitForSame(const QImage& picture, const char* what) const
    {
        WaitForPicture(
            place, [&](const QImage& seen) { return seen == picture; }, what);
    }

    ZORHostView3D* view = nullptr;
    QRect place; // of the view on the screen
    QColor highlight;
    QImage empty;  // the view without objects
    QImage sample; // the view with the sample as it was opened
};

INSTANTIATE_TEST_SUITE_P(Themes, HostWalkTest,
                         testing::Values(ZORHostOptions::Theme::Light, ZORHostOptions::Theme::Dark),
                         [](const auto& tested) { return ZORHostTheme::ToName(tested.param).toStdString(); });

TEST_P(HostWalkTest, AClickMarksTheObjectAndNothingElse)
{
    Walk([this] {
        OpenSample();
        ExpectScene(sample, "sample");
        const QPoint at = FindObject();
        const int half = CountObject(sample) / 2;
        MoveTo(place.topLeft() + at);
        const auto isHovered = [&](const QImage& now) { return CountDifferences(sample, now) > half; };
        const QImage hovered = WaitForPicture(place, isHovered, "the object under the pointer");
        Keep(hovered, GetName("hovered"));
        ExpectScene(hovered, "hovered");
        ExpectHighlight(hovered, QRect(), "hovered");
        MoveTo(GetBeside());
        WaitForSame(sample, "the scene with the pointer beside the object");

        Click(place.topLeft() + at);
        const auto isMarked = [&](const QImage& now) {
            return CountColor(now, highlight, GetInside()) > 200 && CountDifferences(hovered, now) > half;
        };
        const QImage marked = WaitForPicture(place, isMarked, "the mark");
        Keep(marked, GetName("picked"));
        // The dot with the name beside it is all that is drawn over the scene.
        const QRect mark(at - QPoint(10, 50), QSize(260, 70));
        ExpectHighlight(marked, mark, "picked");
        EXPECT_EQ(CountColor(marked, highlight, GetInside()), CountColor(marked, highlight, mark));
        Press("Escape");
        WaitForSame(hovered, "the object under the pointer after Escape");
        MoveTo(GetBeside()); // two clicks in the same place could be a double click
        WaitForSame(sample, "the scene with the pointer away from the object");
        Click(place.topLeft() + at);
        WaitForSame(marked, "the mark after another click");
        MoveTo(GetBeside());
        Press("Escape");
        WaitForSame(sample, "the scene without the mark after Escape");

        MoveTo(place.topLeft() + at);
        Type({"click", "--repeat", "2", "--delay", "30", "1"});
        ASSERT_TRUE(WaitForWindow("ZORHostPropertiesDialog")) << "a double click shows the properties";
        Press("Escape");
        EXPECT_TRUE(WaitForNoWindow("ZORHostPropertiesDialog"));
        ASSERT_TRUE(WaitForWindow("ZORHostMainWindow"));
        MoveTo(GetBeside());
        WaitForSame(marked, "the mark after a double click");
        Click(GetBeside());
        WaitForSame(sample, "the scene without the mark after a click beside the object");
    });
}

TEST_P(HostWalkTest, TheMouseTurnsMovesAndZooms)
{
    Walk([this] {
        OpenSample();
        const QPoint middle = place.center();
        for (const int button : {1, 2}) {
            Pull(middle, middle + QPoint(120, 40), button);
            const auto isTurning = [&](const QImage& now) {
                const QRect pivot(GetInside().center() - QPoint(8, 8), QSize(17, 17));
                return CountColor(now, highlight, pivot) > 10;
            };
            Keep(WaitForPicture(place, isTurning, "the point about which it turns"), GetName("turning"));
            Type({"mouseup", QString::number(button)});
            MoveTo(GetBeside());
            Keep(WaitForOther("a turned scene"), GetName("turned"));
            Press("1");
            WaitForSame(sample, "the isometric view");
        }
        const QPoint step(24, 16);
        Drag(middle, middle + step, 3);
        MoveTo(GetBeside());
        const QPoint moved = GetObjectBox(sample).topLeft() + step;
        const auto isMoved = [&](const QImage& now) {
            return (GetObjectBox(now).topLeft() - moved).manhattanLength() <= 4;
        };
        ExpectScene(WaitForPicture(place, isMoved, "the moved scene"), "moved");
        Press("f");
        WaitForSame(sample, "everything fitted");

        const double height = Ask([this] { return view->GetCamera().GetHeight(); });
        const auto isZoomed = [this](double expected) {
            return WaitFor([this, expected] {
                return std::abs(view->GetCamera().GetHeight() - expected) < 1e-6 * expected;
            });
        };
        Type({"mousemove", QString::number(middle.x()), QString::number(middle.y()), "click", "--repeat", "3",
              "5"});
        EXPECT_TRUE(isZoomed(height * 1.2 * 1.2 * 1.2)) << "three steps of the wheel";
        const auto isSmaller = [this](const QImage& now) {
            const int object = CountObject(now);
            return object > 0 && object < CountObject(sample) / 2;
        };
        ExpectScene(WaitForPicture(place, isSmaller, "a smaller object"), "zoomed out");
        Type({"click", "--repeat", "3", "4"});
        EXPECT_TRUE(isZoomed(height)) << "three steps back";
    });
}

TEST_P(HostWalkTest, KeysTurnZoomAndChangeTheDisplay)
{
    Walk([this] {
        OpenSample();
        for (const char* key : {"Left", "Down", "shift+Right", "minus", "6"}) {
            Press(QLatin1String(key));
            WaitForOther(key);
            Press("1");
            WaitForSame(sample, "the isometric view");
        }
        Press("w");
        const auto isWire = [this](const QImage& now) {
            const int object = CountObject(now);
            return object > 1000 && object < CountObject(sample);
        };
        Keep(WaitForPicture(place, isWire, "edges only"), GetName("wireframe"));
        Press("s");
        WaitForSame(sample, "the shaded scene");
        Press("Tab");
        const auto isUnframed = [this](const QImage& now) {
            return CountColor(now, highlight, QRect(0, 0, place.width(), 1)) == 0;
        };
        WaitForPicture(place, isUnframed, "a view without the focus");
    });
}

TEST_P(HostWalkTest, TheConsoleOpensFromTheMenuAndChangesNothing)
{
    Walk([this] {
        ClickMenu({"Test", "SDK Test"});
        ASSERT_TRUE(WaitForWindow("ZORTestMainDialog"));
        const QRect console = GetPlace(Ask([] { return FindWindow("ZORTestMainDialog"); }));
        const QColor base = Ask([this] { return GetWindow()->palette().color(QPalette::Window); });
        const auto isPainted = [&](const QImage& now) {
            return CountColor(now, base, now.rect()) > now.width() * now.height() / 20;
        };
        Keep(WaitForPicture(console, isPainted, "the console"), GetName("console"));
        Press("alt+F4");
        EXPECT_TRUE(WaitForNoWindow("ZORTestMainDialog"));
        ASSERT_TRUE(WaitForWindow("ZORHostMainWindow"));
        ClickMenu({"File", "Quit"});
        EXPECT_TRUE(WaitForNoWindow("ZORHostMainWindow")) << "nothing is unsaved";
    });
}

TEST_P(HostWalkTest, ReturnInTheTestOptionsPressesOkAndEscapeCancels)
{
    const auto openAndType = [this](const QString& text) {
        ClickMenu({"Test", "SDK Test Options"});
        ASSERT_TRUE(WaitForWindow("ZORHostDialogFrame"));
        auto* edit =
            Ask([] { return FindWindow("ZORHostDialogFrame")->findChild<QLineEdit*>("_ContainerDumpEdit"); });
        Click(GetPlace(edit).center());
        ASSERT_TRUE(WaitFor([edit] { return edit->hasFocus(); }));
        Press("ctrl+a");
        Type({"type", text});
        EXPECT_TRUE(WaitFor([edit, &text] { return edit->text() == text; })) << text.toStdString();
    };
    const auto expectText = [this](const QString& text) {
        ClickMenu({"Test", "SDK Test Options"});
        ASSERT_TRUE(WaitForWindow("ZORHostDialogFrame"));
        EXPECT_EQ(
            text, Ask([] {
                return FindWindow("ZORHostDialogFrame")->findChild<QLineEdit*>("_ContainerDumpEdit")->text();
            }));
        Press("Escape");
        EXPECT_TRUE(WaitForNoWindow("ZORHostDialogFrame"));
        WaitForWindow("ZORHostMainWindow");
    };
    Walk([&] {
        const QString text = "walk" + ZORHostTheme::ToName(GetParam());
        openAndType(text);
        const QRect frame = GetPlace(Ask([] { return FindWindow("ZORHostDialogFrame"); }));
        Keep(Look(frame), GetName("options"));
        Press("Return");
        ASSERT_TRUE(WaitForNoWindow("ZORHostDialogFrame")) << "Return presses OK";
        WaitForWindow("ZORHostMainWindow");
        expectText(text);
        openAndType("dropped");
        Press("Escape");
        EXPECT_TRUE(WaitForNoWindow("ZORHostDialogFrame"));
        WaitForWindow("ZORHostMainWindow");
        expectText(text);
    });
}

TEST_P(HostWalkTest, QuitAndCloseAskAboutUnsavedWork)
{
    Walk([this] {
        Ask([] {
            return ZORFeatEnvironmentManager::GetManager()
                ->GetCurrentEnvironment()
                ->GetContainer()
                ->GetFeatureRoot("ZORFeatRoot");
        });
        ClickMenu({"File", "Quit"});
        ASSERT_TRUE(WaitForWindow("QMessageBox"));
        Keep(Look(GetPlace(Ask([] { return FindWindow("QMessageBox"); }))), GetName("unsaved"));
        Press("Escape");
        EXPECT_TRUE(WaitForNoWindow("QMessageBox"));
        ASSERT_TRUE(WaitForWindow("ZORHostMainWindow"));
        Press("alt+F4"); // the window manager closes the window
        ASSERT_TRUE(WaitForWindow("QMessageBox"));
        auto* discard = Ask([] {
            return static_cast<QWidget*>(
                qobject_cast<QMessageBox*>(FindWindow("QMessageBox"))->button(QMessageBox::Discard));
        });
        Click(GetPlace(discard).center());
        EXPECT_TRUE(WaitForNoWindow("ZORHostMainWindow"));
    });
}

} // namespace
