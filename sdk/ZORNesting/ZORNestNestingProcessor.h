// Nests parts on sheets.

#pragma once

#include <ZORNesting/ZORNestNestingInput.h>
#include <ZORNesting/ZORNestNestingResponse.h>
#include <ZORNesting/ZORNestingGlobal.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QList>
#include <QObject>

#include <memory>

/// Runs nesting jobs in helper processes (see ZORWorkProcessor): a layout and a report a job.
///
/// A job that crashes its helper, or exceeds its memory, fails with the reason. One that is stopped and does not answer
/// within 10 s completes with the last layout that it had proved, and fails only where there is none.
///
/// Every layout that is handed out has passed a check of true distances. With
/// ZORNestDebugOptions::GetKeepNestingWorkDirectories() the work directories of jobs stay, with the part files,
/// the sheet files and the report.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORNESTING_EXPORT ZORNestNestingProcessor : public QObject
{
    Q_OBJECT

public:
    explicit ZORNestNestingProcessor(QObject* parent = nullptr);
    /// Cancels what runs, within 0.2 s whatever the jobs do; in threads, as soon as they notice. Nothing is signaled anymore.
    ~ZORNestNestingProcessor() override;

    /// Where the jobs run that are executed afterwards; at first in helper processes.
    void SetPlace(ZORWorkProcessor::Place place);

    /// Takes a job, which waits for Execute(). Never throws for what the input holds: the report lists it.
    /// \return owned by the processor and living as long
    ZORNestNestingResponse* AddInput(const ZORNestNestingInput& input);
    /// In the order in which they were added.
    QList<ZORNestNestingResponse*> GetResponses() const;

    /// Starts the given job, or with null all of them; those that were started before are left alone.
    /// \throws ZORSysException "cannot start a thread: %1"; the job stays as it is
    void Execute(ZORNestNestingResponse* response = nullptr);
    /// Asks the given job, or with null all of them, to complete with the best layout so far. One that has no thread
    /// yet, executed or not, completes with the first layout, at once even where all threads are busy.
    /// \throws ZORSysException "cannot start a thread: %1"; the job stays as it is
    void Stop(ZORNestNestingResponse* response = nullptr);
    /// Asks the given job, or with null all of them, to end without a result. What has ended already stays as
    /// it is.
    void Cancel(ZORNestNestingResponse* response = nullptr);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
