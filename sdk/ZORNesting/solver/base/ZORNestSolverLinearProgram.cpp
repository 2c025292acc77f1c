#include "ZORNestSolverLinearProgram.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace ZORNestSolver {

namespace {

constexpr double kTolerance = 1e-11;
constexpr int kMostPivots = 20000;
constexpr int kMostIdlePivots = 50; // without progress, before the rule that cannot cycle
constexpr size_t kNone = std::numeric_limits<size_t>::max();

} // namespace

void LinearProgram::AddRow(const Terms& terms, double limit)
{
    std::vector<double> row(m_objective.size(), 0);
    for (const auto& [variable, factor] : terms)
        row[variable] += factor;
    m_rows.push_back(std::move(row));
    m_limits.push_back(std::max(limit, 0.0));
}

/// The most promising column, or the first promising one; none at the optimum.
size_t LinearProgram::ChooseColumn(bool first) const
{
    size_t best = kNone;
    for (size_t j = 0; j < m_objective.size(); ++j) {
        if (m_objective[j] <= kTolerance)
            continue;
        const bool better =
            best == kNone
            || (first ? m_columnNames[j] < m_columnNames[best] : m_objective[j] > m_objective[best]);
        if (better)
            best = j;
    }
    return best;
}

/// The row that limits the column first; none if nothing does.
size_t LinearProgram::ChooseRow(size_t column) const
{
    size_t best = kNone;
    double least = std::numeric_limits<double>::infinity();
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const double factor = m_rows[i][column];
        if (factor <= kTolerance)
            continue;
        const double ratio = m_limits[i] / factor;
        if (ratio < least || (ratio == least && m_rowNames[i] < m_rowNames[best])) {
            least = ratio;
            best = i;
        }
    }
    return best;
}

void LinearProgram::Pivot(size_t row, size_t column)
{
    std::vector<double>& pivot = m_rows[row];
    const double inverse = 1 / pivot[column];
    for (double& value : pivot)
        value *= inverse;
    pivot[column] = inverse;
    m_limits[row] *= inverse;
    const auto eliminate = [&](std::vector<double>& values) {
        const double factor = values[column];
        if (factor == 0)
            return 0.0;
        values[column] = 0;
        for (size_t j = 0; j < values.size(); ++j)
            values[j] -= factor * pivot[j];
        return factor;
    };
    for (size_t i = 0; i < m_rows.size(); ++i)
        if (i != row)
            m_limits[i] = std::max(0.0, m_limits[i] - eliminate(m_rows[i]) * m_limits[row]);
    eliminate(m_objective);
    std::swap(m_rowNames[row], m_columnNames[column]);
}

std::vector<double> LinearProgram::Solve(const std::function<bool()>& isOver)
{
    const size_t variables = m_objective.size();
    m_columnNames.resize(variables);
    std::iota(m_columnNames.begin(), m_columnNames.end(), size_t{0});
    m_rowNames.resize(m_rows.size());
    std::iota(m_rowNames.begin(), m_rowNames.end(), variables);
    int idle = 0;
    for (int i = 0; i < kMostPivots && !isOver(); ++i) {
        const size_t column = ChooseColumn(idle > kMostIdlePivots);
        const size_t row = column == kNone ? kNone : ChooseRow(column);
        if (row == kNone)
            break;
        idle = m_limits[row] > kTolerance ? 0 : idle + 1;
        Pivot(row, column);
    }
    std::vector<double> values(variables, 0);
    for (size_t i = 0; i < m_rows.size(); ++i)
        if (m_rowNames[i] < variables)
            values[m_rowNames[i]] = m_limits[i];
    return values;
}

} // namespace ZORNestSolver
