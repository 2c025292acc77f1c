// Tests of SearchStrip: searches of one strip side by side.

#include "sdk/ZORNesting/solver/SolverShapes.h"

#include <ZORNesting/solver/layout/ZORNestSolverArea.h>
#include <ZORNesting/solver/search/ZORNestSolverStripRun.h>

#include <new>
#include <stdexcept>
#include <thread>

namespace ZORNestSolver::SolverShapes {
namespace {

std::shared_ptr<const Problem> MakeProblem()
{
    Job job;
    job.items = {MakeItem(Rectangle(10, 20)), MakeItem(Rectangle(7, 7))};
    job.kinds = {Roll(30)};
    auto problem = std::make_shared<Problem>();
    std::string reason;
    for (const Item& item : job.items)
        problem->types.push_back(std::make_shared<const ItemType>(PrepareItem(item, job, reason)));
    problem->items = {0, 1, 1, 0, 1};
    problem->windows = {PrepareSheet(job.kinds[0], job).window};
    return problem;
}

StripEffort OnThreads(int threads)
{
    StripEffort effort;
    effort.threads = threads;
    return effort;
}

} // namespace

TEST(ZORNestSolverStripRunTest, WhatAThreadThrowsReachesTheCaller)
{
    const std::thread::id caller = std::this_thread::get_id();
    for (const bool isOther : {false, true}) {
        const StripProof proof = [&](const std::vector<Stand>&) -> bool {
            if ((std::this_thread::get_id() != caller) == isOther)
                throw std::bad_alloc();
            return true;
        };
        Control control;
        const Budget budget(control, Budget::Clock::Wall, 3600); // the other searches end at once
        EXPECT_THROW(SearchStrip(MakeProblem(), 1, proof, OnThreads(3), budget), std::bad_alloc);
        EXPECT_TRUE(budget.IsOver());
    }
}

TEST(ZORNestSolverStripRunTest, AnExceptionAmidTheSearchEndsIt)
{
    std::atomic<int> proofs = 0;
    const StripProof proof = [&proofs](const std::vector<Stand>&) -> bool {
        if (++proofs > 6)
            throw std::runtime_error("no more");
        return true;
    };
    Control control;
    const Budget budget(control, Budget::Clock::Wall, 3600);
    try {
        SearchStrip(MakeProblem(), 1, proof, OnThreads(2), budget);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "no more");
    }
}

TEST(ZORNestSolverStripRunTest, SearchesGoOnWhereNothingIsThrown)
{
    Control control;
    const Budget budget(control, Budget::Clock::Processor, 0.3);
    const auto proof = [](const std::vector<Stand>&) { return true; };
    EXPECT_EQ(SearchStrip(MakeProblem(), 1, proof, OnThreads(3), budget).size(), 5U);
    EXPECT_FALSE(control.failed);
}

} // namespace ZORNestSolver::SolverShapes
