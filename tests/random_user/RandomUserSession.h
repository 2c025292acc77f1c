// Runs the host under the hands of the random user.

#pragma once

#include "RandomUserAction.h"
#include "RandomUserChooser.h"
#include "RandomUserFiles.h"
#include "RandomUserHand.h"
#include "RandomUserWatch.h"

#include <QElapsedTimer>
#include <QFile>
#include <QObject>

/// What a session does and how long.
struct RandomUserPlan
{
    QString folder; // of all files of the session; exists
    unsigned seed = 1;
    int numActions = 150;
    double hours = 0;        // more than 0: as long as this, whatever the number of actions
    int memoryEvery = 0;     // prints the resident memory after each so many actions; 0: never
    QString replay;          // file with the actions; empty: by chance
    QStringList morePlugins; // besides the bench and the standard commands
};

/// Starts the host, as often as the user quits it, and performs actions until there are enough; then the
/// program ends in whatever state it is. Every action is recorded in the file "actions.txt" of the folder
/// before it is performed. Any failure ends the process, see RandomUserWatch.
class RandomUserSession : public QObject
{
    Q_OBJECT

public:
    explicit RandomUserSession(const RandomUserPlan& plan);

    void Run();

private:
    void RunProgram();
    void Step();
    bool IsOver() const;
    RandomUserAction GetNext();
    void ReportMemory() const;

    const RandomUserPlan m_plan;
    RandomUserWatch m_watch;
    RandomUserFiles m_files;
    RandomUserChooser m_chooser;
    RandomUserHand m_hand;
    QList<RandomUserAction> m_replayed;
    QFile m_record;
    QElapsedTimer m_time;
    int m_numDone = 0;
};
