#include "ZORNestSolverSeparator.h"

namespace ZORNestSolver {

namespace {

constexpr double kClearlyBetter = 0.98;

} // namespace

Separator::Separator(Layout& layout, Random& random, MoveEffort effort)
    : m_layout(layout)
    , m_random(random)
    , m_effort(effort)
    , m_mover(layout, random)
{
}

void Separator::MoveColliding(const Budget& budget)
{
    m_order.clear();
    for (size_t item = 0; item < m_layout.GetItemCount(); ++item)
        if (m_layout.GetItemLoss(item) > 0)
            m_order.push_back(item);
    m_random.Shuffle(m_order);
    for (const size_t item : m_order) {
        if (budget.IsOver())
            return;
        if (m_layout.GetItemLoss(item) <= 0)
            continue;
        m_layout.Place(item, m_mover.FindBetter(item, m_effort));
    }
}

double Separator::Separate(const SeparationLimits& limits, const Budget& budget)
{
    double best = m_layout.GetTotalLoss();
    std::vector<Stand> bestStands = m_layout.GetStands();
    for (int attempt = 0; attempt < limits.attempts && best > 0 && !budget.IsOver();) {
        const double before = best;
        double level = m_layout.GetTotalLoss(); // what has to be clearly undercut
        for (int idle = 0; idle < limits.iterations && !budget.IsOver(); ++idle) {
            MoveColliding(budget);
            const double loss = m_layout.GetTotalLoss();
            if (loss < level * kClearlyBetter) {
                level = loss;
                idle = 0;
            }
            if (loss < best) {
                best = loss;
                bestStands = m_layout.GetStands();
                if (loss <= 0)
                    return 0;
            }
            m_layout.UpdateWeights();
        }
        attempt = best < before * kClearlyBetter ? 0 : attempt + 1;
        m_layout.PlaceAll(bestStands);
    }
    return best;
}

} // namespace ZORNestSolver
