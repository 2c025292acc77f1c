// Command line of the random user.

#pragma once

#include "RandomUserSession.h"

/// See --help.
struct RandomUserCommandLine
{
    RandomUserPlan plan; // of a child
    unsigned firstSeed = 1;
    unsigned lastSeed = 10;
    int parallel = 2;
    int trials = 150;                // to shorten the actions of a failure, at most
    QString replay;                  // list to be repeated instead of seeds
    QStringList childArguments;      // what every child needs to know
    QStringList shorteningArguments; // those of them that a child needs which repeats a failure

    /// Ends the process for --help, --version and options that are not known.
    static RandomUserCommandLine Parse(const QStringList& arguments);
};
