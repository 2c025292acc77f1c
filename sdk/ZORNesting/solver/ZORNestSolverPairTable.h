// What is known of pairs of shapes at offsets that were asked for often.

#pragma once

#include "ZORNestSolverCollision.h"

#include <cstdint>
#include <memory>

namespace ZORNestSolver {

/// Answers whether two shapes at fixed rotations collide from a grid over their offsets. A cell is settled
/// once it has been asked for a few times: the shapes are apart or collide all over it, or the outlines
/// have to be tested. Losses are interpolated. One for each layout and thread.
class PairTables
{
public:
    static constexpr uint32_t NoShape = UINT32_MAX;
    enum class Answer {
        Unknown, // measure the pair
        Apart,
        Colliding,
        Unsure // test the outlines; the loss is known
    };
    struct Verdict
    {
        Answer answer = Answer::Unknown;
        float loss = 0;
    };

    /// \param shapes  number of different shapes; with more than a thousand every answer is Unknown
    explicit PairTables(size_t shapes);

    /// \param a  number of the first shape, or NoShape
    /// \param b  number of the second shape, or NoShape
    /// \param offset  of b's reference point from a's; the boxes of the shapes overlap there
    Verdict Look(uint32_t a, const Shape& shapeA, uint32_t b, const Shape& shapeB, Point offset);

private:
    static constexpr int Cells = 64;
    struct Table
    {
        Point origin;
        Point cell;
        Point inverse;
        std::vector<uint8_t> states; // number of questions, or a settled answer
        std::vector<float> losses;   // at the corners; not a number where not yet known
    };

    static std::unique_ptr<Table> MakeTable(const Shape& a, const Shape& b);
    Answer Settle(const Table& table, const Shape& a, const Shape& b, int column, int row);
    static float GetLoss(Table& table, const Shape& a, const Shape& b, int column, int row);
    static float Interpolate(Table& table, const Shape& a, const Shape& b, Point place, int column, int row);

    size_t m_shapes;
    std::vector<std::unique_ptr<Table>> m_tables;
    OutlineTest m_outlineTest;
};

} // namespace ZORNestSolver
