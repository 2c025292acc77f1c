// Runs jobs of nesting and translation for a program of the SDK, which starts it.

#include <ZORWorker/ZORWorkHelpers.h>

#include <QGuiApplication>

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv); // reports hold pictures with texts
    return ZORWorkHelpers::Serve(argc, argv);
}
