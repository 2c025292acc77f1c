// Instances of the command-line front give a job that can be solved and a layout, or a reason.

#include "FuzzTarget.h"
#include "SolverProof.h"
#include "ZorNestInstance.h"

#include <QJsonDocument>

namespace {

constexpr int kMoves = 20;
constexpr size_t kMostItems = 16; // jobs of more are read and not solved

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const ZorNest::Instance instance = ZorNest::ReadInstance(ToBytes(data, size));
    if (!instance.error.isEmpty())
        return 0;
    Require(instance.itemIds.size() == instance.job.items.size(), "every item has an id");
    Require(instance.kindIds.size() == instance.job.kinds.size(), "every sheet has an id");
    if (instance.job.items.size() > kMostItems)
        return 0;
    const ZORNestSolver::Solution solution = FuzzSolver::SolveAndProve(instance.job, kMoves, false);
    const QByteArray layout = ZorNest::WriteLayout(instance, solution);
    Require(!QJsonDocument::fromJson(layout).isNull(), "a layout is a JSON document");
    return 0;
}
