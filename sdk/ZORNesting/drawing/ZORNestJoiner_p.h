// Joins what was drawn piece by piece.

#pragma once

#include "ZORNestChain_p.h"

#include <QList>

class ZORWorkContext;

/// Joins open chains end to end into closed ones.
///
/// Ends within the tolerance of each other are joined in pairs, nearest first; among equal distances those on
/// the same layer, then those drawn first. Chains that are exact copies of an earlier one are left out. A gap
/// is closed by moving the end of a line, or by a line of its own between two arcs: arcs stay as they are.
class ZORNestJoiner
{
public:
    /// Most pairs that are looked at for an end; beyond that, ends that are drawn later miss out.
    static constexpr int kMaximumPairs = 32;

    /// Distances up to this are no gaps, in millimetres.
    static constexpr double kRounding = 1e-9;

    struct Outcome
    {
        QList<ZORNestChain> closed; ///< in the order of their first curves
        QList<ZORNestChain> open;   ///< in the order of their first curves
        qint64 duplicates = 0;      ///< chains left out
        qint64 gaps = 0;            ///< joints whose ends were apart
        double largestGap = 0;
    };

    /// \param tolerance  largest gap that is closed, at least 0. O(n log n)
    static Outcome Join(QList<ZORNestChain> chains, double tolerance, const ZORWorkContext& context);
};
