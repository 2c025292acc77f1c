// The list of copies that are not placed.

#pragma once

#include <string>
#include <unordered_map>
#include <vector>

namespace ZORNestSolver {

struct UnplacedItem
{
    size_t item = 0;
    int count = 0;
    std::string reason;
};

/// One entry for each item and reason, in the order in which they came. Jobs may have hundreds of thousands of items.
class UnplacedList
{
public:
    UnplacedList() = default;
    /// \param entries  with different items or reasons
    explicit UnplacedList(std::vector<UnplacedItem> entries);

    /// Counts copies to the entry of an item and reason, which may be new. O(1), as an item has few reasons.
    /// \param count  0 or less: nothing changes
    void Add(size_t item, int count, const std::string& reason);
    const std::vector<UnplacedItem>& GetEntries() const { return m_entries; }

private:
    std::vector<UnplacedItem> m_entries;
    std::unordered_multimap<size_t, size_t> m_indices; // of entries, by item
};

} // namespace ZORNestSolver
