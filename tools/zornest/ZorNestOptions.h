// What the command line of zornest asks for.

#pragma once

#include <ZORNesting/ZORNestInstanceRun.h>

#include <QString>
#include <QStringList>

namespace ZorNest {

/// How zornest ends.
enum ExitCode {
    AllPlaced = 0,
    SomeNotPlaced = 1,
    BadUsage = 2,
    BadInstance = 3,
    CannotWrite = 4,
    Faulty = 5,
    Failed = 6
};

struct Options
{
    QString instance;
    QString layout;   // "": none
    QString pictures; // a folder; "": none
    QString report;   // "": none
    quint64 seed = 1;
    int threads = 1;
    ZORNestInstanceRun::Clock clock = ZORNestInstanceRun::Clock::Wall;
    double limit = 0; // in units of the clock
    QString help;     // not empty: to be printed instead of a run
    QString error;    // not empty: why there is nothing to run
};

/// \param arguments  with the name of the program first
Options ReadOptions(const QStringList& arguments);

} // namespace ZorNest
