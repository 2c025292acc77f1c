// Runs of the nesting dialog and its stored values.

#pragma once

#include "NestingDlgTest.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QTest>

using Status = ZORNestNestingResponse::Status;
constexpr int kPatience = 60000; // ms until a test gives up

class NestingDlgRunTest : public NestingDlgTest
{
protected:
    void Set(const char* spinBox, double value) { Find<QDoubleSpinBox>(spinBox)->setValue(value); }
    void Check(const char* checkBox) { Find<QCheckBox>(checkBox)->setChecked(true); }
    void Compute() { Click("_ComputeBtn", dialog); }
    /// Starts a run that would last longer than a test may take: no layout is so short that nothing could be gained.
    void StartLongRun()
    {
        AddItem(WritePart("rib.msi", 700, 300), 20);
        AddRoll(1000);
        Set("_MinRunTimeSpn", 36'000);
        Compute();
        ASSERT_TRUE(WaitFor(Status::Running));
    }
    Status GetStatus(int run = 0) const { return Processor()->GetResponses()[run]->GetStatus(); }
    bool WaitFor(Status status, int run = 0) const
    {
        return QTest::qWaitFor([=, this] { return GetStatus(run) == status; }, kPatience);
    }
    QVariant GetStored(const char* key)
    {
        return GetSettings()->value(QLatin1String("Debug/ZORTestNestNestingDlg/%1").arg(QLatin1String(key)));
    }
    void Store(const char* key, const QVariant& value)
    {
        GetSettings()->setValue(QLatin1String("Debug/ZORTestNestNestingDlg/%1").arg(QLatin1String(key)),
                                value);
    }
};
