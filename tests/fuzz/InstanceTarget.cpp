// Instances of the command-line front give a job that can be solved and a layout, or a reason.

#include "FuzzTarget.h"
#include "SolverProof.h"

#include <ZORNesting/ZORNestInstance.h>
#include <ZORNesting/ZORNestLayout.h>
#include <ZORNesting/job/ZORNestLayout_p.h>
#include <ZORSystem/ZORSysException.h>

#include <QJsonDocument>

#include <memory>

namespace {

constexpr int kMoves = 20;
constexpr size_t kMostItems = 16; // jobs of more are read and not solved

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    ZORNestInstance instance;
    try {
        instance = ZORNestInstance::Read(ToBytes(data, size), ZORNestInstance::Purpose::Nesting);
    } catch (const ZORSysException&) {
        return 0;
    }
    const ZORNestInstanceData& read = instance.GetData();
    Require(read.itemIds.size() == read.job.items.size(), "every item has an id");
    Require(read.kindIds.size() == read.job.kinds.size(), "every sheet has an id");
    if (read.job.items.size() > kMostItems)
        return 0;
    auto nested = std::make_unique<ZORNestLayoutData>();
    nested->instance = instance;
    nested->solution = FuzzSolver::SolveAndProve(read.job, kMoves, FuzzSolver::Start::Normal);
    const QByteArray layout = ZORNestLayout(nested.release()).WriteJson();
    Require(!QJsonDocument::fromJson(layout).isNull(), "a layout is a JSON document");
    return 0;
}
