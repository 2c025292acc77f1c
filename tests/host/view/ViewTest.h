// Fixture of the tests of the 3D view: a view on the screen, mouse and pixels.

#pragma once

#include "HostTest.h"
#include "view/ZORHostView3D.h"

#include <ZORVisualization/ZORVisGraphicsContext.h>

#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QWheelEvent>

/// A view of 320 x 240 of the current environment.
class ViewTest : public HostTest
{
public:
    ViewTest()
    {
        view.resize(320, 240);
        view.SetEnvironment(GetEnvironment());
        view.show();
    }
    ~ViewTest() override { view.SetEnvironment(nullptr); }

    void SetUp() override
    {
        if (!ZORVisGraphicsContext::GetInstance()->IsAvailable())
            GTEST_SKIP() << "no graphics context";
    }

    /// Lets the scene report its changes and returns what is on the screen.
    QImage Look()
    {
        QCoreApplication::processEvents();
        return view.grab().toImage();
    }
    static int CountRed(const QImage& image)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                count += color.red() > 2 * color.green() + 20 && color.red() > 2 * color.blue() + 20;
            }
        }
        return count;
    }
    /// Moves the pointer without a button.
    void Hover(QPointF at)
    {
        QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &move);
    }
    void Drag(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint from, QPoint to)
    {
        QTest::mousePress(&view, button, modifiers, from);
        for (int step = 1; step <= 10; ++step) {
            // QTest::mouseMove() carries no buttons on this platform.
            const QPointF at = from + (to - from) * (step / 10.0);
            QMouseEvent move(QEvent::MouseMove, at, view.mapToGlobal(at), Qt::NoButton, button, modifiers);
            QCoreApplication::sendEvent(&view, &move);
        }
        QTest::mouseRelease(&view, button, modifiers, to);
    }
    void Wheel(int delta, QPointF at)
    {
        QWheelEvent event(at, view.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
    }

    ZORHostView3D view;
};
