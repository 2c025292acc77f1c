#include "ZORNestSolverUnplaced.h"

namespace ZORNestSolver {

UnplacedList::UnplacedList(std::vector<UnplacedItem> entries)
    : m_entries(std::move(entries))
{
    for (size_t i = 0; i < m_entries.size(); ++i)
        m_indices.emplace(m_entries[i].item, i);
}

void UnplacedList::Add(size_t item, int count, const std::string& reason)
{
    if (count <= 0)
        return;
    const auto [first, last] = m_indices.equal_range(item);
    for (auto index = first; index != last; ++index) {
        if (m_entries[index->second].reason == reason) {
            m_entries[index->second].count += count;
            return;
        }
    }
    m_indices.emplace(item, m_entries.size());
    m_entries.push_back({item, count, reason});
}

} // namespace ZORNestSolver
