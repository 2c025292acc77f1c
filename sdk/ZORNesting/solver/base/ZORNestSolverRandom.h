// Random numbers that are the same on every machine.

#pragma once

#include "ZORNestSolverAngle.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace ZORNestSolver {

/// xoshiro256++ (Blackman, Vigna: Scrambled linear pseudorandom number generators), seeded by splitmix64.
class Random
{
public:
    explicit Random(uint64_t seed)
    {
        for (uint64_t& word : m_state) {
            seed += 0x9E3779B97F4A7C15U;
            uint64_t z = seed;
            z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
            z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
            word = z ^ (z >> 31U);
        }
    }
    uint64_t Next()
    {
        const uint64_t result = Rotate(m_state[0] + m_state[3], 23) + m_state[0];
        const uint64_t shifted = m_state[1] << 17U;
        m_state[2] ^= m_state[0];
        m_state[3] ^= m_state[1];
        m_state[1] ^= m_state[2];
        m_state[0] ^= m_state[3];
        m_state[2] ^= shifted;
        m_state[3] = Rotate(m_state[3], 45);
        return result;
    }
    /// In [0, 1).
    double Unit() { return static_cast<double>(Next() >> 11U) * 0x1p-53; }
    double Between(double low, double high) { return low + (high - low) * Unit(); }
    /// In [0, count); count is positive.
    size_t Index(size_t count) { return static_cast<size_t>(Unit() * static_cast<double>(count)); }
    /// Normal distribution around 0.
    double Normal(double deviation)
    {
        const double u = 1 - Unit();
        return deviation * std::sqrt(-2 * std::log(u)) * std::cos(kFullTurn * Unit());
    }
    template<class List>
    void Shuffle(List& list)
    {
        for (size_t i = list.size(); i > 1; --i)
            std::swap(list[i - 1], list[Index(i)]);
    }

private:
    static uint64_t Rotate(uint64_t x, unsigned by) { return (x << by) | (x >> (64 - by)); }

    uint64_t m_state[4];
};

} // namespace ZORNestSolver
