#include "ZORNestSolverExactTree.h"

namespace ZORNestSolver::Exact {

BoxTree::BoxTree(std::vector<Box> leaves)
{
    if (leaves.empty())
        return;
    m_levels.push_back(std::move(leaves));
    while (m_levels.back().size() > 1) {
        const std::vector<Box>& below = m_levels.back();
        std::vector<Box> level((below.size() + kBranches - 1) / kBranches);
        for (size_t i = 0; i < below.size(); ++i) {
            level[i / kBranches].Add(below[i].min);
            level[i / kBranches].Add(below[i].max);
        }
        m_levels.push_back(std::move(level));
    }
}

} // namespace ZORNestSolver::Exact
