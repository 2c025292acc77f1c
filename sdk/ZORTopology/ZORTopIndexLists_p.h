// Lists of indices, stored one behind the other.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

/// List 0, list 1, ... of numbers in two arrays: a million short lists cost no million allocations.
class ZORTopIndexLists
{
public:
    int GetCount() const { return int(m_starts.size()) - 1; }
    std::span<const int> Get(int list) const
    {
        return {m_values.data() + m_starts[size_t(list)], m_values.data() + m_starts[size_t(list) + 1]};
    }

    /// Adds a number to the list that Close() will end.
    void Add(int value) { m_values.push_back(value); }
    void Close() { m_starts.push_back(int(m_values.size())); }

    /// List v of the result holds the lists of this one in which v occurs, each once, in ascending order.
    /// \param count  greater than every number in the lists
    ZORTopIndexLists GetInverse(int count) const
    {
        ZORTopIndexLists inverse;
        inverse.m_starts.assign(size_t(count) + 1, 0);
        std::vector<int> last(size_t(count), -1); // the list that was counted, or written, last
        ForEachOnce(last, [&](int, int value) { ++inverse.m_starts[size_t(value) + 1]; });
        for (size_t i = 1; i < inverse.m_starts.size(); ++i)
            inverse.m_starts[i] += inverse.m_starts[i - 1];
        inverse.m_values.resize(size_t(inverse.m_starts.back()));
        std::vector<int> next(inverse.m_starts.begin(), inverse.m_starts.end() - 1);
        last.assign(size_t(count), -1);
        ForEachOnce(last,
                    [&](int list, int value) { inverse.m_values[size_t(next[size_t(value)]++)] = list; });
        return inverse;
    }

private:
    template<class Function>
    void ForEachOnce(std::vector<int>& last, Function function) const
    {
        for (int list = 0; list < GetCount(); ++list) {
            for (const int value : Get(list)) {
                if (last[size_t(value)] != list)
                    function(list, value);
                last[size_t(value)] = list;
            }
        }
    }

    std::vector<int> m_starts{0};
    std::vector<int> m_values;
};
