// One nesting job in its thread.

#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

class ZORNestNestingInput;
class ZORWorkContext;

/// What came of a job; see ZORNestNestingResponse.
class ZORNestNestingOutcome
{
public:
    QList<QByteArray> sheetFiles;
    QByteArray report;
    QStringList remarks;
};

/// Nests on as many threads as the machine has processors, and tells \a context of its progress.
/// \param isKept  whether part files, sheet files and report are written to the work directory too
/// \throws ZORWorkCanceled; ZORSysFileException when a file to be kept cannot be written
ZORNestNestingOutcome ZORNestRunNesting(const ZORNestNestingInput& input, const ZORWorkContext& context,
                                        bool isKept);
