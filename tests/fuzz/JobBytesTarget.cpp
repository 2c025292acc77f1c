// What nesting and translation jobs exchange with their callers is read whole or refused, and what is left of a job
// in a process that died is proved before it becomes a result. The first byte chooses which of them the input is.

#include "FuzzTarget.h"
#include "sdk/ZORNesting/NestingJobs.h"

#include <ZORNesting/job/ZORNestJobBytes_p.h>
#include <ZORNesting/job/ZORNestJobKinds_p.h>
#include <ZORSystem/ZORSysException.h>
#include <ZORWorker/ZORWorkJobKind.h>

namespace {

enum Content {
    NestingTask,
    NestingOutcome,
    InterimLayout,
    TranslationTask,
    TranslationOutcome,
    LastLayout,
    NumContents
};

/// Requires that what was read is written in a form that stays the same.
template<class Read, class Write>
void CheckForm(const QByteArray& bytes, Read read, Write write)
{
    const QByteArray written = write(read(bytes));
    Require(write(read(written)) == written, "what was written is read again");
}

void CompleteJob(const QByteArray& interim)
{
    static const QByteArray task = ZORNestJobBytes::Write(ZORNestNestingTask{
        MakeJob({MakeSquare("A", 10, 3), MakeSquare("B", 20)}, {MakeSheets("S", 50, 60, 2)}), false});
    const ZORWorkResult result =
        ZORWorkJobKind::CompleteJob(ZORNestJobKinds::kNesting, GetJobContext(), task, interim);
    ZORNestJobBytes::ReadNestingOutcome(result.GetData());
}

void Read(Content content, const QByteArray& bytes)
{
    const auto write = [](const auto& value) { return ZORNestJobBytes::Write(value); };
    switch (content) {
    case NestingTask:
        return CheckForm(bytes, ZORNestJobBytes::ReadNestingTask, write);
    case NestingOutcome:
        return CheckForm(bytes, ZORNestJobBytes::ReadNestingOutcome, write);
    case InterimLayout:
        return CheckForm(bytes, ZORNestJobBytes::ReadInterimLayout, write);
    case TranslationTask:
        return CheckForm(bytes, ZORNestJobBytes::ReadTranslationTask, write);
    case TranslationOutcome:
        return CheckForm(bytes, ZORNestJobBytes::ReadTranslationOutcome, write);
    case LastLayout:
        return CompleteJob(bytes);
    case NumContents:
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size == 0)
        return 0;
    try {
        Read(static_cast<Content>(data[0] % NumContents), ToBytes(data + 1, size - 1));
    } catch (const ZORSysException& exception) {
        Require(!exception.GetMessage().isEmpty(), "a refusal has a reason");
    }
    return 0;
}
