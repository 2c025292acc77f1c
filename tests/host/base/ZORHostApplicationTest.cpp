#include "base/ZORHostApplication.h"

#include "HostTest.h"
#include "base/ZORHostErrorReporter.h"
#include "support/UncheckedLeaks.h"

#include <ZORSystem/ZORSysException.h>

#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QToolTip>

#include <functional>
#include <new>
#include <stdexcept>

namespace {

QMessageBox* OpenBox()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (box && box->isVisible())
            return box;
    }
    return nullptr;
}

/// Waits for the box, checks it and presses Ok.
void TakeBox(const QString& text)
{
    ASSERT_TRUE(QTest::qWaitFor([] { return OpenBox() != nullptr; }, 10'000));
    QMessageBox* box = OpenBox();
    EXPECT_EQ(QString("Error"), box->windowTitle());
    EXPECT_EQ(text, box->text());
    EXPECT_EQ(QMessageBox::Critical, box->icon());
    EXPECT_EQ(QMessageBox::StandardButtons(QMessageBox::Ok), box->standardButtons());
    box->button(QMessageBox::Ok)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

class PaintFailure : public QWidget
{
public:
    int numPaints = 0;

protected:
    void paintEvent(QPaintEvent*) override
    {
        ++numPaints;
        throw ZORSysException("cannot paint");
    }
};

constexpr int kNotEnded = 99; // exit code of a program that had to be ended by force

/// Runs the event loop of the program, in which \a action is the first thing that happens.
/// \return the exit code
int RunProgram(const std::function<void()>& action)
{
    QTimer guard;
    QObject::connect(&guard, &QTimer::timeout, qApp, [] { QCoreApplication::exit(kNotEnded); });
    guard.start(10'000);
    QTimer::singleShot(0, qApp, action);
    return QApplication::exec();
}

class ZORHostApplicationTest : public HostTest
{
    const UncheckedLeaks m_unchecked; // every test throws through Qt
};

TEST_F(ZORHostApplicationTest, AnSdkExceptionOutOfASlotShowsItsMessageAndTheProgramGoesOn)
{
    QPushButton button("Fail");
    button.show();
    QObject::connect(&button, &QPushButton::clicked, &button, [] { throw ZORSysException("no such thing"); });
    QTest::mouseClick(&button, Qt::LeftButton);
    TakeBox("no such thing");
    QTest::mouseClick(&button, Qt::LeftButton);
    TakeBox("no such thing");
    EXPECT_EQ(nullptr, OpenBox());
}

TEST_F(ZORHostApplicationTest, StandardAndOtherExceptionsAreShownToo)
{
    QTimer::singleShot(0, qApp, [] { throw std::runtime_error("out of luck"); });
    TakeBox("out of luck");
    QTimer::singleShot(0, qApp, [] { throw 42; });
    TakeBox("An operation failed with an exception of unknown type.");
}

TEST_F(ZORHostApplicationTest, RunningOutOfMemoryIsShownEveryTimeWithMemoryForTheBox)
{
    QPushButton button("Fail");
    button.show();
    QObject::connect(&button, &QPushButton::clicked, &button, [] { throw std::bad_alloc(); });
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(&button, Qt::LeftButton);
        TakeBox("There is not enough memory for this operation.");
    }
}

TEST_F(ZORHostApplicationTest, AnExceptionWhileABoxIsOpenWaitsForItsTurn)
{
    QTimer::singleShot(0, qApp, [] { throw ZORSysException("first"); });
    ASSERT_TRUE(WaitFor([] { return OpenBox() != nullptr; }));
    bool thrown = false;
    QTimer::singleShot(0, qApp, [&thrown] {
        thrown = true;
        throw ZORSysException("second");
    });
    ASSERT_TRUE(WaitFor([&thrown] { return thrown; }));
    TakeBox("first");
    TakeBox("second");
}

TEST_F(ZORHostApplicationTest, ABrokenPaintHandlerShowsOneBox)
{
    PaintFailure widget;
    widget.show();
    ASSERT_TRUE(WaitFor([&widget] { return widget.numPaints > 0; }));
    TakeBox("cannot paint");
    const int before = widget.numPaints;
    for (int i = 0; i < 5; ++i)
        widget.repaint();
    QCoreApplication::processEvents();
    EXPECT_GT(widget.numPaints, before);
    EXPECT_EQ(nullptr, OpenBox());
}

TEST_F(ZORHostApplicationTest, EndsWithItsLastWindow)
{
    QWidget window;
    window.show();
    EXPECT_EQ(0, RunProgram([&window] { window.close(); }));
}

TEST_F(ZORHostApplicationTest, EndsWithItsLastWindowAlsoWhenAMenuOrToolTipOpensAtThatMoment)
{
    QWidget window;
    window.show();
    QMenu menu(&window);
    menu.addAction("Copy");
    EXPECT_EQ(0, RunProgram([&window, &menu] {
                  window.close();
                  menu.popup({});
              }));
    menu.close();
    window.show();
    EXPECT_EQ(0, RunProgram([&window] {
                  window.close();
                  QToolTip::showText({}, "tip");
              }));
    QToolTip::hideText();
}

TEST_F(ZORHostApplicationTest, AMessageThatOpensAfterTheLastWindowHasClosedIsShownBeforeTheEnd)
{
    QWidget window;
    window.show();
    QMessageBox box(&window);
    bool isSeen = false;
    EXPECT_EQ(0, RunProgram([&] {
                  window.close();
                  box.show();
                  QTimer::singleShot(50, &box, [&] {
                      isSeen = box.isVisible();
                      box.close();
                  });
              }));
    EXPECT_TRUE(isSeen);
}

TEST_F(ZORHostApplicationTest, ARepetitionWhileItsBoxIsOpenIsCounted)
{
    auto* reporter = static_cast<ZORHostApplication*>(qApp)->GetErrorReporter();
    reporter->Report("again", QEvent::MouseButtonRelease);
    ASSERT_TRUE(WaitFor([] { return OpenBox() != nullptr; }));
    reporter->Report("again", QEvent::MouseButtonRelease);
    reporter->Report("again", QEvent::MouseButtonRelease);
    EXPECT_EQ(QString("Repeated 2 time(s)."), OpenBox()->informativeText());
    TakeBox("again");
    EXPECT_EQ(nullptr, OpenBox());
}

} // namespace
