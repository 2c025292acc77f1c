// Base of the tests that run nesting jobs.

#pragma once

#include "NestingJobs.h"

#include <ZORNesting/ZORNestNestingProcessor.h>

#include <QTest>

#include <gtest/gtest.h>

#include <memory>

/// Runs jobs to their ends and looks into their sheets.
class NestingTest : public testing::Test
{
protected:
    static constexpr int kPatience = 60000; // ms until a test gives up

    static bool WaitForEnd(const ZORNestNestingResponse* response)
    {
        return QTest::qWaitFor([=] { return response->IsAtEnd(); }, kPatience);
    }
    /// Runs a job until it is completed.
    ZORNestNestingResponse* Nest(const ZORNestNestingInput& input)
    {
        ZORNestNestingResponse* const response = processor->AddInput(input);
        processor->Execute(nullptr);
        EXPECT_TRUE(WaitForEnd(response));
        EXPECT_EQ(ZORNestNestingResponse::Completed, response->GetStatus())
            << qPrintable(response->GetFailureReason());
        return response;
    }
    static QList<ZORNestResult> ReadSheets(const ZORNestNestingResponse* response)
    {
        QList<ZORNestResult> sheets;
        for (const QByteArray& file : response->GetSheetFiles())
            sheets.append(ReadResult(file));
        return sheets;
    }
    /// The names of the items of all sheets, sorted.
    static QStringList GetNames(const ZORNestNestingResponse* response);
    /// What is wrong with a sheet: items that are not within it, too near to each other, or overlapping, by the
    /// distances of their true outlines. Not for the fast.
    static QStringList FindFaults(const ZORNestResult& sheet, double separation, double frame = 0);

    std::unique_ptr<ZORNestNestingProcessor> processor = std::make_unique<ZORNestNestingProcessor>(nullptr);
};
