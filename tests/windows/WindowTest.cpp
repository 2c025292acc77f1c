#include "WindowTest.h"

#include "WindowChecks.h"
#include "base/ZORHostTheme.h"

#include <QTest>
#include <QWidget>

WindowTest::WindowTest()
{
    ZORHostTheme::Apply(GetParam());
}

void WindowTest::Walk(QWidget* window, const QString& name)
{
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window)) << name.toStdString();
    int page = 0;
    ForEachPage(window, [&] {
        QCoreApplication::sendPostedEvents(); // lays out what has changed
        Check(window, QStringLiteral("%1-%2").arg(name, QString::number(page++)));
    });
}

void WindowTest::Check(QWidget* window, const QString& name)
{
    const QString folder = qEnvironmentVariable("ZOR_WINDOW_PICTURES");
    if (!folder.isEmpty()) {
        const QString file = QStringLiteral("%1/%2-%3-x%4.png")
                                 .arg(folder, name, ZORHostTheme::ToName(GetParam()),
                                      QString::number(window->devicePixelRatioF()));
        EXPECT_TRUE(window->grab().save(file)) << file.toStdString();
    }
    for (const QString& problem : FindCutTexts(window))
        ADD_FAILURE() << name.toStdString() << ": cut off: " << problem.toStdString();
    for (const QString& problem : FindFaintTexts(window))
        ADD_FAILURE() << name.toStdString() << ": faint: " << problem.toStdString();
    for (const QString& problem : FindUnreachableWidgets(window))
        ADD_FAILURE() << name.toStdString() << ": keyboard: " << problem.toStdString();
    for (const QString& problem : FindSwallowedReturns(window))
        ADD_FAILURE() << name.toStdString() << ": keyboard: " << problem.toStdString();
}
