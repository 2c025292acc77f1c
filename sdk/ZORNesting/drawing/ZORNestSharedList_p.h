// List of values that stay at their place in memory while lists are copied.

#pragma once

#include <QList>

#include <algorithm>
#include <memory>
#include <vector>

/// Values that never change once they are in; copies of the list share them.
template<class T>
class ZORNestSharedList
{
public:
    void Append(const T& value)
    {
        m_values.push_back(std::make_shared<const T>(value));
        m_pointers.append(m_values.back().get());
    }
    const QList<const T*>& GetPointers() const { return m_pointers; }

    friend bool operator==(const ZORNestSharedList& a, const ZORNestSharedList& b)
    {
        return std::equal(
            a.m_pointers.begin(), a.m_pointers.end(), b.m_pointers.begin(), b.m_pointers.end(),
            [](const T* first, const T* second) { return first == second || *first == *second; });
    }

private:
    std::vector<std::shared_ptr<const T>> m_values;
    QList<const T*> m_pointers; // of m_values
};
