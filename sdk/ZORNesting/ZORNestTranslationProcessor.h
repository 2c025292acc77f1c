// Translates source files into part files.

#pragma once

#include <ZORNesting/ZORNestTranslationInput.h>
#include <ZORNesting/ZORNestTranslationResponse.h>
#include <ZORNesting/ZORNestingGlobal.h>
#include <ZORWorker/ZORWorkProcessor.h>

#include <QList>
#include <QObject>

#include <memory>

/// Runs translations as jobs in helper processes (see ZORWorkProcessor), one job a source file, one part file (*.msi)
/// a part. Those by providers that other libraries have registered run in threads.
///
/// The work directories of jobs hold the part files for the reader, who may delete them, and a report. With
/// ZORNestDebugOptions::GetKeepTranslationWorkDirectories() they stay, with a second copy of the part files
/// that no result names.
///
/// Thread safety: reentrant; an object belongs to its thread.
class ZORNESTING_EXPORT ZORNestTranslationProcessor : public QObject
{
    Q_OBJECT

public:
    explicit ZORNestTranslationProcessor(QObject* parent = nullptr);
    /// Cancels what runs; see ZORWorkProcessor.
    ~ZORNestTranslationProcessor() override;

    /// Where the jobs run that are executed afterwards, unless only threads can run them; at first in helper processes.
    void SetPlace(ZORWorkProcessor::Place place);

    /// Takes a file, which waits for Execute(). Never throws for what the file or the settings hold: the job
    /// then fails with the reason.
    /// \return owned by the processor and living as long
    ZORNestTranslationResponse* AddInput(const ZORNestTranslationInput& input, const ZORWorkResource& source);
    /// In the order in which they were added.
    QList<ZORNestTranslationResponse*> GetResponses() const;

    /// Starts what has not been started before.
    void Execute();
    /// Gives up whatever has not ended: those jobs fail with the reason "canceled".
    void Cancel();

private:
    class Private;
    const std::unique_ptr<Private> d;
};
