// Small linear programs.

#pragma once

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace ZORNestSolver {

/// Maximises a linear function of variables that are not negative, under rows "terms <= limit" whose limits are
/// not negative either, so that all zeros are a solution to start from. Dense simplex method: a pivot costs
/// O(rows x variables).
class LinearProgram
{
public:
    using Terms = std::vector<std::pair<size_t, double>>; // variable, factor

    explicit LinearProgram(size_t variables)
        : m_objective(variables, 0)
    {
    }
    void AddRow(const Terms& terms, double limit);
    void SetObjective(size_t variable, double factor) { m_objective[variable] = factor; }

    /// The variables at the optimum, or at the best corner met until \a isOver. The rows are used up.
    std::vector<double> Solve(const std::function<bool()>& isOver);

private:
    size_t ChooseColumn(bool first) const;
    size_t ChooseRow(size_t column) const;
    void Pivot(size_t row, size_t column);

    std::vector<double> m_objective;
    std::vector<std::vector<double>> m_rows;
    std::vector<double> m_limits;
    std::vector<size_t> m_columnNames; // variables, then slacks
    std::vector<size_t> m_rowNames;
};

} // namespace ZORNestSolver
