// The helper program of the tests: one that knows the kinds of TestKinds.h.

#include "TestKinds.h"

#include <ZORWorker/ZORWorkHelpers.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    RegisterTestKinds();
    return ZORWorkHelpers::Serve(argc, argv);
}
