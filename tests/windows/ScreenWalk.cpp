#include "ScreenWalk.h"

#include "actions/ZORHostActionIndex.h"
#include "app/ZORHostProgram.h"
#include "window/ZORHostMainWindow.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QProcess>
#include <QScreen>
#include <QTest>

#include <atomic>
#include <memory>

namespace {

constexpr int kWaitMilliseconds = 20'000;
constexpr int kPollMilliseconds = 20;
constexpr int kDragSteps = 8;

QString ToText(int number)
{
    return QString::number(number);
}

} // namespace

ScreenWalk::ScreenWalk() = default;

void ScreenWalk::Run(ZORHostOptions::Theme theme, const std::function<void()>& walk)
{
    ZORHostOptions options;
    options.plugins = QStringList({ZOR_TESTING, ZOR_STANDARD_COMMANDS});
    options.defaultPlugins = false;
    options.settingsFile = m_folder.filePath("host.ini");
    options.theme = theme;
    options.themeGiven = true;
    ZORHostProgram program(options);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* main = qobject_cast<ZORHostMainWindow*>(window))
            m_window = main;
    }
    ASSERT_NE(nullptr, m_window);

    std::atomic_bool isDone = false;
    const std::unique_ptr<QThread> walker(QThread::create([&] {
        if (WaitForWindow("ZORHostMainWindow"))
            walk();
        isDone = true;
        InProgram([] { QCoreApplication::exit(); });
    }));
    walker->start();
    program.Run();
    while (!walker->wait(kPollMilliseconds)) // the walk may have closed the program and still ask it
        QCoreApplication::processEvents();
    EXPECT_TRUE(isDone);
}

void ScreenWalk::InProgram(const std::function<void()>& call)
{
    QMetaObject::invokeMethod(qApp, call, Qt::BlockingQueuedConnection);
}

bool ScreenWalk::WaitFor(const std::function<bool()>& condition)
{
    return QTest::qWaitFor([&] { return Ask(condition); }, kWaitMilliseconds);
}

QWidget* ScreenWalk::FindWindow(const char* className)
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->inherits(className))
            return window;
    }
    return nullptr;
}

bool ScreenWalk::WaitForWindow(const char* className)
{
    const bool isActive = WaitFor([className] {
        const QWidget* window = FindWindow(className);
        return window && window->isActiveWindow();
    });
    EXPECT_TRUE(isActive) << className << " is not active";
    return isActive;
}

bool ScreenWalk::WaitForNoWindow(const char* className)
{
    return WaitFor([className] { return !FindWindow(className); });
}

QRect ScreenWalk::GetPlace(const QWidget* widget)
{
    return Ask([widget] { return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()); });
}

void ScreenWalk::Type(const QStringList& arguments)
{
    QProcess process;
    process.start("xdotool", arguments);
    const bool isFinished = process.waitForFinished(kWaitMilliseconds);
    EXPECT_TRUE(isFinished && process.exitCode() == 0)
        << arguments.join(u' ').toStdString() << process.readAllStandardError().toStdString();
}

void ScreenWalk::MoveTo(const QPoint& at)
{
    Type({"mousemove", ToText(at.x()), ToText(at.y())});
}

void ScreenWalk::Click(const QPoint& at, int button)
{
    Type({"mousemove", ToText(at.x()), ToText(at.y()), "click", ToText(button)});
}

void ScreenWalk::Pull(const QPoint& from, const QPoint& to, int button)
{
    QStringList arguments = {"mousemove", ToText(from.x()), ToText(from.y()), "mousedown", ToText(button)};
    for (int step = 1; step <= kDragSteps; ++step) {
        const QPoint at = from + (to - from) * step / kDragSteps;
        arguments += {"mousemove", ToText(at.x()), ToText(at.y())};
    }
    Type(arguments);
}

void ScreenWalk::Drag(const QPoint& from, const QPoint& to, int button)
{
    Pull(from, to, button);
    Type({"mouseup", ToText(button)});
}

void ScreenWalk::ClickMenu(const QStringList& texts) const
{
    QWidget* menu = Ask([this]() -> QWidget* { return m_window->menuBar(); });
    for (const QString& text : texts) {
        ClickEntry(menu, text);
        if (text == texts.constLast())
            return;
        const bool isOpen = WaitFor([former = menu] {
            const QWidget* popup = QApplication::activePopupWidget();
            return popup && popup != former;
        });
        ASSERT_TRUE(isOpen) << text.toStdString() << " does not open";
        menu = Ask([] { return QApplication::activePopupWidget(); });
    }
}

void ScreenWalk::ClickEntry(QWidget* menu, const QString& text) const
{
    const QRect place = Ask([menu, &text] {
        const auto actions = menu->actions();
        for (QAction* action : actions) {
            if (ZORHostPlainText(action->text()) != text)
                continue;
            const auto* bar = qobject_cast<QMenuBar*>(menu);
            const QRect entry =
                bar ? bar->actionGeometry(action) : static_cast<QMenu*>(menu)->actionGeometry(action);
            return QRect(menu->mapToGlobal(entry.topLeft()), entry.size());
        }
        return QRect();
    });
    ASSERT_TRUE(place.isValid()) << "no entry " << text.toStdString();
    Click(place.center());
}

QImage ScreenWalk::Look(const QRect& place)
{
    return Ask([&place] {
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, place.x(), place.y(), place.width(), place.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    });
}

QImage ScreenWalk::WaitForPicture(const QRect& place, const std::function<bool(const QImage&)>& condition,
                                  const char* what)
{
    QImage picture;
    const bool isThere = QTest::qWaitFor(
        [&] {
            picture = Look(place);
            return condition(picture);
        },
        kWaitMilliseconds);
    if (!isThere) {
        ADD_FAILURE() << "the screen never shows: " << what;
        Keep(picture, "failure");
    }
    return picture;
}

void ScreenWalk::Keep(const QImage& picture, const QString& name)
{
    const QString folder = qEnvironmentVariable("ZOR_WINDOW_PICTURES");
    if (!folder.isEmpty()) {
        EXPECT_TRUE(picture.save(QStringLiteral("%1/walk-%2.png").arg(folder, name)));
    }
}

int CountColor(const QImage& picture, const QColor& color, const QRect& area)
{
    int count = 0;
    const QRect inside = area.intersected(picture.rect());
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x)
            count += picture.pixel(x, y) == color.rgb();
    }
    return count;
}

QRect GetDifference(const QImage& a, const QImage& b)
{
    QRect difference;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != b.pixel(x, y))
                difference |= QRect(x, y, 1, 1);
        }
    }
    return difference;
}

int CountDifferences(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x)
            count += a.pixel(x, y) != b.pixel(x, y);
    }
    return count;
}
